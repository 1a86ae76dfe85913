#include "forms/profile/TargetsForm.h"

#include <charconv>
#include <cmath>

#include "calc/FoodBudget.h"
#include "calc/TargetProgress.h"
#include "calc/Totals.h"
#include "core/CalendarDate.h"
#include "core/Format.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

namespace {

std::string amountText(double value) {
    // A tenth at most, without a trailing ".0".
    std::string text = formatText("%.1f", value);
    if (text.size() > 2 && text.compare(text.size() - 2, 2, ".0") == 0) {
        text.resize(text.size() - 2);
    }
    return text;
}

std::optional<double> numberOf(std::string_view text) {
    double value = 0.0;
    const char* end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || at != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return std::round(value * 10.0) / 10.0;
}

}  // namespace

TargetsForm::TargetsForm(MacroTargets& targets, std::string failure, DayCursor& days)
    : m_targets(&targets), m_failure(std::move(failure)), m_days(&days) {
    showSaved();
}

void TargetsForm::showSaved() {
    for (const TargetNutrient n : kTargetNutrients) {
        Line& line = m_lines[static_cast<std::size_t>(n)];
        const std::optional<MacroTarget>& t = m_targets->of(n);
        line.amount = t ? amountText(t->value) : std::string();
        line.percent = t && t->kind == MacroTarget::Kind::Percent;
    }
}

std::optional<MacroTargets> TargetsForm::typed(std::string* refusal) const {
    MacroTargets out;
    for (const TargetNutrient n : kTargetNutrients) {
        const Line& line = m_lines[static_cast<std::size_t>(n)];
        if (line.amount.empty()) {
            continue;
        }
        const std::optional<double> value = numberOf(line.amount);
        if (!value) {
            if (refusal != nullptr) {
                *refusal = std::string(targetLabel(n)) +
                           ": type a number, or leave the line empty for no target.";
            }
            return std::nullopt;
        }
        out.of(n) = MacroTarget{
            line.percent ? MacroTarget::Kind::Percent : MacroTarget::Kind::Grams, *value};
    }
    return out;
}

TargetsView TargetsForm::view() const {
    TargetsView v;
    v.editable = m_failure.empty();
    if (!v.editable) {
        const bool stop = !m_failure.empty() && m_failure.back() == '.';
        v.notice = "Your targets cannot be changed now: " + m_failure + (stop ? "" : ".") +
                   " Nothing on this screen is saved until the file can be read again.";
    }
    // The day as it stands: its exercise counted afresh, nothing of it rewritten.
    const DayRecord* day = m_days->currentRecord();
    const std::optional<int32_t> budget =
        day != nullptr
            ? foodBudgetCalories(*day, m_days->store().profile, exerciseTotals(*day).calories)
            : std::nullopt;
    const std::string date = longDateText(m_days->currentDate());
    v.budgetLine = budget ? formatText("The food budget of %s is %d calories.", date.c_str(),
                                       static_cast<int>(*budget))
                          : date + " has no food budget, so shares of it come to no grams.";
    // The equivalents come from the lines as typed, whether or not they are a valid set yet.
    const MacroTargets draft = typed(nullptr).value_or(MacroTargets{});
    const TargetProgress progress =
        targetProgress(draft, budget, day != nullptr ? computeDayTotals(*day) : Nutrients{});
    for (const TargetNutrient n : kTargetNutrients) {
        const Line& line = m_lines[static_cast<std::size_t>(n)];
        TargetRowView& row = v.rows[static_cast<std::size_t>(n)];
        row.label = targetLabel(n);
        row.amount = line.amount;
        row.percentAllowed = caloriesPerGram(n).has_value();
        row.percent = line.percent && row.percentAllowed;
        const TargetLine& shown = progress.of(n);
        if (!shown.target) {
            continue;
        }
        if (row.percent && shown.grams) {
            row.equivalent = formatText("= %.1f g", *shown.grams);
        } else if (!row.percent && shown.percent) {
            row.equivalent = formatText("= %.1f%%", *shown.percent);
        }
    }
    return v;
}

Outcome TargetsForm::edit(TargetNutrient nutrient, Field field, std::string_view text) {
    if (!m_failure.empty()) {
        return {};
    }
    Line& line = m_lines[static_cast<std::size_t>(nutrient)];
    if (field == Field::Amount) {
        line.amount = std::string(text);
    } else {
        line.percent = text == "%" && caloriesPerGram(nutrient).has_value();
    }
    return {};
}

Outcome TargetsForm::command(Command id) {
    if (!m_failure.empty()) {
        return {};
    }
    switch (id) {
        case Command::Clear:
            for (Line& line : m_lines) {
                line = Line{};
            }
            return {};
        case Command::Revert:
            showSaved();
            return {};
        case Command::Save:
            break;
    }
    std::string refusal;
    std::optional<MacroTargets> wanted = typed(&refusal);
    if (wanted) {
        refusal = targetsProblem(*wanted).value_or(std::string());
    }
    if (!refusal.empty()) {
        return {.message = ScreenMessage{refusal, caption(), MessageKind::Warning}};
    }
    if (*wanted == *m_targets) {
        return {};
    }
    *m_targets = *wanted;
    showSaved();
    return {.notices = {.dataChanged = true, .targets = true}};
}

}  // namespace nutrovex
