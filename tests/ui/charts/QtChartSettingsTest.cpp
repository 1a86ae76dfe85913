#include <gtest/gtest.h>

#include "TempDir.h"
#include "ui/charts/QtChartSettings.h"
#include "ui/frame/QtSessionSettings.h"

namespace nutrovex {
namespace {

TEST(QtChartSettings, TheTrendChoiceOutlivesTheRunBesideTheRememberedUser) {
    test::TempDir root;
    const DataRootChoice choice{root.path(), true};
    {
        QtSessionSettings session(choice);
        session.setCurrentUserName("Ann");
        QtChartSettings charts(choice);
        EXPECT_FALSE(charts.trendShown());  // off until asked for
        charts.setTrendShown(true);
        charts.setSpan(5);
    }
    const QtChartSettings again(choice);
    EXPECT_TRUE(again.trendShown());
    EXPECT_EQ(again.span(), 0);  // the span lasts for one run only
    EXPECT_EQ(QtSessionSettings(choice).currentUserName(), "Ann");
    EXPECT_TRUE(std::filesystem::exists(root.path() / "Nutrovex.ini"));
}

}  // namespace
}  // namespace nutrovex
