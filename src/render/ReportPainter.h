#pragma once

#include <QFont>
#include <QPageLayout>
#include <QRectF>
#include <cstddef>
#include <vector>

#include "charts/RangeReport.h"
#include "charts/ReportSheet.h"
#include "render/ReportFiles.h"

class QPagedPaintDevice;
class QPainter;

namespace nutrovex {

// The report on paper: the first page opens with the person, the range, the goal, the targets,
// the trend, the maintenance and the weight chart; the table of days follows, breaking across
// pages with its header repeated, and its notes close it. Every page carries the report's name
// and "Page n of m". Everything is placed before anything is drawn, so the page count is known.
class ReportPainter {
public:
    // Lays the report out for pages of the device's layout (a PDF writer or a printer).
    ReportPainter(const RangeReport& report, QPagedPaintDevice& device);

    [[nodiscard]] int pageCount() const { return m_pageCount; }
    // The table's body font, in points, after shrinking it to fit the page's width.
    [[nodiscard]] double tablePointSize() const { return m_tablePoints; }
    // Paints every page, starting a new one on the device between them; the painter is open on
    // the device given to the constructor.
    void paint(QPainter& painter) const;

private:
    struct Column {
        ReportColumnHead head;
        double width = 0.0;
    };

    [[nodiscard]] double points(double pt) const { return pt * m_dpi / 72.0; }
    void measureColumns();
    // The opening part of the first page, drawn when a painter is given; returns its bottom.
    double paintOpening(QPainter* painter, double top) const;
    double paintChart(QPainter* painter, double top) const;
    double paintNotes(QPainter* painter, double top) const;
    void paintTableHeader(QPainter& painter, double top) const;
    void paintRow(QPainter& painter, const ReportRow& row, double top, bool shaded) const;
    void paintFooter(QPainter& painter, int page) const;

    const RangeReport* m_report;
    QPagedPaintDevice* m_device;
    double m_dpi = 72.0;
    QRectF m_page;        // the printable area, in device pixels
    double m_footer = 0;  // the footer's height
    double m_bodyBottom = 0;
    QFont m_text;  // the opening's text
    QFont m_tableFont;
    double m_tablePoints = 7.5;
    double m_rowHeight = 0;
    double m_headerHeight = 0;
    std::vector<Column> m_columns;
    std::vector<ReportRow> m_rows;
    std::vector<std::size_t> m_pageStarts;  // of the table's pages
    double m_tableTop = 0;                  // on the first page
    bool m_tableOnFirstPage = true;
    bool m_notesOnOwnPage = false;
    int m_pageCount = 1;
};

// The page of the paper, portrait, with the report's margins.
[[nodiscard]] QPageLayout reportPageLayout(ReportPaper paper);

}  // namespace nutrovex
