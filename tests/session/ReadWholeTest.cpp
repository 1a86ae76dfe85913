// Nothing that could not be read whole is written over: each of the three files of a root,
// damaged in each way that once let a load stop short and a save drop the rest, goes through
// every path of the program that writes. The file stays as it was to the byte, and the person is
// told which user and which file.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "DamagedFiles.h"
#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "storage/UserList.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using test::Damaged;
using test::everyFile;
using test::FileBytes;
using test::fileBytes;

// A template with categories in the first and the last group, so that a count lowered in the
// last group's list leaves whole chunks after what the counts account for.
std::vector<uint8_t> templateCatalogue() {
    FoodCatalogue c;
    for (const std::size_t g : {std::size_t{0}, std::size_t{7}}) {
        for (const char* name : {"Nuts", "Snacks"}) {
            FoodCategory category;
            category.name = name;
            for (const char* food : {"Almonds", "Crackers", "Dates"}) {
                FoodItem item;
                item.name = food;
                category.foods.push_back(item);
            }
            c.groups[g].push_back(category);
        }
    }
    c.renumberGroupChunks();
    ByteBuffer out;
    EXPECT_TRUE(writeCatalogueFile(c, out).ok());
    return {out.data(), out.data() + out.size()};
}

// One way the program writes: what a person does, run on a session that has loaded the root.
struct Writer {
    const char* what;
    std::function<SessionStatus(Session&)> write;
};

SessionStatus editAndSave(Session& s) {
    (void)s.days().ensureCurrentDay();
    if (DayRecord* day = s.days().currentRecord()) {
        day->setWater(6);
    }
    s.apply(Notices{.userData = true, .catalogue = true});
    return s.saveAll();
}

const Writer kWriters[] = {
    {"the start-up alone", [](Session&) { return SessionStatus(); }},
    {"Save User after an edit", editAndSave},
    {"a screen's save point",
     [](Session& s) {
         s.apply(Notices{.userData = true, .catalogue = true});
         return s.saveModified();
     }},
    {"switching to another user and back",
     [](Session& s) {
         s.apply(Notices{.userData = true, .catalogue = true});
         SessionStatus status = s.switchUser("Bob");
         for (std::string& f : s.switchUser("Ann").failures) {
             status.add(std::move(f));
         }
         return status;
     }},
    {"adding a user", [](Session& s) { return s.addUser("Cy"); }},
    {"renaming the user", [](Session& s) { return s.renameUser("Ann", "Anne"); }},
    {"renaming another user", [](Session& s) { return s.renameUser("Bob", "Rob"); }},
};

class ReadWhole : public ::testing::Test {
protected:
    ReadWhole() : clock(CalendarDate::fromDmy(21, 11, 2002)), shipped(templateCatalogue()) {
        // Ann has a logbook of ten days and a catalogue of her own; Bob and Zerbu are listed.
        Session s(root(), clock, settings, shipped);
        std::string reason;
        EXPECT_EQ(s.start(reason), Session::Start::Running) << reason;
        (void)s.initialLoad();
        EXPECT_TRUE(s.addUser("Bob").ok());
        EXPECT_TRUE(s.addUser("Ann").ok());
        for (int d = 0; d < 10; ++d) {
            (void)s.days().setCurrentDate(CalendarDate::fromDmy(1 + d, 11, 2002));
            (void)s.days().ensureCurrentDay();
            s.days().currentRecord()->setWater(static_cast<uint16_t>(d));
        }
        FoodCategory rolls;
        rolls.name = "Rolls";
        s.catalogue().groups[5].push_back(rolls);
        s.catalogue().renumberGroupChunks();
        s.apply(Notices{.userData = true, .catalogue = true});
        EXPECT_TRUE(s.saveAll().ok());
        EXPECT_EQ(settings.currentUserName(), "Ann");
    }

    fs::path root() const { return dir.path() / "root"; }
    fs::path ann() const { return root() / "Users" / "Ann"; }

