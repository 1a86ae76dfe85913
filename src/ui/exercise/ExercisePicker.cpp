#include "ui/exercise/ExercisePicker.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include "ui/TextConvert.h"

namespace nutrovex {

namespace {

void fill(QComboBox* combo, ExerciseNames names, int current) {
    const QSignalBlocker block(combo);
    QStringList wanted;
    for (const char* name : names) {
        wanted << toQString(name);
    }
    QStringList shown;
    for (int i = 0; i < combo->count(); ++i) {
        shown << combo->itemText(i);
    }
    if (shown != wanted) {
        combo->clear();
        combo->addItems(wanted);
    }
    combo->setCurrentIndex(current < combo->count() ? current : -1);
}

void setText(QLineEdit* edit, const std::string& text) {
    const QString shown = toQString(text);
    if (edit->text() != shown) {
        const QSignalBlocker block(edit);
        edit->setText(shown);
    }
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

ExercisePicker::ExercisePicker(QWidget* parent)
    : QWidget(parent),
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

    fill(m_type, ExerciseChoice::typeNames(), 0);
    using Field = ExerciseChoice::Field;
    const auto report = [this](Field field, const QString& text) {
        if (!m_showing) {
            Q_EMIT edited(field, text);
        }
    };
    // Choosing a type again, even the shown one, starts it afresh.
    connect(m_type, &QComboBox::activated, this,
            [this, report](int type) { report(Field::Type, m_type->itemText(type)); });
    connect(m_type, &QComboBox::currentIndexChanged, this, [this, report](int type) {
        if (type >= 0) {
            report(Field::Type, m_type->itemText(type));
        }
    });
    connect(m_variant, &QComboBox::currentIndexChanged, this, [this, report](int variant) {
        if (variant >= 0) {
            report(Field::Variant, m_variant->itemText(variant));
        }
    });
    connect(m_sub, &QComboBox::currentIndexChanged, this, [this, report](int sub) {
        if (sub >= 0) {
            report(Field::SubVariant, m_sub->itemText(sub));
        }
    });
    connect(m_name, &QLineEdit::textEdited, this, [report](const QString& text) {
        // A character the files cannot hold leaves the name as it was.
        if (fromQString(text)) {
            report(Field::Name, text);
        }
    });
    connect(m_minutes, &QLineEdit::textChanged, this,
            [report](const QString& text) { report(Field::Minutes, text); });
    connect(m_calories, &QLineEdit::textChanged, this,
            [report](const QString& text) { report(Field::Calories, text); });
    connect(m_caloriesButton, &QPushButton::clicked, this, &ExercisePicker::caloriesRequested);
}

void ExercisePicker::show(const ExerciseChoiceView& choice) {
    m_showing = true;
    {
        const QSignalBlocker block(m_type);
        m_type->setCurrentIndex(choice.type);
    }
    fill(m_variant, choice.variantNames, choice.variant);
    fill(m_sub, choice.subVariantNames, choice.subVariant);
    setText(m_name, choice.name);
    setText(m_minutes, choice.minutes);
    setText(m_calories, choice.calories);
    m_variant->setVisible(choice.variantsShown);
    m_variant->setEnabled(choice.variantsEnabled);
    m_sub->setVisible(choice.variantsShown);
    m_sub->setEnabled(choice.subVariantsEnabled);
    m_nameLabel->setVisible(choice.nameShown);
    m_name->setVisible(choice.nameShown);
    m_caloriesButton->setEnabled(choice.caloriesEnabled);
    m_showing = false;
}

QWidget* ExercisePicker::lastControl() const {
    return m_caloriesButton;
}

}  // namespace nutrovex
