#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "charts/RangeReport.h"

namespace nutrovex {

// The report as files, for the tool and for Export: a PDF and a page of HTML. This interface needs
// no Qt; the drawing behind it runs on Qt's GUI module without a display.

enum class ReportPaper : uint8_t { A4, Letter };

// Letter where the locale's paper is Letter (LC_ALL, else LC_PAPER, else LANG names the United
// States, Canada, Mexico or another country that uses it), else A4.
[[nodiscard]] ReportPaper localePaper();

// The PDF's bytes; empty when it could not be made.
[[nodiscard]] std::vector<uint8_t> reportPdf(const RangeReport& report, ReportPaper paper);

// A page of HTML in UTF-8, the chart inside it as a picture, laid out to print on either paper.
[[nodiscard]] std::string reportHtml(const RangeReport& report);

}  // namespace nutrovex
