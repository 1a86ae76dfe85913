#pragma once

#include <cstddef>

#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/ServingQuantity.h"
#include "core/UserProfile.h"
#include "storage/ByteCursor.h"

namespace nutrovex {

// The payload form of every record, shared by UserDB.ddb and FoodDB.ddb: for each record a size
// (bytes it will take), a write and a read. Numbers are big-endian. Readers stop at the first
// error (see ByteReader) and keep what they completed.

inline constexpr std::size_t kDateSize = 6;
inline constexpr std::size_t kServingSize = 6;
inline constexpr std::size_t kNutrientsSize = 24;
inline constexpr std::size_t kGoalPlanSize = 13;
// The smallest food and exercise entry (two and one absent texts): bounds for list counts.
inline constexpr std::size_t kMinFoodSize = 37 + 3 * kServingSize + 2 * 2;
inline constexpr std::size_t kMinExerciseSize = 15 + 2;
inline constexpr std::size_t kMinDaySize = kDateSize + 4 + 2 + 8 + kNutrientsSize + 8 * 2 + 2;

// Only month, day and year are stored; the clock parts and weekday stay as they were.
void writeDate(ByteWriter& w, const CalendarDate& d);
void readDate(ByteReader& r, CalendarDate& d);

void writeServing(ByteWriter& w, const ServingQuantity& s);
void readServing(ByteReader& r, ServingQuantity& s);

[[nodiscard]] std::size_t foodSize(const FoodItem& f);
void writeFood(ByteWriter& w, const FoodItem& f);
void readFood(ByteReader& r, FoodItem& f);

[[nodiscard]] std::size_t foodListSize(const FoodList& list);
void writeFoodList(ByteWriter& w, const FoodList& list);
// Clears the list, then appends each complete item.
void readFoodList(ByteReader& r, FoodList& list);

[[nodiscard]] std::size_t exerciseSize(const ExerciseEntry& e);
void writeExercise(ByteWriter& w, const ExerciseEntry& e);
void readExercise(ByteReader& r, ExerciseEntry& e);

[[nodiscard]] std::size_t exerciseListSize(const ExerciseList& list);
void writeExerciseList(ByteWriter& w, const ExerciseList& list);
void readExerciseList(ByteReader& r, ExerciseList& list);

[[nodiscard]] std::size_t profileSize(const ProfileFields& p);
void writeProfile(ByteWriter& w, const ProfileFields& p);
void readProfile(ByteReader& r, ProfileFields& p);

// A day's stored fields; the all-foods list is not stored but rebuilt after reading.
[[nodiscard]] std::size_t daySize(const DayRecord& day);
void writeDay(ByteWriter& w, const DayRecord& day);
void readDay(ByteReader& r, DayRecord& day);

}  // namespace nutrovex
