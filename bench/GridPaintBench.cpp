// One screenful of a twenty-year summary table (7,300 rows) painted into an image, beside a
// reference in the same run: the same screenful's cell texts drawn straight onto the image, with
// no grid around them. Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QString>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "WidgetBenchMain.h"
#include "ui/controls/MWGridWidget.h"

namespace {

using namespace nutrovex;

constexpr int kDays = 7300;

// A header row and a date column, like the summary table; scrolled to its end with the last
// three rows selected, so the selection and current cell are painted too.
class SummaryTable : public MWGridWidget {
public:
    SummaryTable() {
        MWGrid& g = grid();
        g.setDefaultRowHeight(fontMetrics().height() + 6);
        g.setRowCount(kDays + 1);
        g.setColumnCount(4);
        g.setFixedRows(1);
        g.setFixedColumns(1);
        g.setColumnWidth(0, 70);
        g.setScrolling(Orientation::Vertical, true);
        resize(300, 240);
        show();
        QApplication::processEvents();
        g.shareWidth(viewport()->width() - g.columnWidth(0));
        g.setFocused(true);
        g.keyDown(GridKey::End, true, false);
        g.keyDown(GridKey::Up, false, true);
        g.keyDown(GridKey::Up, false, true);
        refresh();
    }

    void paintInto(QImage& image) {
        QPainter p(&image);
        draw(p);
    }

    // What the grid shows on screen, for the reference.
    void forEachShownText(const std::function<void(const QRect&, const QString&)>& visit) {
        QImage scratch(viewport()->size(), QImage::Format_ARGB32_Premultiplied);
        QPainter p(&scratch);
        forEachVisibleCell(
            p, [&](int row, int column, const QRect& rect) { visit(rect, cellText(row, column)); });
    }

protected:
    QString cellText(int row, int column) const override {
        static const QString headers[] = {QStringLiteral("Day"), QStringLiteral("Weight"),
                                          QStringLiteral("Calories"), QStringLiteral("BMR")};
        if (row == 0) {
            return headers[column];
        }
        if (column == 0) {
            return QString::number(row);
        }
        return QString::number(row * 10 + column);
    }
};

// Made in main, after the application and before the runs; widgets cannot outlive it.
SummaryTable* g_table = nullptr;

SummaryTable& table() {
    return *g_table;
}

void BM_ReferenceDrawTheScreenfulsTexts(benchmark::State& state) {
    SummaryTable& t = table();
    std::vector<std::pair<QRect, QString>> cells;
    t.forEachShownText([&](const QRect& r, const QString& s) { cells.emplace_back(r, s); });
    QImage image(t.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter p(&image);
        for (const auto& [rect, text] : cells) {
            p.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter, text);
        }
    }
    state.counters["cells"] = static_cast<double>(cells.size());
}
BENCHMARK(BM_ReferenceDrawTheScreenfulsTexts)->Unit(benchmark::kMicrosecond);

void BM_PaintScreenfulOf7300RowTable(benchmark::State& state) {
    SummaryTable& t = table();
    QImage image(t.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        t.paintInto(image);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_PaintScreenfulOf7300RowTable)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    std::unique_ptr<SummaryTable> summary;
    return nutrovex::bench::runWidgetBenchmarks(
        argc, argv,
        [&summary] {
            summary = std::make_unique<SummaryTable>();
            g_table = summary.get();
        },
        [&summary] {
            g_table = nullptr;
            summary.reset();
        });
}
