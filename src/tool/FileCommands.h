#pragma once

#include <cstdint>
#include <ostream>
#include <span>
#include <string>

#include "core/FoodCatalogue.h"
#include "storage/UserFile.h"
#include "storage/UserList.h"
#include "tool/Commands.h"
#include "tool/JsonValues.h"

namespace nutrovex::tool {

// The files as JSON, in the shapes and key order of the tool's documentation. Dumps keep a NaN's
// exact bits; the readers throw JsonShapeError naming what is wrong.
[[nodiscard]] Json userFileJson(const UserFile& file);
void readUserFileJson(const Json& value, UserFile& file);
[[nodiscard]] Json catalogueJson(const FoodCatalogue& catalogue);
void readCatalogueJson(const Json& value, FoodCatalogue& catalogue);
[[nodiscard]] Json userListJson(const UserListFile& list);
void readUserListJson(const Json& value, UserListFile& list);

// Prints JSON for people and programs alike: a container that fits a line stays on one line,
// a larger one has an element per line.
void printJson(std::ostream& out, const Json& value);

int runDumpUser(const GlobalOptions& options, Args args);
int runDumpCatalogue(const GlobalOptions& options, Args args);
int runDumpUsers(const GlobalOptions& options, Args args);
int runWriteUser(const GlobalOptions& options, Args args);
int runWriteCatalogue(const GlobalOptions& options, Args args);
int runWriteUsers(const GlobalOptions& options, Args args);
int runCheck(const GlobalOptions& options, Args args);
int runUsers(const GlobalOptions& options, Args args);

}  // namespace nutrovex::tool
