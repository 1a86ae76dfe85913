#pragma once

#include <ostream>

#include "tool/Commands.h"

namespace nutrovex::tool {

// recipe --user NAME RECIPE.json: makes the recipe, or updates the recipe of its name, with its
// catalogue food, and prints the food as dump-catalogue prints a food (RECIPE.json "-" = stdin).
// A refusal is one line on err naming the field or ingredient, and changes nothing.
int makeRecipe(const GlobalOptions& options, Args args, std::istream& in, std::ostream& out,
               std::ostream& err);
int runRecipe(const GlobalOptions& options, Args args);

// recipes --user NAME: every recipe of the user, with its food as the catalogue holds it (or
// null) and what is missing for it to be made again.
int listRecipes(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err);
int runRecipes(const GlobalOptions& options, Args args);

}  // namespace nutrovex::tool
