#include "core/StoredSize.h"

namespace nutrovex {

namespace {

// Every list of the files is a u16 count and its items.
template <typename List, typename SizeOf>
std::size_t listSize(const List& list, SizeOf sizeOf) {
    std::size_t n = 2;
    for (const auto& item : list) {
        n += sizeOf(item);
    }
    return n;
}

}  // namespace

std::size_t foodSize(const FoodItem& f) {
    return 37 + 3 * kServingSize + textSize(f.name) + textSize(f.text2);
}

std::size_t foodListSize(const FoodList& list) {
    return listSize(list, foodSize);
}

std::size_t exerciseSize(const ExerciseEntry& e) {
    return 15 + textSize(e.name);
}

std::size_t exerciseListSize(const ExerciseList& list) {
    return listSize(list, exerciseSize);
}

std::size_t daySize(const DayRecord& day) {
    const DayFields& d = day.fields();
    std::size_t n = kDateSize + 4 + textSize(d.note) + 8 + kNutrientsSize;
    for (const FoodList& list : d.groups) {
        n += foodListSize(list);
    }
    return n + exerciseListSize(d.exercises);
}

}  // namespace nutrovex
