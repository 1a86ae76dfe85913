#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "storage/StorageTestUtil.h"
#include "storage/UserFile.h"

namespace nutrovex {
namespace {

using test::Bytes;

Bytes fromHex(const std::string& hex) {
    Bytes out;
    std::string digits;
    for (const char c : hex) {
        if (std::isxdigit(static_cast<unsigned char>(c))) {
            digits += c;
        }
    }
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        out.push_back(static_cast<uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return out;
}

// One user, one day with one food and one exercise, assembled by hand from the format's tables:
// chunk headers little-endian, payload numbers big-endian, the key counter raw little-endian.
const char* const kGoldenUser =
    "00000000 0a000000"               // chunk 0, 10 bytes
    "0004 0102 11000000 0304"         // version 4, word, counter 17 (LE), flags
    "01000000 3b000000"               // chunk 1, 59 bytes
    "05 0000 0004416e6e00 000100"     // byte, text1 null, "Ann", ""
    "428c0000 ffff 0001"              // height 70, age -1, female
    "43340000 0009 0019 07d2"         // start 180 lb on 9/25/2002
    "432a0000 000c 0019 07d2"         // goal 170 lb on 12/25/2002
    "01 0000000a 0000005b 00000180"   // plan
    "0002 0001 ffc1"                  // level, units, flags
    "02000000 04000000 0003 0001"     // chunk 2: first day chunk 3, one day
    "03000000 99000000"               // chunk 3, 153 bytes
    "0009 0019 07d2 431a0000 000100"  // 9/25/2002, 154 lb, note ""
    "0007 0002 06a4 8000"             // water 7, level 2, BMR 1700, flags
    "43750000 42400000 40000000 41200000 3fc00000 3e4ccccd"  // totals
    "0000 0000 0000 0000 0000 0001"                          // groups 0..4 empty, group 5 one food
    "00000009 01 0006426167656c00 0000"                      // key 9, logged, "Bagel", text2 null
    "3f800000 0e00 00000000 0000 3f800000 0e00"              // serving, ref1, ref2
    "43750000 42400000 40000000 41200000 3fc00000 3e4ccccd"  // nutrients
    "0000 3f800000 0005"                                     // meal, ratio, group
    "0000 0000"                                              // groups 6, 7 empty
    "0001 00000005 00 000f ffff 0002 000852756e6e696e6700 001e 0168";  // one exercise

UserFile goldenRecords() {
    UserFile f;
    f.header = {4, 0x0102, PackedKey{17}, 0x0304};
    ProfileFields& p = f.profile.rawFields();
    p.byte = 5;
    p.text1 = Text::null();
    p.displayName = "Ann";
    p.userName = "";
    p.height = 70.0f;
    p.age = -1;
    p.gender = 1;
    p.startWeight = 180.0f;
    p.startDate = CalendarDate::fromDmy(25, 9, 2002);
    p.goalWeight = 170.0f;
    p.goalDate = CalendarDate::fromDmy(25, 12, 2002);
    p.plan = {1, 10, 91, 384};
    p.defaultLevel = 2;
    p.units = 1;
    p.flags = 0xFFC1;
    f.dayCount = 1;
    auto day = std::make_unique<DayRecord>(CalendarDate::fromDmy(25, 9, 2002));
    DayFields& d = day->rawFields();
    d.weight = 154.0f;
    d.note = "";
    d.word = 7;
    d.level = 2;
    d.bmr = 1700;
    d.flags = 0x8000;
    d.totals = {245.0f, 48.0f, 2.0f, 10.0f, 1.5f, 0.2f};
    FoodItem bagel;
    bagel.key.value = 9;
    bagel.loggedFlag = 1;
    bagel.name = "Bagel";
    bagel.text2 = Text::null();
    bagel.serving = {1.0f, ServingUnit::Item, 0};
    bagel.ref2 = {1.0f, ServingUnit::Item, 0};
    bagel.nutrients = {245.0f, 48.0f, 2.0f, 10.0f, 1.5f, 0.2f};
    bagel.ratio = 1.0f;
    bagel.group = 5;
    d.groups[5].push_back(bagel);
    ExerciseEntry run;
    run.key.value = 5;
    run.type = 15;
    run.variant = -1;
    run.third = 2;
    run.name = "Running";
    run.minutes = 30;
    run.calories = 360;
    d.exercises.push_back(run);
    f.days.push_back(std::move(day));
    return f;
}

Bytes serialise(const UserFile& f) {
    ByteBuffer out;
    const StorageStatus s =
        writeUserFile(f.header, f.profile.fields(), f.firstDayChunk, f.dayCount, f.days, out);
    EXPECT_TRUE(s.ok()) << s.message();
    return Bytes(out.data(), out.data() + out.size());
}

StorageStatus parse(const Bytes& bytes, UserFile& f) {
    return readUserFile(bytes, f, CalendarDate::fromDmy(1, 1, 2020), {"UserDB.ddb"});
}

void expectSameFood(const FoodItem& a, const FoodItem& b) {
    EXPECT_EQ(a.key, b.key);
    EXPECT_EQ(a.loggedFlag, b.loggedFlag);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.text2, b.text2);
    EXPECT_EQ(a.serving, b.serving);
    EXPECT_EQ(a.ref1, b.ref1);
    EXPECT_EQ(a.ref2, b.ref2);
    for (std::size_t n = 0; n < a.nutrients.size(); ++n) {
        EXPECT_EQ(test::bitsOf(a.nutrients[n]), test::bitsOf(b.nutrients[n]));
    }
    EXPECT_EQ(a.meal, b.meal);
    EXPECT_EQ(test::bitsOf(a.ratio), test::bitsOf(b.ratio));
    EXPECT_EQ(a.group, b.group);
}

TEST(UserFile, WritesTheFormatByteForByte) {
    EXPECT_EQ(serialise(goldenRecords()), fromHex(kGoldenUser));
}

TEST(UserFile, ReadsEveryFieldOfAHandMadeFile) {
    UserFile f;
    ASSERT_TRUE(parse(fromHex(kGoldenUser), f).ok());
    const UserFile expected = goldenRecords();
    EXPECT_EQ(f.header.version, 4);
    EXPECT_EQ(f.header.word, 0x0102);
    EXPECT_EQ(f.header.keyCounter.value, 17u);
    EXPECT_EQ(f.header.flags, 0x0304);
    const ProfileFields& p = f.profile.fields();
    EXPECT_EQ(p.byte, 5);
    EXPECT_TRUE(p.text1.isNull());
    EXPECT_EQ(p.displayName, "Ann");
    EXPECT_FALSE(p.userName.isNull());
    EXPECT_EQ(p.userName, "");
    EXPECT_EQ(p.height, 70.0f);
    EXPECT_EQ(p.age, -1);
    EXPECT_EQ(p.gender, 1);
    EXPECT_EQ(p.startDate.month, 9);
    EXPECT_EQ(p.startDate.day, 25);
    EXPECT_EQ(p.startDate.year, 2002);
    EXPECT_EQ(p.goalDate.month, 12);
    EXPECT_EQ(p.plan, (GoalPlan{1, 10, 91, 384}));
    EXPECT_EQ(p.units, 1);
    EXPECT_EQ(p.flags, 0xFFC1);
    EXPECT_EQ(f.firstDayChunk, 3);
    EXPECT_EQ(f.dayCount, 1);
    ASSERT_EQ(f.days.size(), 1u);
    const DayRecord& day = *f.days[0];
    EXPECT_EQ(day.weight(), 154.0f);
    EXPECT_EQ(day.water(), 7);
    EXPECT_EQ(day.bmr(), 1700);
    EXPECT_EQ(day.flags(), 0x8000);
    ASSERT_EQ(day.group(5).size(), 1u);
    expectSameFood(day.group(5)[0], expected.days[0]->group(5)[0]);
    // The all-foods list is not stored; it is rebuilt from the groups.
    ASSERT_EQ(day.allFoods().size(), 1u);
    EXPECT_EQ(day.allFoods()[0].name, "Bagel");
    ASSERT_EQ(day.exercises().size(), 1u);
    EXPECT_EQ(day.exercises()[0].variant, -1);
    EXPECT_EQ(day.exercises()[0].name, "Running");
    EXPECT_EQ(day.exercises()[0].calories, 360);
}

TEST(UserFile, RoundTripsEveryBitIncludingOddValues) {
    UserFile f = goldenRecords();
    ProfileFields& p = f.profile.rawFields();
    p.height = test::floatFromBits(0x7FA00001);  // a signalling NaN with a payload
    p.startWeight = -0.0f;
    p.goalWeight = test::floatFromBits(0xFFC00000);
    p.plan = {0xFF, 0xFFFFFFFF, 0x80000000, 7};
    p.startDate.month = -1;
    p.startDate.year = 32767;
    f.header.keyCounter.value = 0xDEADBEEF;
    f.days.push_back(test::sampleDay(3, 1, 1999, 20));
    f.days.push_back(test::sampleDay(1, 1, 1999, 0));  // out of date order, kept in file order
    f.days[2]->rawFields().weight = std::numeric_limits<float>::infinity();
    f.days[2]->rawFields().note = Text::null();
    f.days[2]->rawFields().totals[3] = test::floatFromBits(0x00000001);  // smallest denormal
    f.dayCount = 3;
    const Bytes first = serialise(f);

    UserFile back;
    ASSERT_TRUE(parse(first, back).ok()) << parse(first, back).message();
    EXPECT_EQ(test::bitsOf(back.profile.fields().height), 0x7FA00001u);
    EXPECT_EQ(test::bitsOf(back.profile.fields().startWeight), 0x80000000u);
    EXPECT_EQ(test::bitsOf(back.profile.fields().goalWeight), 0xFFC00000u);
    EXPECT_EQ(back.header.keyCounter.value, 0xDEADBEEFu);
    ASSERT_EQ(back.days.size(), 3u);
    EXPECT_EQ(back.days[1]->date().day, 3);
    EXPECT_EQ(back.days[2]->date().day, 1);
    EXPECT_TRUE(back.days[2]->fields().note.isNull());
    for (int g = 0; g < kFoodGroupCount; ++g) {
        ASSERT_EQ(back.days[1]->group(g).size(), f.days[1]->group(g).size());
        for (std::size_t i = 0; i < f.days[1]->group(g).size(); ++i) {
            expectSameFood(back.days[1]->group(g)[i], f.days[1]->group(g)[i]);
        }
    }
    EXPECT_EQ(back.days[1]->allFoods().size(), 20u);
    EXPECT_EQ(serialise(back), first);
}

TEST(UserFile, AUserWithNoDaysIsThreeChunks) {
    UserFile f;
    f.profile = UserProfile(CalendarDate::fromDmy(1, 2, 2003));
    const Bytes bytes = serialise(f);
    // 8 + 10, 8 + profile, 8 + 4: the day index says first chunk 3, no days.
    const std::size_t profileBytes = bytes.size() - 18 - 12 - 8;
    EXPECT_EQ(bytes[18], 1);
    EXPECT_EQ(bytes[22], profileBytes);
    const Bytes tail(bytes.end() - 12, bytes.end());
    EXPECT_EQ(tail, fromHex("02000000 04000000 0003 0000"));
    UserFile back;
    ASSERT_TRUE(parse(bytes, back).ok());
    EXPECT_EQ(back.dayCount, 0);
    EXPECT_TRUE(back.days.empty());
}

TEST(UserFile, AnEmptyDayStillWritesTotalsAndNineCounts) {
    UserFile f;
    auto day = std::make_unique<DayRecord>(CalendarDate::fromDmy(2, 3, 2004));
    day->rawFields().note = Text::null();
    f.days.push_back(std::move(day));
    f.dayCount = 1;
    const Bytes bytes = serialise(f);
    // date 6, weight 4, note count 2, four words 8, totals 24, eight list counts, exercise count.
    const Bytes expected = fromHex(
        "03000000 3e000000 0003 0002 07d4 bf800000 0000 0000 0000 0000 0000"
        "00000000 00000000 00000000 00000000 00000000 00000000"
        "0000 0000 0000 0000 0000 0000 0000 0000 0000");
    ASSERT_GE(bytes.size(), expected.size());
    EXPECT_EQ(Bytes(bytes.end() - static_cast<long>(expected.size()), bytes.end()), expected);
}

TEST(UserFile, TheDayCountDecidesHowManyDaysAreWritten) {
    UserFile f = goldenRecords();
    f.days.push_back(test::sampleDay(2, 2, 2003));
    f.dayCount = 1;  // fewer than listed: the rest is not written
    UserFile back;
    ASSERT_TRUE(parse(serialise(f), back).ok());
    EXPECT_EQ(back.days.size(), 1u);

    f.dayCount = 3;  // more than listed: an error, and nothing is produced
    ByteBuffer out;
    const StorageStatus s = writeUserFile(f.header, f.profile.fields(), 3, f.dayCount, f.days, out);
    EXPECT_FALSE(s.ok());
    EXPECT_NE(s.message().find("counts 3 days but the list holds 2"), std::string::npos);
    EXPECT_EQ(out.size(), 0u);
}

TEST(UserFile, ARecordTooLargeForAChunkIsRefused) {
    UserFile f;
    auto day = std::make_unique<DayRecord>(CalendarDate::fromDmy(2, 3, 2004));
    day->rawFields().note = std::string(70000, 'x');
    f.days.push_back(std::move(day));
    f.dayCount = 1;
    ByteBuffer out;
    const StorageStatus s = writeUserFile(f.header, f.profile.fields(), 3, 1, f.days, out);
    EXPECT_FALSE(s.ok());
    EXPECT_EQ(s.error().chunk, 3);
    EXPECT_NE(s.message().find("65,535"), std::string::npos);
}

// A day is refused more entries exactly where its record would stop fitting in a chunk: up to
// there it is saved and read back whole.
TEST(UserFile, ADayTakesEntriesUntilItsRecordWouldNoLongerBeSaved) {
    for (const std::size_t nameLength : {0u, 7u, 21u, 120u}) {
        UserFile f;
        auto owned = std::make_unique<DayRecord>(CalendarDate::fromDmy(2, 3, 2004));
        DayRecord& day = *owned;
        f.days.push_back(std::move(owned));
        f.dayCount = 1;
        day.rawFields().note = "Feast";
        ExerciseEntry walk;
        walk.name = "Walking";
        ASSERT_NE(day.appendExercise(walk), kNoPosition);
        FoodItem food;
        food.name = std::string(nameLength, 'n');
        food.text2 = food.name;
        std::size_t foods = 0;
        while (dayHasRoomFor(day, foodSize(food))) {
            day.group(static_cast<int>(foods % 8)).push_back(food);
            ++foods;
        }
        SCOPED_TRACE("names of " + std::to_string(nameLength) + ", " + std::to_string(foods) +
                     " foods");
        // An exercise no longer fits either, where the foods left less room than it needs.
        if (!dayHasRoomFor(day, exerciseSize(walk))) {
            EXPECT_EQ(day.appendExercise(walk), kNoPosition);
            EXPECT_EQ(day.exercises().size(), 1u);
        }
        ByteBuffer out;
        ASSERT_TRUE(writeUserFile(f.header, f.profile.fields(), 3, 1, f.days, out).ok());
        UserFile back;
        ASSERT_TRUE(parse(Bytes(out.data(), out.data() + out.size()), back).ok());
        ASSERT_EQ(back.days.size(), 1u);
        EXPECT_EQ(back.days[0]->allFoods().size(), foods);

        day.group(0).push_back(food);  // past the room the day has
        EXPECT_FALSE(writeUserFile(f.header, f.profile.fields(), 3, 1, f.days, out).ok());
    }
}

TEST(UserFile, EveryTruncationFailsCleanlyAndKeepsTheChunksBefore) {
    UserFile f = goldenRecords();
    f.days.push_back(test::sampleDay(2, 2, 2003, 5));
    f.dayCount = 2;
    const Bytes whole = serialise(f);
    // The ends of chunks 0, 1, 2, 3 and 4.
    std::vector<std::size_t> ends;
    for (std::size_t pos = 0; pos < whole.size();) {
        const uint32_t length = whole[pos + 4] | (whole[pos + 5] << 8);
        pos += 8 + length;
        ends.push_back(pos);
    }
    ASSERT_EQ(ends.size(), 5u);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<long>(size));
        UserFile back;
        const StorageStatus s = parse(cut, back);
        ASSERT_FALSE(s.ok()) << size;
        const auto complete = static_cast<std::size_t>(
            std::upper_bound(ends.begin(), ends.end(), size) - ends.begin());
        EXPECT_EQ(s.error().chunk, static_cast<int64_t>(complete)) << size;
        EXPECT_GE(s.error().offset, 0);
        EXPECT_LE(static_cast<std::size_t>(s.error().offset), size) << size;
        EXPECT_EQ(back.days.size(), complete > 3 ? complete - 3 : 0u) << size;
        if (complete >= 2) {
            EXPECT_EQ(back.profile.fields().displayName, "Ann") << size;
        }
    }
}

