#include "render/ReportFiles.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <cstdlib>
#include <string_view>

#include "charts/ReportSheet.h"
#include "core/Cp1252.h"
#include "render/ChartPainter.h"
#include "render/GuiApplication.h"
#include "render/ReportPainter.h"

namespace nutrovex {

namespace {

// The chart in the HTML page: its layout size, drawn at twice that for print.
constexpr int kHtmlChartWide = 720;
constexpr int kHtmlChartHigh = 290;

// Territories whose paper is Letter.
constexpr std::string_view kLetterTerritories[] = {"US", "CA", "MX", "CL", "CO", "CR", "DO", "GT",
                                                   "NI", "PA", "PE", "PH", "PR", "SV", "VE"};

bool territoryUsesLetter(std::string_view locale) {
    // language_TERRITORY.codeset@modifier
    const std::size_t underscore = locale.find('_');
    if (underscore == std::string_view::npos) {
        return false;
    }
    const std::string_view territory = locale.substr(underscore + 1, 2);
    for (const std::string_view t : kLetterTerritories) {
        if (territory == t) {
            return true;
        }
    }
    return false;
}

std::string html(std::string_view cp1252) {
    std::string out;
    for (const char c : cp1252ToUtf8(cp1252)) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

// The chart as a PNG in base64, drawn as on paper.
std::string chartPngBase64(const RangeReport& report) {
    QImage image(kHtmlChartWide * 2, kHtmlChartHigh * 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(11);
    QPalette palette;
    palette.setColor(QPalette::Button, Qt::white);
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(25, 90, 190));
    {
        QPainter painter(&image);
        painter.scale(2.0, 2.0);
        paintHistoricChart(painter,
                           historicChartLayout(report.chart, QSize(kHtmlChartWide, kHtmlChartHigh),
                                               font, &report.chartTrend),
                           chartColours(palette), font);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) {
        return {};
    }
    return bytes.toBase64().toStdString();
}

const char* rowClass(ReportRowKind kind) {
    switch (kind) {
        case ReportRowKind::Day:
            return "day";
        case ReportRowKind::WeekTotal:
            return "week total";
        case ReportRowKind::WeekAverage:
            return "week";
        case ReportRowKind::RangeTotal:
            return "range total";
        case ReportRowKind::RangeAverage:
            return "range";
    }
    return "day";
}

constexpr const char* kStyle = R"(
@page { margin: 14mm; }
body { font-family: "DejaVu Sans", sans-serif; font-size: 8.5pt; color: #000; margin: 0; }
h1 { font-size: 16pt; margin: 0 0 6pt; }
h2 { font-size: 9.5pt; margin: 6pt 0 2pt; }
.summary { display: flex; gap: 14pt; }
.summary > div { flex: 1; }
.summary td { vertical-align: top; padding: 0 6pt 1.5pt 0; }
.summary td.label { font-weight: bold; white-space: nowrap; }
figure { margin: 8pt 0 12pt; }
figure img { width: 100%; }
figcaption { font-style: italic; }
table.days { border-collapse: collapse; font-size: 7.5pt; width: 100%; }
table.days th { text-align: right; vertical-align: bottom; border-bottom: 1px solid #000;
                padding: 1pt 2.5pt; }
table.days th span { display: block; font-weight: normal; color: #6e6e6e; }
table.days td { text-align: right; padding: 1pt 2.5pt; white-space: nowrap; }
table.days .text { text-align: left; }
table.days td.blank { color: #6e6e6e; font-style: italic; }
table.days td.span { text-align: center; }
tr.day:nth-child(even) td { background: #f3f4f6; }
tr.week td { background: #e2e7ee; font-weight: bold; }
tr.range td { background: #ccd6e4; font-weight: bold; }
tr.total td { border-top: 1px solid #969696; }
thead { display: table-header-group; }
tr { break-inside: avoid; }
.notes { color: #6e6e6e; font-size: 6.5pt; }
)";

}  // namespace

ReportPaper localePaper() {
    for (const char* name : {"LC_ALL", "LC_PAPER", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return territoryUsesLetter(value) ? ReportPaper::Letter : ReportPaper::A4;
        }
    }
    return ReportPaper::A4;
}

std::vector<uint8_t> reportPdf(const RangeReport& report, ReportPaper paper) {
    ensureGuiApplication();
    QByteArray bytes;
    {
        QBuffer buffer(&bytes);
        if (!buffer.open(QIODevice::WriteOnly)) {
            return {};
        }
        QPdfWriter writer(&buffer);
        writer.setResolution(300);
        writer.setPageLayout(reportPageLayout(paper));
        writer.setTitle(QString::fromStdString(cp1252ToUtf8(reportTitle(report))));
        writer.setCreator(QStringLiteral("Nutrovex"));
        const ReportPainter pages(report, writer);
        QPainter painter;
        if (!painter.begin(&writer)) {
            return {};
        }
        pages.paint(painter);
        if (!painter.end()) {
            return {};
        }
    }
    return {bytes.begin(), bytes.end()};
}

std::string reportHtml(const RangeReport& report) {
    ensureGuiApplication();
    std::string out =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>";
    out += html(reportTitle(report) + ", " + reportRangeText(report));
    out += "</title>\n<style>";
    out += kStyle;
    out += "</style>\n</head>\n<body>\n<h1>" + html(reportTitle(report)) + "</h1>\n";

    const std::vector<BudgetSection> sections = reportSummary(report);
    out += "<div class=\"summary\">\n";
    for (std::size_t side = 0; side < 2; ++side) {
        out += "<div>\n";
        const std::size_t first = side == 0 ? 0 : std::min<std::size_t>(3, sections.size());
        const std::size_t last =
            side == 0 ? first + std::min<std::size_t>(3, sections.size()) : sections.size();
        for (std::size_t s = first; s < last; ++s) {
            out += "<h2>" + html(sections[s].heading) + "</h2>\n<table>\n";
            for (const BudgetRow& row : sections[s].rows) {
                out += row.label.empty()
                           ? "<tr><td colspan=\"2\">" + html(row.value) + "</td></tr>\n"
                           : "<tr><td class=\"label\">" + html(row.label) + "</td><td>" +
                                 html(row.value) + "</td></tr>\n";
            }
            out += "</table>\n";
        }
        out += "</div>\n";
    }
    out += "</div>\n";

    out += "<figure><img alt=\"" + html(reportChartCaption(report)) +
           "\" src=\"data:image/png;base64," + chartPngBase64(report) + "\"><figcaption>" +
           html(reportChartCaption(report)) + "</figcaption></figure>\n";

    const std::vector<ReportColumnHead> columns = reportColumns(report);
    out += "<table class=\"days\">\n<thead><tr>";
    for (const ReportColumnHead& c : columns) {
        const bool isText = c.column == ReportColumn::Date || c.column == ReportColumn::TargetsMet;
        out += isText ? "<th class=\"text\">" : "<th>";
        out += html(c.head) + "<span>" + html(c.unit) + "</span></th>";
    }
    out += "</tr></thead>\n<tbody>\n";
    const std::vector<ReportRow> rows = reportRows(report);
    out.reserve(out.size() + rows.size() * 300);
    for (const ReportRow& row : rows) {
        out += "<tr class=\"";
        out += rowClass(row.kind);
        out += "\">";
        std::size_t column = 0;
        for (const ReportCell& cell : row.cells) {
            const bool isText = column == 0 || (column < columns.size() &&
                                                columns[column].column == ReportColumn::TargetsMet);
            std::string classes = isText ? "text" : "";
            if (cell.missing) {
                classes += classes.empty() ? "blank" : " blank";
            }
            if (cell.span > 1) {
                classes += " span";
            }
            out += "<td";
            if (cell.span > 1) {
                out += " colspan=\"" + std::to_string(cell.span) + "\"";
            }
            if (!classes.empty()) {
                out += " class=\"" + classes + "\"";
            }
            out += ">" + html(cell.text) + "</td>";
            column += cell.span;
        }
        out += "</tr>\n";
    }
    out += "</tbody>\n</table>\n<div class=\"notes\">\n";
    for (const std::string& note : reportNotes(report)) {
        out += "<p>" + html(note) + "</p>\n";
    }
    out += "</div>\n</body>\n</html>\n";
    return out;
}

}  // namespace nutrovex
