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
// The same readers over a stream, keeping only the records as they are parsed (never the whole
// document). They refuse the same documents as the readers above, with the same error for a
// document with one fault; with several, the header's come first, then the first one met. A
// document that is not JSON throws JsonSyntaxError. `block` is how much is read at a time.
void readUserFileJson(std::istream& in, UserFile& file, std::size_t block = std::size_t{1} << 20);
void readCatalogueJson(std::istream& in, FoodCatalogue& catalogue,
                       std::size_t block = std::size_t{1} << 20);
[[nodiscard]] Json userListJson(const UserListFile& list);
void readUserListJson(const Json& value, UserListFile& list);

// Prints JSON for people and programs alike (see appendPretty).
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