TEST(UserFile, CorruptCountsAndLengthsGiveErrorsThatSayWhere) {
    const Bytes golden = fromHex(kGoldenUser);
    struct Case {
        const char* what;
        std::size_t offset;
        Bytes patch;
        int64_t chunk;
        const char* reason;
    };
    // Offsets: the day count at 95; chunk 3's header at 97, its payload at 105, group 5's food
    // count at 105 + 55 and the food's name at 167.
    const Case cases[] = {
        {"huge payload length", 101, fromHex("00000100"), 3, "beyond the format's 65,535"},
        {"payload longer than the file", 101, fromHex("9a000000"), 3, "ends 1 bytes early"},
        {"day count beyond the chunks", 95, fromHex("0002"), 4, "the file ends"},
        {"food count beyond the payload", 160, fromHex("0400"), 3, "a list of 1024 foods"},
        {"text count beyond the payload", 167, fromHex("ff00"), 3, "a text of"},
    };
    for (const Case& c : cases) {
        Bytes bytes = golden;
        std::copy(c.patch.begin(), c.patch.end(), bytes.begin() + static_cast<long>(c.offset));
        UserFile back;
        const StorageStatus s = parse(bytes, back);
        ASSERT_FALSE(s.ok()) << c.what;
        EXPECT_EQ(s.error().chunk, c.chunk) << c.what << ": " << s.message();
        EXPECT_NE(s.message().find(c.reason), std::string::npos) << c.what << ": " << s.message();
        EXPECT_EQ(s.message().rfind("UserDB.ddb: chunk ", 0), 0u) << s.message();
    }
}

