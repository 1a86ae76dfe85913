#include "forms/profile/GoalsForm.h"

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "core/UserProfile.h"
#include "forms/profile/PersonalInfoForm.h"

namespace nutrovex {

namespace {

struct GoalFields {
    float startWeight;
    float goalWeight;
    uint16_t startDate;
    uint16_t goalDate;
    GoalPlan plan;
    bool operator==(const GoalFields&) const = default;
};

GoalFields goalFieldsOf(const UserProfile& p) {
    return {p.startWeight(), p.goalWeight(), packDate(p.startDate()), packDate(p.goalDate()),
            p.plan()};
}

Outcome changedSince(const GoalFields& before, const UserProfile& p) {
    if (goalFieldsOf(p) == before) {
        return {};
    }
    return {.notices = {.userData = true, .dataChanged = true}, .save = SavePoint::UserData};
}

std::string wholeWeightText(float pounds, bool metric) {
    const WholeResult w = weightToWhole(pounds, metric);
    return w.ok && pounds >= 0.0f ? std::to_string(w.value) : std::string();
}

}  // namespace

GoalsView GoalsForm::view() const {
    const UserProfile& p = *m_profile;
    GoalsView v;
    v.startWeight = wholeWeightText(p.startWeight(), p.metric());
    v.goalWeight = wholeWeightText(p.goalWeight(), p.metric());
    v.unit = weightUnitLabel(p.metric());
    v.startDate = longDateText(p.startDate());
    v.targetDate = longDateText(p.goalDate());
    v.sentence = goalSentence(p.plan(), p.metric());
    v.start = p.startDate();
    v.target = p.goalDate();
    return v;
}

Outcome GoalsForm::edit(Field field, std::string_view text) {
    if (field != Field::StartWeight && field != Field::GoalWeight) {
        return {};
    }
    // The other weight is read back as the screen shows it.
    const GoalsView shown = view();
    const std::string_view start = field == Field::StartWeight ? text : shown.startWeight;
    const std::string_view goal = field == Field::GoalWeight ? text : shown.goalWeight;
    UserProfile& p = *m_profile;
    const GoalFields before = goalFieldsOf(p);
    p.setStartWeight(weightFromEntry(wholeNumberFromText(start), p.metric()));
    p.setGoalWeight(weightFromEntry(wholeNumberFromText(goal), p.metric()));
    recomputeGoalPlan(p);
    return changedSince(before, p);
}

Outcome GoalsForm::pickDate(Field field, const CalendarDate& date) {
    UserProfile& p = *m_profile;
    const GoalFields before = goalFieldsOf(p);
    if (field == Field::StartDate) {
        p.setStartDate(date);
        if (!dateLater(p.goalDate(), p.startDate())) {
            p.setGoalDate(steppedDate(p.startDate(), 1));
        }
    } else if (field == Field::TargetDate) {
        p.setGoalDate(dateLater(date, p.startDate()) ? date : steppedDate(p.startDate(), 1));
    } else {
        return {};
    }
    recomputeGoalPlan(p);
    return changedSince(before, p);
}

std::optional<ScreenMessage> GoalsForm::confirmation(Command) {
    return ScreenMessage{
        "A reset will clear all fields.  Do you wish to reset your weight loss goals?",
        "Reset Goals", MessageKind::Question};
}

Outcome GoalsForm::command(Command) {
    m_profile->resetGoals(m_clock->now());
    return {.notices = {.userData = true, .dataChanged = true}, .save = SavePoint::UserData};
}

}  // namespace nutrovex
