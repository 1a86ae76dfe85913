#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

inline constexpr std::size_t kWeightMaxChars = 3;
extern const char* const kWeighInAdvice;        // "You must weigh in each day ..."
extern const char* const kWeighInTimingAdvice;  // "Tracking weight loss ..."

// What the weigh-in screen shows.
struct WeighInView {
    std::string date;    // long form
    std::string weight;  // whole number in the display unit, or empty
    std::string unit;    // "kg" or "lbs"

    friend bool operator==(const WeighInView&, const WeighInView&) = default;
};

// The weigh-in screen of the logbook's current date. It writes into the day while the person
// types; the user's data is saved when the screen closes.
class WeighInForm {
public:
    explicit WeighInForm(DayCursor& days) : m_days(&days) {}

    enum class Field : uint8_t { Weight };

    [[nodiscard]] WeighInView view() const;
    // A change the person made to the weight edit. An entry below 1 never creates a day; 0 on an
    // existing day erases its weight. Storing the weight settles the day's activity level and BMR.
    Outcome edit(Field field, std::string_view text);
    [[nodiscard]] SavePoint close() const { return SavePoint::UserData; }

private:
    DayCursor* m_days;
};

}  // namespace nutrovex
