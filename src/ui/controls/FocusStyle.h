#pragma once

#include <QColor>
#include <QProxyStyle>

class QPalette;

namespace nutrovex {

// The program's style over the platform's: the control with the keyboard focus always shows a
// solid ring, however the focus came to it (the platform's style shows it only after Tab, and
// never on flat buttons or list rows), in a colour that stands out from the window in light and
// dark palettes alike.
class FocusStyle : public QProxyStyle {
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    // The palette's highlight where it differs from the window by at least 3 : 1, else the
    // window's text colour.
    [[nodiscard]] static QColor focusColour(const QPalette& palette);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget = nullptr) const override;
};

// Puts the focus style over the application's style; once, after the application is made.
void installFocusStyle();

}  // namespace nutrovex
