#include "storage/Records.h"

namespace nutrovex {

namespace {

void writeNutrients(ByteWriter& w, const Nutrients& n) {
    for (const float v : n) {
        w.f32be(v);
    }
}

void readNutrients(ByteReader& r, Nutrients& n) {
    for (float& v : n) {
        v = r.f32be();
    }
}

// A list count must leave room for that many of the smallest items, so a hostile count can
// never make us reserve more than the file holds.
bool countFits(ByteReader& r, uint16_t count, std::size_t minItemSize, const char* what) {
    if (static_cast<std::size_t>(count) * minItemSize <= r.remaining()) {
        return true;
    }
    r.fail(std::string("a list of ") + std::to_string(count) + " " + what + " needs at least " +
           std::to_string(count * minItemSize) + " bytes but only " +
           std::to_string(r.remaining()) + " are left");
    return false;
}

// Every list of the files is a u16 count and its items: one write and one read for all of them.
template <typename List, typename WriteOne>
void writeList(ByteWriter& w, const List& list, WriteOne writeOne) {
    w.u16be(static_cast<uint16_t>(list.size()));
    for (const auto& item : list) {
        writeOne(w, item);
    }
}

// An item cut short is dropped; the list keeps what was read before it.
template <typename List, typename ReadOne>
void readList(ByteReader& r, List& list, std::size_t minItemSize, const char* what,
              ReadOne readOne) {
    list.clear();
    const uint16_t count = r.u16be();
    if (!r.ok() || !countFits(r, count, minItemSize, what)) {
        return;
    }
    list.reserve(count);
    // Items start as copies of a blank one: emplace_back() would clear each item with a slow
    // block store before setting its members.
    static const typename List::value_type blank{};
    for (uint16_t i = 0; i < count; ++i) {
        readOne(r, list.emplace_back(blank));
        if (!r.ok()) {
            list.pop_back();
            return;
        }
    }
}

}  // namespace

void writeDate(ByteWriter& w, const CalendarDate& d) {
    w.i16be(d.month);
    w.i16be(d.day);
    w.i16be(d.year);
}

void readDate(ByteReader& r, CalendarDate& d) {
    const int16_t month = r.i16be();
    const int16_t day = r.i16be();
    const int16_t year = r.i16be();
    if (r.ok()) {
        d.month = month;
        d.day = day;
        d.year = year;
    }
}

void writeServing(ByteWriter& w, const ServingQuantity& s) {
    w.f32be(s.amount);
    w.u8(unitByte(s.unit));
    w.u8(s.sub);
}

void readServing(ByteReader& r, ServingQuantity& s) {
    s.amount = r.f32be();
    s.unit = unitFromByte(r.u8());
    s.sub = r.u8();
}

void writeFood(ByteWriter& w, const FoodItem& f) {
    uint8_t* p = w.take(5);
    putBe32(p, f.key.value);
    p[4] = f.loggedFlag;
    w.text(f.name);
    w.text(f.text2);
    p = w.take(3 * kServingSize + kNutrientsSize + 8);
    for (const ServingQuantity* s : {&f.serving, &f.ref1, &f.ref2}) {
        putFloat(p, s->amount);
        p[4] = unitByte(s->unit);
        p[5] = s->sub;
        p += kServingSize;
    }
    for (const float n : f.nutrients) {
        putFloat(p, n);
        p += 4;
    }
    putBe16(p, f.meal);
    putFloat(p + 2, f.ratio);
    putBe16(p + 6, f.group);
}

namespace {

ServingQuantity servingAt(const uint8_t* p) {
    return {beFloat(p), unitFromByte(p[4]), p[5]};
}

}  // namespace

void readFood(ByteReader& r, FoodItem& f) {
    // The most numerous record of all: its fixed runs are checked once each.
    if (const uint8_t* p = r.take(5, "a food")) {
        f.key.value = be32(p);
        f.loggedFlag = p[4];
    }
    r.text(f.name);
    r.text(f.text2);
    const uint8_t* p = r.take(3 * kServingSize + kNutrientsSize + 8, "a food");
    if (p == nullptr) {
        return;
    }
    f.serving = servingAt(p);
    f.ref1 = servingAt(p + 6);
    f.ref2 = servingAt(p + 12);
    for (std::size_t n = 0; n < f.nutrients.size(); ++n) {
        f.nutrients[n] = beFloat(p + 18 + 4 * n);
    }
    f.meal = be16(p + 42);
    f.ratio = beFloat(p + 44);
    f.group = be16(p + 48);
}

void writeFoodList(ByteWriter& w, const FoodList& list) {
    writeList(w, list, writeFood);
}

void readFoodList(ByteReader& r, FoodList& list) {
    readList(r, list, kMinFoodSize, "foods", readFood);
}

void writeExercise(ByteWriter& w, const ExerciseEntry& e) {
    w.u32be(e.key.value);
    w.u8(e.byte);
    w.u16be(e.type);
    w.i16be(e.variant);
    w.i16be(e.third);
    w.text(e.name);
    w.u16be(e.minutes);
    w.u16be(e.calories);
}

void readExercise(ByteReader& r, ExerciseEntry& e) {
    e.key.value = r.u32be();
    e.byte = r.u8();
    e.type = r.u16be();
    e.variant = r.i16be();
    e.third = r.i16be();
    e.name = r.text();
    e.minutes = r.u16be();
    e.calories = r.u16be();
}

void writeExerciseList(ByteWriter& w, const ExerciseList& list) {
    writeList(w, list, writeExercise);
}

void readExerciseList(ByteReader& r, ExerciseList& list) {
    readList(r, list, kMinExerciseSize, "exercises", readExercise);
}

std::size_t profileSize(const ProfileFields& p) {
    return 11 + textSize(p.text1) + textSize(p.displayName) + textSize(p.userName) + 4 + 4 +
           kDateSize + 4 + kDateSize + kGoalPlanSize;
}

void writeProfile(ByteWriter& w, const ProfileFields& p) {
    w.u8(p.byte);
    w.text(p.text1);
    w.text(p.displayName);
    w.text(p.userName);
    w.f32be(p.height);
    w.i16be(p.age);
    w.u16be(p.gender);
    w.f32be(p.startWeight);
    writeDate(w, p.startDate);
    w.f32be(p.goalWeight);
    writeDate(w, p.goalDate);
    w.u8(p.plan.valid);
    w.u32be(p.plan.change);
    w.u32be(p.plan.days);
    w.u32be(p.plan.perDay);
    w.u16be(p.defaultLevel);
    w.u16be(p.units);
    w.u16be(p.flags);
}

void readProfile(ByteReader& r, ProfileFields& p) {
    p.byte = r.u8();
    p.text1 = r.text();
    p.displayName = r.text();
    p.userName = r.text();
    p.height = r.f32be();
    p.age = r.i16be();
    p.gender = r.u16be();
    p.startWeight = r.f32be();
    readDate(r, p.startDate);
    p.goalWeight = r.f32be();
    readDate(r, p.goalDate);
    p.plan.valid = r.u8();
    p.plan.change = r.u32be();
    p.plan.days = r.u32be();
    p.plan.perDay = r.u32be();
    p.defaultLevel = r.u16be();
    p.units = r.u16be();
    p.flags = r.u16be();
}

void writeDay(ByteWriter& w, const DayRecord& day) {
    const DayFields& d = day.fields();
    writeDate(w, d.date);
    w.f32be(d.weight);
    w.text(d.note);
    w.u16be(d.word);
    w.u16be(d.level);
    w.i16be(d.bmr);
    w.u16be(d.flags);
    writeNutrients(w, d.totals);
    for (const FoodList& list : d.groups) {
        writeFoodList(w, list);
    }
    writeExerciseList(w, d.exercises);
}

void readDay(ByteReader& r, DayRecord& day) {
    DayFields& d = day.rawFields();
    readDate(r, d.date);
    d.weight = r.f32be();
    d.note = r.text();
    d.word = r.u16be();
    d.level = r.u16be();
    d.bmr = r.i16be();
    d.flags = r.u16be();
    readNutrients(r, d.totals);
    for (FoodList& list : d.groups) {
        readFoodList(r, list);
    }
    readExerciseList(r, d.exercises);
}

}  // namespace nutrovex
