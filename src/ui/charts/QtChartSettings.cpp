#include "ui/charts/QtChartSettings.h"

#include "ui/frame/QtSessionSettings.h"

namespace nutrovex {

namespace {

const QString kTrendKey = QStringLiteral("Charts/Trend");

}  // namespace

QtChartSettings::QtChartSettings(const DataRootChoice& root)
    : m_settings(openProgramSettings(root)) {}

bool QtChartSettings::trendShown() const {
    return m_settings->value(kTrendKey, false).toBool();
}

void QtChartSettings::setTrendShown(bool shown) {
    m_settings->setValue(kTrendKey, shown);
    m_settings->sync();
}

}  // namespace nutrovex
