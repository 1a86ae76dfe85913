// Feeds arbitrary bytes to the side files' readers (Recipes.json, Targets.json and the tool's one
// recipe). Whatever the bytes, reading must end in a clean result whose message is printable; a
// text that is read must come back the same after the program writes it and reads it again.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "storage/RecipeFile.h"
#include "storage/TargetsFile.h"

namespace {

void checkMessage(const nutrovex::StorageStatus& status) {
    if (status.ok()) {
        return;
    }
    if (status.message().empty()) {
        std::abort();
    }
    for (const char ch : status.message()) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 0x20 || c >= 0x7F) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace nutrovex;
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    RecipeBook book;
    const StorageStatus recipes = parseRecipes(text, book);
    checkMessage(recipes);
    if (recipes) {
        RecipeBook again;
        if (!parseRecipes(recipesJson(book), again) || !(again == book)) {
            std::abort();
        }
    }

    MacroTargets targets;
    const StorageStatus read = parseTargets(text, targets);
    checkMessage(read);
    if (read) {
        MacroTargets again;
        if (!parseTargets(targetsJson(targets), again) || !(again == targets)) {
            std::abort();
        }
    }

    Recipe recipe;
    checkMessage(parseRecipeObject(text, recipe, "recipe.json"));
    return 0;
}
