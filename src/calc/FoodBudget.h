#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nutrovex {

class DayRecord;
class UserProfile;

extern const char* const kNoBudgetText;  // "(Weight required for BMR)."
// The page's one-line explanation of the food budget beside the measured suggestion.
extern const char* const kBudgetFormulaText;

// The day's food budget, "Food Budget = BMR + Exercise - Goal", as "%d cal"; the fixed text
// when there is no day, no level, no weight, age or height, no valid plan, or a weight-gain goal
// (which deliberately never shows a budget). day may be null. Uses the day's computed exercise
// calories, and the plan recomputed from the profile's goal fields.
[[nodiscard]] std::string foodBudgetText(const DayRecord* day, const UserProfile& profile);
// The same budget in calories, or nullopt whenever the text is the fixed one.
[[nodiscard]] std::optional<int32_t> foodBudgetCalories(const DayRecord* day,
                                                        const UserProfile& profile);
// The same with the day's exercise calories given, for a day whose computed figures are not
// brought up to date (a day of the summary table).
[[nodiscard]] std::optional<int32_t> foodBudgetCalories(const DayRecord& day,
                                                        const UserProfile& profile,
                                                        uint32_t exerciseCalories);

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

// The scrolling food budget page: "Weight", "Meals" (calories in, the food budget and what it is),
// "Activity Level", "Exercise", "Goals".
[[nodiscard]] std::vector<BudgetSection> foodBudgetPage(const DayRecord* day,
                                                        const UserProfile& profile);

// The compact food budget box.
struct FoodBudgetBox {
    std::string heading;      // "Food Budget"
    std::string budgetLine;   // "To achieve the goals ... is:  1500 calories."
    std::string caption;      // "Food = BMR + Exercise - Goal"
    std::string goalHeading;  // "Daily Calorie Goal"
    std::string goalSentence;
};

[[nodiscard]] FoodBudgetBox foodBudgetBox(const DayRecord* day, const UserProfile& profile);

}  // namespace nutrovex
