#include "ui/logbook/ReportDialog.h"
#include "ui/controls/AccessibleText.h"

#include <QButtonGroup>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <optional>

#include "render/ReportFiles.h"
#include "render/ReportPainter.h"
#include "ui/TextConvert.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/WaitCursor.h"

namespace nutrovex {

namespace {

// A printer laid out as the exported PDF is: the locale's paper, the report's margins.
std::unique_ptr<QPrinter> reportPrinter(const ReportFormView& v) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setPageLayout(reportPageLayout(localePaper()));
    printer->setDocName(toQString(v.documentName));
    printer->setCreator(QStringLiteral("Nutrovex"));
    return printer;
}

}  // namespace

ReportDialog::ReportDialog(ReportForm form, SessionNotifier& notifier, QWidget* parent,
                           Purpose purpose)
    : LogbookScreen(notifier, parent, QStringLiteral("Report")),
      m_form(std::move(form)),
      m_week(new QRadioButton(QStringLiteral("&Week"), this)),
      m_month(new QRadioButton(QStringLiteral("&Month"), this)),
      m_custom(new QRadioButton(QStringLiteral("&Custom"), this)),
      m_from(new QLabel(this)),
      m_to(new QLabel(this)),
      m_setFrom(new QPushButton(QStringLiteral("&Set..."), this)),
      m_setTo(new QPushButton(QStringLiteral("S&et..."), this)),
      m_problem(new QLabel(this)),
      m_printer(reportPrinter(m_form.view())),
      m_preview(new QPrintPreviewWidget(m_printer.get(), this)),
      m_print(new QPushButton(QStringLiteral("&Print..."), this)),
      m_export(new QPushButton(QStringLiteral("Export &PDF..."), this)) {
    addOptionsMenu([this](QMenu* menu) {
        connect(menu->addAction(QStringLiteral("&Print...")), &QAction::triggered, this,
                &ReportDialog::print);
        connect(menu->addAction(QStringLiteral("Export &PDF...")), &QAction::triggered, this,
                &ReportDialog::exportPdf);
    });

    auto* spans = new QButtonGroup(this);
    spans->addButton(m_week, static_cast<int>(ReportForm::Command::Week));
    spans->addButton(m_month, static_cast<int>(ReportForm::Command::Month));
    spans->addButton(m_custom, static_cast<int>(ReportForm::Command::Custom));
    auto* spanRow = new QHBoxLayout;
    spanRow->addWidget(new QLabel(QStringLiteral("Days:"), this));
    for (QRadioButton* b : {m_week, m_month, m_custom}) {
        b->setAccessibleName(b->text().remove(u'&'));
        spanRow->addWidget(b);
    }
    spanRow->addStretch();

    setFigureCaption(m_from, QStringLiteral("From"));
    setFigureCaption(m_to, QStringLiteral("To"));
    m_setFrom->setAccessibleName(controlName(m_setFrom->text(), QStringLiteral("first day")));
    m_setTo->setAccessibleName(controlName(m_setTo->text(), QStringLiteral("last day")));
    auto* dates = new QGridLayout;
    dates->addWidget(new QLabel(QStringLiteral("From:"), this), 0, 0);
    dates->addWidget(m_from, 0, 1);
    dates->addWidget(m_setFrom, 0, 2);
    dates->addWidget(new QLabel(QStringLiteral("To:"), this), 1, 0);
    dates->addWidget(m_to, 1, 1);
    dates->addWidget(m_setTo, 1, 2);
    dates->setColumnStretch(1, 1);

    m_problem->setWordWrap(true);
    m_problem->setAccessibleName(QStringLiteral("Problem"));
    QPalette warning = m_problem->palette();
    warning.setColor(QPalette::WindowText, QColor(170, 20, 20));
    m_problem->setPalette(warning);

    m_preview->setAccessibleName(QStringLiteral("Preview"));
    m_preview->setViewMode(QPrintPreviewWidget::SinglePageView);
    m_preview->setZoomMode(QPrintPreviewWidget::FitToWidth);
    m_preview->setFocusPolicy(Qt::NoFocus);
    // The pages scroll by keys inside the preview: its view is named as the preview.
    for (QWidget* part : m_preview->findChildren<QWidget*>()) {
        if (part->focusPolicy() != Qt::NoFocus) {
            part->setAccessibleName(QStringLiteral("Preview of the report's pages"));
        }
    }

    m_print->setAccessibleName(QStringLiteral("Print..."));
    m_export->setAccessibleName(QStringLiteral("Export PDF..."));
    (purpose == Purpose::Print ? m_print : m_export)->setDefault(true);
    for (QPushButton* b : {m_setFrom, m_setTo}) {
        b->setAutoDefault(false);
    }
    auto* actions = new QHBoxLayout;
    actions->addStretch();
    actions->addWidget(m_print);
    actions->addWidget(m_export);

    body()->addLayout(spanRow);
    body()->addLayout(dates);
    body()->addWidget(m_problem);
    body()->addWidget(m_preview, 1);
    body()->addLayout(actions);

    connect(spans, &QButtonGroup::idClicked, this, [this](int id) {
        (void)m_form.command(static_cast<ReportForm::Command>(id));
        refresh();
    });
    connect(m_setFrom, &QPushButton::clicked, this, [this] { pick(ReportForm::Field::From); });
    connect(m_setTo, &QPushButton::clicked, this, [this] { pick(ReportForm::Field::To); });
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this, &ReportDialog::paintPages);
    connect(m_print, &QPushButton::clicked, this, &ReportDialog::print);
    connect(m_export, &QPushButton::clicked, this, &ReportDialog::exportPdf);
    connect(&notifier, &SessionNotifier::dataChanged, this, &ReportDialog::refresh);
    connect(&notifier, &SessionNotifier::userChanged, this, &ReportDialog::refresh);
    refresh();
}

