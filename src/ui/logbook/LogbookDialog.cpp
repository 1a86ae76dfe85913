#include "ui/logbook/LogbookDialog.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/Resources.h"
#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

QToolButton* arrowButton(const QString& art, const QString& name, QWidget* parent) {
    auto* button = new QToolButton(parent);
    const QSize size(28, 28);
    QIcon icon;
    for (const qreal ratio : {1.0, 2.0}) {
        QImage image = renderArt(art, size * ratio);
        image.setDevicePixelRatio(ratio);
        icon.addPixmap(QPixmap::fromImage(image));
    }
    button->setIcon(icon);
    button->setIconSize(size);
    button->setAutoRaise(true);
    button->setAccessibleName(name);
    button->setToolTip(name);
    return button;
}

QString withoutMnemonic(QString text) {
    return text.remove(QLatin1Char('&'));
}

QString html(const std::string& text) {
    return toQString(text).toHtmlEscaped();
}

// The day at a glance as a compact table: a meal's heading and total, then its foods with their
// amounts and calories; what is left in large type; the notes in the placeholder colour.
QString glanceHtml(const DayGlance& g, const QPalette& palette) {
    const QString muted = palette.color(QPalette::PlaceholderText).name();
    QString out = QStringLiteral("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"1\">");
    for (const GlanceGroup& group : g.groups) {
        out += QStringLiteral(
                   "<tr><td colspan=\"2\" style=\"padding-top:6px\"><b>%1</b></td>"
                   "<td align=\"right\" style=\"padding-top:6px\"><b>%2</b></td></tr>")
                   .arg(html(group.heading), html(group.total));
        for (const GlanceLine& line : group.lines) {
            out +=
                QStringLiteral(
                    "<tr><td width=\"100%\">&nbsp;&nbsp;%1</td>"
                    "<td align=\"right\" style=\"color:%4; white-space:nowrap\">%2&nbsp;&nbsp;</td>"
                    "<td align=\"right\" style=\"white-space:nowrap\">%3</td></tr>")
                    .arg(html(line.name), html(line.amount), html(line.calories), muted);
        }
        if (!group.more.empty()) {
            out +=
                QStringLiteral("<tr><td colspan=\"3\" style=\"color:%2\">&nbsp;&nbsp;%1</td></tr>")
                    .arg(html(group.more), muted);
        }
    }
    if (!g.emptyText.empty()) {
        out += QStringLiteral("<tr><td colspan=\"3\" style=\"color:%2\">%1</td></tr>")
                   .arg(html(g.emptyText), muted);
    }
    out += QStringLiteral(
               "<tr><td colspan=\"2\" style=\"padding-top:8px\"><big><b>%1</b></big></td>"
               "<td align=\"right\" style=\"padding-top:8px\"><big><b>%2</b></big></td></tr>")
               .arg(html(g.leftLabel), html(g.leftValue));
    out += QStringLiteral("</table>");
    QStringList notes;
    notes << html(g.leftExplanation);
    if (!g.bmrNote.empty()) {
        notes << html(g.bmrNote);
    }
    out += QStringLiteral("<p style=\"color:%2; margin-top:2px\">%1</p>")
               .arg(notes.join(QStringLiteral("<br>")), muted);
    if (!g.targetLines.empty()) {
        QStringList targets;
        for (const std::string& line : g.targetLines) {
            targets << html(line);
        }
        out += QStringLiteral("<p>%1</p>").arg(targets.join(QStringLiteral("<br>")));
    }
    return out;
}

QString glancePlain(const DayGlance& g) {
    QStringList lines;
    for (const GlanceGroup& group : g.groups) {
        lines << toQString(group.heading) + QLatin1Char(' ') + toQString(group.total);
        for (const GlanceLine& line : group.lines) {
            lines << QStringLiteral("  %1  %2  %3")
                         .arg(toQString(line.name), toQString(line.amount),
                              toQString(line.calories));
        }
        if (!group.more.empty()) {
            lines << QStringLiteral("  ") + toQString(group.more);
        }
    }
    if (!g.emptyText.empty()) {
        lines << toQString(g.emptyText);
    }
    lines << toQString(g.leftLabel) + QLatin1Char(' ') + toQString(g.leftValue)
          << toQString(g.leftExplanation);
    if (!g.bmrNote.empty()) {
        lines << toQString(g.bmrNote);
    }
    for (const std::string& line : g.targetLines) {
        lines << toQString(line);
    }
    return lines.join(QLatin1Char('\n'));
}

}  // namespace

