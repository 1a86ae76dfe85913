#include "render/ChartPainter.h"

#include <QFontMetrics>
#include <QList>
#include <QPainter>
#include <algorithm>

namespace nutrovex {

namespace {

QColor mix(const QColor& a, const QColor& b, double share) {
    return QColor::fromRgbF(static_cast<float>(a.redF() * (1 - share) + b.redF() * share),
                            static_cast<float>(a.greenF() * (1 - share) + b.greenF() * share),
                            static_cast<float>(a.blueF() * (1 - share) + b.blueF() * share));
}

// The highlight's hue turned, keeping its strength, so every line is a colour of the theme.
QColor turned(const QColor& colour, int degrees) {
    const QColor hsv = colour.toHsv();
    const int hue = hsv.hsvHue() < 0 ? 210 : hsv.hsvHue();
    return QColor::fromHsv((hue + degrees) % 360, std::max(hsv.hsvSaturation(), 140), hsv.value());
}

// A one-pixel frame of this rectangle lands on its left, top, right and bottom coordinates.
QRect toQRect(const ChartRect& r) {
    return QRect(r.left, r.top, r.width(), r.height());
}

QString toText(const std::string& latin) {
    return QString::fromLatin1(latin.data(), static_cast<qsizetype>(latin.size()));
}

void drawPolyline(QPainter& p, const std::vector<ChartPoint>& points) {
    if (points.size() < 2) {
        return;
    }
    QList<QPoint> polyline;
    polyline.reserve(static_cast<qsizetype>(points.size()));
    for (const ChartPoint& point : points) {
        polyline.append(QPoint(point.x, point.y));
    }
    p.drawPolyline(polyline.constData(), static_cast<int>(polyline.size()));
}

void drawLevel(QPainter& p, const ChartLevel& level) {
    p.drawLine(level.left, level.y, level.right, level.y);
}

// Grid lines and value labels, shared by both charts.
void drawValueScale(QPainter& p, const std::vector<ChartLevel>& lines,
                    const std::vector<ChartLabel>& labels, const ChartColours& colours) {
    p.setPen(QPen(colours.grid, 1));
    for (std::size_t k = 1; k + 1 < lines.size(); ++k) {
        drawLevel(p, lines[k]);
    }
    p.setPen(colours.ink);
    for (const ChartLabel& label : labels) {
        p.drawText(toQRect(label.box), Qt::AlignRight | Qt::AlignVCenter, toText(label.text));
    }
}

// A small triangle beside a text, pointing up or down.
void drawPointer(QPainter& p, const ChartRect& box, bool up, int size) {
    const int cx = box.right - size / 2;
    const int cy = (box.top + box.bottom) / 2;
    const int h = std::max(size / 3, 3);
    const QPoint points[3] = {QPoint(cx - h, up ? cy + h / 2 : cy - h / 2),
                              QPoint(cx + h, up ? cy + h / 2 : cy - h / 2),
                              QPoint(cx, up ? cy - h : cy + h)};
    p.drawPolygon(points, 3);
}

}  // namespace

ChartColours chartColours(const QPalette& palette) {
    ChartColours c;
    c.face = palette.color(QPalette::Button);
    c.ink = palette.color(QPalette::ButtonText);
    c.grid = mix(c.face, c.ink, 0.18);
    c.line = palette.color(QPalette::Highlight);
    c.trend = turned(c.line, 180);
    c.goal = turned(c.line, 120);
    const bool dark = c.face.lightness() < 128;
    const double strength = dark ? 0.35 : 0.30;
    c.bands = {
        mix(c.face, QColor(70, 150, 230), strength), mix(c.face, QColor(60, 180, 90), strength),
        mix(c.face, QColor(235, 180, 40), strength), mix(c.face, QColor(220, 70, 60), strength)};
    return c;
}

HistoricChartLayout historicChartLayout(const WeightHistory& history, QSize size, const QFont& font,
                                        const std::vector<std::optional<float>>* trend) {
    const QFontMetrics metrics(font);
    const QString message = QString::fromLatin1(kTooFewPointsMessage);
    ChartTextMetrics text;
    text.height = metrics.height();
    text.width = [&metrics](const std::string& s) {
        return static_cast<int32_t>(metrics.horizontalAdvance(toText(s))) + 2;
    };
    return layoutHistoricChart(
        history, size.width(), size.height(),
        [&](int32_t width) {
            return metrics
                .boundingRect(QRect(0, 0, std::max(width, 1), 100000), Qt::TextWordWrap, message)
                .height();
        },
        trend, text);
}

void paintHistoricChart(QPainter& p, const HistoricChartLayout& l, const ChartColours& colours,
                        const QFont& font) {
    p.save();
    p.setFont(font);
    p.fillRect(toQRect(l.area), colours.face);
    if (!l.drawable) {
        p.setPen(colours.ink);
        p.drawRect(toQRect(l.plot));
        p.fillRect(toQRect(l.messageBox), colours.face);
        p.drawRect(toQRect(l.messageBox));
        p.drawText(toQRect(l.messageText), Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop,
                   toText(l.message));
        p.restore();
        return;
    }
    drawValueScale(p, l.valueLines, l.valueLabels, colours);
    p.drawText(toQRect(l.unitLabel.box), Qt::AlignRight | Qt::AlignVCenter,
               toText(l.unitLabel.text));

    // Measured with this font by the layout, which left out what would run together.
    for (const ChartLabel& label : l.dateLabels) {
        p.drawText(toQRect(label.box), Qt::AlignHCenter | Qt::AlignTop, toText(label.text));
    }

    // The reference lines, named in the right margin.
    const QFontMetrics metrics(font);
    const auto reference = [&](const std::optional<ChartLevel>& level, const QColor& colour,
                               const QString& name) {
        if (!level) {
            return;
        }
        p.setPen(QPen(colour, 1, Qt::DashLine));
        drawLevel(p, *level);
        p.setPen(colour);
        // Kept inside the area when the line runs along the plot's top edge.
        const int top = std::max(level->y - metrics.height() / 2, l.area.top);
        p.drawText(QRect(level->right + 3, top, l.area.right - level->right - 3, metrics.height()),
                   Qt::AlignLeft | Qt::AlignVCenter, name);
    };
    reference(l.goalLine, colours.goal, QStringLiteral("Goal"));

    // Smooth lines while the days stand apart; where they crowd, the pixels decide anyway and
    // smoothing would cost many times the paint.
    const std::size_t crowd = std::max(l.weightLine.size(), l.trendLine.size());
    const bool apart = crowd * 2 <= static_cast<std::size_t>(std::max(l.plot.width(), 0));
    const qreal penWidth = apart ? 2.0 : 1.0;
    p.setRenderHint(QPainter::Antialiasing, apart);
    p.setClipRect(toQRect(l.plot));
    p.setPen(QPen(colours.trend, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    drawPolyline(p, l.trendLine);
    p.setPen(QPen(colours.line, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    drawPolyline(p, l.weightLine);
    // Dots on the weigh-ins while they stand well apart.
    if (l.weightLine.size() * 12 <= static_cast<std::size_t>(std::max(l.plot.width(), 0))) {
        p.setBrush(colours.line);
        p.setPen(Qt::NoPen);
        for (const ChartPoint& point : l.weightLine) {
            p.drawEllipse(QPointF(point.x, point.y), 2.5, 2.5);
        }
    }
    p.setClipping(false);

    for (const ChartLegendEntry& entry : l.legend) {
        p.setPen(QPen(entry.series == ChartSeries::Trend ? colours.trend : colours.line, 2.0,
                      Qt::SolidLine, Qt::RoundCap));
        p.drawLine(entry.strokeFrom.x, entry.strokeFrom.y, entry.strokeTo.x, entry.strokeTo.y);
        p.setPen(colours.ink);
        p.drawText(toQRect(entry.label.box), Qt::AlignLeft | Qt::AlignVCenter,
                   toText(entry.label.text));
    }
    if (l.goalMark) {
        const ChartRect& box = l.goalMark->label.box;
        p.fillRect(toQRect(box), colours.face);
        p.setPen(colours.goal);
        p.setBrush(colours.goal);
        drawPointer(p, box, l.goalMark->above, box.height());
        p.drawText(toQRect({box.left, box.top, box.right - box.height(), box.bottom}),
                   Qt::AlignRight | Qt::AlignVCenter, toText(l.goalMark->label.text));
    }
    p.setRenderHint(QPainter::Antialiasing, false);

    p.setPen(colours.ink);
    p.setBrush(Qt::NoBrush);
    p.drawRect(toQRect(l.plot));
    p.restore();
}

void paintBodyMassChart(QPainter& p, const BodyMassLayout& l, const ChartColours& colours,
                        const QFont& font) {
    p.save();
    p.setFont(font);
    p.fillRect(toQRect(l.area), colours.face);
    for (const BandArea& band : l.bands) {
        p.fillRect(toQRect(band.rect), colours.bands[static_cast<std::size_t>(band.band)]);
    }
    drawValueScale(p, l.valueLines, l.valueLabels, colours);
    p.setPen(QPen(colours.goal, 2, Qt::DashLine));
    drawLevel(p, l.goal);
    p.setPen(QPen(colours.ink, 2, Qt::SolidLine));
    drawLevel(p, l.current);
    p.setPen(colours.ink);
    p.setBrush(Qt::NoBrush);
    p.drawRect(toQRect(l.plot));
    p.restore();
}

QImage renderHistoricChart(const WeightHistory& history, QSize size, const QPalette& palette,
                           const QFont& font, const std::vector<std::optional<float>>* trend) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    const ChartColours colours = chartColours(palette);
    image.fill(colours.face);
    QPainter painter(&image);
    paintHistoricChart(painter, historicChartLayout(history, size, font, trend), colours, font);
    return image;
}

}  // namespace nutrovex
