#include "ui/controls/PaintedText.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace nutrovex {

namespace {

class LineAccessible final : public QAccessibleInterface {
public:
    LineAccessible(QWidget* widget, int line) : m_widget(widget), m_line(line) {}

    [[nodiscard]] bool isValid() const override { return m_line < lines().size(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override {
        return m_widget ? m_widget->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_widget.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text t) const override {
        return t == QAccessible::Name ? lines().value(m_line) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    // The widget paints the lines; where each one falls is not worth a second layout.
    [[nodiscard]] QRect rect() const override {
        return m_widget ? QRect(m_widget->mapToGlobal(QPoint(0, 0)), m_widget->size()) : QRect();
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::StaticText; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State s;
        s.invalid = !isValid();
        s.readOnly = true;
        return s;
    }

private:
    [[nodiscard]] QStringList lines() const {
        const auto* painted = dynamic_cast<const PaintedText*>(m_widget.data());
        return painted != nullptr ? painted->shownLines() : QStringList();
    }

    QPointer<QWidget> m_widget;
    int m_line;
};

class PaintedTextWidgetAccessible final : public QAccessibleWidget {
public:
    PaintedTextWidgetAccessible(QWidget* widget, const PaintedText& painted)
        : QAccessibleWidget(widget, QAccessible::Document), m_painted(painted) {}
    ~PaintedTextWidgetAccessible() override {
        for (const QAccessible::Id id : std::as_const(m_lines)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    [[nodiscard]] int childCount() const override {
        return static_cast<int>(m_painted.shownLines().size());
    }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        while (m_lines.size() <= index) {
            m_lines.append(QAccessible::registerAccessibleInterface(
                new LineAccessible(widget(), static_cast<int>(m_lines.size()))));
        }
        return QAccessible::accessibleInterface(m_lines.at(index));
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto at =
            m_lines.indexOf(QAccessible::uniqueId(const_cast<QAccessibleInterface*>(child)));
        return at < childCount() ? static_cast<int>(at) : -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }

private:
    const PaintedText& m_painted;
    mutable QList<QAccessible::Id> m_lines;
};

}  // namespace

QAccessibleInterface* paintedTextAccessible(const QString&, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    const auto* painted = dynamic_cast<const PaintedText*>(object);
    if (widget == nullptr || painted == nullptr) {
        return nullptr;
    }
    return new PaintedTextWidgetAccessible(widget, *painted);
}

}  // namespace nutrovex
