#include "ui/controls/BlankListStart.h"

#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>

namespace nutrovex {

namespace {

class BlankListStart final : public QObject {
public:
    BlankListStart(QComboBox* list, std::function<int()> start)
        : QObject(list), m_list(list), m_start(std::move(start)) {
        list->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != m_list || event->type() != QEvent::KeyPress || m_list->currentIndex() >= 0) {
            return false;
        }
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() != Qt::Key_Up && key->key() != Qt::Key_Down) ||
            key->modifiers() != Qt::NoModifier) {
            return false;
        }
        const int index = m_start();
        if (index < 0 || index >= m_list->count()) {
            return false;
        }
        m_list->setCurrentIndex(index);
        Q_EMIT m_list->activated(index);
        return true;
    }

private:
    QComboBox* m_list;
    std::function<int()> m_start;
};

}  // namespace

void startBlankListAt(QComboBox* list, std::function<int()> start) {
    new BlankListStart(list, std::move(start));
}

}  // namespace nutrovex