LogbookDialog::LogbookDialog(LogbookForm form, SessionNotifier& notifier, QWidget* parent,
                             LogbookOpeners openers)
    : LogbookScreen(notifier, parent, QStringLiteral("Logbook")),
      m_form(std::move(form)),
      m_openers(std::move(openers)),
      m_previous(arrowButton(kPreviousDayArt, QStringLiteral("Previous Day"), this)),
      m_date(new QPushButton(this)),
      m_next(arrowButton(kNextDayArt, QStringLiteral("Next Day"), this)),
      m_goal(new QLabel(this)),
      m_glance(new QLabel(this)),
      m_record(new QLabel(this)),
      m_water(new QSpinBox(this)),
      m_tabs(new QTabBar(this)) {
    buildMenus();

    m_date->setFlat(true);
    m_date->setAutoDefault(false);
    m_date->setAccessibleName(QStringLiteral("Date"));
    QFont dateFont = m_date->font();
    dateFont.setBold(true);
    m_date->setFont(dateFont);
    auto* dateRow = new QHBoxLayout;
    dateRow->addWidget(m_previous);
    dateRow->addWidget(m_date, 1);
    dateRow->addWidget(m_next);
    body()->addLayout(dateRow);

    const struct {
        const char* name;
        const char* unit;
        const char* button;
    } rows[5] = {{"Weight:", "", "&Weight"},
                 {"Meals:", "cal", "&Meals"},
                 {"BMR:", "cal", "&BMR"},
                 {"Exercise:", "cal", "E&xercise"},
                 {"Total:", "cal", nullptr}};
    auto* grid = new QGridLayout;
    QFont valueFont = font();
    valueFont.setPointSizeF(valueFont.pointSizeF() * 1.2);
    for (int i = 0; i < 5; ++i) {
        Row& row = m_rows[i];
        const int gridRow = i < 4 ? i : 5;  // the rule sits above the total
        row.name = new QLabel(QString::fromLatin1(rows[i].name), this);
        row.value = new QPushButton(this);
        row.value->setFlat(true);
        row.value->setFocusPolicy(Qt::NoFocus);  // the buttons beside are the keyboard's way
        row.value->setAutoDefault(false);
        row.value->setFont(valueFont);
        row.value->setStyleSheet(QStringLiteral("text-align: right; padding: 2px 6px;"));
        row.value->setAccessibleName(QString::fromLatin1(rows[i].name));
        row.unit = new QLabel(QString::fromLatin1(rows[i].unit), this);
        grid->addWidget(row.name, gridRow, 0);
        grid->addWidget(row.value, gridRow, 1);
        grid->addWidget(row.unit, gridRow, 2);
        if (rows[i].button != nullptr) {
            row.button = new QPushButton(QString::fromLatin1(rows[i].button), this);
            row.button->setAccessibleName(withoutMnemonic(row.button->text()));
            row.button->setAutoDefault(false);
            grid->addWidget(row.button, gridRow, 3);
        }
    }
    m_rows[0].button->setDefault(true);
    auto* rule = new QLabel(this);
    rule->setPixmap(QPixmap::fromImage(renderArt(kRuleArt, QSize(360, 6))));
    rule->setScaledContents(true);
    rule->setFixedHeight(6);
    rule->setAccessibleName(QStringLiteral("Rule"));
    grid->addWidget(rule, 4, 0, 1, 4);
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(6);
    body()->addLayout(grid);

    m_goal->setAlignment(Qt::AlignRight);
    m_goal->setAccessibleName(QStringLiteral("Goal"));
    body()->addWidget(m_goal);

    // The day at a glance fills the middle and scrolls when the day is long.
    m_glance->setTextFormat(Qt::RichText);
    m_glance->setWordWrap(true);
    m_glance->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_glance->setTextInteractionFlags(Qt::NoTextInteraction);
    m_glance->setAccessibleName(QStringLiteral("Day at a glance"));
    auto* glanceArea = new QScrollArea(this);
    glanceArea->setWidget(m_glance);
    glanceArea->setWidgetResizable(true);
    glanceArea->setFrameShape(QFrame::NoFrame);
    glanceArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    glanceArea->setFocusPolicy(Qt::NoFocus);
    body()->addWidget(glanceArea, 1);

    m_record->setAccessibleName(QStringLiteral("Record"));
    auto* waterLabel = new QLabel(QStringLiteral("W&ater:"), this);
    waterLabel->setBuddy(m_water);
    m_water->setRange(0, kMaxWater);
    m_water->setAccessibleName(QStringLiteral("Water:"));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_record);
    bottom->addStretch();
    bottom->addWidget(waterLabel);
    bottom->addWidget(m_water);
    body()->addLayout(bottom);

    for (const char* tab : {"Logbook", "Food Log", "Daily Journal", "Summary Table"}) {
        m_tabs->addTab(QString::fromLatin1(tab));
    }
    m_tabs->setTabEnabled(1, static_cast<bool>(m_openers.meals));
    m_tabs->setExpanding(true);
    m_tabs->setShape(QTabBar::TriangularSouth);
    m_tabs->setAccessibleName(QStringLiteral("Screens"));
    body()->addWidget(m_tabs);
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) {
        {
            // The strip stays on "Logbook": the other screens open over it.
            const QSignalBlocker block(m_tabs);
            m_tabs->setCurrentIndex(0);
        }
        switch (index) {
            case 1:
                openInjected(m_openers.meals);
                break;
            case 2:
                openDetail(m_openers.journal);
                break;
            case 3:
                openDetail(m_openers.summaryTable);
                break;
            default:
                break;
        }
    });

    connect(m_previous, &QToolButton::clicked, this,
            [this] { run(LogbookForm::Command::Previous); });
    connect(m_next, &QToolButton::clicked, this, [this] { run(LogbookForm::Command::Next); });
    connect(m_date, &QPushButton::clicked, this, &LogbookDialog::pickDate);
    const std::function<void()> actions[4] = {
        [this] { openDetail(m_openers.weighIn); }, [this] { openInjected(m_openers.meals); },
        [this] { openDetail(m_openers.bmr); }, [this] { openInjected(m_openers.exercise); }};
    for (int i = 0; i < 4; ++i) {
        connect(m_rows[i].button, &QPushButton::clicked, this, actions[i]);
        connect(m_rows[i].value, &QPushButton::clicked, this, actions[i]);
    }
    const bool opens[4] = {static_cast<bool>(m_openers.weighIn), static_cast<bool>(m_openers.meals),
                           static_cast<bool>(m_openers.bmr), static_cast<bool>(m_openers.exercise)};
    for (int i = 0; i < 4; ++i) {
        m_rows[i].button->setEnabled(opens[i]);
    }
    connect(m_water, &QSpinBox::valueChanged, this, [this] {
        if (m_refreshing) {
            return;  // the screen's own write
        }
        run(m_form.edit(LogbookForm::Field::Water, m_water->cleanText().toStdString()));
    });

    connect(&notifier, &SessionNotifier::dataChanged, this, &LogbookDialog::refresh);
    connect(&notifier, &SessionNotifier::dayCreated, this, &LogbookDialog::refresh);
    connect(&notifier, &SessionNotifier::userChanged, this, &LogbookDialog::refresh);
    connect(&notifier, &SessionNotifier::personalInfoReset, this, &LogbookDialog::refresh);
    refresh();
    m_rows[0].button->setFocus();
}

