#include "logbook/WeighIn.h"

#include "core/ServingUnits.h"
#include "core/UserProfile.h"

namespace nutrovex {

namespace {

constexpr int16_t kMaxWeightEntry = 999;

}  // namespace

int16_t wholeFromEdit(std::string_view text) {
    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > 32767) {
            return 0;  // not a 16-bit number: the screen reads nothing
        }
    }
    return static_cast<int16_t>(negative ? -value : value);
}

WholeResult dayWeightToWhole(float pounds, bool metric) {
    if (!metric || pounds < 0.0f) {
        return weightToWhole(pounds, false);
    }
    float kilograms = 0.0f;
    (void)convertServing(pounds, ServingUnit::Pound, ServingUnit::Kilogram, kilograms);
    return {true, roundWhole(kilograms)};
}

float storedWeightFromEntry(int16_t typed, bool metric) {
    if (typed == 0) {
        return kNotEntered;
    }
    if (typed > kMaxWeightEntry) {
        typed = kMaxWeightEntry;
    }
    float pounds = typed;
    if (metric) {
        (void)convertServing(static_cast<float>(typed), ServingUnit::Kilogram, ServingUnit::Pound,
                             pounds);
    }
    return pounds;
}

}  // namespace nutrovex
