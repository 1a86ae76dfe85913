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
    m_amount->setStartValue(1.0);  // one serving
    m_amount->setMaxLength(static_cast<int>(kAmountFieldChars));
    m_unit->setAccessibleName(QStringLiteral("Serving unit"));
    addRow(QStringLiteral("Ser&ving Size:"), m_amount, m_unit);

    m_calories->setMaxLength(static_cast<int>(kCaloriesFieldChars));
    m_calories->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), m_calories));
    m_calories->installEventFilter(this);
    addRow(QStringLiteral("&Cal:"), m_calories, new QLabel(QStringLiteral("cal"), this));

    for (const int n : kGramRows) {
        auto* edit = new NumericEdit(this);
        edit->setFormat(kGramDecimals, false);
        edit->setRange(0.0, kMaxGramField);
        edit->setMaxLength(static_cast<int>(kGramFieldChars));
        m_grams[static_cast<std::size_t>(n)] = edit;
        addRow(QString::fromLatin1(kGramLabels[n]), edit, new QLabel(QStringLiteral("g"), this));
        connect(edit, &NumericEdit::valueCommitted, this, [this, n] { reportGrams(n); });
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
            Q_EMIT edited(FoodField::Amount, toQString(numberText(amount)));
        }
    });
    connect(m_unit, &QComboBox::activated, this,
            [this](int index) { Q_EMIT edited(FoodField::Unit, m_unit->itemText(index)); });
    if (m_meal) {
        connect(m_meal, &QComboBox::activated, this,
                [this](int index) { Q_EMIT edited(FoodField::Meal, m_meal->itemText(index)); });
    }
}

void FoodFieldsWidget::reportGrams(int nutrient) {
    const FoodField fields[kNutrientCount] = {FoodField::None,  FoodField::Carbohydrate,
                                              FoodField::Fiber, FoodField::Protein,
                                              FoodField::Fat,   FoodField::SaturatedFat};
    const NumericEdit* edit = m_grams[static_cast<std::size_t>(nutrient)];
    Q_EMIT edited(fields[nutrient], toQString(numberText(numberOf(edit))));
}

bool FoodFieldsWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_calories && event->type() == QEvent::FocusOut) {
        Q_EMIT edited(FoodField::Calories, m_calories->text());
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

void FoodFieldsWidget::commitAll() {
    // The focused number first, before anything shown again could replace what was typed; a
    // field left earlier was reported when it lost the focus.
    for (NumericEdit* edit : m_grams) {
        if (edit != nullptr && edit->hasFocus()) {
            edit->commit();
        }
    }
    if (m_amount->hasFocus()) {
        m_amount->commit();
    }
    Q_EMIT edited(FoodField::Calories, m_calories->text());
    for (const int n : kGramRows) {
        reportGrams(n);
    }
    if (m_meal) {
        Q_EMIT edited(FoodField::Meal, m_meal->currentText());
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