ReportDialog::~ReportDialog() = default;

QRadioButton* ReportDialog::spanButton(ReportSpan span) const {
    switch (span) {
        case ReportSpan::Week:
            return m_week;
        case ReportSpan::Month:
            return m_month;
        case ReportSpan::Custom:
            return m_custom;
    }
    return m_custom;
}

QString ReportDialog::fromText() const {
    return m_from->text();
}

QString ReportDialog::toText() const {
    return m_to->text();
}

QString ReportDialog::problemText() const {
    return m_problem->text();
}

void ReportDialog::refresh() {
    const ReportFormView v = m_form.view();
    spanButton(v.span)->setChecked(true);
    showFigure(m_from, toQString(v.fromText));
    showFigure(m_to, toQString(v.toText));
    m_problem->setText(toQString(v.problem));
    m_problem->setVisible(!v.problem.empty());
    m_print->setEnabled(v.canPrint);
    m_export->setEnabled(v.canPrint);
    m_printer->setDocName(toQString(v.documentName));
    m_preview->updatePreview();
}

void ReportDialog::paintPages(QPrinter* printer) {
    const WaitCursor wait;
    const std::optional<RangeReport> report = m_form.report();
    if (!report) {
        return;  // the preview stays blank while the problem is shown
    }
    const ReportPainter pages(*report, *printer);
    QPainter painter;
    if (painter.begin(printer)) {
        pages.paint(painter);
        painter.end();
    }
}

void ReportDialog::pick(ReportForm::Field field) {
    auto* picker = new CalendarPickerDialog(m_form.clock(), this);
    const ReportFormView v = m_form.view();
    const CalendarDate& from = field == ReportForm::Field::From ? v.from : v.to;
    picker->setCaption(field == ReportForm::Field::From ? QStringLiteral("First Day")
                                                        : QStringLiteral("Last Day"));
    picker->setDate(from.year, from.month - 1, from.day);
    openChild(picker, [this, picker, field](int result) {
        if (result != QDialog::Accepted) {
            return;
        }
        (void)m_form.pickDate(
            field, CalendarDate::fromDmy(picker->day(), picker->month() + 1, picker->year()));
        refresh();
    });
}

void ReportDialog::print() {
    const ReportFormView v = m_form.view();
    if (!v.canPrint) {
        return;
    }
    const std::unique_ptr<QPrinter> printer = reportPrinter(v);
    QPrintPreviewDialog dialog(printer.get(), this);
    dialog.setWindowTitle(QStringLiteral("Print Report"));
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this, &ReportDialog::paintPages);
    dialog.exec();
}

void ReportDialog::exportPdf() {
    const ReportFormView v = m_form.view();
    if (!v.canPrint) {
        return;
    }
    const QString offered = toQString(v.fileName);
    const QString path = m_chooseFile ? m_chooseFile(offered)
                                      : QFileDialog::getSaveFileName(
                                            this, QStringLiteral("Export PDF"), offered,
                                            QStringLiteral("PDF documents (*.pdf);;All files (*)"));
    if (path.isEmpty()) {
        return;
    }
    const Outcome written = [&] {
        const WaitCursor wait;
        const std::optional<RangeReport> report = m_form.report();
        const std::vector<uint8_t> pdf =
            report ? reportPdf(*report, localePaper()) : std::vector<uint8_t>{};
        return m_form.writeFile(QFile::encodeName(path).toStdString(), pdf);
    }();
    (void)showOutcome(this, notifier(), written);
}

}  // namespace nutrovex
