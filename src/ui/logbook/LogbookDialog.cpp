#include "ui/logbook/LogbookDialog.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "session/Session.h"
#include "ui/Resources.h"
#include "ui/TextConvert.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/AboutDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/WaitCursor.h"
#include "ui/logbook/ActivityDialog.h"
#include "ui/logbook/DayRangeDialog.h"
#include "ui/logbook/FoodBudgetDialogs.h"
#include "ui/logbook/JournalDialog.h"
#include "ui/logbook/SummaryTableDialog.h"
#include "ui/logbook/WeighInDialog.h"

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

}  // namespace

LogbookDialog::LogbookDialog(SessionNotifier& notifier, QWidget* parent, LogbookOpeners openers)
    : LogbookScreen(notifier, parent, QStringLiteral("Logbook")),
      m_logbook(notifier.session().days()),
      m_openers(std::move(openers)),
      m_previous(arrowButton(kPreviousDayArt, QStringLiteral("Previous Day"), this)),
      m_date(new QPushButton(this)),
      m_next(arrowButton(kNextDayArt, QStringLiteral("Next Day"), this)),
      m_goal(new QLabel(this)),
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
    body()->addStretch(1);

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
                openInjected(m_openers.meals, true);
                break;
            case 2:
                journal();
                break;
            case 3:
                if (this->notifier().session().userOpen()) {
                    openDetail(new SummaryTableDialog(this->notifier(), this));
                }
                break;
            default:
                break;
        }
    });

    connect(m_previous, &QToolButton::clicked, this, [this] { run(m_logbook.previous()); });
    connect(m_next, &QToolButton::clicked, this, [this] { run(m_logbook.next()); });
    connect(m_date, &QPushButton::clicked, this, &LogbookDialog::pickDate);
    const std::function<void()> actions[4] = {
        [this] { weighIn(); }, [this] { openInjected(m_openers.meals, true); }, [this] { bmr(); },
        [this] { openInjected(m_openers.exercise, true); }};
    for (int i = 0; i < 4; ++i) {
        connect(m_rows[i].button, &QPushButton::clicked, this, actions[i]);
        connect(m_rows[i].value, &QPushButton::clicked, this, actions[i]);
    }
    m_rows[1].button->setEnabled(static_cast<bool>(m_openers.meals));
    m_rows[3].button->setEnabled(static_cast<bool>(m_openers.exercise));
    connect(m_water, &QSpinBox::valueChanged, this, [this](int value) {
        if (m_refreshing) {
            return;  // the form's own write
        }
        const Notices n = m_logbook.waterChanged(true, QString::number(value).toStdString());
        showFailure(this, this->notifier().apply(n));
        refresh();
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

void LogbookDialog::buildMenus() {
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    addCommand(edit, QStringLiteral("&Weigh In"), [this] { weighIn(); });
    addCommand(edit, QStringLiteral("&Meals"),
               m_openers.meals
                   ? std::function<void()>([this] { openInjected(m_openers.meals, true); })
                   : std::function<void()>());
    addCommand(edit, QStringLiteral("&BMR"), [this] { bmr(); });
    addCommand(edit, QStringLiteral("&Exercise"),
               m_openers.exercise
                   ? std::function<void()>([this] { openInjected(m_openers.exercise, true); })
                   : std::function<void()>());

    addOptionsMenu([this](QMenu* options) {
        addCommand(options, QStringLiteral("Daily &Journal"), [this] { journal(); });
        addCommand(options, QStringLiteral("Food &Budget"),
                   [this] { openDetail(new FoodBudgetDialog(notifier(), this)); });
        addCommand(options, QStringLiteral("Food Budget Bo&x"),
                   [this] { openDetail(new FoodBudgetBoxDialog(notifier(), this)); });
        addCommand(options, QStringLiteral("&Summary Table"),
                   [this] { openDetail(new SummaryTableDialog(notifier(), this)); });
        const auto injected = [this](const std::function<void(QWidget*)>& opener) {
            return opener ? std::function<void()>([this, &opener] { openInjected(opener, false); })
                          : std::function<void()>();
        };
        addCommand(options, QStringLiteral("&Weight Chart"), injected(m_openers.weightChart));
        addCommand(options, QStringLiteral("&Historic Weight Chart"),
                   injected(m_openers.historicWeightChart));
        addCommand(options, QStringLiteral("Food &Catalogue"), injected(m_openers.catalogue));
    });

    QMenu* record = menuBar()->addMenu(QStringLiteral("&Record"));
    addCommand(record, QStringLiteral("&Previous"), [this] { run(m_logbook.previous()); },
               {QKeySequence(Qt::Key_PageUp), QKeySequence(Qt::ALT | Qt::Key_Left)});
    addCommand(record, QStringLiteral("&Next"), [this] { run(m_logbook.next()); },
               {QKeySequence(Qt::Key_PageDown), QKeySequence(Qt::ALT | Qt::Key_Right)});
    addCommand(record, QStringLiteral("&First"), [this] { run(m_logbook.first()); });
    addCommand(record, QStringLiteral("&Last"), [this] { run(m_logbook.last()); });
    addCommand(record, QStringLiteral("&Today"),
               [this] { run(m_logbook.pickDate(notifier().session().clock().now())); },
               {QKeySequence(Qt::Key_Home)});
    addCommand(record, QStringLiteral("&Go to Date..."), [this] { pickDate(); },
               {QKeySequence(Qt::CTRL | Qt::Key_G)});
    record->addSeparator();
    QMenu* remove = record->addMenu(QStringLiteral("&Delete"));
    addCommand(remove, QStringLiteral("&Current Day"), [this] {
        confirm(Logbook::confirmDeleteCurrentDay(),
                [this] { return m_logbook.deleteCurrentDay(); });
    });
    addCommand(remove, QStringLiteral("&Range of Days..."), [this] { deleteRange(); });
    addCommand(remove, QStringLiteral("&All Days"), [this] {
        confirm(Logbook::confirmDeleteAllDays(), [this] { return m_logbook.deleteAllDays(); });
    });
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

void LogbookDialog::refresh() {
    const std::optional<LogbookFigures> f = m_logbook.figures();
    if (!f) {
        return;  // no user open: the fields keep their texts
    }
    m_refreshing = true;
    m_date->setText(toQString(f->date));
    const std::string* values[5] = {&f->weight, &f->meals, &f->bmr, &f->exercise, &f->total};
    for (int i = 0; i < 5; ++i) {
        m_rows[i].value->setText(toQString(*values[i]));
    }
    m_record->setText(toQString(f->record));
    m_goal->setText(toQString(f->goal));
    const int water = QString::fromStdString(f->water).toInt();
    if (m_water->value() != water) {
        m_water->setValue(water);
    }
    m_refreshing = false;
}

void LogbookDialog::run(const Notices& notices) {
    showFailure(this, notifier().apply(notices));
    refresh();
}

void LogbookDialog::thenSave() {
    WaitCursor wait;
    showFailure(this, notifier().applyAndSave(Notices{.userData = true, .dataChanged = true}));
    refresh();
}

void LogbookDialog::openDetail(QDialog* screen) {
    openChild(screen, [this](int) { refresh(); });
}

void LogbookDialog::openInjected(const std::function<void(QWidget*)>& opener, bool save) {
    if (!opener || !notifier().session().userOpen()) {
        return;
    }
    opener(this);
    if (save) {
        thenSave();
    } else {
        refresh();
    }
}

void LogbookDialog::confirm(const ScreenMessage& message, const std::function<Notices()>& onYes) {
    if (!notifier().session().userOpen()) {
        return;
    }
    std::unique_ptr<QMessageBox> box = makeMessageBox(this, message);
    openChild(box.release(), [this, onYes](int result) {
        if (result == QMessageBox::Yes) {
            run(onYes());
        }
    });
}

void LogbookDialog::weighIn() {
    if (notifier().session().userOpen()) {
        openChild(new WeighInDialog(notifier(), this, m_openers.weightChart),
                  [this](int) { thenSave(); });
    }
}

void LogbookDialog::bmr() {
    if (notifier().session().userOpen()) {
        openChild(new ActivityDialog(notifier(), this), [this](int) { thenSave(); });
    }
}

void LogbookDialog::journal() {
    if (notifier().session().userOpen()) {
        openChild(new JournalDialog(notifier(), this), [this](int) { thenSave(); });
    }
}

void LogbookDialog::pickDate() {
    if (!notifier().session().userOpen()) {
        return;
    }
    auto* picker = new CalendarPickerDialog(notifier().session().clock(), this);
    picker->setCaption(QString::fromLatin1(Logbook::pickDateCaption()));
    const CalendarDate& current = notifier().session().days().currentDate();
    picker->setDate(current.year, current.month - 1, current.day);
    openChild(picker, [this, picker](int result) {
        if (result == QDialog::Accepted) {
            run(m_logbook.pickDate(
                CalendarDate::fromDmy(picker->day(), picker->month() + 1, picker->year())));
        }
    });
}

void LogbookDialog::deleteRange() {
    if (!notifier().session().userOpen()) {
        return;
    }
    auto* dialog = new DayRangeDialog(notifier(), this);
    openChild(dialog, [this, dialog](int result) {
        if (result == QDialog::Accepted) {
            run(m_logbook.deleteRange(dialog->range()));
        }
    });
}

}  // namespace nutrovex
