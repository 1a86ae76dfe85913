#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SessionTestUtil.h"
#include "foods/CatalogueOps.h"
#include "foods/Recipes.h"
#include "storage/RecipeFile.h"
#include "storage/TargetsFile.h"

namespace nutrovex {
namespace {

using namespace test;
namespace fs = std::filesystem;

const char* const kToastRecipe =
    R"({"version": 1, "recipes": [{"name": "Toast", "group": 5, "servings": 2, "ingredients": [)"
    R"({"group": 5, "category": "Bagels", "food": "Bagel", "amount": 1, "unit": "item"}]}]})"
    "\n";
const char* const kTargets = R"({"version": 1, "protein": {"grams": 120}})"
                             "\n";

Recipe bagelHalves() {
    Recipe r;
    r.name = "Bagel halves";
    r.group = 5;
    r.servings = 2;
    r.ingredients = {{5, "Bagels", "Bagel", 1, ServingUnit::Item}};
    return r;
}

class SideFilesSessionTest : public SessionRoot {
protected:
    fs::path zerbu = userFolder("Zerbu");
};

TEST_F(SideFilesSessionTest, ThePersonsRecipesAndTargetsAreLoadedAndSavedWithThem) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
        EXPECT_TRUE(s->recipes().empty());  // no files yet: nothing set up
        EXPECT_FALSE(s->targets().any());
        EXPECT_TRUE(s->recipesReadWhole());
        writeFile(zerbu / "Recipes.json", kToastRecipe);
        writeFile(zerbu / "Targets.json", kTargets);
    }
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    ASSERT_EQ(s->recipes().size(), 1u);
    EXPECT_EQ(s->recipes()[0].name, "Toast");
    EXPECT_EQ(s->targets().of(TargetNutrient::Protein),
              (MacroTarget{MacroTarget::Kind::Grams, 120}));

    // A recipe made through the engine is saved at the next save point, with its food.
    const RecipeSaveResult made =
        saveRecipe(s->catalogue(), s->recipes(), bagelHalves(), RecipeSaveMode::New);
    ASSERT_TRUE(made.ok()) << made.problem->text;
    s->apply(made.notices);
    EXPECT_TRUE(s->sideFilesModified());
    s->targets().of(TargetNutrient::Fiber) = MacroTarget{MacroTarget::Kind::Grams, 30};
    s->apply(Notices{.targets = true});
    ASSERT_TRUE(s->saveModified().ok());
    EXPECT_FALSE(s->sideFilesModified());

    RecipeBook book;
    ASSERT_EQ(loadRecipes(zerbu, book).outcome, SideFileLoad::Read);
    EXPECT_EQ(book, s->recipes());
    MacroTargets targets;
    ASSERT_EQ(loadTargets(zerbu, targets).outcome, SideFileLoad::Read);
    EXPECT_EQ(targets, s->targets());

    // Nothing due: a save point writes nothing.
    const std::string toast = kToastRecipe;
    writeFile(zerbu / "Recipes.json", toast);
    ASSERT_TRUE(s->saveModified().ok());
    EXPECT_EQ(fileBytes(zerbu / "Recipes.json"), std::vector<uint8_t>(toast.begin(), toast.end()));
}

TEST_F(SideFilesSessionTest, ASideFileThatCannotBeReadWholeIsNeverWrittenOver) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
    }
    const std::string brokenRecipes = std::string(kToastRecipe) + "{";
    const std::string brokenTargets = R"({"version": 1, "fiber": {"percent": 5}})";
    writeFile(zerbu / "Recipes.json", brokenRecipes);
    writeFile(zerbu / "Targets.json", brokenTargets);

    auto s = started();
    const SessionStatus opened = s->initialLoad();
    ASSERT_EQ(opened.failures.size(), 2u);
    EXPECT_EQ(opened.failures[0].rfind("Recipes.json: not valid JSON: ", 0), 0u)
        << opened.failures[0];
    EXPECT_EQ(opened.failures[1],
              "Targets.json: Fiber is set in grams only: it is not counted in the food budget's "
              "calories.");
    EXPECT_TRUE(s->userOpen());  // the person opens all the same
    EXPECT_FALSE(s->recipesReadWhole());
    EXPECT_FALSE(s->targetsReadWhole());
    EXPECT_EQ(s->recipesFailure(), opened.failures[0]);
    EXPECT_TRUE(s->recipes().empty());
    EXPECT_FALSE(s->targets().any());

    s->apply(Notices{.recipes = true, .targets = true});
    const SessionStatus saved = s->saveModified();
    ASSERT_EQ(saved.failures.size(), 2u);
    EXPECT_EQ(saved.failures[0].rfind(
                  "User 'Zerbu': Recipes.json: not saved, so that the file on disk is kept; "
                  "it could not be read whole (Recipes.json: not valid JSON: ",
                  0),
              0u)
        << saved.failures[0];
    EXPECT_NE(s->saveAll().failures.size(), 0u);
    EXPECT_EQ(fileBytes(zerbu / "Recipes.json"),
              std::vector<uint8_t>(brokenRecipes.begin(), brokenRecipes.end()));
    EXPECT_EQ(fileBytes(zerbu / "Targets.json"),
              std::vector<uint8_t>(brokenTargets.begin(), brokenTargets.end()));
    // Switching away is not held up by a file that could not be read.
    ASSERT_TRUE(s->users().add("Ann").ok());
    EXPECT_TRUE(s->switchUser("Ann").ok());
}

TEST_F(SideFilesSessionTest, SwitchingAwaySavesThemAndDeletingAPersonTakesThemAlong) {
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    ASSERT_TRUE(s->addUser("Ann").ok());
    s->targets().of(TargetNutrient::Protein) = MacroTarget{MacroTarget::Kind::Percent, 25};
    s->apply(Notices{.targets = true});
    ASSERT_TRUE(s->switchUser("Zerbu").ok());
    MacroTargets targets;
    ASSERT_EQ(loadTargets(userFolder("Ann"), targets).outcome, SideFileLoad::Read);
    EXPECT_EQ(targets.of(TargetNutrient::Protein), (MacroTarget{MacroTarget::Kind::Percent, 25}));
    EXPECT_FALSE(s->targets().any());  // Zerbu has none

    ASSERT_TRUE(s->deleteUser("Ann").ok());
    EXPECT_FALSE(fs::exists(userFolder("Ann")));
}

}  // namespace
}  // namespace nutrovex
