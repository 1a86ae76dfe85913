#include "forms/foods/FindFoodForm.h"

namespace nutrovex {

FindFoodForm::FindFoodForm(const FoodCatalogue& catalogue, FoodFinder& finder,
                           std::string_view text)
    : m_catalogue(&catalogue), m_finder(&finder), m_text(text) {
    if (!m_text.empty()) {
        (void)command(Command::Find);
    }
}

FindFoodView FindFoodForm::view() const {
    FindFoodView v;
    v.text = m_text;
    v.history.assign(m_finder->history().begin(), m_finder->history().end());
    if (m_searched) {
        for (const FindResult& r : m_finder->results()) {
            v.results.emplace_back(r.item.name.view());
        }
    }
    v.selected = m_selected;
    return v;
}

Outcome FindFoodForm::edit(Field, std::string_view text) {
    m_text = text;
    return {};
}

Outcome FindFoodForm::command(Command) {
    const FoodFinder::Outcome found = m_finder->find(*m_catalogue, m_text);
    if (found == FoodFinder::Outcome::NothingToFind) {
        return {};
    }
    m_searched = true;
    if (found == FoodFinder::Outcome::NoMatch) {
        m_selected = -1;
        return {.message = ScreenMessage{kNoMatchMessage, kFindCaption, MessageKind::Warning}};
    }
    m_selected = 0;
    return {};
}

void FindFoodForm::select(int row) {
    m_selected = row;
}

std::optional<FindResult> FindFoodForm::chosen() const {
    const auto& results = m_finder->results();
    if (!m_searched || m_selected < 0 || static_cast<std::size_t>(m_selected) >= results.size()) {
        return std::nullopt;
    }
    return results[static_cast<std::size_t>(m_selected)];
}

}  // namespace nutrovex
