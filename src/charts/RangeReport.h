#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "charts/MeasuredMaintenance.h"
#include "charts/WeightHistory.h"
#include "core/CalendarDate.h"
#include "core/FoodItem.h"
#include "core/GoalPlan.h"
#include "core/MacroTargets.h"
#include "core/UserProfile.h"
#include "core/UserStore.h"

namespace nutrovex {

// The figures of a person's logbook over a range of dates, for a report handed to a dietitian,
// a coach or a doctor. Every figure is the one the rest of the program shows: the day totals of
// the meals screen, the exercise of the exercise log, the stored BMR, the food budget of the
// budget page, the weight trend of the chart and the maintenance of the food budget page.

// One calendar day of the range. Several records of one date make one day: their foods and
// exercises add up, the weigh-in, BMR and budget are the first record's that has them.
struct ReportDay {
    int32_t day = 0;  // the date's day number
    CalendarDate date;
    bool recorded = false;  // the logbook has a record of the date
    bool hasFood = false;   // a food is logged, so its totals are intake and not a blank
    Nutrients totals{};
    uint32_t exercise = 0;          // calories of the day's exercises
    std::optional<int16_t> bmr;     // none while the day has no activity level
    std::optional<float> weight;    // pounds; none without a weigh-in
    std::optional<float> trend;     // pounds; none before the first weigh-in
    std::optional<int32_t> budget;  // the food budget, calories
    // Each set target in grams for the day (a percentage needs the day's budget).
    std::array<std::optional<double>, kTargetNutrientCount> targetGrams{};
    bool targetsJudged = false;  // a target is set and the day has food
    bool targetsMet = false;     // every set target met
};

// What a stretch of days adds up to. Each figure is averaged over the days that have it: the
// food over the days with food, exercise over the recorded days, weight over the weigh-ins, so a
// day left blank never counts as a zero.
struct ReportSums {
    std::array<double, kNutrientCount> food{};
    int foodDays = 0;
    double exercise = 0.0;
    int recordedDays = 0;
    double bmr = 0.0;
    int bmrDays = 0;
    double weight = 0.0;  // pounds
    int weighIns = 0;
    double budget = 0.0;
    int budgetDays = 0;
    std::array<double, kTargetNutrientCount> targetGrams{};
    std::array<int, kTargetNutrientCount> targetDays{};
    int targetsJudged = 0;  // days with food while a target is set
    int targetsMet = 0;

    void add(const ReportDay& day);
    [[nodiscard]] std::optional<double> averageFood(int nutrient) const;
    [[nodiscard]] std::optional<double> averageExercise() const;
    [[nodiscard]] std::optional<double> averageBmr() const;
    [[nodiscard]] std::optional<double> averageWeight() const;
    [[nodiscard]] std::optional<double> averageBudget() const;
    [[nodiscard]] std::optional<double> averageTargetGrams(TargetNutrient n) const;
};

// A run of consecutive days of the report: a week, or the whole range.
struct ReportBlock {
    std::size_t first = 0;  // index into RangeReport::days
    std::size_t count = 0;
    ReportSums sums;
    // The weight trend's change per week from the block's first day to its last, pounds.
    std::optional<double> trendRate;
};

// Weeks are seven days counted from the first day of the range; the last may be shorter.
inline constexpr int kReportWeekDays = 7;
// The most date labels under the report's chart.
inline constexpr uint16_t kReportChartLabels = 7;

struct RangeReport {
    UserProfile profile;
    GoalPlan plan;  // computed afresh from the goal fields
    MacroTargets targets;
    CalendarDate from;
    CalendarDate to;
    std::vector<ReportDay> days;  // one per calendar day, from..to
    std::vector<ReportBlock> weeks;
    ReportBlock whole;
    // The 28 days ending at the range's last day, as the food budget page measures them.
    Maintenance maintenance;
    std::optional<float> trendStart;  // the trend on the first day of the range that has one
    std::optional<float> trendEnd;
    // The historic weight chart of the range, and its trend line, one value a day.
    WeightHistory chart;
    std::vector<std::optional<float>> chartTrend;
};

// The ranges offered besides a custom one, ending on a given day: the seven days to it, and the
// month to it (from the day after the same date a month earlier, as the chart steps a month).
struct ReportRange {
    CalendarDate from;
    CalendarDate to;
};
[[nodiscard]] ReportRange weekEndingOn(const CalendarDate& last);
[[nodiscard]] ReportRange monthEndingOn(const CalendarDate& last);

// Why a range cannot be reported, in one line; nullopt when it can. A range ending before it
// starts, or holding no record of the logbook, cannot.
[[nodiscard]] std::optional<std::string> reportRangeProblem(const UserStore& store,
                                                            const CalendarDate& from,
                                                            const CalendarDate& to);

// The report of from..to; the range must pass reportRangeProblem. Only reads the store.
[[nodiscard]] RangeReport makeRangeReport(const UserStore& store, const MacroTargets& targets,
                                          const CalendarDate& from, const CalendarDate& to);

// The historic chart's weights from..to, labelled with up to `labels` dates spread evenly, scaled
// and with the reference lines as the chart screen has them.
[[nodiscard]] WeightHistory rangeWeightHistory(const UserStore& store, const CalendarDate& from,
                                               const CalendarDate& to,
                                               uint16_t labels = kReportChartLabels);

}  // namespace nutrovex
