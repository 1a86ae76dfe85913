#include "ui/foods/FoodFieldsWidget.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include "core/ServingUnits.h"
#include "foods/FoodLogRows.h"
#include "ui/TextConvert.h"
#include "ui/controls/NumericEdit.h"
#include "ui/foods/FoodScreens.h"

namespace nutrovex {

namespace {

// The gram fields in the order they stand on the screen.
constexpr std::array<int, 5> kGramRows{kCarbohydrate, kFiber, kProtein, kFat, kSaturatedFat};
const char* const kGramLabels[kNutrientCount] = {
    "", "Car&b:", "F&iber:", "&Prot:", "F&at:", "&SFat:"};

void showNumber(NumericEdit* edit, std::optional<double> value) {
    const QSignalBlocker block(edit);
    if (value) {
        edit->setValue(*value);
    } else {
        edit->setText(QString());
        edit->commit();
    }
}

std::optional<double> numberOf(const NumericEdit* edit) {
    return edit->hasValue() ? std::optional<double>(edit->value()) : std::nullopt;
}

}  // namespace

FoodFieldsWidget::FoodFieldsWidget(QWidget* parent, const QString& mealLabel)
    : QWidget(parent),
      m_amount(new NumericEdit(this)),
      m_unit(new QComboBox(this)),
      m_calories(new QLineEdit(this)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    auto addRow = [&](const QString& text, QWidget* field, QWidget* after) {
        auto* label = new QLabel(text, this);
        label->setBuddy(field);
        field->setAccessibleName(accessibleText(text));
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
        if (after) {
            grid->addWidget(after, row, 2);
        }
        m_labels[static_cast<std::size_t>(row)] = label;
        ++row;
    };

    m_amount->setFormat(kAmountDecimals, false);
    m_amount->setRange(0.0, kMaxServingAmount);
    m_amount->setMaxLength(static_cast<int>(kAmountFieldChars));
    m_unit->setAccessibleName(QStringLiteral("Serving unit"));
    addRow(QStringLiteral("Ser&ving Size:"), m_amount, m_unit);

    m_calories->setMaxLength(static_cast<int>(kCaloriesFieldChars));
    m_calories->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), m_calories));
    m_calories->installEventFilter(this);
    addRow(QStringLiteral("&Cal:"), m_calories, nullptr);

    for (const int n : kGramRows) {
        auto* edit = new NumericEdit(this);
        edit->setFormat(kGramDecimals, false);
        edit->setRange(0.0, kMaxGramField);
        edit->setMaxLength(static_cast<int>(kGramFieldChars));
        m_grams[static_cast<std::size_t>(n)] = edit;
        addRow(QString::fromLatin1(kGramLabels[n]), edit, new QLabel(QStringLiteral("g"), this));
        connect(edit, &NumericEdit::valueCommitted, this,
                [this, n, edit] { Q_EMIT gramsEdited(n, numberOf(edit)); });
    }
    if (!mealLabel.isEmpty()) {
        m_meal = new QComboBox(this);
        for (int meal = 0; meal < kMealCount; ++meal) {
            m_meal->addItem(QString::fromLatin1(mealName(static_cast<uint16_t>(meal))));
        }
        addRow(mealLabel, m_meal, nullptr);
    }
    grid->setColumnStretch(1, 1);

    // Only a changed amount recomputes the values: passing through the field keeps what was typed.
    connect(m_amount, &NumericEdit::valueCommitted, this, [this] {
        const std::optional<double> amount = numberOf(m_amount);
        if (amount != m_shownAmount) {
            m_shownAmount = amount;
            Q_EMIT amountCommitted(amount);
        }
    });
    connect(m_unit, &QComboBox::activated, this, [this](int index) { Q_EMIT unitChosen(index); });
    connect(m_calories, &QLineEdit::textEdited, this,
            [this] { Q_EMIT caloriesEdited(typedCalories()); });
}

std::optional<uint32_t> FoodFieldsWidget::typedCalories() const {
    bool ok = false;
    const uint32_t value = m_calories->text().toUInt(&ok);
    return ok ? std::optional<uint32_t>(value) : std::nullopt;
}

bool FoodFieldsWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_calories && event->type() == QEvent::FocusOut) {
        Q_EMIT caloriesLeft();
    }
    return QWidget::eventFilter(watched, event);
}

void FoodFieldsWidget::show(const FoodValueFields& fields) {
    showNumber(m_amount, fields.amount);
    m_shownAmount = numberOf(m_amount);
    {
        const QSignalBlocker block(m_unit);
        m_unit->clear();
        for (const ServingUnit unit : fields.units) {
            m_unit->addItem(QString::fromLatin1(unitName(unit)));
        }
        m_unit->setCurrentIndex(fields.unitIndex);
    }
    const QSignalBlocker blockCalories(m_calories);
    m_calories->setText(fields.calories ? QString::number(*fields.calories) : QString());
    for (const int n : kGramRows) {
        showNumber(m_grams[static_cast<std::size_t>(n)], fields.grams[static_cast<std::size_t>(n)]);
    }
    if (m_meal) {
        const QSignalBlocker block(m_meal);
        m_meal->setCurrentIndex(fields.meal);
    }
}

void FoodFieldsWidget::read(FoodValueFields& fields) {
    // A field left earlier was read when it lost the focus; reading it again would take the
    // number it shows since (0.0 for an emptied field) for a typed one.
    if (m_amount->hasFocus()) {
        m_amount->commit();
    }
    fields.calories = typedCalories();
    for (const int n : kGramRows) {
        NumericEdit* edit = m_grams[static_cast<std::size_t>(n)];
        if (edit->hasFocus()) {
            const QSignalBlocker block(edit);
            edit->commit();
        }
        fields.grams[static_cast<std::size_t>(n)] = numberOf(edit);
    }
    if (m_meal) {
        fields.meal = m_meal->currentIndex();
    }
}

void FoodFieldsWidget::setValuesEnabled(bool enabled) {
    for (QWidget* w : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        w->setEnabled(enabled);
    }
}

QWidget* FoodFieldsWidget::widgetFor(FoodField field) const {
    switch (field) {
        case FoodField::Amount:
            return m_amount;
        case FoodField::Unit:
            return m_unit;
        case FoodField::Calories:
            return m_calories;
        case FoodField::Carbohydrate:
            return m_grams[kCarbohydrate];
        case FoodField::Fiber:
            return m_grams[kFiber];
        case FoodField::Protein:
            return m_grams[kProtein];
        case FoodField::Fat:
            return m_grams[kFat];
        case FoodField::SaturatedFat:
            return m_grams[kSaturatedFat];
        default:
            return nullptr;
    }
}

QWidget* FoodFieldsWidget::lastField() const {
    return m_meal ? static_cast<QWidget*>(m_meal) : m_grams[kSaturatedFat];
}

}  // namespace nutrovex