QAction* LogbookDialog::addCommand(QMenu* menu, const QString& text,
                                   const std::function<void()>& run,
                                   const QList<QKeySequence>& keys) {
    QAction* action = menu->addAction(text);
    if (run) {
        connect(action, &QAction::triggered, this, run);
    } else {
        action->setEnabled(false);
    }
    if (!keys.isEmpty()) {
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WindowShortcut);
        addAction(action);  // the keys work with the menu closed
    }
    return action;
}

QAction* LogbookDialog::addScreen(QMenu* menu, const QString& text, const ScreenMaker& make) {
    return addCommand(menu, text,
                      make ? std::function<void()>([this, &make] { openDetail(make); })
                           : std::function<void()>());
}

QAction* LogbookDialog::addScreen(QMenu* menu, const QString& text, const ScreenOpener& open) {
    return addCommand(menu, text,
                      open ? std::function<void()>([this, &open] { openInjected(open); })
                           : std::function<void()>());
}

void LogbookDialog::buildMenus() {
    enableStatusLine();
    using Command = LogbookForm::Command;
    using Prompts = LogbookForm::Prompts;
    const auto prompt = [](QAction* action, const char* text) {
        action->setStatusTip(QString::fromLatin1(text));
    };
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    prompt(addScreen(edit, QStringLiteral("&Weigh In"), m_openers.weighIn), Prompts::weighIn);
    prompt(addScreen(edit, QStringLiteral("&Meals"), m_openers.meals), Prompts::meals);
    prompt(addScreen(edit, QStringLiteral("&BMR"), m_openers.bmr), Prompts::bmr);
    prompt(addScreen(edit, QStringLiteral("&Exercise"), m_openers.exercise), Prompts::exercise);

    addOptionsMenu([this, &prompt](QMenu* options) {
        prompt(addScreen(options, QStringLiteral("Daily &Journal"), m_openers.journal),
               Prompts::journal);
        prompt(addScreen(options, QStringLiteral("Food &Budget"), m_openers.foodBudget),
               Prompts::foodBudget);
        prompt(addScreen(options, QStringLiteral("Food Budget Bo&x"), m_openers.foodBudgetBox),
               Prompts::foodBudget);
        prompt(addScreen(options, QStringLiteral("&Summary Table"), m_openers.summaryTable),
               Prompts::summaryTable);
        prompt(addScreen(options, QStringLiteral("&Weight Chart"), m_openers.weightChart),
               Prompts::weightChart);
        addScreen(options, QStringLiteral("&Historic Weight Chart"), m_openers.historicWeightChart);
        addScreen(options, QStringLiteral("Food &Catalogue"), m_openers.catalogue);
        options->addSeparator();
        addScreen(options, QStringLiteral("&Print..."), m_openers.printReport);
        addScreen(options, QStringLiteral("Export &PDF..."), m_openers.exportReport);
    });

    QMenu* record = menuBar()->addMenu(QStringLiteral("&Record"));
    prompt(addCommand(record, QStringLiteral("&Previous"), [this] { run(Command::Previous); },
                      {QKeySequence(Qt::Key_PageUp), QKeySequence(Qt::ALT | Qt::Key_Left)}),
           Prompts::previous);
    prompt(addCommand(record, QStringLiteral("&Next"), [this] { run(Command::Next); },
                      {QKeySequence(Qt::Key_PageDown), QKeySequence(Qt::ALT | Qt::Key_Right)}),
           Prompts::next);
    prompt(addCommand(record, QStringLiteral("&First"), [this] { run(Command::First); }),
           Prompts::first);
    prompt(addCommand(record, QStringLiteral("&Last"), [this] { run(Command::Last); }),
           Prompts::last);
    addCommand(record, QStringLiteral("&Today"), [this] { run(Command::Today); },
               {QKeySequence(Qt::Key_Home)});
    addCommand(record, QStringLiteral("&Go to Date..."), [this] { pickDate(); },
               {QKeySequence(Qt::CTRL | Qt::Key_G)});
    addScreen(record, QStringLiteral("&Copy Day To..."), m_openers.copyDay);
    record->addSeparator();
    QMenu* remove = record->addMenu(QStringLiteral("&Delete"));
    prompt(addCommand(remove, QStringLiteral("&Current Day"),
                      [this] { confirm(Command::DeleteCurrentDay); }),
           Prompts::deleteCurrentDay);
    prompt(addScreen(remove, QStringLiteral("&Range of Days..."), m_openers.dayRange),
           Prompts::deleteRange);
    prompt(addCommand(remove, QStringLiteral("&All Days"),
                      [this] { confirm(Command::DeleteAllDays); }),
           Prompts::deleteAll);
}

