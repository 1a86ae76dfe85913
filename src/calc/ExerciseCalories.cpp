#include "calc/ExerciseCalories.h"

#include <array>

namespace nutrovex {

namespace {

enum Sign : bool { kMinus = false, kPlus = true };

// calories = (minutes * A/59 -+ B/59) * weight * C, in double precision. A/59 and B/59 are
// the nearest doubles to those fractions, as the division gives them.
struct Formula {
    int16_t type;
    int16_t variant;  // -1: the type has no variants
    int16_t sub;      // -1: the variant has no sub-variants
    int16_t a;
    Sign sign;
    int16_t b;
    double c;
};

// Horseback riding (9) is computed as gymnastics (7), and rope jumping (13) as martial arts
// (10), so those two types have no rows of their own.
constexpr std::array<Formula, 66> kFormulas = {{
    {0, 0, 0, 247, kMinus, 11, 0.010514041395394033},
    {0, 0, 1, 314, kMinus, 19, 0.010535973698294976},
    {0, 1, 0, 314, kMinus, 19, 0.010535973698294976},
    {0, 1, 1, 448, kPlus, 24, 0.010526315789473684},
    {0, 2, -1, 179, kMinus, 2, 0.010560171535781291},
    {1, -1, -1, 359, kMinus, 4, 0.010517875041764116},
    {2, 0, 0, 314, kMinus, 19, 0.010535973698294976},
    {2, 0, 1, 471, kMinus, 1, 0.010519883904475788},
    {2, 1, 0, 382, kMinus, 28, 0.010510435001257229},
    {2, 1, 1, 359, kMinus, 5, 0.010517875041764116},
    {2, 1, 2, 448, kPlus, 24, 0.010526315789473684},
    {3, -1, -1, 403, kPlus, 10, 0.010541344437834622},
    {4, 0, -1, 359, kMinus, 5, 0.010517875041764116},
    {4, 1, -1, 403, kPlus, 10, 0.010541344437834622},
    {5, -1, -1, 135, kMinus, 17, 0.010503827666013887},
    {6, 0, -1, 157, kPlus, 20, 0.01048780487804878},
    {6, 1, -1, 247, kMinus, 11, 0.010514041395394033},
    {7, -1, -1, 179, kMinus, 2, 0.010560171535781291},
    {8, -1, -1, 538, kMinus, 7, 0.010531948098274402},
    {10, -1, -1, 448, kPlus, 24, 0.010526315789473684},
    {11, 0, -1, 314, kMinus, 19, 0.010535973698294976},
    {11, 1, -1, 448, kPlus, 24, 0.010526315789473684},
    {12, 0, -1, 359, kMinus, 5, 0.010517875041764116},
    {12, 1, -1, 494, kMinus, 22, 0.010514041395394033},
    {14, 0, 0, 314, kMinus, 19, 0.010535973698294976},
    {14, 0, 1, 382, kMinus, 28, 0.010510435001257229},
    {14, 1, -1, 224, kPlus, 12, 0.010526315789473684},
    {14, 2, -1, 224, kPlus, 12, 0.010526315789473684},
    {15, 0, 0, 359, kMinus, 5, 0.010517875041764116},
    {15, 0, 1, 403, kPlus, 10, 0.010541344437834622},
    {15, 0, 2, 448, kPlus, 24, 0.010526315789473684},
    {15, 0, 3, 494, kMinus, 22, 0.010514041395394033},
    {15, 0, 4, 560, kPlus, 30, 0.010526315789473684},
    {15, 0, 5, 650, kMinus, 1, 0.010530976716726322},
    {15, 0, 6, 739, kPlus, 28, 0.010534509600415153},
    {15, 1, -1, 403, kPlus, 10, 0.010541344437834622},
    {16, 0, -1, 314, kMinus, 19, 0.010535973698294976},
    {16, 1, -1, 314, kMinus, 19, 0.010535973698294976},
    {17, 0, 0, 359, kMinus, 5, 0.010517875041764116},
    {17, 0, 1, 269, kPlus, 26, 0.010503827666013887},
    {17, 1, -1, 269, kPlus, 26, 0.010503827666013887},
    {17, 2, -1, 426, kMinus, 13, 0.010533430969413619},
    {18, -1, -1, 224, kPlus, 12, 0.010526315789473684},
    {19, -1, -1, 269, kPlus, 26, 0.010503827666013887},
    {20, 0, -1, 269, kPlus, 26, 0.010503827666013887},
    {20, 1, -1, 448, kPlus, 24, 0.010526315789473684},
    {21, -1, -1, 314, kMinus, 19, 0.010535973698294976},
    {22, 0, -1, 135, kMinus, 17, 0.010503827666013887},
    {22, 1, -1, 179, kMinus, 2, 0.010560171535781291},
    {22, 2, -1, 359, kMinus, 5, 0.010517875041764116},
    {23, 0, 0, 179, kMinus, 2, 0.010560171535781291},
    {23, 0, 1, 202, kMinus, 25, 0.010541344437834622},
    {23, 0, 2, 224, kPlus, 12, 0.010526315789473684},
    {23, 1, -1, 269, kPlus, 26, 0.010503827666013887},
    {23, 2, -1, 269, kPlus, 26, 0.010503827666013887},
    {24, 0, -1, 135, kMinus, 17, 0.010503827666013887},
    {24, 1, -1, 269, kPlus, 26, 0.010503827666013887},
    {25, 0, -1, 269, kPlus, 26, 0.010503827666013887},
    {25, 1, -1, 157, kPlus, 20, 0.01048780487804878},
    {25, 2, 0, 202, kMinus, 25, 0.010541344437834622},
    {25, 2, 1, 247, kMinus, 11, 0.010514041395394033},
    {25, 3, -1, 202, kMinus, 25, 0.010541344437834622},
    {25, 4, 0, 202, kMinus, 25, 0.010541344437834622},
    {25, 4, 1, 269, kPlus, 26, 0.010503827666013887},
    {25, 5, -1, 179, kMinus, 2, 0.010560171535781291},
    {25, 6, -1, 67, kMinus, 8, 0.010616929698708751},
}};

int16_t formulaType(int16_t type) {
    return type == 9 ? int16_t{7} : type == 13 ? int16_t{10} : type;
}

const Formula* findFormula(ExerciseSelection s) {
    if (s.type < 0 || s.type >= kUserDefinedExercise) {
        return nullptr;
    }
    const auto variants = exerciseVariantNames(s.type);
    if (variants.empty()) {
        s.variant = -1;
    } else if (s.variant < 0 || static_cast<std::size_t>(s.variant) >= variants.size()) {
        return nullptr;
    }
    const auto subs = exerciseSubVariantNames(s.type, s.variant);
    if (subs.empty()) {
        s.sub = -1;
    } else if (s.sub < 0 || static_cast<std::size_t>(s.sub) >= subs.size()) {
        return nullptr;
    }
    const int16_t type = formulaType(s.type);
    for (const Formula& f : kFormulas) {
        if (f.type == type && f.variant == s.variant && f.sub == s.sub) {
            return &f;
        }
    }
    return nullptr;
}

}  // namespace

ExerciseCaloriesResult computeExerciseCalories(const ExerciseSelection& selection,
                                               int16_t weightPounds, int16_t minutes) {
    if (minutes <= 0 || weightPounds <= 0 || selection.type == kUserDefinedExercise) {
        return {};
    }
    const Formula* f = findFormula(selection);
    if (f == nullptr) {
        return {true, 0};
    }
    const double aPerMinute = f->a / 59.0;
    const double b = f->b / 59.0;
    const double x = f->sign == kPlus ? minutes * aPerMinute + b : minutes * aPerMinute - b;
    // Narrowed to single precision before the truncation, as the calories always were.
    const auto burnt = static_cast<float>(x * weightPounds * f->c);
    const auto whole = static_cast<uint32_t>(burnt);
    return {true,
            whole > kMaxExerciseCalories ? kMaxExerciseCalories : static_cast<uint16_t>(whole)};
}

}  // namespace nutrovex
