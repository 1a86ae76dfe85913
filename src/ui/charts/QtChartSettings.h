#pragma once

#include <QSettings>
#include <memory>

#include "charts/ChartSettings.h"
#include "session/SessionSettings.h"

namespace nutrovex {

// The chart choices in the program's settings ("Charts/Trend"), beside the remembered user: in
// the root's own settings file when the root was given, else in the per-user settings.
class QtChartSettings final : public ChartSettings {
public:
    explicit QtChartSettings(const DataRootChoice& root);

    [[nodiscard]] bool trendShown() const override;
    void setTrendShown(bool shown) override;

private:
    std::unique_ptr<QSettings> m_settings;
};

}  // namespace nutrovex