QAction* LogbookDialog::command(const QString& text) const {
    const std::function<QAction*(const QMenu*)> search = [&](const QMenu* menu) -> QAction* {
        for (QAction* a : menu->actions()) {
            if (a->menu() != nullptr) {
                if (QAction* found = search(a->menu())) {
                    return found;
                }
            } else if (withoutMnemonic(a->text()) == text) {
                return a;
            }
        }
        return nullptr;
    };
    for (QAction* top : menuBar()->actions()) {
        if (top->menu() != nullptr) {
            if (QAction* found = search(top->menu())) {
                return found;
            }
        }
    }
    return nullptr;
}

QString LogbookDialog::figureText(Figure figure) const {
    return m_rows[static_cast<int>(figure)].value->text();
}

QPushButton* LogbookDialog::figureButton(Figure figure) const {
    return m_rows[static_cast<int>(figure)].button;
}

QString LogbookDialog::dateText() const {
    return m_date->text();
}

QString LogbookDialog::recordText() const {
    return m_record->text();
}

QString LogbookDialog::goalText() const {
    return m_goal->text();
}

QString LogbookDialog::glanceText() const {
    return m_glance->accessibleDescription();
}

void LogbookDialog::refresh() {
    const LogbookView v = m_form.view();
    if (!v.userOpen) {
        return;  // no user open: the fields keep their texts
    }
    m_refreshing = true;
    const LogbookFigures& f = v.figures;
    m_date->setText(toQString(f.date));
    m_date->setAccessibleName(controlName(m_date->text(), QStringLiteral("Go to Date")));
    const std::string* values[5] = {&f.weight, &f.meals, &f.bmr, &f.exercise, &f.total};
    for (const Row& row : m_rows) {
        const QString value = toQString(*values[&row - m_rows]);
        row.value->setText(value);
        // A reader hears the figure with its caption and unit: "Meals: 1991 cal".
        row.value->setAccessibleName(
            figureName(row.name->text(), (value + QLatin1Char(' ') + row.unit->text())));
    }
    showFigure(m_record, QStringLiteral("Record"), toQString(f.record));
    showFigure(m_goal, QStringLiteral("Goal"), toQString(f.goal));
    m_glance->setText(glanceHtml(v.glance, palette()));
    m_glance->setAccessibleDescription(glancePlain(v.glance));
    m_glance->setAccessibleName(
        figureName(QStringLiteral("Day at a glance"), glancePlain(v.glance)));
    if (m_water->value() != v.water) {
        m_water->setValue(v.water);
    }
    m_refreshing = false;
}

