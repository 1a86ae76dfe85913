#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "session/FoodCsvFiles.h"
#include "session/UserCatalogue.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/UserList.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;

// A root listing "Ann" (without a catalogue yet) and "Bob", and a template of one food.
class UserCatalogueTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(users.read().ok());
        ASSERT_TRUE(users.add("Ann").ok());
        ASSERT_TRUE(users.add("Bob").ok());
        FoodCatalogue shipped;
        FoodCategory bagels;
        bagels.name = "Bagels";
        FoodItem bagel;
        bagel.name = "Bagel";
        bagels.foods.push_back(bagel);
        shipped.groups[5].push_back(bagels);
        shipped.renumberGroupChunks();
        shipped.filePath = templateCataloguePath(root);
        ASSERT_TRUE(saveCatalogue(shipped).ok());
    }

    [[nodiscard]] fs::path dataFile(const char* user) const {
        return *users.userFolder(user) / "UserDB.ddb";
    }
    [[nodiscard]] fs::path catalogueFile(const char* user) const {
        return *users.userFolder(user) / "FoodDB.ddb";
    }
    UserCatalogueLoad load(const char* user, MissingCatalogue missing) {
        return loadUserCatalogue(catalogue, users, dataFile(user), templateCataloguePath(root),
                                 missing);
    }

    test::TempDir dir;
    fs::path root = dir.path();
    UserList users{root};
    FoodCatalogue catalogue;
};

TEST_F(UserCatalogueTest, AMissingCatalogueIsCopiedUsedOrRefusedAsAsked) {
    UserCatalogueLoad loaded = load("Ann", MissingCatalogue::Refuse);
    EXPECT_TRUE(loaded.missing);
    EXPECT_EQ(loaded.outcome, CatalogueLoad::Failed);
    EXPECT_EQ(loaded.failed, catalogueFile("Ann"));
    EXPECT_EQ(catalogue.foodCount(), 0u);

    // The template's foods, and nothing written: the first save makes the file.
    loaded = load("Ann", MissingCatalogue::UseTemplate);
    EXPECT_EQ(loaded.outcome, CatalogueLoad::Read);
    EXPECT_TRUE(loaded.readWhole);
    EXPECT_EQ(catalogue.foodCount(), 1u);
    EXPECT_EQ(catalogue.filePath, catalogueFile("Ann"));
    EXPECT_FALSE(fs::exists(catalogueFile("Ann")));

    // As the program opens a user: the template is copied in.
    loaded = load("Ann", MissingCatalogue::CopyTemplate);
    EXPECT_EQ(loaded.outcome, CatalogueLoad::Copied);
    EXPECT_EQ(catalogue.foodCount(), 1u);
    EXPECT_TRUE(fs::exists(catalogueFile("Ann")));
    loaded = load("Ann", MissingCatalogue::Refuse);
    EXPECT_EQ(loaded.outcome, CatalogueLoad::Read);
    EXPECT_FALSE(loaded.missing);
}

TEST_F(UserCatalogueTest, AFileThatCannotBeReadIsNamedAndKeptFromBeingWrittenOver) {
    std::ofstream(catalogueFile("Bob")) << "not a catalogue";
    UserCatalogueLoad loaded = load("Bob", MissingCatalogue::UseTemplate);
    EXPECT_EQ(loaded.outcome, CatalogueLoad::Failed);
    EXPECT_EQ(loaded.failed, catalogueFile("Bob"));
    EXPECT_FALSE(loaded.readWhole);
    EXPECT_FALSE(loaded.status.ok());

    // A damaged template is named when a user without a catalogue needs it.
    std::ofstream(templateCataloguePath(root)) << "not a catalogue either";
    loaded = load("Ann", MissingCatalogue::UseTemplate);
    EXPECT_EQ(loaded.outcome, CatalogueLoad::Failed);
    EXPECT_EQ(loaded.failed, templateCataloguePath(root));
    EXPECT_EQ(catalogue.filePath, catalogueFile("Ann"));

    // Without any template a new user starts from nothing.
    fs::remove(templateCataloguePath(root));
    loaded = load("Ann", MissingCatalogue::UseTemplate);
    EXPECT_EQ(loaded.outcome, CatalogueLoad::Read);
    EXPECT_EQ(catalogue.foodCount(), 0u);
}

TEST_F(UserCatalogueTest, TheCsvFilesRoundTripAndSayWhyTheyCannotBeRead) {
    ASSERT_EQ(load("Ann", MissingCatalogue::UseTemplate).outcome, CatalogueLoad::Read);
    const fs::path csvPath = dir.path() / "foods.csv";
    ASSERT_TRUE(exportFoodCsvFile(catalogue, csvPath).ok());
    const FoodCsvText csv = readFoodCsvFile(csvPath);
    EXPECT_EQ(csv.name, csvPath.string());
    EXPECT_EQ(csv.text, foodsCsv(catalogue));
    EXPECT_TRUE(csv.failure.empty());

    EXPECT_EQ(readFoodCsvFile(dir.path() / "none.csv").failure, "there is no such file");
    EXPECT_EQ(readFoodCsvFile(dir.path()).failure.find("cannot be read: it is not a regular file"),
              dir.path().filename().string().size() + 2);
    const StorageStatus refused = exportFoodCsvFile(catalogue, dir.path() / "no" / "foods.csv");
    EXPECT_FALSE(refused.ok());
    EXPECT_NE(refused.message().find("foods.csv"), std::string::npos) << refused.message();
}

}  // namespace
}  // namespace nutrovex
