#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "forms/logbook/ReportForm.h"
#include "ui/logbook/LogbookScreen.h"

class QLabel;
class QPrinter;
class QPrintPreviewWidget;
class QPushButton;
class QRadioButton;

namespace nutrovex {

// The report for a dietitian, a coach or a doctor: the range (a week or a month to a day, or two
// dates picked in the calendar), a preview of its pages, "Print..." through the system's print
// dialog with its preview, and "Export PDF...". The pages are drawn by the same code as the
// tool's, so an exported PDF says what `nutrovex-tool report` says of the same days.
class ReportDialog : public LogbookScreen {
    Q_OBJECT

public:
    // What the logbook's menu entry asked for: the matching button is the default.
    enum class Purpose { Print, ExportPdf };
    // Where an export goes, given the name offered; empty when the person cancelled.
    using FileChooser = std::function<QString(const QString& offered)>;

    ReportDialog(ReportForm form, SessionNotifier& notifier, QWidget* parent,
                 Purpose purpose = Purpose::Print);
    ~ReportDialog() override;

    void setFileChooser(FileChooser choose) { m_chooseFile = std::move(choose); }

    [[nodiscard]] QRadioButton* spanButton(ReportSpan span) const;
    [[nodiscard]] QPushButton* setFromButton() const { return m_setFrom; }
    [[nodiscard]] QPushButton* setToButton() const { return m_setTo; }
    [[nodiscard]] QPushButton* printButton() const { return m_print; }
    [[nodiscard]] QPushButton* exportButton() const { return m_export; }
    [[nodiscard]] QString fromText() const;
    [[nodiscard]] QString toText() const;
    // Why the range cannot be reported; empty when it can.
    [[nodiscard]] QString problemText() const;
    [[nodiscard]] QPrintPreviewWidget* preview() const { return m_preview; }

private:
    void pick(ReportForm::Field field);
    void refresh();
    void paintPages(QPrinter* printer);
    void print();
    void exportPdf();

    ReportForm m_form;
    FileChooser m_chooseFile;
    QRadioButton* m_week;
    QRadioButton* m_month;
    QRadioButton* m_custom;
    QLabel* m_from;
    QLabel* m_to;
    QPushButton* m_setFrom;
    QPushButton* m_setTo;
    QLabel* m_problem;
    std::unique_ptr<QPrinter> m_printer;  // the preview's pages
    QPrintPreviewWidget* m_preview;
    QPushButton* m_print;
    QPushButton* m_export;
};

}  // namespace nutrovex