void LogbookDialog::run(const Outcome& outcome) {
    (void)showOutcome(this, notifier(), outcome);
    refresh();
}

void LogbookDialog::run(LogbookForm::Command command) {
    run(m_form.command(command));
}

void LogbookDialog::openDetail(const ScreenMaker& make) {
    if (!make || !m_form.view().userOpen) {
        return;
    }
    // The screen saves what it changed when it closes; the logbook then shows it.
    openChild(make(this), [this](int) { refresh(); });
}

void LogbookDialog::openInjected(const ScreenOpener& opener) {
    if (!opener || !m_form.view().userOpen) {
        return;
    }
    opener(this);
    refresh();
}

void LogbookDialog::confirm(LogbookForm::Command command) {
    const std::optional<ScreenMessage> question = LogbookForm::confirmation(command);
    if (!question || !m_form.view().userOpen) {
        return;
    }
    std::unique_ptr<QMessageBox> box = makeMessageBox(this, *question);
    openChild(box.release(), [this, command](int result) {
        if (result == QMessageBox::Yes) {
            run(command);
        }
    });
}

void LogbookDialog::pickDate() {
    const LogbookView v = m_form.view();
    if (!v.userOpen) {
        return;
    }
    auto* picker = new CalendarPickerDialog(m_form.clock(), this);
    picker->setCaption(QString::fromLatin1(LogbookForm::pickDateCaption()));
    picker->setDate(v.date.year, v.date.month - 1, v.date.day);
    openChild(picker, [this, picker](int result) {
        if (result == QDialog::Accepted) {
            run(m_form.pickDate(
                LogbookForm::Field::Date,
                CalendarDate::fromDmy(picker->day(), picker->month() + 1, picker->year())));
        }
    });
}

}  // namespace nutrovex
