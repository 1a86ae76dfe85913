#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "charts/RangeReport.h"
#include "core/CalendarDate.h"
#include "core/MacroTargets.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

// How the report's range is chosen: the week or the month ending on a day, or two dates.
enum class ReportSpan : uint8_t { Week, Month, Custom };

struct ReportFormView {
    ReportSpan span = ReportSpan::Week;
    std::string fromText;  // long form
    std::string toText;
    CalendarDate from;  // where the date pickers open
    CalendarDate to;
    // Why the range cannot be reported, in the tool's words; empty when it can.
    std::string problem;
    bool canPrint = false;     // "Print..." and "Export PDF..."
    std::string documentName;  // what a printer's queue calls the job
    std::string fileName;      // offered when exporting, "Zerbu 2002-11-15 to 2002-11-21.pdf"
};

// The report screen: which days the report covers and whether it can be made. It opens on the
// week ending on the logbook's current day. Picking the last day moves a week or a month along
// with it; picking the first day makes the range a custom one.
class ReportForm {
public:
    // targetsFailure is why the person's targets could not be read, empty when they were: a
    // report without them would say none were set, so it is refused as the tool refuses it.
    ReportForm(const DayCursor& days, const MacroTargets& targets, std::string targetsFailure = {});

    enum class Field : uint8_t { From, To };
    enum class Command : uint8_t { Week, Month, Custom };

    [[nodiscard]] ReportFormView view() const;
    [[nodiscard]] const Clock& clock() const { return m_store->clock(); }
    Outcome pickDate(Field field, const CalendarDate& date);
    // Chooses the span; a week or a month ends on the range's present last day.
    Outcome command(Command id);
    // The report of the range, as the tool makes it; none while view().problem says why not.
    [[nodiscard]] std::optional<RangeReport> report() const;
    // Writes the exported report where the person chose, as the tool writes its outputs: a
    // device or a FIFO is written through, never replaced. A failure is the message.
    [[nodiscard]] Outcome writeFile(const std::filesystem::path& path,
                                    std::span<const uint8_t> bytes) const;
    // The report only reads.
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    void spanTo(const CalendarDate& last);
    [[nodiscard]] std::string problem() const;

    const UserStore* m_store;
    const MacroTargets* m_targets;
    std::string m_targetsFailure;
    ReportSpan m_span = ReportSpan::Week;
    CalendarDate m_from;
    CalendarDate m_to;
};

}  // namespace nutrovex
