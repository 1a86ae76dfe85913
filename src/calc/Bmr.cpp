#include "calc/Bmr.h"

#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {

const char* const kActivityLevelNames[6] = {"",
                                            "None : Bed",
                                            "Light : Sitting",
                                            "Moderate : Standing",
                                            "Heavy : Walking - Lifting",
                                            "Other : Manual Input of BMR"};

int16_t roundWhole(float value) {
    if (!(value >= 0.0f)) {  // negative or NaN
        value = 0.0f;
    } else if (value > static_cast<float>(kMaxShownWhole)) {
        value = static_cast<float>(kMaxShownWhole);
    }
    auto whole = static_cast<int16_t>(value);
    const float fraction = value - static_cast<float>(whole);
    if (static_cast<double>(fraction) >= 0.49) {
        ++whole;
    }
    return whole > kMaxShownWhole ? kMaxShownWhole : whole;
}

WholeResult weightToWhole(float pounds, bool toKg) {
    if (pounds < 0.0f) {
        return {};
    }
    return {true, roundWhole(toKg ? pounds * 0.4524887f : pounds)};
}

WholeResult heightToWhole(float inches, bool toCm) {
    if (inches < 0.0f) {
        return {};
    }
    return {true, roundWhole(toCm ? inches * 2.54f : inches)};
}

BmrResult computeBmr(const UserProfile& profile, uint16_t level, float weightPounds) {
    if (level == kLevelManual) {
        return {};
    }
    const WholeResult w = weightToWhole(weightPounds, true);
    const WholeResult h = heightToWhole(profile.height(), true);
    const int16_t age = profile.age();
    if (!w.ok || !h.ok || w.value < 0 || h.value < 0 || age < 0) {
        return {};
    }
    const double W = w.value;
    const double H = h.value;
    const double A = age;
    const double b = profile.gender() != 0 ? 655.0 + 9.6 * W + 1.8 * H - 4.7 * A
                                           : 66.0 + 13.7 * W + 5.0 * H - 6.8 * A;
    float result = static_cast<float>(b);
    switch (level) {
        case kLevelBed:
            break;
        case kLevelSitting:
            result *= 1.2f;
            break;
        case kLevelStanding:
            result *= 1.3f;
            break;
        case kLevelWalking:
            result *= profile.gender() != 0 ? 1.4f : 1.6f;
            break;
        default:
            return {true, 0};
    }
    return {true, static_cast<uint16_t>(static_cast<int32_t>(result))};
}

void setDayWeight(DayRecord& day, float pounds, const UserProfile& profile) {
    DayFields& m = day.rawFields();
    if (pounds < 0.0f) {
        m.level = 0;
        m.bmr = 0;
    } else {
        if (m.level == 0) {
            m.level = profile.defaultLevel();
        }
        if (m.level != kLevelManual) {
            const BmrResult r = computeBmr(profile, m.level, pounds);
            (void)day.setBmr(r.ok ? r.bmr : 0);
        }
    }
    m.weight = pounds;
    m.flags |= kDayFlagWeight;
}

}  // namespace nutrovex
