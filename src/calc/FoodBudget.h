#pragma once

#include <string>
#include <vector>

namespace nutrovex {

class DayRecord;
class UserProfile;

extern const char* const kNoBudgetText;  // "(Weight required for BMR)."

// The day's food budget, "Food Budget = BMR + Exercise - Goal", as "%d cal"; the fixed text
// when there is no day, no level, no weight, age or height, no valid plan, or a weight-gain goal
// (which deliberately never shows a budget). day may be null. Uses the day's computed exercise
// calories, and the plan recomputed from the profile's goal fields.
[[nodiscard]] std::string foodBudgetText(const DayRecord* day, const UserProfile& profile);

// One row of the food budget page: a label with its value drawn to the right of it, or, when the
// label is empty, a line of text across the page.
struct BudgetRow {
    std::string label;
    std::string value;

    friend bool operator==(const BudgetRow&, const BudgetRow&) = default;
};

struct BudgetSection {
    std::string heading;
    std::vector<BudgetRow> rows;
};

// The scrolling food budget page: "Weight", "Meals", "Activity Level", "Exercise", "Goals".
[[nodiscard]] std::vector<BudgetSection> foodBudgetPage(const DayRecord* day,
                                                        const UserProfile& profile);

// The compact food budget box.
struct FoodBudgetBox {
    std::string heading;      // "Food Budget"
    std::string budgetLine;   // "To achieve the goals ... is:  1500 cal calories."
    std::string caption;      // "Food = BMR + Exercise - Goal"
    std::string goalHeading;  // "Daily Calorie Goal"
    std::string goalSentence;
};

[[nodiscard]] FoodBudgetBox foodBudgetBox(const DayRecord* day, const UserProfile& profile);

}  // namespace nutrovex
