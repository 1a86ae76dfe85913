#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "core/DayRecord.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/ScreenMessage.h"
#include "core/Text.h"

namespace nutrovex {

// How many bytes the records take in the user's and the catalogue's files. A file keeps a day (or
// a category's foods) in one chunk whose payload stays below 65,536 bytes, its offsets being
// 16-bit; so the size also says whether a day can take one more entry and still be saved.

inline constexpr std::size_t kMaxPayloadSize = 0xFFFF;
inline constexpr std::size_t kDateSize = 6;
inline constexpr std::size_t kServingSize = 6;
inline constexpr std::size_t kNutrientsSize = 24;
inline constexpr std::size_t kGoalPlanSize = 13;

// A text's length word, then its characters and closing zero; an absent text is the word alone.
[[nodiscard]] inline std::size_t textSize(const Text& t) {
    return t.isNull() ? 2 : 3 + t.size();
}

[[nodiscard]] std::size_t foodSize(const FoodItem& f);
[[nodiscard]] std::size_t foodListSize(const FoodList& list);
[[nodiscard]] std::size_t exerciseSize(const ExerciseEntry& e);
[[nodiscard]] std::size_t exerciseListSize(const ExerciseList& list);
// A day's stored fields; the all-foods list is not stored but rebuilt after reading.
[[nodiscard]] std::size_t daySize(const DayRecord& day);

// Whether the day, grown by `more` bytes, still fits in its chunk.
[[nodiscard]] inline bool dayHasRoomFor(const DayRecord& day, std::size_t more) {
    return daySize(day) + more <= kMaxPayloadSize;
}

// What a screen shows when the day refused an entry for lack of room; `caption` is its title.
[[nodiscard]] inline ScreenMessage dayFullMessage(std::string caption) {
    return {
        "This day holds as much as one day can. Remove an entry from it, or log this one on "
        "another day.",
        std::move(caption), MessageKind::Warning};
}

}  // namespace nutrovex
