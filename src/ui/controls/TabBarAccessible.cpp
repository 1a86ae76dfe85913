#include "ui/controls/TabBarAccessible.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QRegularExpression>
#include <QTabBar>
#include <QWindow>

namespace nutrovex {

namespace {

QString withoutMnemonic(QString text) {
    return text.remove(QRegularExpression(QStringLiteral("&(?!&)")));
}

class TabAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    TabAccessible(QTabBar* bar, int index) : m_bar(bar), m_index(index) {}

    [[nodiscard]] bool isValid() const override {
        return !m_bar.isNull() && m_index < m_bar->count();
    }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override {
        return m_bar ? m_bar->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_bar.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text t) const override {
        if (!isValid()) {
            return {};
        }
        switch (t) {
            case QAccessible::Name:
                return m_bar->accessibleTabName(m_index).isEmpty()
                           ? withoutMnemonic(m_bar->tabText(m_index))
                           : m_bar->accessibleTabName(m_index);
            case QAccessible::Description:
            case QAccessible::Help:
                return m_bar->tabToolTip(m_index);
            default:
                return {};
        }
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        if (!isValid()) {
            return {};
        }
        const QRect r = m_bar->tabRect(m_index);
        return {m_bar->mapToGlobal(r.topLeft()), r.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::PageTab; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State s;
        if (!isValid()) {
            s.invalid = true;
            return s;
        }
        s.selectable = true;
        s.focusable = m_bar->focusPolicy() != Qt::NoFocus;
        s.disabled = !m_bar->isTabEnabled(m_index);
        s.invisible = !m_bar->isVisible() || !m_bar->isTabVisible(m_index);
        s.selected = m_bar->currentIndex() == m_index;
        s.focused = s.selected && m_bar->hasFocus();
        return s;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    // A tab is pressed by making it current, as a tap does.
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction() && isValid() && m_bar->isTabEnabled(m_index)) {
            m_bar->setCurrentIndex(m_index);
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<QTabBar> m_bar;
    int m_index;
};

class TabBarAccessible final : public QAccessibleWidget {
public:
    explicit TabBarAccessible(QTabBar* bar) : QAccessibleWidget(bar, QAccessible::PageTabList) {}
    ~TabBarAccessible() override {
        for (const QAccessible::Id id : std::as_const(m_tabs)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    [[nodiscard]] QTabBar* bar() const { return static_cast<QTabBar*>(widget()); }

    [[nodiscard]] int childCount() const override { return bar()->count(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= bar()->count()) {
            return nullptr;
        }
        while (m_tabs.size() <= index) {
            m_tabs.append(QAccessible::registerAccessibleInterface(
                new TabAccessible(bar(), static_cast<int>(m_tabs.size()))));
        }
        return QAccessible::accessibleInterface(m_tabs.at(index));
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const QAccessible::Id id = QAccessible::uniqueId(const_cast<QAccessibleInterface*>(child));
        const auto at = m_tabs.indexOf(id);
        return at < bar()->count() ? static_cast<int>(at) : -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const int index = bar()->tabAt(bar()->mapFromGlobal(QPoint(x, y)));
        return index >= 0 ? child(index) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return bar()->hasFocus() ? child(bar()->currentIndex()) : nullptr;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State s = QAccessibleWidget::state();
        s.focused = false;  // the current tab carries the focus
        return s;
    }

private:
    mutable QList<QAccessible::Id> m_tabs;
};

class ProxyAccessible final : public QAccessibleWidget {
public:
    ProxyAccessible(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State s = QAccessibleWidget::state();
        if (widget()->focusProxy() != nullptr) {
            s.focused = false;
        }
        return s;
    }
};

}  // namespace

QAccessibleInterface* proxyAccessible(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !object->isWidgetType()) {
        return nullptr;
    }
    // Only these exact classes: every other widget has an interface of its own.
    if (className == QLatin1String("QWidget") &&
        object->metaObject() == &QWidget::staticMetaObject) {
        return new ProxyAccessible(widget, QAccessible::Client);
    }
    if (className == QLatin1String("QDialogButtonBox")) {
        return new ProxyAccessible(widget, QAccessible::Grouping);
    }
    return nullptr;
}

QAccessibleInterface* tabBarAccessible(const QString&, QObject* object) {
    if (auto* bar = qobject_cast<QTabBar*>(object)) {
        return new TabBarAccessible(bar);
    }
    return nullptr;
}

}  // namespace nutrovex
