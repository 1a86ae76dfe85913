#include "ui/frame/CNutrovexView.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSvgRenderer>
#include <QVBoxLayout>

#include "forms/frame/MainFrameForm.h"
#include "ui/Resources.h"
#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"

namespace nutrovex {

namespace {

// The banner, drawn from its SVG as large as its place allows, keeping its proportions. It is
// what gives way when the window is made small, so the steps below never crowd together.
class Banner : public QWidget {
public:
    explicit Banner(QWidget* parent) : QWidget(parent), m_renderer(kBannerArt, this) {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        setAccessibleName(QStringLiteral("Nutrovex"));
    }
    [[nodiscard]] QSize sizeHint() const override {
        return {kBannerWidth, artHeight(kBannerWidth)};
    }
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {kBannerWidth / 3, artHeight(kBannerWidth / 3)};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QSize art = m_renderer.defaultSize().scaled(size(), Qt::KeepAspectRatio);
        const QRect target(QPoint((width() - art.width()) / 2, (height() - art.height()) / 2), art);
        m_renderer.render(&painter, target);
    }

private:
    [[nodiscard]] int artHeight(int width) const {
        const QSize art = m_renderer.defaultSize();
        return art.isEmpty() ? 0 : width * art.height() / art.width();
    }

    static constexpr int kBannerWidth = 360;
    QSvgRenderer m_renderer;
};

}  // namespace

CNutrovexView::CNutrovexView(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Main menu"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new Banner(this), 2);
    layout->addStretch(1);

    auto* steps = new QGridLayout;
    steps->setHorizontalSpacing(16);
    steps->setVerticalSpacing(12);
    const auto all = MainFrameForm::steps();
    const int iconSide = fontMetrics().height() * 2;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const MainMenuStep& step = all[i];
        auto* button = new QPushButton(toQString(step.buttonText), this);
        button->setIcon(QIcon(stepArt(static_cast<int>(i) + 1)));
        button->setIconSize(QSize(iconSide, iconSide));
        button->setMinimumHeight(iconSide + fontMetrics().height());
        button->setAccessibleName(controlName(button->text(), toQString(step.label)));
        button->setAccessibleDescription(toQString(step.prompt));
        button->setToolTip(toQString(step.prompt));
        button->setMinimumWidth(iconSide * 4);
        auto* label = new QLabel(toQString(step.label), this);
        QFont big = label->font();
        big.setPointSizeF(big.pointSizeF() * 1.25);
        big.setBold(true);
        label->setFont(big);
        label->setBuddy(button);
        steps->addWidget(button, static_cast<int>(i), 0);
        steps->addWidget(label, static_cast<int>(i), 1);
        const int command = step.command;
        connect(button, &QPushButton::clicked, this,
                [this, command] { Q_EMIT stepChosen(command); });
        m_buttons.at(i) = button;
    }
    steps->setColumnStretch(1, 1);
    layout->addLayout(steps);
    layout->addStretch(1);
}

}  // namespace nutrovex
