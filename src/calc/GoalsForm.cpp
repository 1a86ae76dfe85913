#include "calc/GoalsForm.h"

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "calc/PersonalInfoForm.h"
#include "core/UserProfile.h"

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

Notices changedSince(const GoalFields& before, const UserProfile& p) {
    Notices n;
    if (!(goalFieldsOf(p) == before)) {
        n.userData = true;
        n.dataChanged = true;
    }
    return n;
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
    return v;
}

Notices GoalsForm::enterWeights(std::string_view startText, std::string_view goalText) {
    UserProfile& p = *m_profile;
    const GoalFields before = goalFieldsOf(p);
    p.setStartWeight(weightFromEntry(wholeNumberFromText(startText), p.metric()));
    p.setGoalWeight(weightFromEntry(wholeNumberFromText(goalText), p.metric()));
    recomputeGoalPlan(p);
    return changedSince(before, p);
}

Notices GoalsForm::setStartDate(const CalendarDate& date) {
    UserProfile& p = *m_profile;
    const GoalFields before = goalFieldsOf(p);
    p.setStartDate(date);
    if (!dateLater(p.goalDate(), p.startDate())) {
        p.setGoalDate(steppedDate(p.startDate(), 1));
    }
    recomputeGoalPlan(p);
    return changedSince(before, p);
}

Notices GoalsForm::setTargetDate(const CalendarDate& date) {
    UserProfile& p = *m_profile;
    const GoalFields before = goalFieldsOf(p);
    p.setGoalDate(dateLater(date, p.startDate()) ? date : steppedDate(p.startDate(), 1));
    recomputeGoalPlan(p);
    return changedSince(before, p);
}

ScreenMessage GoalsForm::confirmReset() {
    return {"A reset will clear all fields.  Do you wish to reset your weight loss goals?",
            "Reset Goals", MessageKind::Question};
}

Notices GoalsForm::reset(const CalendarDate& today) {
    m_profile->resetGoals(today);
    Notices n;
    n.userData = true;
    n.dataChanged = true;
    return n;
}

}  // namespace nutrovex
