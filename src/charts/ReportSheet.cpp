#include "charts/ReportSheet.h"

#include <algorithm>
#include <cmath>

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "charts/WeightTrend.h"
#include "core/Format.h"

namespace nutrovex {

const char* const kReportMissing = "\x97";
const char* const kReportNoFood = "no food logged";
const char* const kReportNoEntry = "no entry in the logbook";

namespace {

// Pounds per kilogram, as weights are shown everywhere.
constexpr double kPoundsPerKilogram = 2.21;

// "12,345.6": thousands grouped, rounded as printf rounds.
std::string grouped(double value, int decimals) {
    if (!std::isfinite(value)) {
        return kReportMissing;
    }
    std::string text = formatText("%.*f", decimals, value);
    const std::size_t begin = text[0] == '-' ? 1 : 0;
    std::size_t end = text.find('.');
    if (end == std::string::npos) {
        end = text.size();
    }
    for (std::size_t at = end; at > begin + 3; at -= 3) {
        text.insert(at - 3, 1, ',');
    }
    return text;
}

std::string calories(double value) {
    return grouped(value, 0);
}

std::string grams(double value) {
    return grouped(value, 1);
}

std::string weightText(double pounds, bool metric) {
    return grouped(metric ? pounds / kPoundsPerKilogram : pounds, 1);
}

std::string dayDate(const CalendarDate& d) {
    const int weekday = weekdayOf(packDate(d));
    const std::string name = weekday >= 0 && weekday < 7 ? kWeekdayNames[weekday] : "";
    return name.substr(0, 3) + formatText(" %d/%d/%d", static_cast<int>(d.month),
                                          static_cast<int>(d.day), static_cast<int>(d.year));
}

std::string shortDate(const CalendarDate& d) {
    return formatText("%d/%d/%d", static_cast<int>(d.month), static_cast<int>(d.day),
                      static_cast<int>(d.year));
}

std::string countText(int count, const char* one, const char* many) {
    return grouped(count, 0) + ' ' + (count == 1 ? one : many);
}

ReportCell cell(std::string text) {
    return {std::move(text), 1, false};
}

ReportCell missingCell(std::string text = kReportMissing, uint16_t span = 1) {
    return {std::move(text), span, true};
}

ReportCell optionalCell(const std::optional<double>& value, std::string (*format)(double)) {
    return value ? cell(format(*value)) : missingCell();
}

// The nutrient a food column shows, and the target beside it.
struct NutrientColumn {
    ReportColumn column;
    int nutrient;
    std::optional<TargetNutrient> target;
};
constexpr NutrientColumn kNutrientColumns[] = {
    {ReportColumn::Calories, kCalories, std::nullopt},
    {ReportColumn::Carbohydrate, kCarbohydrate, TargetNutrient::Carbohydrate},
    {ReportColumn::Fiber, kFiber, TargetNutrient::Fiber},
    {ReportColumn::Protein, kProtein, TargetNutrient::Protein},
    {ReportColumn::Fat, kFat, TargetNutrient::Fat},
    {ReportColumn::SaturatedFat, kSaturatedFat, TargetNutrient::SaturatedFat},
};

bool hasTarget(const RangeReport& r, const NutrientColumn& c) {
    return c.target && r.targets.of(*c.target).has_value();
}

// The columns of the food: the six nutrients and the targets beside them.
uint16_t foodColumnCount(const RangeReport& r) {
    uint16_t n = 0;
    for (const NutrientColumn& c : kNutrientColumns) {
        n = static_cast<uint16_t>(n + (hasTarget(r, c) ? 2 : 1));
    }
    return n;
}

std::string nutrientText(int nutrient, double value) {
    return nutrient == kCalories ? calories(value) : grams(value);
}

std::string targetSetText(TargetNutrient n, const MacroTarget& t) {
    if (t.kind == MacroTarget::Kind::Percent) {
        return formatText("%s%% of the food budget", grouped(t.value, 1).c_str());
    }
    const char* bound = n == TargetNutrient::Fiber          ? "at least "
                        : n == TargetNutrient::SaturatedFat ? "at most "
                                                            : "";
    return formatText("%s%s g a day", bound, grouped(t.value, 1).c_str());
}

std::string rateText(const std::optional<double>& rate, bool metric) {
    if (!rate) {
        return kReportMissing;
    }
    const double shown = metric ? *rate / kPoundsPerKilogram : *rate;
    const double tenths = std::round(shown * 10.0);
    return formatText("%s%.1f/wk", tenths > 0.0 ? "+" : "", tenths == 0.0 ? 0.0 : tenths / 10.0);
}

std::string personName(const UserProfile& p) {
    return std::string(p.displayName().empty() ? p.userName() : p.displayName());
}

}  // namespace

std::string reportTitle(const RangeReport& report) {
    return "Nutrovex report: " + personName(report.profile);
}

std::string reportRangeText(const RangeReport& report) {
    return longDateText(report.from) + " to " + longDateText(report.to);
}

std::vector<BudgetSection> reportSummary(const RangeReport& report) {
    const UserProfile& p = report.profile;
    const bool metric = p.metric();
    const char* unit = weightUnitLabel(metric);
    std::vector<BudgetSection> sections;

    std::string profile = p.gender() == 1 ? "female" : "male";
    if (p.age() >= 0) {
        profile += formatText(", %d years", static_cast<int>(p.age()));
    }
    if (const WholeResult h = heightToWhole(p.height(), metric); h.ok && h.value >= 0) {
        profile += formatText(", %d %s", static_cast<int>(h.value), metric ? "cm" : "in");
    }
    sections.push_back({"Person", {{"Name:", personName(p)}, {"Profile:", profile}}});

    const ReportSums& all = report.whole.sums;
    const std::string days = countText(static_cast<int>(report.days.size()), "day", "days") + ": " +
                             countText(all.recordedDays, "with an entry", "with entries") + ", " +
                             grouped(all.foodDays, 0) + " with food logged, " +
                             countText(all.weighIns, "weigh-in", "weigh-ins");
    sections.push_back({"Range", {{"Dates:", reportRangeText(report)}, {"Days:", days}}});

    const auto goalWeight = [&](float pounds, const char* word, const CalendarDate& date) {
        const WholeResult w = weightToWhole(pounds, metric);
        if (!w.ok || w.value < 0) {
            return std::string("not entered");
        }
        return formatText("%d %s %s ", static_cast<int>(w.value), unit, word) + longDateText(date);
    };
    sections.push_back({"Goal and plan",
                        {{"Start:", goalWeight(p.startWeight(), "on", p.startDate())},
                         {"Goal:", goalWeight(p.goalWeight(), "by", p.goalDate())},
                         {"", goalSentence(report.plan, metric)}}});

    if (report.targets.any()) {
        BudgetSection targets{"Daily targets", {}};
        for (const TargetNutrient n : kTargetNutrients) {
            if (const auto& t = report.targets.of(n)) {
                targets.rows.push_back({std::string(targetLabel(n)) + ':', targetSetText(n, *t)});
            }
        }
        sections.push_back(std::move(targets));
    }

    BudgetSection trend{"Weight trend", {}};
    if (report.trendStart && report.trendEnd) {
        trend.rows.push_back({"Trend:", weightText(*report.trendStart, metric) + " to " +
                                            weightText(*report.trendEnd, metric) + ' ' + unit});
    } else {
        trend.rows.push_back({"", "No weigh-in on or before these days starts a trend."});
    }
    if (report.whole.trendRate) {
        trend.rows.push_back({"Rate:", weeklyRateText(*report.whole.trendRate, metric)});
    }
    sections.push_back(std::move(trend));

    BudgetSection measured = measuredSection(report.maintenance, p);
    measured.heading = "Maintenance measured to " + shortDate(report.to);
    sections.push_back(std::move(measured));
    return sections;
}

std::string reportChartCaption(const RangeReport& report) {
    std::string caption = "Historic weight from " + shortDate(report.from) + " to " +
                          shortDate(report.to) + ", with the trend";
    if (report.whole.trendRate) {
        caption += " (" + weeklyRateText(*report.whole.trendRate, report.profile.metric()) + ")";
    }
    return caption;
}

std::vector<ReportColumnHead> reportColumns(const RangeReport& report) {
    const char* unit = weightUnitLabel(report.profile.metric());
    std::vector<ReportColumnHead> columns{{ReportColumn::Date, "Date", ""}};
    const char* heads[] = {"Calories", "Carb", "Fiber", "Protein", "Fat", "Sat fat"};
    for (std::size_t i = 0; i < std::size(kNutrientColumns); ++i) {
        const NutrientColumn& c = kNutrientColumns[i];
        columns.push_back({c.column, heads[i], c.nutrient == kCalories ? "cal" : "g"});
        if (hasTarget(report, c)) {
            columns.push_back({static_cast<ReportColumn>(static_cast<int>(c.column) + 1),
                               *c.target == TargetNutrient::SaturatedFat ? "limit" : "target",
                               "g"});
        }
    }
    columns.push_back({ReportColumn::Exercise, "Exercise", "cal"});
    columns.push_back({ReportColumn::Bmr, "BMR", "cal"});
    columns.push_back({ReportColumn::Weight, "Weight", unit});
    columns.push_back({ReportColumn::Trend, "Trend", unit});
    columns.push_back({ReportColumn::Budget, "Budget", "cal"});
    if (report.targets.any()) {
        columns.push_back({ReportColumn::TargetsMet, "Targets", "met"});
    }
    return columns;
}

std::vector<ReportRow> reportDayRows(const RangeReport& report, const ReportBlock& block) {
    const bool metric = report.profile.metric();
    const bool targets = report.targets.any();
    const auto rest = static_cast<uint16_t>(reportColumns(report).size() - 1);
    std::vector<ReportRow> rows;
    rows.reserve(block.count);
    for (std::size_t i = block.first; i < block.first + block.count; ++i) {
        const ReportDay& d = report.days[i];
        ReportRow row{ReportRowKind::Day, {cell(dayDate(d.date))}};
        if (!d.recorded) {
            row.cells.push_back(missingCell(kReportNoEntry, rest));
            rows.push_back(std::move(row));
            continue;
        }
        if (!d.hasFood) {
            row.cells.push_back(missingCell(kReportNoFood, foodColumnCount(report)));
        } else {
            for (const NutrientColumn& c : kNutrientColumns) {
                row.cells.push_back(cell(nutrientText(
                    c.nutrient,
                    static_cast<double>(d.totals[static_cast<std::size_t>(c.nutrient)]))));
                if (hasTarget(report, c)) {
                    row.cells.push_back(
                        optionalCell(d.targetGrams[static_cast<std::size_t>(*c.target)], grams));
                }
            }
        }
        row.cells.push_back(cell(calories(d.exercise)));
        row.cells.push_back(d.bmr ? cell(grouped(*d.bmr, 0)) : missingCell());
        row.cells.push_back(d.weight ? cell(weightText(*d.weight, metric)) : missingCell());
        row.cells.push_back(d.trend ? cell(weightText(*d.trend, metric)) : missingCell());
        row.cells.push_back(d.budget ? cell(calories(*d.budget)) : missingCell());
        if (targets) {
            row.cells.push_back(!d.hasFood     ? missingCell()
                                : d.targetsMet ? cell("yes")
                                               : cell("no"));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<ReportRow> reportBlockRows(const RangeReport& report, const ReportBlock& block,
                                       bool whole) {
    const bool metric = report.profile.metric();
    const ReportSums& s = block.sums;
    ReportRow total{whole ? ReportRowKind::RangeTotal : ReportRowKind::WeekTotal,
                    {cell(whole ? "Range total" : "Week total")}};
    ReportRow average{whole ? ReportRowKind::RangeAverage : ReportRowKind::WeekAverage,
                      {cell(whole ? "Range average" : "Week average")}};
    for (const NutrientColumn& c : kNutrientColumns) {
        const auto n = static_cast<std::size_t>(c.nutrient);
        total.cells.push_back(s.foodDays > 0 ? cell(nutrientText(c.nutrient, s.food[n]))
                                             : missingCell());
        const std::optional<double> mean = s.averageFood(c.nutrient);
        average.cells.push_back(mean ? cell(nutrientText(c.nutrient, *mean)) : missingCell());
        if (hasTarget(report, c)) {
            total.cells.push_back(cell(""));
            average.cells.push_back(optionalCell(s.averageTargetGrams(*c.target), grams));
        }
    }
    total.cells.push_back(s.recordedDays > 0 ? cell(calories(s.exercise)) : missingCell());
    average.cells.push_back(optionalCell(s.averageExercise(), calories));
    for (int k = 0; k < 4; ++k) {
        total.cells.push_back(cell(""));  // BMR, weight, trend and budget do not add up
    }
    average.cells.push_back(optionalCell(s.averageBmr(), calories));
    const std::optional<double> weight = s.averageWeight();
    average.cells.push_back(weight ? cell(weightText(*weight, metric)) : missingCell());
    average.cells.push_back(block.trendRate ? cell(rateText(block.trendRate, metric))
                                            : missingCell());
    average.cells.push_back(optionalCell(s.averageBudget(), calories));
    if (report.targets.any()) {
        total.cells.push_back(s.targetsJudged > 0
                                  ? cell(formatText("%d of %d", s.targetsMet, s.targetsJudged))
                                  : missingCell());
        average.cells.push_back(cell(""));
    }
    return {std::move(total), std::move(average)};
}

std::vector<ReportRow> reportRows(const RangeReport& report) {
    std::vector<ReportRow> rows;
    rows.reserve(report.days.size() + 2 * report.weeks.size() + 2);
    for (const ReportBlock& week : report.weeks) {
        for (ReportRow& row : reportDayRows(report, week)) {
            rows.push_back(std::move(row));
        }
        for (ReportRow& row : reportBlockRows(report, week, false)) {
            rows.push_back(std::move(row));
        }
    }
    if (report.weeks.size() > 1) {
        for (ReportRow& row : reportBlockRows(report, report.whole, true)) {
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

std::vector<std::size_t> reportPageStarts(const std::vector<ReportRow>& rows,
                                          std::size_t firstPageRows, std::size_t pageRows) {
    pageRows = std::max<std::size_t>(pageRows, 2);
    std::vector<std::size_t> starts;
    std::size_t start = 0;
    std::size_t room = firstPageRows > 0 ? firstPageRows : pageRows;
    while (start < rows.size()) {
        starts.push_back(start);
        std::size_t end = std::min(start + room, rows.size());
        const auto isTotal = [](ReportRowKind k) {
            return k == ReportRowKind::WeekTotal || k == ReportRowKind::RangeTotal;
        };
        if (end > start + 1 && end < rows.size() && isTotal(rows[end - 1].kind)) {
            --end;
        }
        start = end;
        room = pageRows;
    }
    return starts;
}

std::vector<std::string> reportNotes(const RangeReport& report) {
    const char* unit = weightUnitLabel(report.profile.metric());
    std::vector<std::string> notes = {
        std::string("Weeks are seven days from the first day of the range. Totals add up the "
                    "days with food logged; each average is over the days that have the figure: "
                    "food over the days with food logged, exercise over the days with an entry, "
                    "weight over the weigh-ins. A day without food is not a day of no food: it "
                    "is left out."),
        std::string(kReportMissing) +
            " means the day has no such figure: no weigh-in, no activity level for a BMR, or "
            "no food budget (which needs the weight, the profile and a goal plan).",
        std::string("Weight and trend in ") + unit +
            "; the trend is the smoothed weight of the historic chart, and its rate is per week."};
    if (report.targets.any()) {
        notes.push_back(
            "A target set as a share of the food budget is in grams of the day's budget. A day "
            "meets its targets when protein, carbohydrate and fat are within 10% of their grams, "
            "fiber reaches its grams and saturated fat stays at or under its limit.");
    }
    return notes;
}

}  // namespace nutrovex
