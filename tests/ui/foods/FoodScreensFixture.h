#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex::test {

// A catalogue food measured per reference serving.
inline FoodItem catalogueFood(const char* name, ServingQuantity reference, float calories,
                              float carbohydrate) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.setReference(reference);
    f.setServing(reference);
    f.setNutrient(kCalories, calories);
    f.setNutrient(kCarbohydrate, carbohydrate);
    f.setNutrient(kProtein, 1.0f);
    return f;
}

// A running session on a fresh root at noon on 10 March 2026: a small catalogue (pies among
// the sweets, fresh fruit, breads) and a day of four fruits and a bagel.
class FoodScreensTest : public ::testing::Test {
protected:
    FoodScreensTest() : clock(noon()) {
        FoodCatalogue empty;
        empty.renumberGroupChunks();
        ByteBuffer bytes;
        EXPECT_TRUE(writeCatalogueFile(empty, bytes).ok());
        session = std::make_unique<Session>(dir.path() / "root", clock, settings,
                                            std::span<const uint8_t>(bytes.data(), bytes.size()));
        std::string reason;
        EXPECT_EQ(session->start(reason), Session::Start::Running) << reason;
        EXPECT_TRUE(session->initialLoad().ok());
        notifier = std::make_unique<SessionNotifier>(*session);

        FoodCatalogue& c = session->catalogue();
        const Position pies = addCategory(c, 0, "Pies");
        (void)addFoodItem(c, 0, pies,
                          catalogueFood("Apple Pie", {1.0f, ServingUnit::Item, 0}, 320, 45));
        (void)addFoodItem(c, 0, pies,
                          catalogueFood("Pumpkin Pie", {1.0f, ServingUnit::Item, 0}, 290, 38));
        const Position fresh = addCategory(c, 4, "Fresh");
        (void)addFoodItem(c, 4, fresh,
                          catalogueFood("Apple", {100.0f, ServingUnit::Gram, 0}, 52, 13.8f));
        (void)addFoodItem(c, 4, fresh,
                          catalogueFood("Banana", {1.0f, ServingUnit::Item, 0}, 105, 27));
        const Position breads = addCategory(c, 5, "Breads");
        (void)addFoodItem(c, 5, breads,
                          catalogueFood("Bagel", {1.0f, ServingUnit::Item, 0}, 245, 48));

        session->days().ensureCurrentDay();
        DayRecord& day = *session->days().currentRecord();
        uint32_t key = 1;
        for (const char* name : {"Fig", "Kiwi", "Mango", "Plum"}) {
            FoodItem f = catalogueFood(name, {1.0f, ServingUnit::Item, 0}, 50, 12);
            f.group = 4;
            f.meal = 1;
            f.key.value = key++;
            (void)insertLoggedFood(day, f, 4, kSortByMeal);
        }
        FoodItem bagel = catalogueFood("Bagel", {1.0f, ServingUnit::Item, 0}, 245, 48);
        bagel.group = 5;
        bagel.key.value = key++;
        (void)insertLoggedFood(day, bagel, 5, kSortByMeal);
        session->store().header.keyCounter.value = key;
    }

    static CalendarDate noon() {
        CalendarDate d = CalendarDate::fromDmy(10, 3, 2026);
        d.hour = 12;
        return d;
    }

    DayRecord& today() { return *session->days().currentRecord(); }

    static std::vector<std::string> names(const FoodList& list) {
        std::vector<std::string> out;
        for (const FoodItem& f : list) {
            out.push_back(f.name.str());
        }
        return out;
    }

    FixedClock clock;
    MemorySettings settings;
    TempDir dir;
    std::unique_ptr<Session> session;
    std::unique_ptr<SessionNotifier> notifier;
};

// Runs act on the modal window of type T once the next modal loop shows it.
template <typename T>
void whenShown(std::function<void(T*)> act) {
    QTimer::singleShot(0, [act] {
        auto* w = qobject_cast<T*>(QApplication::activeModalWidget());
        ASSERT_NE(w, nullptr) << "no modal " << T::staticMetaObject.className();
        act(w);
    });
}

// Answers the next message box, remembering its text.
inline void answerBox(QMessageBox::StandardButton button, QString* text = nullptr) {
    whenShown<QMessageBox>([button, text](QMessageBox* box) {
        if (text) {
            *text = box->text();
        }
        box->button(button)->click();
    });
}

inline void showActive(QWidget& w) {
    w.show();
    // Another screen of the same test may still hold the activation; this one takes it.
    QApplication::setActiveWindow(&w);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
    ASSERT_EQ(QApplication::activeWindow(), &w);
}

}  // namespace nutrovex::test
