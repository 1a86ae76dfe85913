#include "ui/exercise/ExercisePicker.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include "logbook/ExerciseLog.h"
#include "ui/TextConvert.h"

namespace nutrovex {

namespace {

void fill(QComboBox* combo, ExerciseNames names, int current) {
    const QSignalBlocker block(combo);
    combo->clear();
    for (const char* name : names) {
        combo->addItem(toQString(name));
    }
    combo->setCurrentIndex(current < combo->count() ? current : -1);
}

QLineEdit* numberEdit(QWidget* parent, const QString& name) {
    auto* edit = new QLineEdit(parent);
    // Whole numbers: the edits read as 16-bit counts.
    edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,5}")), edit));
    edit->setAccessibleName(name);
    return edit;
}

}  // namespace

ExercisePicker::ExercisePicker(ExerciseForm& form, DayCursor& days,
                               std::function<bool(const ScreenMessage&)> present, QWidget* parent)
    : QWidget(parent),
      m_form(&form),
      m_days(&days),
      m_present(std::move(present)),
      m_type(new QComboBox(this)),
      m_variant(new QComboBox(this)),
      m_sub(new QComboBox(this)),
      m_nameLabel(new QLabel(QStringLiteral("&Name:"), this)),
      m_name(new QLineEdit(this)),
      m_minutes(numberEdit(this, QStringLiteral("Minutes:"))),
      m_calories(numberEdit(this, QStringLiteral("Calories:"))),
      m_caloriesButton(new QPushButton(QStringLiteral("&Calories"), this)) {
    m_type->setAccessibleName(QStringLiteral("Exercise"));
    m_variant->setAccessibleName(QStringLiteral("Variant"));
    m_sub->setAccessibleName(QStringLiteral("Sub-variant"));
    m_name->setAccessibleName(QStringLiteral("Name:"));
    m_name->setMaxLength(static_cast<int>(kExerciseNameLimit));
    m_nameLabel->setBuddy(m_name);
    m_caloriesButton->setAccessibleName(QStringLiteral("Calories"));
    m_caloriesButton->setAutoDefault(false);
    auto* minutesLabel = new QLabel(QStringLiteral("&Minutes:"), this);
    minutesLabel->setBuddy(m_minutes);
    auto* caloriesLabel = new QLabel(QStringLiteral("Calo&ries:"), this);
    caloriesLabel->setBuddy(m_calories);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(m_type, 0, 0, 1, 3);
    grid->addWidget(m_variant, 1, 0, 1, 3);
    grid->addWidget(m_sub, 2, 0, 1, 3);
    grid->addWidget(m_nameLabel, 3, 0);
    grid->addWidget(m_name, 3, 1, 1, 2);
    grid->addWidget(minutesLabel, 4, 0);
    grid->addWidget(m_minutes, 4, 1);
    grid->addWidget(caloriesLabel, 5, 0);
    grid->addWidget(m_calories, 5, 1);
    grid->addWidget(m_caloriesButton, 4, 2, 2, 1);
    grid->setColumnStretch(1, 1);

    fill(m_type, ExerciseCursor::typeNames(), m_form->selection().type());
    connect(m_type, &QComboBox::activated, this, [this](int type) {
        m_form->chooseType(static_cast<int16_t>(type));
        showForm();
    });
    connect(m_type, &QComboBox::currentIndexChanged, this, [this](int type) {
        if (type >= 0 && type != m_form->selection().type()) {
            m_form->chooseType(static_cast<int16_t>(type));
            showForm();
        }
    });
    connect(m_variant, &QComboBox::currentIndexChanged, this, [this](int variant) {
        if (variant >= 0) {
            m_form->chooseVariant(static_cast<int16_t>(variant));
            fillSubVariants();
        }
    });
    connect(m_sub, &QComboBox::currentIndexChanged, this, [this](int sub) {
        if (sub >= 0) {
            m_form->chooseSubVariant(static_cast<int16_t>(sub));
        }
    });
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_form->name = fromQString(text).value_or(m_form->name);
    });
    connect(m_minutes, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_form->minutes = text.toStdString();
        updateStates();
    });
    connect(m_calories, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_form->calories = text.toStdString();
        updateStates();
    });
    connect(m_caloriesButton, &QPushButton::clicked, this, [this] {
        if (const std::optional<ScreenMessage> refusal =
                m_form->computeCalories(m_days->currentRecord())) {
            (void)m_present(*refusal);
            m_minutes->setFocus();
        }
        const QSignalBlocker block(m_calories);
        m_calories->setText(QString::fromStdString(m_form->calories));
        updateStates();
    });
    showForm();
}

void ExercisePicker::showForm() {
    {
        const QSignalBlocker block(m_type);
        m_type->setCurrentIndex(m_form->selection().type());
    }
    fillVariants();
    {
        const QSignalBlocker a(m_name);
        const QSignalBlocker b(m_minutes);
        const QSignalBlocker c(m_calories);
        m_name->setText(toQString(m_form->name));
        m_minutes->setText(QString::fromStdString(m_form->minutes));
        m_calories->setText(QString::fromStdString(m_form->calories));
    }
    updateStates();
}

void ExercisePicker::fillVariants() {
    const ExerciseCursor& c = m_form->selection();
    fill(m_variant, c.variantNames(), c.variant());
    fillSubVariants();
}

void ExercisePicker::fillSubVariants() {
    const ExerciseCursor& c = m_form->selection();
    fill(m_sub, c.subVariantNames(), c.subVariant());
    updateStates();
}

void ExercisePicker::updateStates() {
    m_variant->setVisible(m_form->variantsShown());
    m_variant->setEnabled(m_form->variantsEnabled());
    m_sub->setVisible(m_form->variantsShown());
    m_sub->setEnabled(m_form->subVariantsEnabled());
    m_nameLabel->setVisible(m_form->nameShown());
    m_name->setVisible(m_form->nameShown());
    m_caloriesButton->setEnabled(m_form->caloriesEnabled());
    Q_EMIT editsChanged();
}

QWidget* ExercisePicker::lastControl() const {
    return m_caloriesButton;
}

}  // namespace nutrovex
