#include "render/ReportPainter.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <numeric>
#include <set>

#include "charts/ChartLayout.h"
#include "core/Cp1252.h"
#include "render/ChartPainter.h"

namespace nutrovex {

namespace {

// Sizes in points.
constexpr double kMarginMm = 14.0;
constexpr double kTitlePoints = 16.0;
constexpr double kTextPoints = 8.5;
constexpr double kHeadingPoints = 9.5;
constexpr double kFooterPoints = 7.0;
constexpr double kNotePoints = 6.5;
constexpr double kLargestTablePoints = 7.5;
constexpr double kSmallestTablePoints = 4.5;
constexpr double kCellPadding = 2.5;
constexpr double kSectionGap = 6.0;
// The chart is laid out in units of this width and height, then scaled onto the page.
constexpr int kChartUnitsWide = 720;
constexpr int kChartUnitsHigh = 290;
constexpr int kChartFontUnits = 11;
// Rows the first page must have room for to start the table.
constexpr std::size_t kFewestFirstPageRows = 6;

const QColor kInk(0, 0, 0);
const QColor kFaint(110, 110, 110);
const QColor kZebra(243, 244, 246);
const QColor kWeekShade(226, 231, 238);
const QColor kRangeShade(204, 214, 228);
const QColor kRule(150, 150, 150);

QString text(const std::string& cp1252) {
    return QString::fromStdString(cp1252ToUtf8(cp1252));
}

QFont fontOf(double points, bool bold = false, bool italic = false) {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setStyleHint(QFont::SansSerif);
    f.setPointSizeF(points);
    f.setBold(bold);
    f.setItalic(italic);
    return f;
}

// The palette the chart is printed in: black on white, the lines in print colours.
QPalette printPalette() {
    QPalette p;
    p.setColor(QPalette::Button, Qt::white);
    p.setColor(QPalette::ButtonText, Qt::black);
    p.setColor(QPalette::Highlight, QColor(25, 90, 190));
    return p;
}

bool isNumberColumn(ReportColumn c) {
    return c != ReportColumn::Date && c != ReportColumn::TargetsMet;
}

}  // namespace

QPageLayout reportPageLayout(ReportPaper paper) {
    return QPageLayout(QPageSize(paper == ReportPaper::Letter ? QPageSize::Letter : QPageSize::A4),
                       QPageLayout::Portrait, QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm),
                       QPageLayout::Millimeter);
}

ReportPainter::ReportPainter(const RangeReport& report, QPagedPaintDevice& device)
    : m_report(&report), m_device(&device) {
    m_dpi = device.logicalDpiY() > 0 ? device.logicalDpiY() : 72.0;
    const QRect paintRect = device.pageLayout().paintRectPixels(static_cast<int>(m_dpi));
    m_page = QRectF(0, 0, paintRect.width(), paintRect.height());
    m_text = fontOf(kTextPoints);
    m_footer = QFontMetricsF(fontOf(kFooterPoints), &device).height() * 2.0;
    m_bodyBottom = m_page.bottom() - m_footer;

    m_rows = reportRows(report);
    for (const ReportColumnHead& head : reportColumns(report)) {
        m_columns.push_back({head, 0.0});
    }
    measureColumns();

    const double openingBottom = paintOpening(nullptr, m_page.top());
    const double chartBottom = paintChart(nullptr, openingBottom);
    m_tableTop = chartBottom + points(kSectionGap * 2);
    const auto rowsThatFit = [&](double top) {
        const double room = m_bodyBottom - top - m_headerHeight;
        return room > 0 ? static_cast<std::size_t>(room / m_rowHeight) : std::size_t{0};
    };
    std::size_t firstRows = rowsThatFit(m_tableTop);
    m_tableOnFirstPage = firstRows >= std::min(kFewestFirstPageRows, m_rows.size());
    if (!m_tableOnFirstPage) {
        firstRows = 0;
    }
    m_pageStarts = reportPageStarts(m_rows, firstRows, rowsThatFit(m_page.top()));

    // The notes follow the last row, on a page of their own when they do not fit under it.
    const std::size_t lastRows = m_rows.size() - (m_pageStarts.empty() ? 0 : m_pageStarts.back());
    const bool lastIsFirst = m_tableOnFirstPage && m_pageStarts.size() <= 1;
    const double lastBottom = (lastIsFirst ? m_tableTop : m_page.top()) + m_headerHeight +
                              static_cast<double>(lastRows) * m_rowHeight;
    const double notesHeight = paintNotes(nullptr, 0.0);
    m_notesOnOwnPage = lastBottom + notesHeight > m_bodyBottom;
    m_pageCount = 1 + static_cast<int>(m_pageStarts.size()) - (m_tableOnFirstPage ? 1 : 0) +
                  (m_notesOnOwnPage ? 1 : 0);
    m_pageCount = std::max(m_pageCount, 1);
}

