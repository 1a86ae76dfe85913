#include "ui/controls/AccessibleText.h"

#include <QAbstractButton>
#include <QLabel>
#include <QRegularExpression>
#include <QVariant>

namespace nutrovex {

namespace {

QString plain(QString text) {
    return text.remove(QRegularExpression(QStringLiteral("&(?!&)"))).simplified();
}

}  // namespace

QString figureName(const QString& caption, const QString& shown) {
    QString head = plain(caption);
    const QString body = plain(shown);
    if (head.endsWith(QLatin1Char(':'))) {
        head.chop(1);
    }
    if (body.isEmpty()) {
        return head;
    }
    if (head.isEmpty() || body.startsWith(head, Qt::CaseInsensitive)) {
        return body;
    }
    return head + QStringLiteral(": ") + body;
}

void showFigure(QLabel* label, const QString& caption, const QString& text) {
    label->setText(text);
    label->setAccessibleName(figureName(caption, text));
}

void showFigure(QAbstractButton* button, const QString& caption, const QString& text) {
    button->setText(text);
    button->setAccessibleName(figureName(caption, text));
}

namespace {
constexpr const char* kCaptionProperty = "nutrovexFigureCaption";
}  // namespace

void setFigureCaption(QLabel* label, const QString& caption) {
    label->setProperty(kCaptionProperty, caption);
    label->setAccessibleName(figureName(caption, label->text()));
}

void showFigure(QLabel* label, const QString& text) {
    showFigure(label, label->property(kCaptionProperty).toString(), text);
}

QString controlName(const QString& shown, const QString& what) {
    const QString head = plain(shown);
    const QString tail = plain(what);
    if (head.isEmpty() || tail.contains(head, Qt::CaseInsensitive)) {
        return tail;
    }
    return tail.isEmpty() ? head : head + QStringLiteral(", ") + tail;
}

}  // namespace nutrovex
