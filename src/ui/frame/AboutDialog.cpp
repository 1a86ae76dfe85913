#include "ui/frame/AboutDialog.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/frame/AboutForm.h"
#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/frame/ScreenDialog.h"

namespace nutrovex {

AboutDialog::AboutDialog(QWidget* parent)
    : QDialog(parent),
      m_product(new QLabel(this)),
      m_version(new QLabel(this)),
      m_licence(new QLabel(this)),
      m_ok(new QPushButton(this)) {
    const AboutView v = AboutForm().view();
    setWindowTitle(toQString(v.title));
    m_product->setText(toQString(v.productName));
    m_version->setText(toQString(v.version));
    m_licence->setText(toQString(v.licence));
    m_ok->setText(toQString(v.okText));
    setModal(true);
    coverOpener(*this, parent);

    QFont big = m_product->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.5);
    m_product->setFont(big);
    QFont small = m_version->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    m_version->setFont(small);
    m_product->setAlignment(Qt::AlignCenter);
    m_version->setAlignment(Qt::AlignCenter);
    m_product->setAccessibleName(figureName(QStringLiteral("Product"), m_product->text()));
    m_version->setAccessibleName(figureName(QStringLiteral("Version"), m_version->text()));
    m_licence->setFont(small);
    m_licence->setAlignment(Qt::AlignCenter);
    m_licence->setWordWrap(true);
    m_licence->setAccessibleName(figureName(QStringLiteral("Licence"), m_licence->text()));
    m_ok->setAccessibleName(toQString(v.okText));
    m_ok->setDefault(true);

    auto* separator = new QFrame(this);
    separator->setFrameShape(QFrame::HLine);
    separator->setFrameShadow(QFrame::Sunken);

    auto* layout = new QVBoxLayout(this);
    layout->addStretch(1);  // the box's few lines sit in the middle of the screen
    layout->addWidget(m_product);
    layout->addWidget(m_version);
    layout->addWidget(m_licence);
    layout->addWidget(separator);
    layout->addWidget(m_ok, 0, Qt::AlignCenter);
    layout->addStretch(1);

    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
}

}  // namespace nutrovex