    // Runs every writer on its own copy of the root with the file damaged, and expects the file
    // unchanged wherever the user's folder went, and the failures to name the file (and the user,
    // for a user's own file).
    void expectNeverWrittenOver(const fs::path& file, const std::vector<Damaged>& damages,
                                const std::string& fileName, bool usersOwn) {
        const FileBytes whole = fileBytes(file);
        ASSERT_FALSE(whole.empty());
        for (const Damaged& damage : damages) {
            ASSERT_NE(damage.bytes, whole) << damage.how;
            for (const Writer& writer : kWriters) {
                const std::string where = fileName + " with " + damage.how + ", " + writer.what;
                test::TempDir copy;
                fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
                const fs::path damaged = copy.path() / "root" / fs::relative(file, root());
                test::putFileBytes(damaged, damage.bytes);
                const auto before = everyFile(copy.path() / "root");
                ++tried;

                MemorySettings remembered;
                remembered.setCurrentUserName("Ann");
                Session s(copy.path() / "root", clock, remembered, shipped);
                std::string reason;
                ASSERT_EQ(s.start(reason), Session::Start::Running) << reason;
                const SessionStatus loaded = s.initialLoad();
                EXPECT_FALSE(loaded.ok()) << where;
                const bool namedEntry = damage.how == "an unsafe name";
                EXPECT_NE(loaded.message().find(fileName + (namedEntry ? ": entry " : ": chunk ")),
                          std::string::npos)
                    << where << ": " << loaded.message();
                if (usersOwn) {
                    // Ann is opened, as herself, with her file kept as it is.
                    EXPECT_EQ(s.openUserName(), "Ann") << where;
                    EXPECT_NE(loaded.message().find("User 'Ann': "), std::string::npos)
                        << where << ": " << loaded.message();
                } else {
                    EXPECT_FALSE(s.userOpen()) << where;  // a list not read whole opens nobody
                }
                const SessionStatus written = writer.write(s);
                if (!usersOwn) {
                    // Nothing of the root is touched on the word of a list that did not load.
                    EXPECT_EQ(everyFile(copy.path() / "root"), before) << where;
                }
                const fs::path moved = copy.path() / "root" / "Users" / "Anne" / file.filename();
                const fs::path now = usersOwn && fs::exists(moved) ? moved : damaged;
                EXPECT_EQ(fileBytes(now), damage.bytes) << where;
                if (usersOwn && std::string(writer.what).starts_with("Save User")) {
                    EXPECT_NE(written.message().find("User 'Ann': " + fileName + ": not saved"),
                              std::string::npos)
                        << where << ": " << written.message();
                }
            }
        }
    }

    FixedClock clock;
    MemorySettings settings;
    std::vector<uint8_t> shipped;
    test::TempDir dir;
    int tried = 0;
};

TEST_F(ReadWhole, ALogbookNotReadWholeIsNeverWrittenOver) {
    const FileBytes whole = fileBytes(ann() / "UserDB.ddb");
    const std::size_t last = test::chunkPlaces(whole).size() - 1;
    ASSERT_EQ(last, 12u);  // header, profile, day index and ten days
    std::vector<Damaged> damages = test::damagedVersions(whole, 2, 2, last);
    damages.push_back({"a day count five lower", test::countLowered(whole, 2, 2, 5)});
    expectNeverWrittenOver(ann() / "UserDB.ddb", damages, "UserDB.ddb", true);
    EXPECT_EQ(tried, 6 * 7);
}

TEST_F(ReadWhole, ACatalogueNotReadWholeIsNeverWrittenOver) {
    const FileBytes whole = fileBytes(ann() / "FoodDB.ddb");
    FoodCatalogue read;
    ASSERT_TRUE(readCatalogueFile(whole, read, {"FoodDB.ddb"}).ok());
    const std::size_t lastList = read.header.groupChunks[7];
    const std::size_t last = test::chunkPlaces(whole).size() - 1;
    ASSERT_EQ(last, lastList + 2);
    // The last group's category count one lower, and its last category's food count.
    std::vector<Damaged> damages = test::damagedVersions(whole, lastList, 0, last);
    damages.push_back({"a food count one lower", test::countLowered(whole, last, 0)});
    expectNeverWrittenOver(ann() / "FoodDB.ddb", damages, "FoodDB.ddb", true);
    EXPECT_EQ(tried, 6 * 7);
}

TEST_F(ReadWhole, AUserListNotReadWholeOrHoldingAnUnsafeNameIsNeverWrittenOver) {
    const fs::path list = root() / "Users" / "Users.udb";
    const FileBytes whole = fileBytes(list);
    std::vector<Damaged> damages = test::damagedVersions(whole, 1, 0, 1);
    UserListFile unsafe;
    unsafe.names = {Text("Ann"), Text("Bob"), Text("../Eve"), Text("Zerbu")};
    ByteBuffer unsafeBytes;
    ASSERT_TRUE(writeUserListFile(unsafe, unsafeBytes).ok());
    damages.push_back(
        {"an unsafe name", FileBytes(unsafeBytes.data(), unsafeBytes.data() + unsafeBytes.size())});
    expectNeverWrittenOver(list, damages, "Users.udb", false);
    EXPECT_EQ(tried, 6 * 7);
}

}  // namespace
}  // namespace nutrovex
