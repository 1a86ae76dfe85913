#include "foods/FoodClipboard.h"

#include <new>

#include "core/StoredSize.h"
#include "core/UserStore.h"

namespace nutrovex {

namespace {

bool selectionInFoodRows(const DayRecord& day, const FoodLogView& view, FoodSelection selection) {
    if (view.shownGroup < 0 || view.shownGroup > kAllFoodsGroup || selection.count == 0) {
        return false;
    }
    const std::size_t size = day.group(view.shownGroup).size();
    return static_cast<std::size_t>(selection.first) + selection.count <= size;
}

}  // namespace

Confirmation confirmDeleteFoods() {
    // No question mark, as the program always had it.
    return {{"Are you sure you want to delete the selected food items", "Delete Food",
             MessageKind::Question}};
}

Notices deleteFoodRows(DayRecord& day, const FoodLogView& view, FoodSelection selection) {
    if (!selectionInFoodRows(day, view, selection)) {
        return {};
    }
    for (Position i = 0; i < selection.count; ++i) {
        (void)removeLoggedFood(day, view.shownGroup, view.sortMode, selection.first);
    }
    return Notices{.userData = true};
}

void FoodClipboard::copy(const DayRecord& day, const FoodLogView& view, FoodSelection selection) {
    m_foods.clear();
    for (std::size_t i = 0; i < selection.count; ++i) {
        const std::size_t pos = selection.first + i;
        if (pos >= kNoPosition) {
            return;
        }
        const FoodItem* f =
            presentedFood(day, view.shownGroup, view.sortMode, static_cast<Position>(pos));
        if (!f) {
            return;
        }
        try {
            m_foods.push_back(*f);
        } catch (const std::bad_alloc&) {
            return;
        }
    }
}

Notices FoodClipboard::cut(DayRecord& day, const FoodLogView& view, FoodSelection selection) {
    copy(day, view, selection);
    return deleteFoodRows(day, view, selection);
}

PasteOutcome FoodClipboard::paste(DayCursor& days, const FoodLogView& view) const {
    PasteOutcome out;
    DayRecord* day = days.ensureCurrentRecord();
    if (!day) {
        return out;
    }
    bool dayFull = false;
    for (const FoodItem& held : m_foods) {
        // A food that cannot be inserted is skipped and still counted, as the program always
        // did: the message below only follows a paste that processed nothing.
        ++out.pasted;
        try {
            FoodItem copy = held;
            if (view.shownGroup >= 0 && view.shownGroup < kFoodGroupCount) {
                copy.group = static_cast<uint16_t>(view.shownGroup);
            }
            // A pasted food is a new entry with a key of its own from the user's counter.
            UserStore& store = days.store();
            const PackedKey counter = store.header.keyCounter;
            copy.key = store.nextEntryKey();
            const Position pos = insertLoggedFood(*day, copy, view.shownGroup, view.sortMode);
            if (pos != kNoPosition) {
                out.lastPosition = pos;
            } else {
                store.header.keyCounter = counter;
                dayFull = dayFull || !dayHasRoomFor(*day, foodSize(copy));
            }
        } catch (const std::bad_alloc&) {
        }
    }
    out.complete = out.pasted == m_foods.size();
    if (out.pasted == 0 && !m_foods.empty()) {
        out.message = ScreenMessage{
            "Due to the maximum food limit per category not all of the food items were pasted "
            "from the clipboard.",
            "Paste Food", MessageKind::Warning};
    } else if (dayFull) {
        out.message = dayFullMessage("Paste Food");  // some of the foods did not go in
    }
    out.notices.userData = true;
    return out;
}

}  // namespace nutrovex
