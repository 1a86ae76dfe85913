#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace nutrovex {

// The about box: a thin view of AboutForm.
class AboutDialog : public QDialog {
    Q_OBJECT

public:
    explicit AboutDialog(QWidget* parent = nullptr);

private:
    QLabel* m_product;
    QLabel* m_version;
    QLabel* m_licence;
    QPushButton* m_ok;
};

}  // namespace nutrovex