// A file reads whole only when writing back what was read gives the same bytes: whatever its
// counts leave out, and whatever would be written differently, fails the read where it lies.
TEST(UserFile, AFileReadsWholeOnlyWhenEveryByteIsAccountedFor) {
    const Bytes golden = fromHex(kGoldenUser);
    const auto patched = [&](std::size_t at, const Bytes& patch) {
        Bytes b = golden;
        std::copy(patch.begin(), patch.end(), b.begin() + static_cast<long>(at));
        return b;
    };
    Bytes trailing = golden;
    trailing.push_back(0);
    Bytes dayTwice = golden;  // the day's chunk once more, numbered as a second day would be
    dayTwice.insert(dayTwice.end(), golden.begin() + 97, golden.end());
    dayTwice[golden.size()] = 4;
    Bytes longHeader = golden;  // a header payload one byte longer than its fields
    longHeader.insert(longHeader.begin() + 18, 0);
    longHeader[4] = 11;
    struct Case {
        const char* what;
        Bytes bytes;
        int64_t chunk;
        std::size_t offset;
        const char* reason;
    };
    // Offsets: "Ann" counted at 29 with its zero at 34, the day count at 95, chunk 3's header at
    // 97 and the day's exercise count at 231, the last entry's 25 bytes after it.
    const Case cases[] = {
        {"a day count one lower", patched(95, fromHex("0000")), 3, 97,
         "follow the last chunk that the file's counts account for"},
        {"a day after the counted ones", dayTwice, 4, golden.size(), "follow the last chunk"},
        {"a byte after the last chunk", trailing, 4, golden.size(), "1 bytes follow"},
        {"an exercise count one lower", patched(231, fromHex("0000")), 3, 233,
         "25 bytes of the payload are left over"},
        {"a payload longer than its fields", longHeader, 0, 18, "1 bytes of the payload"},
        {"a day chunk numbered out of place", patched(97, fromHex("07")), 3, 97,
         "numbered 7 instead of 3"},
        {"a text whose last byte is not zero", patched(34, Bytes{'x'}), 1, 29,
         "does not end in a zero byte"},
    };
    for (const Case& c : cases) {
        UserFile back;
        const StorageStatus s = parse(c.bytes, back);
        ASSERT_FALSE(s.ok()) << c.what;
        EXPECT_EQ(s.error().chunk, c.chunk) << c.what << ": " << s.message();
        EXPECT_EQ(s.error().offset, static_cast<int64_t>(c.offset))
            << c.what << ": " << s.message();
        EXPECT_NE(s.message().find(c.reason), std::string::npos) << c.what << ": " << s.message();
    }
}

TEST(UserFile, TotalsAreWrittenAsTheyStand) {
    UserFile f = goldenRecords();
    f.days[0]->rawFields().totals = {1, 2, 3, 4, 5, 6};
    UserFile back;
    ASSERT_TRUE(parse(serialise(f), back).ok());
    EXPECT_EQ(back.days[0]->totals()[5], 6.0f);
}

}  // namespace
}  // namespace nutrovex
