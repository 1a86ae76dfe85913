#include "core/ServingUnits.h"

#include "core/Names.h"
#include "core/ServingQuantity.h"

namespace nutrovex {

namespace {

constexpr std::array<const char*, kUnitCount> kUnitNames = {"pinch", "tsp", "tbsp",  "cup", "pint",
                                                            "qrt",   "gal", "fl oz", "l",   "ml",
                                                            "oz",    "lbs", "g",     "kg",  "item"};

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

// The family's base units themselves, copied without a multiplication.
bool copiesUnchanged(ServingUnit unit) {
    return unit == ServingUnit::FluidOunce || unit == ServingUnit::Gram ||
           unit == ServingUnit::Item;
}

}  // namespace

const char* unitName(ServingUnit unit) {
    return isKnownUnit(unit) ? kUnitNames[unitByte(unit)] : nullptr;
}

std::optional<ServingUnit> unitNamed(std::string_view text) {
    if (!text.empty() && text.size() <= 4 &&
        text.find_first_not_of("0123456789") == std::string_view::npos) {
        unsigned byte = 0;
        for (const char c : text) {
            byte = byte * 10 + static_cast<unsigned>(c - '0');
        }
        return byte < kUnitCount ? std::optional(unitFromByte(static_cast<uint8_t>(byte)))
                                 : std::nullopt;
    }
    for (const ServingUnit u : kServingUnits) {
        if (compareIgnoringCase(text, unitName(u)) == 0) {
            return u;
        }
    }
    return std::nullopt;
}

bool unitsCompatible(ServingUnit from, ServingUnit to) {
    return isVolumeUnit(from) == isVolumeUnit(to);
}

ConvertResult convertServing(float amount, ServingUnit from, ServingUnit to, float& out) {
    if (!unitsCompatible(from, to)) {
        return ConvertResult::Failed;
    }
    float base = 0.0f;
    if (isKnownUnit(from)) {
        base = copiesUnchanged(from)
                   ? amount
                   : static_cast<float>(static_cast<double>(amount) * kToBase[unitByte(from)]);
    }
    if (!isKnownUnit(to)) {
        return ConvertResult::NothingWritten;
    }
    out = copiesUnchanged(to)
              ? base
              : static_cast<float>(static_cast<double>(base) * kFromBase[unitByte(to)]);
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
