#include <gtest/gtest.h>

#include <QApplication>

#include "ui/controls/FocusStyle.h"
#include "ui/controls/GridAccessible.h"

// Screen tests drive real widgets; they need an application object (offscreen platform in CI).
int main(int argc, char** argv) {
    // Listing and running the tests needs no display.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    nutrovex::installAccessibility();
    nutrovex::installFocusStyle();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
