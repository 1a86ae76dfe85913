#pragma once

#include <cstddef>

#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/ServingQuantity.h"
#include "core/StoredSize.h"
#include "core/UserProfile.h"
#include "storage/ByteCursor.h"

namespace nutrovex {

// The payload form of every record, shared by UserDB.ddb and FoodDB.ddb: for each record a write
// and a read (the sizes they take are in core/StoredSize.h). Numbers are big-endian. Readers stop
// at the first error (see ByteReader) and keep what they completed.

// The smallest food and exercise entry (two and one absent texts): bounds for list counts.
inline constexpr std::size_t kMinFoodSize = 37 + 3 * kServingSize + 2 * 2;
inline constexpr std::size_t kMinExerciseSize = 15 + 2;
inline constexpr std::size_t kMinDaySize = kDateSize + 4 + 2 + 8 + kNutrientsSize + 8 * 2 + 2;

// Only month, day and year are stored; the clock parts and weekday stay as they were.
void writeDate(ByteWriter& w, const CalendarDate& d);
void readDate(ByteReader& r, CalendarDate& d);

void writeServing(ByteWriter& w, const ServingQuantity& s);
void readServing(ByteReader& r, ServingQuantity& s);

void writeFood(ByteWriter& w, const FoodItem& f);
void readFood(ByteReader& r, FoodItem& f);

void writeFoodList(ByteWriter& w, const FoodList& list);
// Clears the list, then appends each complete item.
void readFoodList(ByteReader& r, FoodList& list);

void writeExercise(ByteWriter& w, const ExerciseEntry& e);
void readExercise(ByteReader& r, ExerciseEntry& e);

void writeExerciseList(ByteWriter& w, const ExerciseList& list);
void readExerciseList(ByteReader& r, ExerciseList& list);

[[nodiscard]] std::size_t profileSize(const ProfileFields& p);
void writeProfile(ByteWriter& w, const ProfileFields& p);
void readProfile(ByteReader& r, ProfileFields& p);

// The all-foods list is not stored but rebuilt after reading.
void writeDay(ByteWriter& w, const DayRecord& day);
void readDay(ByteReader& r, DayRecord& day);

}  // namespace nutrovex
