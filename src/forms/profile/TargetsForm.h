#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/MacroTargets.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

class DayCursor;

// One nutrient's line of the targets screen.
struct TargetRowView {
    std::string label;           // "Protein"
    std::string amount;          // as typed; empty when the nutrient has no target
    bool percent = false;        // the amount is a share of the food budget, not grams
    bool percentAllowed = true;  // fibre is in grams only
    // What the amount comes to on the logbook's current day: "= 138.8 g" for a share, "= 25.0%"
    // for grams; empty without an amount or a budget.
    std::string equivalent;
};

struct TargetsView {
    std::array<TargetRowView, kTargetNutrientCount> rows{};
    // The day the equivalents are worked out on, and its budget; or why there are none.
    std::string budgetLine;
    // False while Targets.json could not be read whole: nothing is saved, and notice says why.
    bool editable = true;
    std::string notice;
};

// The targets screen: protein, carbohydrate and fat in grams or as a share of the day's food
// budget, fibre in grams, a saturated-fat limit. The lines are typed freely and checked together
// when the screen closes, because a set of shares is only whole once every one of them is typed.
class TargetsForm {
public:
    // failure: why the person's Targets.json could not be read whole; empty when it was.
    TargetsForm(MacroTargets& targets, std::string failure, DayCursor& days);

    enum class Field : uint8_t {
        Amount,  // grams or a percentage, to a tenth; empty for no target
        Kind,    // "g" or "%"
    };
    enum class Command : uint8_t {
        Save,    // OK: refused with a message when the set breaks a rule; else stored and saved
        Clear,   // empties every line
        Revert,  // the lines as last saved
    };

    [[nodiscard]] TargetsView view() const;
    Outcome edit(TargetNutrient nutrient, Field field, std::string_view text);
    Outcome command(Command id);
    // Stored targets are saved at once by Save.
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

    [[nodiscard]] static const char* caption() { return "Targets"; }

private:
    struct Line {
        std::string amount;
        bool percent = false;
    };
    // The lines read as targets, or the refusal of the first line that is not a number.
    [[nodiscard]] std::optional<MacroTargets> typed(std::string* refusal) const;
    void showSaved();

    MacroTargets* m_targets;
    std::string m_failure;
    DayCursor* m_days;
    std::array<Line, kTargetNutrientCount> m_lines{};
};

}  // namespace nutrovex
