#include "ui/charts/QtChartSettings.h"

namespace nutrovex {

namespace {

const QString kTrendKey = QStringLiteral("Charts/Trend");

}  // namespace

QtChartSettings::QtChartSettings(const DataRootChoice& root) {
    if (root.given) {
        const QString file = QString::fromStdString((root.path / "Nutrovex.ini").string());
        m_settings = std::make_unique<QSettings>(file, QSettings::IniFormat);
    } else {
        m_settings =
            std::make_unique<QSettings>(QStringLiteral("Zerbu"), QStringLiteral("Nutrovex"));
    }
}

bool QtChartSettings::trendShown() const {
    return m_settings->value(kTrendKey, false).toBool();
}

void QtChartSettings::setTrendShown(bool shown) {
    m_settings->setValue(kTrendKey, shown);
    m_settings->sync();
}

}  // namespace nutrovex
