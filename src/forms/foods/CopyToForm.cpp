#include "forms/foods/CopyToForm.h"

#include <algorithm>

#include "core/DayRecord.h"
#include "foods/DayCopy.h"
#include "foods/FoodLogRows.h"
#include "session/CopyToPerson.h"
#include "session/Session.h"

namespace nutrovex {

namespace {

std::string counted(std::size_t n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

constexpr const char* kMealChoiceNames[kMealCount] = {"Breakfast", "Lunch", "Dinner", "Snack"};

}  // namespace

CopyToForm::CopyToForm(Session& session, int shownGroup, FoodList selected, CopyChoice initial)
    : m_session(&session),
      m_group(std::clamp(shownGroup, 0, static_cast<int>(kAllFoodsGroup))),
      m_selected(std::move(selected)),
      m_choice(initial),
      m_date(steppedDate(session.days().currentDate(), 1)),
      m_person(session.openUserName()) {
    if (m_choice == CopyChoice::Selected && m_selected.empty()) {
        m_choice = CopyChoice::WholeDay;
    }
}

std::vector<CopyChoice> CopyToForm::offered() const {
    std::vector<CopyChoice> out;
    if (!m_selected.empty()) {
        out.push_back(CopyChoice::Selected);
    }
    for (const CopyChoice c : {CopyChoice::Breakfast, CopyChoice::Lunch, CopyChoice::Dinner,
                               CopyChoice::Snack, CopyChoice::WholeDay}) {
        out.push_back(c);
    }
    return out;
}

void CopyToForm::entriesOf(CopyChoice c, FoodList& foods, ExerciseList& exercises) const {
    foods.clear();
    exercises.clear();
    if (c == CopyChoice::Selected) {
        foods = m_selected;
        return;
    }
    const DayRecord* day = m_session->days().currentRecord();
    if (day == nullptr) {
        return;
    }
    if (c == CopyChoice::WholeDay) {
        DayEntries all = wholeDayEntries(*day);
        foods = std::move(all.foods);
        exercises = std::move(all.exercises);
        return;
    }
    const auto meal =
        static_cast<uint16_t>(static_cast<int>(c) - static_cast<int>(CopyChoice::Breakfast));
    foods = mealEntries(*day, m_group, meal);
}

std::string CopyToForm::choiceText(CopyChoice c) const {
    FoodList foods;
    ExerciseList exercises;
    entriesOf(c, foods, exercises);
    const std::string food = counted(foods.size(), "food", "foods");
    switch (c) {
        case CopyChoice::Selected:
            return "The selected foods (" + std::to_string(foods.size()) + ")";
        case CopyChoice::WholeDay:
            return "The whole day (" + food + ", " +
                   counted(exercises.size(), "exercise", "exercises") + ")";
        case CopyChoice::Breakfast:
        case CopyChoice::Lunch:
        case CopyChoice::Dinner:
        case CopyChoice::Snack:
            break;
    }
    const int meal = static_cast<int>(c) - static_cast<int>(CopyChoice::Breakfast);
    return std::string(kMealChoiceNames[meal]) + " (" + food + ")";
}

CopyToView CopyToForm::view() const {
    CopyToView v;
    v.from = "From " + longDateText(m_session->days().currentDate()) + " of " +
             std::string(m_session->openUserName());
    if (m_group != kAllFoodsGroup) {
        v.from += std::string(", the list ") + kFoodGroupNames[m_group];  // its meals only
    }
    const std::vector<CopyChoice> choices = offered();
    for (std::size_t i = 0; i < choices.size(); ++i) {
        v.choices.push_back(choiceText(choices[i]));
        if (choices[i] == m_choice) {
            v.choice = static_cast<int>(i);
        }
    }
    v.date = longDateText(m_date);
    v.target = m_date;
    const UserList& users = m_session->users();
    for (std::size_t i = 0; i < users.count(); ++i) {
        v.people.emplace_back(users.nameAt(static_cast<Position>(i)));
        if (v.people.back() == m_person) {
            v.person = static_cast<int>(i);
        }
    }
    FoodList foods;
    ExerciseList exercises;
    entriesOf(m_choice, foods, exercises);
    v.canCopy = (!foods.empty() || !exercises.empty()) && v.person >= 0;
    v.result = m_result;
    return v;
}

Outcome CopyToForm::edit(Field field, std::string_view text) {
    if (field == Field::Person) {
        if (m_session->users().find(text) != kNoPosition) {
            m_person = std::string(text);
        }
        return {};
    }
    for (const CopyChoice c : offered()) {
        if (choiceText(c) == text) {
            m_choice = c;
        }
    }
    return {};
}

const Clock& CopyToForm::clock() const {
    return m_session->clock();
}

void CopyToForm::pickDate(const CalendarDate& date) {
    m_date = CalendarDate::fromDmy(date.day, date.month, date.year);
}

Outcome CopyToForm::command(Command) {
    FoodList foods;
    ExerciseList exercises;
    entriesOf(m_choice, foods, exercises);
    if (foods.empty() && exercises.empty()) {
        return {};
    }
    const CopyToPersonResult copied = copyToPerson(*m_session, m_person, m_date, foods, exercises);
    Outcome outcome{.notices = copied.report.notices};
    if (!copied.status) {
        m_result.clear();
        outcome.message = ScreenMessage{copied.status.message(), caption(), MessageKind::Warning};
        return outcome;
    }
    const DayCopyReport& r = copied.report;
    std::string what;
    if (r.foodsCopied > 0) {
        what = counted(r.foodsCopied, "food", "foods");
    }
    if (r.exercisesCopied > 0) {
        what += (what.empty() ? "" : " and ") + counted(r.exercisesCopied, "exercise", "exercises");
    }
    m_result = what.empty()
                   ? "Nothing was copied."
                   : "Copied " + what + " to " + longDateText(m_date) + " of " + m_person + ".";
    outcome.message = r.message;
    return outcome;
}

}  // namespace nutrovex
