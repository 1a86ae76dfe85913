#include "charts/RangeReport.h"

#include <algorithm>

#include "calc/Bmr.h"
#include "calc/FoodBudget.h"
#include "calc/Goals.h"
#include "calc/TargetProgress.h"
#include "calc/Totals.h"
#include "charts/WeightTrend.h"
#include "core/DayRecord.h"
#include "core/Format.h"

namespace nutrovex {

namespace {

// Weights below this are taken for slips, as the chart screen takes them.
constexpr int16_t kLowestCountedWeight = 10;

std::string shortDate(const CalendarDate& d) {
    return formatText("%d/%d/%d", static_cast<int>(d.month), static_cast<int>(d.day),
                      static_cast<int>(d.year));
}

std::optional<double> averageOf(double sum, int count) {
    return count > 0 ? std::optional<double>(sum / count) : std::nullopt;
}

// Adds one record of the date to its day.
void addRecord(ReportDay& day, const DayRecord& record, const UserProfile& profile) {
    const Nutrients totals = computeDayTotals(record);
    const ExerciseTotals exercise = exerciseTotals(record);
    bool hasFood = false;
    for (int g = 0; g < kFoodGroupCount && !hasFood; ++g) {
        hasFood = !record.group(g).empty();
    }
    day.recorded = true;
    day.hasFood = day.hasFood || hasFood;
    for (std::size_t n = 0; n < totals.size(); ++n) {
        day.totals[n] += totals[n];
    }
    day.exercise += exercise.calories;
    if (!day.weight && isWeighIn(record.weight())) {
        day.weight = record.weight();
    }
    if (!day.bmr && record.level() != kLevelNone) {
        day.bmr = record.bmr();
    }
    if (!day.budget) {
        day.budget = foodBudgetCalories(record, profile, exercise.calories);
    }
}

ReportBlock blockOf(const std::vector<ReportDay>& days, std::size_t first, std::size_t count,
                    const WeightTrend& trend) {
    ReportBlock block;
    block.first = first;
    block.count = count;
    for (std::size_t i = first; i < first + count; ++i) {
        block.sums.add(days[i]);
    }
    // Read as the chart screen reads its span: from the block's first day, or from the trend's
    // start when it starts inside the block, to its last day.
    if (const std::optional<int32_t> started = trend.firstDay(); started && count > 0) {
        block.trendRate =
            trend.weeklyRate(std::max(days[first].day, *started), days[first + count - 1].day);
    }
    return block;
}

}  // namespace

void ReportSums::add(const ReportDay& day) {
    if (day.hasFood) {
        for (std::size_t n = 0; n < food.size(); ++n) {
            food[n] += static_cast<double>(day.totals[n]);
        }
        ++foodDays;
    }
    if (day.recorded) {
        exercise += day.exercise;
        ++recordedDays;
    }
    if (day.bmr) {
        bmr += *day.bmr;
        ++bmrDays;
    }
    if (day.weight) {
        weight += static_cast<double>(*day.weight);
        ++weighIns;
    }
    if (day.budget) {
        budget += *day.budget;
        ++budgetDays;
    }
    for (std::size_t n = 0; n < day.targetGrams.size(); ++n) {
        if (day.targetGrams[n]) {
            targetGrams[n] += *day.targetGrams[n];
            ++targetDays[n];
        }
    }
    if (day.targetsJudged) {
        ++targetsJudged;
        targetsMet += day.targetsMet ? 1 : 0;
    }
}

std::optional<double> ReportSums::averageFood(int nutrient) const {
    if (nutrient < 0 || nutrient >= kNutrientCount) {
        return std::nullopt;
    }
    return averageOf(food[static_cast<std::size_t>(nutrient)], foodDays);
}

std::optional<double> ReportSums::averageExercise() const {
    return averageOf(exercise, recordedDays);
}

std::optional<double> ReportSums::averageBmr() const {
    return averageOf(bmr, bmrDays);
}

std::optional<double> ReportSums::averageWeight() const {
    return averageOf(weight, weighIns);
}

std::optional<double> ReportSums::averageBudget() const {
    return averageOf(budget, budgetDays);
}

std::optional<double> ReportSums::averageTargetGrams(TargetNutrient n) const {
    const auto i = static_cast<std::size_t>(n);
    return averageOf(targetGrams[i], targetDays[i]);
}

ReportRange weekEndingOn(const CalendarDate& last) {
    const CalendarDate to = CalendarDate::fromDmy(last.day, last.month, last.year);
    return {steppedDate(to, -(kReportWeekDays - 1)), to};
}

ReportRange monthEndingOn(const CalendarDate& last) {
    const CalendarDate to = CalendarDate::fromDmy(last.day, last.month, last.year);
    const CalendarDate before = labelStepBack(to, LabelStep::Month);
    return {steppedDate(before, 1), to};
}

std::optional<std::string> reportRangeProblem(const UserStore& store, const CalendarDate& from,
                                              const CalendarDate& to) {
    const int32_t first = dayNumber(from);
    const int32_t last = dayNumber(to);
    if (last < first) {
        return "the range ends before it starts: " + shortDate(from) + " to " + shortDate(to);
    }
    const bool any = std::any_of(store.days().begin(), store.days().end(), [&](const auto& day) {
        const int32_t d = dayNumber(day->date());
        return d >= first && d <= last;
    });
    if (!any) {
        return "the logbook has no days from " + shortDate(from) + " to " + shortDate(to);
    }
    return std::nullopt;
}

WeightHistory rangeWeightHistory(const UserStore& store, const CalendarDate& from,
                                 const CalendarDate& to, uint16_t labels) {
    WeightHistory h;
    const bool metric = store.profile.metric();
    h.startLine = weightToWhole(store.profile.startWeight(), metric).value;
    h.goalLine = weightToWhole(store.profile.goalWeight(), metric).value;
    const int32_t first = dayNumber(from);
    if (dayNumber(to) < first) {
        return h;
    }
    h.dayCount = static_cast<uint16_t>(std::min<int32_t>(dayNumber(to) - first + 1, 0xFFFF));
    const int32_t last = first + h.dayCount - 1;
    h.weights.assign(h.dayCount, -1);
    std::vector<bool> seen(h.dayCount, false);
    for (const auto& day : store.days()) {
        const int32_t d = dayNumber(day->date());
        if (d < first || d > last || seen[static_cast<std::size_t>(d - first)]) {
            continue;
        }
        // The first record of a date holds the day's weight, as the chart screen finds it.
        seen[static_cast<std::size_t>(d - first)] = true;
        const WholeResult whole = weightToWhole(day->weight(), false);
        if (whole.value >= kLowestCountedWeight) {
            h.weights[static_cast<std::size_t>(d - first)] = whole.value;
            h.highest = std::max(h.highest, whole.value);
            h.lowest = std::min(h.lowest, whole.value);
            ++h.points;
        }
    }
    const WeightScale scale = weightScale(h.highest, h.lowest);
    h.step = scale.step;
    h.lineCount = scale.lineCount;

    // Labels spread evenly over the days, the first and the last on the range's ends; each names
    // the day nearest its place.
    const int count = std::max<int>(std::min<int>(labels, h.dayCount), 1);
    h.labels.reserve(static_cast<std::size_t>(count));
    for (int k = 0; k < count; ++k) {
        const int64_t offset =
            count == 1 ? 0 : (int64_t{h.dayCount - 1} * k * 2 + (count - 1)) / (2 * (count - 1));
        const CalendarDate d = steppedDate(from, static_cast<int>(offset));
        h.labels.push_back(shortDate(d));
    }
    return h;
}

RangeReport makeRangeReport(const UserStore& store, const MacroTargets& targets,
                            const CalendarDate& from, const CalendarDate& to) {
    RangeReport r;
    r.profile = store.profile;
    r.plan = store.profile.plan();
    computeGoalPlan(r.plan, r.profile.startWeight(), r.profile.startDate(), r.profile.goalWeight(),
                    r.profile.goalDate());
    r.targets = targets;
    r.from = CalendarDate::fromDmy(from.day, from.month, from.year);
    r.to = CalendarDate::fromDmy(to.day, to.month, to.year);
    const int32_t first = dayNumber(r.from);
    const int32_t last = std::max(dayNumber(r.to), first);

    r.days.resize(static_cast<std::size_t>(last - first + 1));
    CalendarDate date = r.from;
    for (std::size_t i = 0; i < r.days.size(); ++i) {
        r.days[i].day = first + static_cast<int32_t>(i);
        r.days[i].date = date;
        date = steppedDate(date, 1);
    }
    for (const auto& record : store.days()) {
        const int32_t d = dayNumber(record->date());
        if (d >= first && d <= last) {
            addRecord(r.days[static_cast<std::size_t>(d - first)], *record, r.profile);
        }
    }
    if (targets.any()) {
        // As the meals screen judges a day: its food budget and its totals.
        for (ReportDay& day : r.days) {
            if (!day.hasFood) {
                continue;  // a target means nothing to a day that logged no food
            }
            const TargetProgress progress = targetProgress(targets, day.budget, day.totals);
            for (const TargetNutrient n : kTargetNutrients) {
                day.targetGrams[static_cast<std::size_t>(n)] = progress.of(n).grams;
            }
            day.targetsJudged = true;
            day.targetsMet = progress.dayWithin;
        }
    }

    const WeightTrend trend = WeightTrend::ofDays(store.days());
    const std::vector<std::optional<float>> series =
        trend.series(first, static_cast<int>(r.days.size()));
    for (std::size_t i = 0; i < r.days.size(); ++i) {
        r.days[i].trend = series[i];
        if (series[i]) {
            r.trendStart = r.trendStart ? r.trendStart : series[i];
            r.trendEnd = series[i];
        }
    }

    for (std::size_t start = 0; start < r.days.size(); start += kReportWeekDays) {
        const std::size_t count = std::min<std::size_t>(kReportWeekDays, r.days.size() - start);
        r.weeks.push_back(blockOf(r.days, start, count, trend));
    }
    r.whole = blockOf(r.days, 0, r.days.size(), trend);
    r.maintenance = measureMaintenance(store.days(), r.to);
    r.chart = rangeWeightHistory(store, r.from, r.to);
    r.chartTrend = series;
    return r;
}

}  // namespace nutrovex