void ReportPainter::measureColumns() {
    const double available = m_page.width();
    for (double size = kLargestTablePoints; size >= kSmallestTablePoints; size -= 0.25) {
        m_tablePoints = size;
        m_tableFont = fontOf(size);
        const QFontMetricsF bold(fontOf(size, true), m_device);
        const double pad = points(kCellPadding);
        double total = 0.0;
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            // Figures are as wide as their digits, so only the longest texts need measuring.
            std::size_t longest = 0;
            std::set<std::string> candidates = {m_columns[c].head.head, m_columns[c].head.unit};
            std::vector<const std::string*> cells;
            for (const ReportRow& row : m_rows) {
                std::size_t at = 0;
                for (const ReportCell& cell : row.cells) {
                    if (at == c && cell.span == 1) {
                        cells.push_back(&cell.text);
                        longest = std::max(longest, cell.text.size());
                    }
                    at += cell.span;
                    if (at > c) {
                        break;
                    }
                }
            }
            for (const std::string* t : cells) {
                if (t->size() + 1 >= longest) {
                    candidates.insert(*t);
                }
            }
            double width = 0.0;
            for (const std::string& t : candidates) {
                width = std::max(width, bold.horizontalAdvance(text(t)));
            }
            m_columns[c].width = width + 2 * pad;
            total += m_columns[c].width;
        }
        if (total <= available || size - 0.25 < kSmallestTablePoints) {
            // What is left widens every column alike.
            const double extra = std::max(available - total, 0.0) / m_columns.size();
            for (Column& column : m_columns) {
                column.width += extra;
            }
            break;
        }
    }
    const QFontMetricsF metrics(m_tableFont, m_device);
    m_rowHeight = metrics.height() * 1.4;
    m_headerHeight = metrics.height() * 2.6;
}

