#pragma once

#include <cstdint>

#include "charts/WeightHistory.h"

namespace nutrovex {

// The chart choices a person makes: the span lasts for the run of the program, the trend line
// is kept in the program's settings.
class ChartSettings {
public:
    virtual ~ChartSettings() = default;
    [[nodiscard]] uint16_t span() const { return m_span; }
    void setSpan(uint16_t span) { m_span = span < kHistorySpanCount ? span : 0; }
    [[nodiscard]] virtual bool trendShown() const = 0;
    virtual void setTrendShown(bool shown) = 0;

private:
    uint16_t m_span = 0;
};

// Settings that live as long as the object: for the tool and for tests.
class MemoryChartSettings final : public ChartSettings {
public:
    [[nodiscard]] bool trendShown() const override { return m_trend; }
    void setTrendShown(bool shown) override { m_trend = shown; }

private:
    bool m_trend = false;
};

}  // namespace nutrovex
