#include "ui/controls/FocusStyle.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

namespace nutrovex {

namespace {

double luminance(const QColor& c) {
    const auto channel = [](double v) {
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// background: what the ring is drawn over when it is not the window (a selected row).
void drawRing(QPainter* painter, const QRect& rect, const QPalette& palette,
              const QColor& background = QColor()) {
    if (rect.width() < 4 || rect.height() < 4) {
        return;
    }
    QColor colour = FocusStyle::focusColour(palette);
    if (background.isValid() && contrast(colour, background) < 3.0) {
        const QColor on = palette.color(QPalette::HighlightedText);
        colour = contrast(on, background) >= 3.0 ? on : palette.color(QPalette::Text);
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(QPen(colour, 2));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect.adjusted(1, 1, -1, -1));
    painter->restore();
}

}  // namespace

QColor FocusStyle::focusColour(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor highlight = palette.color(QPalette::Highlight);
    return contrast(highlight, window) >= 3.0 ? highlight : palette.color(QPalette::WindowText);
}

void FocusStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    if (element == PE_FrameFocusRect) {
        const auto* focus = qstyleoption_cast<const QStyleOptionFocusRect*>(option);
        drawRing(painter, option->rect, option->palette,
                 focus != nullptr ? focus->backgroundColor : QColor());
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void FocusStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_PushButton && (option->state & State_HasFocus) != 0) {
        drawRing(painter, option->rect, option->palette);
    }
}

void FocusStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control == CC_ComboBox || control == CC_SpinBox) && (option->state & State_HasFocus)) {
        drawRing(painter, option->rect, option->palette);
    }
}

void installFocusStyle() {
    if (qobject_cast<FocusStyle*>(QApplication::style()) == nullptr) {
        QApplication::setStyle(new FocusStyle(QApplication::style()->name()));
    }
}

}  // namespace nutrovex