double ReportPainter::paintOpening(QPainter* painter, double top) const {
    const QFont title = fontOf(kTitlePoints, true);
    const QFont heading = fontOf(kHeadingPoints, true);
    const QFont label = fontOf(kTextPoints, true);
    const QFontMetricsF titleMetrics(title, m_device);
    const QFontMetricsF headingMetrics(heading, m_device);
    const QFontMetricsF textMetrics(m_text, m_device);
    const QFontMetricsF labelMetrics(label, m_device);

    double y = top;
    if (painter != nullptr) {
        painter->setPen(kInk);
        painter->setFont(title);
        painter->drawText(QRectF(m_page.left(), y, m_page.width(), titleMetrics.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, text(reportTitle(*m_report)));
    }
    y += titleMetrics.height() + points(kSectionGap);

    // Two columns of sections: who and what for on the left, what the logbook measured on the
    // right.
    const std::vector<BudgetSection> sections = reportSummary(*m_report);
    const double gap = points(14);
    const double columnWidth = (m_page.width() - gap) / 2;
    const std::size_t leftCount = std::min<std::size_t>(3, sections.size());
    double bottom = y;
    for (int side = 0; side < 2; ++side) {
        const double left = m_page.left() + side * (columnWidth + gap);
        const std::size_t first = side == 0 ? 0 : leftCount;
        const std::size_t last = side == 0 ? leftCount : sections.size();
        double labelWidth = 0.0;
        for (std::size_t s = first; s < last; ++s) {
            for (const BudgetRow& row : sections[s].rows) {
                labelWidth = std::max(labelWidth, labelMetrics.horizontalAdvance(text(row.label)));
            }
        }
        labelWidth += points(6);
        double cy = y;
        for (std::size_t s = first; s < last; ++s) {
            const QRectF headingRoom(left, cy, columnWidth, 10000);
            const QString headingText = text(sections[s].heading);
            const QRectF headingUsed = headingMetrics.boundingRect(
                headingRoom, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, headingText);
            if (painter != nullptr) {
                painter->setFont(heading);
                painter->setPen(kInk);
                painter->drawText(headingRoom, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop,
                                  headingText);
            }
            cy += headingUsed.height() + headingMetrics.height() * 0.15;
            for (const BudgetRow& row : sections[s].rows) {
                const double valueLeft = row.label.empty() ? left : left + labelWidth;
                const QRectF room(valueLeft, cy, left + columnWidth - valueLeft, 10000);
                const QRectF used = textMetrics.boundingRect(
                    room, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, text(row.value));
                if (painter != nullptr) {
                    painter->setPen(kInk);
                    if (!row.label.empty()) {
                        painter->setFont(label);
                        painter->drawText(QRectF(left, cy, labelWidth, textMetrics.height()),
                                          Qt::AlignLeft | Qt::AlignTop, text(row.label));
                    }
                    painter->setFont(m_text);
                    painter->drawText(room, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop,
                                      text(row.value));
                }
                cy += std::max(used.height(), textMetrics.height()) + points(1.5);
            }
            cy += points(kSectionGap);
        }
        bottom = std::max(bottom, cy);
    }
    return bottom;
}

double ReportPainter::paintChart(QPainter* painter, double top) const {
    const double scale = m_page.width() / kChartUnitsWide;
    const double height = kChartUnitsHigh * scale;
    const QFont captionFont = fontOf(kTextPoints, false, true);
    const QFontMetricsF captionMetrics(captionFont, m_device);
    const double captionTop = top + height + points(4);
    if (painter != nullptr) {
        QFont chartFont = fontOf(kTextPoints);
        chartFont.setPixelSize(kChartFontUnits);
        const HistoricChartLayout layout =
            historicChartLayout(m_report->chart, QSize(kChartUnitsWide, kChartUnitsHigh), chartFont,
                                &m_report->chartTrend);
        const ChartColours colours = chartColours(printPalette());
        painter->save();
        painter->translate(m_page.left(), top);
        painter->scale(scale, scale);
        paintHistoricChart(*painter, layout, colours, chartFont);
        painter->restore();

        // The caption, then a key of the two lines.
        painter->setFont(captionFont);
        painter->setPen(kInk);
        const QString caption = text(reportChartCaption(*m_report));
        painter->drawText(
            QRectF(m_page.left(), captionTop, m_page.width(), captionMetrics.height()),
            Qt::AlignLeft | Qt::AlignVCenter, caption);
        double x = m_page.left() + captionMetrics.horizontalAdvance(caption) + points(12);
        const double y = captionTop + captionMetrics.height() / 2;
        const auto key = [&](const QColor& colour, Qt::PenStyle style, const QString& name) {
            painter->setPen(QPen(colour, points(1.5), style));
            painter->drawLine(QPointF(x, y), QPointF(x + points(14), y));
            x += points(17);
            painter->setPen(kInk);
            painter->drawText(QPointF(x, captionTop + captionMetrics.ascent()), name);
            x += captionMetrics.horizontalAdvance(name) + points(10);
        };
        // Only the lines the chart drew.
        if (layout.drawable) {
            key(colours.line, Qt::SolidLine, QStringLiteral("weight"));
            if (!layout.trendLine.empty()) {
                key(colours.trend, Qt::SolidLine, QStringLiteral("trend"));
            }
            if (layout.goalLine) {
                key(colours.goal, Qt::DashLine, QStringLiteral("goal"));
            }
        }
    }
    return captionTop + captionMetrics.height();
}

double ReportPainter::paintNotes(QPainter* painter, double top) const {
    const QFont font = fontOf(kNotePoints);
    const QFontMetricsF metrics(font, m_device);
    double y = top + points(kSectionGap);
    for (const std::string& note : reportNotes(*m_report)) {
        const QRectF room(m_page.left(), y, m_page.width(), 10000);
        const QString line = text(note);
        const QRectF used =
            metrics.boundingRect(room, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, line);
        if (painter != nullptr) {
            painter->setFont(font);
            painter->setPen(kFaint);
            painter->drawText(room, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, line);
        }
        y += used.height() + points(2);
    }
    return y - top;
}

void ReportPainter::paintTableHeader(QPainter& painter, double top) const {
    const QFont bold = fontOf(m_tablePoints, true);
    const QFontMetricsF metrics(bold, m_device);
    const double pad = points(kCellPadding);
    double x = m_page.left();
    painter.setPen(kInk);
    for (const Column& column : m_columns) {
        const Qt::Alignment align =
            isNumberColumn(column.head.column) ? Qt::AlignRight : Qt::AlignLeft;
        const QRectF head(x + pad, top, column.width - 2 * pad, m_headerHeight / 2);
        const QRectF unit(x + pad, top + m_headerHeight / 2 - metrics.height() * 0.15,
                          column.width - 2 * pad, m_headerHeight / 2);
        painter.setFont(bold);
        painter.drawText(head, align | Qt::AlignBottom, text(column.head.head));
        painter.setFont(m_tableFont);
        painter.setPen(kFaint);
        painter.drawText(unit, align | Qt::AlignVCenter, text(column.head.unit));
        painter.setPen(kInk);
        x += column.width;
    }
    painter.setPen(QPen(kInk, points(0.8)));
    painter.drawLine(QPointF(m_page.left(), top + m_headerHeight),
                     QPointF(x, top + m_headerHeight));
}

void ReportPainter::paintRow(QPainter& painter, const ReportRow& row, double top,
                             bool shaded) const {
    const bool day = row.kind == ReportRowKind::Day;
    const bool range =
        row.kind == ReportRowKind::RangeTotal || row.kind == ReportRowKind::RangeAverage;
    const double right =
        m_page.left() + std::accumulate(m_columns.begin(), m_columns.end(), 0.0,
                                        [](double w, const Column& c) { return w + c.width; });
    const QRectF band(m_page.left(), top, right - m_page.left(), m_rowHeight);
    if (!day || shaded) {
        painter.fillRect(band, day ? kZebra : range ? kRangeShade : kWeekShade);
    }
    if (row.kind == ReportRowKind::WeekTotal || row.kind == ReportRowKind::RangeTotal) {
        painter.setPen(QPen(kRule, points(0.4)));
        painter.drawLine(band.topLeft(), band.topRight());
    }
    const QFont plain = day ? m_tableFont : fontOf(m_tablePoints, true);
    const QFont missing = fontOf(m_tablePoints, !day, true);
    const double pad = points(kCellPadding);
    double x = m_page.left();
    std::size_t column = 0;
    for (const ReportCell& cell : row.cells) {
        double width = 0.0;
        for (std::size_t k = 0; k < cell.span && column + k < m_columns.size(); ++k) {
            width += m_columns[column + k].width;
        }
        Qt::Alignment align = Qt::AlignLeft;
        if (cell.span > 1) {
            align = Qt::AlignHCenter;
        } else if (column < m_columns.size() && isNumberColumn(m_columns[column].head.column)) {
            align = Qt::AlignRight;
        }
        painter.setFont(cell.missing ? missing : plain);
        painter.setPen(cell.missing ? kFaint : kInk);
        painter.drawText(QRectF(x + pad, top, width - 2 * pad, m_rowHeight),
                         align | Qt::AlignVCenter, text(cell.text));
        x += width;
        column += cell.span;
    }
}

void ReportPainter::paintFooter(QPainter& painter, int page) const {
    const QFont font = fontOf(kFooterPoints);
    painter.setFont(font);
    painter.setPen(kFaint);
    const QRectF line(m_page.left(), m_page.bottom() - m_footer * 0.6, m_page.width(),
                      m_footer * 0.6);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     text(reportTitle(*m_report) + ", " + reportRangeText(*m_report)));
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                     QStringLiteral("Page %1 of %2").arg(page).arg(m_pageCount));
}

void ReportPainter::paint(QPainter& painter) const {
    int page = 1;
    const auto nextPage = [&] {
        paintFooter(painter, page);
        m_device->newPage();
        ++page;
    };
    const double openingBottom = paintOpening(&painter, m_page.top());
    paintChart(&painter, openingBottom);
    double bottom = m_page.top();
    for (std::size_t p = 0; p < m_pageStarts.size(); ++p) {
        double top = m_page.top();
        if (p == 0 && m_tableOnFirstPage) {
            top = m_tableTop;
        } else {
            nextPage();
        }
        paintTableHeader(painter, top);
        top += m_headerHeight;
        const std::size_t end = p + 1 < m_pageStarts.size() ? m_pageStarts[p + 1] : m_rows.size();
        for (std::size_t r = m_pageStarts[p]; r < end; ++r) {
            paintRow(painter, m_rows[r], top, (r - m_pageStarts[p]) % 2 == 1);
            top += m_rowHeight;
        }
        bottom = top;
    }
    if (m_notesOnOwnPage) {
        nextPage();
        bottom = m_page.top();
    }
    paintNotes(&painter, bottom);
    paintFooter(painter, page);
}

}  // namespace nutrovex
