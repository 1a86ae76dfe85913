#pragma once

#include <QAbstractScrollArea>
#include <vector>

#include "calc/FoodBudget.h"
#include "forms/logbook/FoodBudgetForms.h"
#include "ui/controls/PaintedText.h"
#include "ui/logbook/LogbookScreen.h"

class QLabel;

namespace nutrovex {

// The food budget page as painted text: each section's heading, then its rows, the value drawn
// 100 dialog units right of where its label starts; a row without a label wraps across the page.
class FoodBudgetPage : public QAbstractScrollArea, public PaintedText {
    Q_OBJECT

public:
    explicit FoodBudgetPage(QWidget* parent = nullptr);

    // Headings, and each row as "label: value", for a reader.
    [[nodiscard]] QStringList shownLines() const override;

    void setSections(std::vector<BudgetSection> sections);
    [[nodiscard]] const std::vector<BudgetSection>& sections() const { return m_sections; }
    // The page's full height at the viewport's width.
    [[nodiscard]] int contentHeight() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Walks the page top to bottom at the given width; draw paints when a painter is given.
    int lay(int width, QPainter* painter) const;
    void syncScrollBar();

    std::vector<BudgetSection> m_sections;
};

// The scrolling food budget page of the logbook's current date.
class FoodBudgetDialog : public LogbookScreen {
    Q_OBJECT

public:
    FoodBudgetDialog(FoodBudgetForm form, SessionNotifier& notifier, QWidget* parent);
    [[nodiscard]] FoodBudgetPage* page() const { return m_page; }

private:
    void refresh();
    FoodBudgetForm m_form;
    FoodBudgetPage* m_page;
};

// The compact food budget box: the budget, the formula and the daily calorie goal.
class FoodBudgetBoxDialog : public LogbookScreen {
    Q_OBJECT

public:
    FoodBudgetBoxDialog(FoodBudgetBoxForm form, SessionNotifier& notifier, QWidget* parent);
    [[nodiscard]] QString budgetText() const;
    [[nodiscard]] QString goalText() const;

private:
    void refresh();
    FoodBudgetBoxForm m_form;
    QLabel* m_budget;
    QLabel* m_caption;
    QLabel* m_goal;
};

}  // namespace nutrovex
