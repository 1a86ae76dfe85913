#include "forms/logbook/ReportForm.h"

#include <utility>

#include "core/Format.h"
#include "core/UserStore.h"
#include "storage/FileIo.h"

namespace nutrovex {

namespace {

constexpr const char* kExportCaption = "Export PDF";

CalendarDate dayOnly(const CalendarDate& date) {
    return CalendarDate::fromDmy(date.day, date.month, date.year);
}

std::string isoDate(const CalendarDate& d) {
    return formatText("%04d-%02d-%02d", static_cast<int>(d.year), static_cast<int>(d.month),
                      static_cast<int>(d.day));
}

std::string slashDate(const CalendarDate& d) {
    return formatText("%d/%d/%d", static_cast<int>(d.month), static_cast<int>(d.day),
                      static_cast<int>(d.year));
}

}  // namespace

ReportForm::ReportForm(const DayCursor& days, const MacroTargets& targets,
                       std::string targetsFailure)
    : m_store(&days.store()), m_targets(&targets), m_targetsFailure(std::move(targetsFailure)) {
    spanTo(dayOnly(days.currentDate()));
}

void ReportForm::spanTo(const CalendarDate& last) {
    if (m_span == ReportSpan::Custom) {
        m_to = last;
        return;
    }
    const ReportRange range = m_span == ReportSpan::Week ? weekEndingOn(last) : monthEndingOn(last);
    m_from = range.from;
    m_to = range.to;
}

std::string ReportForm::problem() const {
    if (!m_targetsFailure.empty()) {
        return m_targetsFailure;
    }
    return reportRangeProblem(*m_store, m_from, m_to).value_or(std::string());
}

ReportFormView ReportForm::view() const {
    ReportFormView v;
    v.span = m_span;
    v.fromText = longDateText(m_from);
    v.toText = longDateText(m_to);
    v.from = m_from;
    v.to = m_to;
    v.problem = problem();
    v.canPrint = v.problem.empty();
    const std::string name(m_store->profile.userName());
    v.documentName =
        "Nutrovex report: " + name + ", " + slashDate(m_from) + " to " + slashDate(m_to);
    v.fileName = name + " " + isoDate(m_from) + " to " + isoDate(m_to) + ".pdf";
    return v;
}

Outcome ReportForm::pickDate(Field field, const CalendarDate& date) {
    if (field == Field::From) {
        m_span = ReportSpan::Custom;
        m_from = dayOnly(date);
    } else {
        spanTo(dayOnly(date));
    }
    return {};
}

Outcome ReportForm::command(Command id) {
    m_span = id == Command::Week    ? ReportSpan::Week
             : id == Command::Month ? ReportSpan::Month
                                    : ReportSpan::Custom;
    spanTo(m_to);
    return {};
}

std::optional<RangeReport> ReportForm::report() const {
    if (!problem().empty()) {
        return std::nullopt;
    }
    return makeRangeReport(*m_store, *m_targets, m_from, m_to);
}

Outcome ReportForm::writeFile(const std::filesystem::path& path,
                              std::span<const uint8_t> bytes) const {
    if (bytes.empty()) {
        return {.message = ScreenMessage{"The report could not be drawn.", kExportCaption}};
    }
    const StorageStatus written = writeOutputFile(path, bytes);
    if (!written) {
        return {.message = ScreenMessage{written.message(), kExportCaption}};
    }
    return {};
}

}  // namespace nutrovex
