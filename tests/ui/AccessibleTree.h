#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QRegularExpression>
#include <QStringList>
#include <QTextDocument>
#include <QWidget>
#include <functional>
#include <vector>

namespace nutrovex::test {

// Every accessible interface under root, root first, depth first, as a reader walks the tree.
// Hidden parts are left out, and a table's cells are visited only up to maxCells per table.
inline std::vector<QAccessibleInterface*> accessibleTree(QAccessibleInterface* root,
                                                         int maxCells = 200) {
    std::vector<QAccessibleInterface*> all;
    const std::function<void(QAccessibleInterface*, int)> walk = [&](QAccessibleInterface* i,
                                                                     int depth) {
        if (i == nullptr || !i->isValid() || i->state().invisible || depth > 40) {
            return;
        }
        all.push_back(i);
        const int count = i->childCount();
        const int shown = i->tableInterface() != nullptr ? std::min(count, maxCells) : count;
        for (int c = 0; c < shown; ++c) {
            walk(i->child(c), depth + 1);
        }
    };
    walk(root, 0);
    return all;
}

// What a widget shows in words: a button's or label's text without its mnemonic marks, rich
// text as plain text, blanks run together. Empty for anything else.
inline QString visibleText(const QWidget* widget) {
    QString text;
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        text = button->text();
    } else if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        text = label->text();
        if (Qt::mightBeRichText(text)) {
            QTextDocument document;
            document.setHtml(text);
            text = document.toPlainText();
        }
    }
    text.replace(QRegularExpression(QStringLiteral("&(?!&)")), QString());
    return text.simplified();
}

// What a reader cannot get from a screen, one line each: a control that takes the focus with
// no name, a button or label whose name leaves out the text it shows, and more than one part
// that says it has the focus.
inline QStringList accessibilityFaults(QWidget* screen) {
    QStringList faults;
    QStringList focused;
    for (QAccessibleInterface* i : accessibleTree(QAccessible::queryAccessibleInterface(screen))) {
        // A list or tree hands the focus on to its current item: the two are one focus.
        const QAccessibleInterface* item = i->focusChild();
        if (i->state().focused &&
            (item == nullptr || item->object() != nullptr || !item->state().focused)) {
            const QObject* object = i->object();
            focused << QStringLiteral("%1 '%2'").arg(
                QString::fromLatin1(object != nullptr ? object->metaObject()->className() : "item"),
                i->text(QAccessible::Name));
        }
        auto* widget = qobject_cast<QWidget*>(i->object());
        if (widget == nullptr || !widget->isVisibleTo(screen)) {
            continue;
        }
        const QString name = i->text(QAccessible::Name).simplified();
        const QString what = QString::fromLatin1(widget->metaObject()->className()) +
                             QStringLiteral(" '") + widget->objectName() + QLatin1Char('\'');
        if (widget->focusPolicy() != Qt::NoFocus && widget != screen && name.isEmpty()) {
            faults << QStringLiteral("%1 takes the focus but has no name").arg(what);
        }
        const QString shown = visibleText(widget);
        if (!shown.isEmpty() && !name.contains(shown)) {
            faults << QStringLiteral("%1 shows \"%2\" but is named \"%3\"").arg(what, shown, name);
        }
    }
    if (focused.size() > 1) {
        faults << QStringLiteral("several parts say they have the focus: ") +
                      focused.join(QStringLiteral(", "));
    }
    return faults;
}

}  // namespace nutrovex::test
