#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <memory>
#include <string>

#include "TempDir.h"
#include "core/FoodCatalogue.h"
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

// A running session on a fresh data root, on a fixed day.
class ScreenFixture {
public:
    ScreenFixture()
        : m_clock(CalendarDate::fromDmy(25, 9, 2002)),
          m_root(m_dir.path() / "root"),
          m_shipped(emptyCatalogue()),
          m_session(std::make_unique<Session>(m_root, m_clock, m_settings, m_shipped)),
          m_notifier(std::make_unique<SessionNotifier>(*m_session)) {
        std::string reason;
        m_started = m_session->start(reason) == Session::Start::Running;
    }

    [[nodiscard]] bool started() const { return m_started; }
    [[nodiscard]] Session& session() { return *m_session; }
    [[nodiscard]] SessionNotifier& notifier() { return *m_notifier; }
    [[nodiscard]] MemorySettings& settings() { return m_settings; }
    [[nodiscard]] const std::filesystem::path& root() const { return m_root; }
    [[nodiscard]] const Clock& clock() const { return m_clock; }

private:
    static std::vector<uint8_t> emptyCatalogue() {
        FoodCatalogue c;
        c.renumberGroupChunks();
        ByteBuffer out;
        (void)writeCatalogueFile(c, out);
        return {out.data(), out.data() + out.size()};
    }

    FixedClock m_clock;
    MemorySettings m_settings;
    TempDir m_dir;
    std::filesystem::path m_root;
    std::vector<uint8_t> m_shipped;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<SessionNotifier> m_notifier;
    bool m_started = false;
};

}  // namespace nutrovex::test
