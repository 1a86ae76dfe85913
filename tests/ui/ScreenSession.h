#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "core/ScreenMessage.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex::test {

// Runs act on the next modal dialog of type T once it is the active modal window: for screens and
// message boxes that run their own event loop inside a click.
template <class T, class F>
void whenModal(F act) {
    QTimer::singleShot(0, qApp, [act]() mutable {
        auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->isVisible()) {
            act(dialog);
        } else {
            whenModal<T>(std::move(act));
        }
    });
}

// What the person saw in a message box.
struct SeenMessage {
    QString text;
    QString caption;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

// Answers the next message box with the button, recording what it said.
inline void answerMessage(QMessageBox::StandardButton answer, SeenMessage* seen = nullptr) {
    whenModal<QMessageBox>([answer, seen](QMessageBox* box) {
        if (seen != nullptr) {
            *seen = {box->text(), box->windowTitle(), box->icon()};
        }
        box->button(answer)->click();
    });
}

// A running session on a fresh data root with an empty starting catalogue, "Zerbu" open (unless
// the test loads itself) at noon on 21 November 2002 unless told another time, its notifier,
// and a record of the messages a screen put to the person.
class ScreenSession : public ::testing::Test {
protected:
    explicit ScreenSession(CalendarDate now = at(21, 11, 2002, 12), bool load = true)
        : clock(now), m_load(load) {}

    void SetUp() override {
        std::string reason;
        ASSERT_EQ(session.start(reason), Session::Start::Running) << reason;
        if (m_load) {
            ASSERT_TRUE(session.initialLoad());
            ASSERT_TRUE(session.userOpen());
        }
    }

    static CalendarDate at(int d, int m, int y, int hour = 0) {
        CalendarDate date = CalendarDate::fromDmy(d, m, y);
        date.hour = static_cast<int16_t>(hour);
        return date;
    }

    // Records each message and answers it: Yes to questions unless told otherwise.
    std::function<bool(const ScreenMessage&)> presenter() {
        return [this](const ScreenMessage& m) {
            messages.push_back(m);
            return answer;
        };
    }
    [[nodiscard]] std::vector<std::string> messageTexts() const {
        std::vector<std::string> texts;
        for (const ScreenMessage& m : messages) {
            texts.push_back(m.text);
        }
        return texts;
    }
    [[nodiscard]] std::filesystem::path root() const { return dir.path() / "root"; }
    [[nodiscard]] std::filesystem::path userFile() { return session.store().dataFilePath; }

    TempDir dir;
    FixedClock clock;
    MemorySettings settings;
    std::vector<uint8_t> shipped = emptyCatalogue();
    Session session{root(), clock, settings, shipped};
    SessionNotifier notifier{session};
    std::vector<ScreenMessage> messages;
    bool answer = true;

private:
    static std::vector<uint8_t> emptyCatalogue() {
        FoodCatalogue c;
        c.renumberGroupChunks();
        ByteBuffer out;
        (void)writeCatalogueFile(c, out);
        return {out.data(), out.data() + out.size()};
    }

    bool m_load;
};

}  // namespace nutrovex::test
