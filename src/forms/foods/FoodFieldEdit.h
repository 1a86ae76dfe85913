#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/FoodItem.h"
#include "core/Position.h"
#include "foods/FoodFields.h"

namespace nutrovex {

// Where a food form left the food when its OK (or "Log") was pressed: whether the screen closes,
// the field a refusal puts the focus on, and where the food now stands.
struct FormResult {
    enum class Status : uint8_t { Stay, Done, ClosedWithoutChange };
    Status status = Status::Stay;
    FoodField focus = FoodField::None;
    // New item: its group, category and position; edited item: its new position; logged or
    // edited entry: its position in the presented order.
    int group = -1;
    Position category = kNoPosition;
    Position position = kNoPosition;

    [[nodiscard]] bool done() const { return status == Status::Done; }
};

// A number as a food form's text: exact, so the form reads back the very value ("" is none).
[[nodiscard]] std::string numberText(std::optional<double> value);

// A value field's complete text, as the food forms take it: the amount and the grams as numbers
// ("" leaves the field empty), the calories as a whole number (more than 10000 becomes 10000),
// the unit and the meal by their names. A typed value goes into the working copy through the
// clamping setters, so that a later change of the serving scales it; a changed serving shows the
// values again. Other fields are not value fields: false.
bool editValueField(FoodValueFields& fields, FoodItem& working, FoodField field,
                    std::string_view text);

}  // namespace nutrovex
