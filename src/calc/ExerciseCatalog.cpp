#include "calc/ExerciseCatalog.h"

#include <array>

namespace nutrovex {

namespace {

// One flat table of names: the types, then the variant and sub-variant lists. A list is a run of
// it, and runs share entries where they can ("General", "Cross-country" serves running's
// variants and, from its second entry, the snow-skiing sub-variants).
constexpr std::array<const char*, 87> kNames = {
    // 0: types
    "Aerobics", "Basketball", "Bicycling", "Boxing", "Football", "Frisbee", "Golf", "Gymnastics",
    "Handball", "Horseback Riding", "Martial Arts", "Racquetball", "Rock Climbing", "Rope Jumping",
    "Rowing", "Running", "Skating", "Skiing", "Softball", "Stair Machine", "Swimming", "Tennis",
    "Volleyball", "Walking", "Weight Lifting", "Other Activities", "User Defined Exercise",
    // 27: variants
    "General", "Step", "Water",                      // 27 aerobics
    "Stationary", "Outdoor",                         // 30 bicycling
    "Touch", "Competitive",                          // 32 football
    "Using Cart", "Carrying Clubs",                  // 34 golf
    "Casual", "Competitive",                         // 36 racquetball
    "Repelling", "Ascending",                        // 38 rock climbing
    "Stationary", "Whitewater Rafting", "Kayaking",  // 40 rowing
    "General", "Cross-country", "Downhill",          // 43 running; 44 snow skiing
    "Rollerblade", "Ice",                            // 46 skating
    "Snow", "Water", "Machine",                      // 48 skiing
    "General", "Water Polo",                         // 51 swimming
    "Non-competitive", "Competitive", "Beach",       // 53 volleyball
    "General", "Walk-Jog", "Hiking",                 // 56 walking
    "Moderate", "Vigorous",                          // 59 weight lifting, and two sub lists
    "Chopping Wood", "Housecleaning", "Mowing Lawn", "Gardening", "Shoveling", "Raking Leaves",
    "Sex",  // 61 other activities
    // 68: sub-variants
    "Low Impact", "High Impact",               // 68 aerobics general and step
    "BMX-Mtn.", "12-13.9 mph", "14-15.9 mph",  // 70 outdoor bicycling
    "5.0 mph", "5.2 mph", "6.0 mph", "6.7 mph", "7.5 mph", "8.6 mph", "10  mph",  // 73 running
    "3.5 mph", "4.0 mph", "4.5 mph",                                              // 80 walking
    "Power", "Manual",                                                            // 83 mowing
    "Snow Blower", "Manual",                                                      // 85 shoveling
};

struct Run {
    uint8_t start = 0;
    uint8_t count = 0;
};

// The variant list of each type, by type code.
constexpr std::array<Run, kExerciseTypeCount> kVariantRuns = {{
    {27, 3}, {}, {30, 2}, {},      {32, 2}, {},      {34, 2}, {},      {},
    {},      {}, {36, 2}, {38, 2}, {},      {40, 3}, {43, 2}, {46, 2}, {48, 3},
    {},      {}, {51, 2}, {},      {53, 3}, {56, 3}, {59, 2}, {61, 7}, {},
}};

// The only variants that have sub-variants.
struct SubRun {
    int16_t type;
    int16_t variant;
    Run run;
};
constexpr std::array<SubRun, 10> kSubVariantRuns = {{
    {0, 0, {68, 2}},
    {0, 1, {68, 2}},
    {2, 0, {59, 2}},
    {2, 1, {70, 3}},
    {14, 0, {59, 2}},
    {15, 0, {73, 7}},
    {17, 0, {44, 2}},
    {23, 0, {80, 3}},
    {25, 2, {83, 2}},
    {25, 4, {85, 2}},
}};

ExerciseNames names(Run run) {
    return ExerciseNames(kNames).subspan(run.start, run.count);
}

}  // namespace

ExerciseNames exerciseTypeNames() {
    return names({0, kExerciseTypeCount});
}

ExerciseNames exerciseVariantNames(int type) {
    if (type < 0 || type >= kExerciseTypeCount) {
        return {};
    }
    return names(kVariantRuns[static_cast<std::size_t>(type)]);
}

ExerciseNames exerciseSubVariantNames(int type, int variant) {
    for (const SubRun& s : kSubVariantRuns) {
        if (s.type == type && s.variant == variant) {
            return names(s.run);
        }
    }
    return {};
}

const char* exerciseTypeName(int type) {
    return type >= 0 && type < kExerciseTypeCount ? kNames[static_cast<std::size_t>(type)] : "";
}

void ExerciseCursor::setType(int16_t type) {
    m_selection.type = type;
    m_variants = exerciseVariantNames(type);
    setVariant(m_variants.empty() ? int16_t{-1} : int16_t{0});
}

void ExerciseCursor::setVariant(int16_t variant) {
    m_selection.variant = variant;
    m_subVariants = exerciseSubVariantNames(m_selection.type, variant);
    m_selection.sub = m_subVariants.empty() ? int16_t{-1} : int16_t{0};
}

void ExerciseCursor::select(const ExerciseSelection& selection) {
    setType(selection.type);
    setVariant(selection.variant);
    setSubVariant(selection.sub);
}

}  // namespace nutrovex
