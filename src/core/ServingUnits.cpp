#include "core/ServingUnits.h"

#include "core/Names.h"

namespace nutrovex {

const std::array<const char*, kUnitCount> kUnitNames = {"pinch", "tsp", "tbsp",  "cup", "pint",
                                                        "qrt",   "gal", "fl oz", "l",   "ml",
                                                        "oz",    "lbs", "g",     "kg",  "item"};

namespace {

// To the family's base unit (fluid ounce, gram) and back, as doubles.
constexpr double kToBase[kUnitCount] = {0.020833333333333332,
                                        0.16666666666666666,
                                        0.5,
                                        8.0,
                                        16.0,
                                        32.0,
                                        128.0,
                                        1.0,
                                        33.81402,
                                        0.03381402,
                                        28.34952,
                                        453.59232,
                                        1.0,
                                        1000.0,
                                        1.0};
constexpr double kFromBase[kUnitCount] = {48.0,
                                          6.0,
                                          2.0,
                                          0.125,
                                          0.0625,
                                          0.03125,
                                          0.0078125,
                                          1.0,
                                          0.029573531925514922,
                                          29.57353192551492,
                                          0.03527396583786957,
                                          0.002204622864866848,
                                          1.0,
                                          0.001,
                                          1.0};

bool copiesUnchanged(unsigned unit) {
    return unit == 7 || unit == 12 || unit == 14;
}

}  // namespace

std::optional<uint8_t> unitNamed(std::string_view text) {
    if (!text.empty() && text.size() <= 4 &&
        text.find_first_not_of("0123456789") == std::string_view::npos) {
        unsigned code = 0;
        for (const char c : text) {
            code = code * 10 + static_cast<unsigned>(c - '0');
        }
        return code < kUnitCount ? std::optional<uint8_t>(static_cast<uint8_t>(code))
                                 : std::nullopt;
    }
    for (std::size_t u = 0; u < kUnitNames.size(); ++u) {
        if (compareIgnoringCase(text, kUnitNames[u]) == 0) {
            return static_cast<uint8_t>(u);
        }
    }
    return std::nullopt;
}

bool unitsCompatible(unsigned from, unsigned to) {
    return (from < 10) == (to < 10);
}

ConvertResult convertServing(float amount, unsigned from, unsigned to, float& out) {
    if (!unitsCompatible(from, to)) {
        return ConvertResult::Failed;
    }
    float base = 0.0f;
    if (from < kUnitCount) {
        base = copiesUnchanged(from)
                   ? amount
                   : static_cast<float>(static_cast<double>(amount) * kToBase[from]);
    }
    if (to >= kUnitCount) {
        return ConvertResult::NothingWritten;
    }
    out =
        copiesUnchanged(to) ? base : static_cast<float>(static_cast<double>(base) * kFromBase[to]);
    return ConvertResult::Converted;
}

float servingFactor(const ServingQuantity& reference, const ServingQuantity& logged) {
    float converted = 0.0f;
    if (convertServing(reference.amount, reference.unit, logged.unit, converted) ==
        ConvertResult::Failed) {
        return 1.0f;
    }
    if (converted == 0.0f || logged.amount == 0.0f) {
        return 0.0f;
    }
    return logged.amount / converted;
}

}  // namespace nutrovex
