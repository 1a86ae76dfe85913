#include "tool/DemoLogbook.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "calc/Goals.h"
#include "calc/Totals.h"
#include "charts/MeasuredMaintenance.h"
#include "core/Cp1252.h"
#include "forms/exercise/ExerciseLogForm.h"
#include "forms/foods/LogFoodForm.h"
#include "forms/logbook/JournalForm.h"
#include "forms/logbook/LogbookForm.h"
#include "forms/logbook/WeighInForm.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserFile.h"
#include "storage/UserStorage.h"
#include "tool/IniSettings.h"

namespace nutrovex::tool {

namespace {

// The standard fixes mt19937's output but not its distributions: our own draws on top of it make
// the same logbook with every standard library.
class DemoRandom {
public:
    explicit DemoRandom(uint32_t seed) : m_engine(seed) {}
    double uniform() { return m_engine() / 4294967296.0; }
    bool chance(double p) { return uniform() < p; }
    int between(int lo, int hi) {  // both included
        return lo + static_cast<int>(uniform() * (hi - lo + 1));
    }
    // Roughly normal, mean 0, the given spread.
    double noise(double spread) {
        double sum = 0.0;
        for (int i = 0; i < 12; ++i) {
            sum += uniform();
        }
        return (sum - 6.0) * spread;
    }

private:
    std::mt19937 m_engine;
};

// A catalogue food with the portions a person would eat of it, as multiples of its serving.
struct CatalogueFood {
    int group;
    int category;
    int item;
    float calories;  // for the catalogue's own serving
    bool served;     // measured as people serve it (an item, a cup, an ounce), not weighed
    std::array<double, 3> portions;  // 0 where there are fewer
};

// Grams a person eats of a weighed food of each group, at a time: a knob of butter, a piece of
// cheese, a piece of meat, a side of vegetables, a fruit, a bowl of rice, a glass, a dish.
constexpr std::array<double, kFoodGroupCount> kWeighedPortion = {15,  40, 120, 100,
                                                                 130, 75, 250, 200};

// Whether a food is eaten as it is, not an ingredient of something cooked: no flour, oil, spice,
// sauce, drink mix, organ meat or raw meat.
bool eatenAsItIs(std::string_view category, std::string_view name, int group) {
    constexpr std::string_view kIngredientCategories[] = {"Flours",
                                                          "Grains and Flours",
                                                          "Tortillas and Dough",
                                                          "Fats and Oils",
                                                          "Oils",
                                                          "Spices and Herbs",
                                                          "Sauces and Gravies",
                                                          "Drink Mixes",
                                                          "Cream",
                                                          "Salad Dressings",
                                                          "Beef variety meats",
                                                          "Pork variety meats",
                                                          "Chicken giblets",
                                                          "Game A-T",
                                                          "Game U-Z"};
    for (const std::string_view c : kIngredientCategories) {
        if (category.starts_with(c)) {
            return false;
        }
    }
    constexpr std::string_view kIngredientWords[] = {
        "dry", "dried", "mix", "powder", "uncooked", "flour", "dehydrated", "concentrate"};
    for (const std::string_view w : kIngredientWords) {
        if (name.find(w) != std::string_view::npos) {
            return false;
        }
    }
    // Fruit and vegetables are eaten raw; meat, fish and grains are not.
    return group == 3 || group == 4 || name.find("raw") == std::string_view::npos;
}

// The portions of a food: weighed foods by what a person eats of their group, household
// measures as they come (one drink, one cup or half of one, one or two small items).
std::array<double, 3> portionsOf(const FoodItem& food, std::string_view category, int group,
                                 float calories) {
    const double amount = food.serving.amount > 0.0f ? food.serving.amount : 1.0;
    switch (food.serving.unit) {
        case ServingUnit::Gram:
        case ServingUnit::Kilogram: {
            const double grams = food.serving.unit == ServingUnit::Gram ? amount : amount * 1000.0;
            const double portion = kWeighedPortion[static_cast<std::size_t>(group)] / grams;
            return {portion, portion * 1.5, 0.0};
        }
        case ServingUnit::FluidOunce:
        case ServingUnit::Millilitre:
        case ServingUnit::Litre:
        case ServingUnit::Pint:
        case ServingUnit::Quart:
        case ServingUnit::Gallon:
            return {1.0, 0.0, 0.0};
        case ServingUnit::Cup: {
            // A cup of soup, milk or vegetables; a quarter of one of cheese, nuts or crackers.
            constexpr std::string_view kByTheHandful[] = {"Cheese", "Nuts",   "Peanuts",
                                                          "Seeds",  "Snacks", "Crackers"};
            for (const std::string_view c : kByTheHandful) {
                if (category.starts_with(c)) {
                    return {0.25, 0.5, 0.0};
                }
            }
            return {1.0, 0.5, 0.0};
        }
        case ServingUnit::Ounce:
            return {1.0, 2.0, 3.0};
        case ServingUnit::Pound:
            return {0.25, 0.5, 0.0};
        case ServingUnit::Item:
            // One or two eggs, slices or cookies.
            return {1.0, calories < 150.0f ? 2.0 : 0.0, 0.0};
        case ServingUnit::Pinch:
        case ServingUnit::Teaspoon:
        case ServingUnit::Tablespoon:
            return {1.0, 0.0, 0.0};
    }
    return {1.0, 0.0, 0.0};
}

enum Meal { kBreakfast, kLunch, kDinner, kSnack };

// Which food groups a meal draws on (the eight groups are fixed by the file format).
const std::array<std::vector<int>, 4> kMealGroups = {{
    {5, 1, 2, 4},     // breakfast: bread and cereal, milk, eggs, fruit
    {5, 2, 3, 7, 1},  // lunch
    {2, 3, 5, 2},     // dinner: meat counts twice
    {4, 7, 1, 0, 6},  // snack
}};
constexpr std::array<double, 4> kMealShare = {0.25, 0.30, 0.35, 0.10};

struct DemoExercise {
    int16_t type;
    int16_t variant;
    int16_t sub;
    int minMinutes;
    int maxMinutes;
};
// Walking, outdoor cycling, moderate weight lifting, an easy run, swimming.
constexpr DemoExercise kExercises[] = {
    {23, 0, 0, 30, 60}, {2, 1, 1, 30, 60},   {24, 0, -1, 20, 45},
    {15, 0, 0, 20, 35}, {20, 0, -1, 30, 45},
};

const std::vector<const char*> kWeekdayNotes = {
    "Slept badly, hungry all day.",      "Long walk with the dog after dinner.",
    "Felt full of energy today.",        "Skipped the afternoon snack.",
    "Busy day at work, ate at my desk.", "Clothes fit a little looser.",
    "Drank more water than usual.",
};
const std::vector<const char*> kWeekendNotes = {
    "Dinner out with friends: guessed the portions.",
    "Rainy day, stayed in and cooked.",
    "Weekend brunch with the family.",
    "Hiked all morning, big lunch after.",
    "Clothes fit a little looser.",
};

std::vector<CatalogueFood> usableFoods(const FoodCatalogue& catalogue) {
    std::vector<CatalogueFood> foods;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const CategoryList& categories = catalogue.groups[static_cast<std::size_t>(g)];
        for (std::size_t c = 0; c < categories.size(); ++c) {
            for (std::size_t i = 0; i < categories[c].foods.size(); ++i) {
                const FoodItem& food = categories[c].foods[i];
                if (!eatenAsItIs(categories[c].name.view(), food.name.view(), g)) {
                    continue;
                }
                const float calories = food.shownNutrient(kCalories);
                // A cup of more than that is a dry grain or bean before cooking.
                if (food.serving.unit == ServingUnit::Cup && food.serving.amount <= 1.0f &&
                    calories > 450.0f) {
                    continue;
                }
                // Grams and kilograms: the catalogue's foods without a household measure come
                // weighed.
                const bool served = food.serving.unit != ServingUnit::Gram &&
                                    food.serving.unit != ServingUnit::Kilogram;
                std::array<double, 3> portions =
                    portionsOf(food, categories[c].name.view(), g, calories);
                // Skip what nobody eats by itself as a meal's part (a spoon of sugar, tea), and
                // portions no one eats at once.
                for (double& p : portions) {
                    const double eaten = p * calories;
                    if (eaten < 40.0 || eaten > 900.0) {
                        p = 0.0;
                    }
                }
                std::sort(portions.begin(), portions.end(), std::greater<>());
                if (portions[0] > 0.0) {
                    foods.push_back(
                        {g, static_cast<int>(c), static_cast<int>(i), calories, served, portions});
                }
            }
        }
    }
    return foods;
}

// The food's portion nearest to the calories wanted.
double bestPortion(const CatalogueFood& food, double wanted) {
    double best = food.portions[0];
    for (const double p : food.portions) {
        if (p > 0.0 &&
            std::abs(p * food.calories - wanted) < std::abs(best * food.calories - wanted)) {
            best = p;
        }
    }
    return best;
}

// A food of one of the meal's groups with a portion near the calories wanted, so that nobody
// eats a plate of chillies, preferring dishes served as they are to weighed ingredients; failing
// that, a food of any of its groups, then any food.
const CatalogueFood& pickFood(const std::vector<CatalogueFood>& foods, Meal meal, double wanted,
                              DemoRandom& random) {
    const std::vector<int>& groups = kMealGroups[meal];
    const int group = groups[static_cast<std::size_t>(random.between(0, int(groups.size()) - 1))];
    const auto near = [&](const CatalogueFood& f) {
        const double eaten = bestPortion(f, wanted) * f.calories;
        return eaten >= wanted * 0.4 && eaten <= wanted * 1.6;
    };
    const auto inMeal = [&](const CatalogueFood& f) {
        return std::find(groups.begin(), groups.end(), f.group) != groups.end();
    };
    const std::function<bool(const CatalogueFood&)> tries[] = {
        [&](const CatalogueFood& f) { return f.served && f.group == group && near(f); },
        [&](const CatalogueFood& f) { return f.served && inMeal(f) && near(f); },
        [&](const CatalogueFood& f) { return f.group == group && near(f); },
        [&](const CatalogueFood& f) { return inMeal(f) && near(f); },
        [&](const CatalogueFood& f) { return near(f); },
        [&](const CatalogueFood& f) { return inMeal(f); },
    };
    for (const auto& fits : tries) {
        std::vector<const CatalogueFood*> found;
        for (const CatalogueFood& f : foods) {
            if (fits(f)) {
                found.push_back(&f);
            }
        }
        if (!found.empty()) {
            return *found[static_cast<std::size_t>(random.between(0, int(found.size()) - 1))];
        }
    }
    return foods[static_cast<std::size_t>(random.between(0, int(foods.size()) - 1))];
}

// Logs the day's foods through the Log Food form; returns how many were logged.
int logFoods(DayCursor& days, FoodCatalogue& catalogue, const std::vector<CatalogueFood>& foods,
             double target, DemoRandom& random, Notices& notices) {
    const int count = random.between(3, 6);
    std::vector<Meal> meals = {kBreakfast, kLunch, kDinner};
    const Meal extras[] = {kSnack, kDinner, kBreakfast};
    for (int i = 0; i < count - 3; ++i) {
        meals.push_back(extras[i]);
    }
    std::array<int, 4> perMeal{};
    for (const Meal m : meals) {
        ++perMeal[m];
    }
    double shares = 0.0;
    for (int m = 0; m < 4; ++m) {
        shares += perMeal[static_cast<std::size_t>(m)] > 0 ? kMealShare[static_cast<std::size_t>(m)]
                                                           : 0.0;
    }
    int logged = 0;
    for (std::size_t n = 0; n < meals.size(); ++n) {
        const Meal meal = meals[n];
        double wanted = target * kMealShare[meal] / shares / perMeal[meal];
        if (n + 1 == meals.size()) {
            // The last food of the day makes up what the day still lacks, within reason.
            const DayRecord* day = days.currentRecord();
            const double eaten = day ? computeDayTotals(*day)[kCalories] : 0.0;
            wanted = std::max(target - eaten, 60.0);
        }
        const CatalogueFood& food = pickFood(foods, meal, wanted, random);
        const double servings = bestPortion(food, wanted);
        FoodRunState run;
        LogFoodForm form(catalogue, days, run, food.group, food.category, food.item);
        (void)form.edit(FoodField::Amount,
                        numberText(form.view().fields.amount.value_or(0.0) * servings));
        (void)form.edit(FoodField::Meal, mealName(static_cast<uint16_t>(meal)));
        notices |= form.command(LogFoodForm::Command::Log).notices;
        if (form.result().done()) {
            ++logged;
        }
    }
    return logged;
}

bool logExercise(DayCursor& days, ExerciseClipboard& clipboard, DemoRandom& random,
                 Notices& notices) {
    const DemoExercise& e =
        kExercises[random.between(0, static_cast<int>(std::size(kExercises)) - 1)];
    ExerciseLogForm log(days, clipboard);
    using Field = ExerciseChoice::Field;
    log.edit(Field::Type, exerciseTypeName(e.type));
    if (e.variant >= 0) {
        log.edit(Field::Variant, exerciseVariantNames(e.type)[static_cast<std::size_t>(e.variant)]);
    }
    if (e.sub >= 0) {
        log.edit(Field::SubVariant,
                 exerciseSubVariantNames(e.type, e.variant)[static_cast<std::size_t>(e.sub)]);
    }
    // Minutes in fives.
    log.edit(Field::Minutes,
             std::to_string(random.between(e.minMinutes / 5, e.maxMinutes / 5) * 5));
    if (log.command(ExerciseLogForm::Command::Calories).message) {
        return false;  // refused: no weight that day
    }
    const Outcome logged = log.command(ExerciseLogForm::Command::Log);
    notices |= logged.notices;
    return !logged.message;  // refused when there were no calories for it
}

void setDemoProfile(UserProfile& profile, std::string_view name, const CalendarDate& start) {
    (void)profile.setDisplayName(name);
    profile.setHeight(65.0f);
    profile.setAge(41);
    (void)profile.setGender(1);
    (void)profile.setDefaultLevel(2);
    (void)profile.setUnits(0);
    profile.setStartWeight(184.0f);
    profile.setStartDate(start);
    // 29 lb in 30 weeks, about 480 cal a day: four months in, the person is on the way down and
    // still above the goal.
    profile.setGoalWeight(155.0f);
    profile.setGoalDate(steppedDate(start, 210));
    recomputeGoalPlan(profile);
}

std::string dateText(const CalendarDate& d) {
    return std::to_string(d.month) + "/" + std::to_string(d.day) + "/" + std::to_string(d.year);
}

}  // namespace

DemoSummary fillDemoLogbook(DayCursor& days, FoodCatalogue& catalogue, ExerciseClipboard& clipboard,
                            uint32_t seed) {
    UserStore& store = days.store();
    DemoRandom random(seed);
    const CalendarDate today = store.today();
    const CalendarDate start = steppedDate(today, 1 - kDemoDays);
    setDemoProfile(store.profile, store.profile.userName(), start);
    DemoSummary summary;
    summary.notices.userData = true;
    summary.notices.dataChanged = true;

    const std::vector<CatalogueFood> foods = usableFoods(catalogue);
    // What the body really burns before exercise, what it eats on a day nothing is logged, and the
    // weight it really has.
    constexpr double kBurn = 2050.0;
    constexpr double kUnloggedEating = 2100.0;
    double weight = 184.0;
    for (int i = 0; i < kDemoDays; ++i) {
        const CalendarDate date = steppedDate(start, i);
        (void)days.setCurrentDate(date);
        const int32_t weekday = weekdayOf(packDate(date));
        const bool weekend = weekday == 0 || weekday == 6;
        // The first day is the start of the goal: weighed and logged.
        const bool weighs = i == 0 || random.chance(0.8);
        // A day weighed in is a day logged; now and then food is logged without weighing.
        const bool logsFood = !foods.empty() && (weighs || random.chance(0.5));
        if (!weighs && !logsFood) {
            weight -= (kBurn - kUnloggedEating) / kCaloriesPerPound;
            continue;
        }
        if (weighs) {
            // Whole pounds as typed, with the day-to-day swing of water and food.
            const long typed = std::lround(weight + random.noise(1.2));
            summary.notices |=
                WeighInForm(days).edit(WeighInForm::Field::Weight, std::to_string(typed)).notices;
            ++summary.weighIns;
        }
        double eaten = kUnloggedEating;
        if (logsFood) {
            const double target = 1950.0 + (weekend ? 200.0 : 0.0) + random.noise(170.0);
            summary.foods += logFoods(days, catalogue, foods, target, random, summary.notices);
            if (const DayRecord* day = days.currentRecord()) {
                eaten = computeDayTotals(*day)[kCalories];
            }
        }
        double burnt = kBurn;
        if (weighs && random.chance(0.4) && logExercise(days, clipboard, random, summary.notices)) {
            ++summary.exercises;
            if (DayRecord* day = days.currentDay()) {
                burnt += day->exerciseCalories;
            }
        }
        if (DayRecord* day = days.currentRecord()) {
            if (random.chance(0.7)) {
                summary.notices |=
                    LogbookForm(days)
                        .edit(LogbookForm::Field::Water, std::to_string(random.between(3, 9)))
                        .notices;
            }
            if (random.chance(0.25)) {
                const std::vector<const char*>& notes = weekend ? kWeekendNotes : kWeekdayNotes;
                const int n = static_cast<int>(notes.size());
                summary.notices |=
                    JournalForm(days)
                        .edit(JournalForm::Field::Note,
                              notes[static_cast<std::size_t>(random.between(0, n - 1))])
                        .notices;
            }
            recomputeDay(*day, store.profile);
        }
        weight -= (burnt - eaten) / kCaloriesPerPound;
    }
    summary.days = static_cast<int>(store.days().size());
    if (!store.days().empty()) {
        summary.first = store.days().front()->date();
        summary.last = store.days().back()->date();
    }
    (void)days.setCurrentDate(today);
    return summary;
}

int makeDemo(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err,
             const Clock& clock, std::span<const uint8_t> shipped) {
    constexpr const char* kUsage = "usage: nutrovex-tool [--root DIR] demo [--user NAME]\n";
    std::string user = kDemoUserName;
    if (args.size() == 2 && args[0] == "--user") {
        const std::optional<std::string> name = utf8ToCp1252(args[1]);
        if (!name) {
            err << "nutrovex-tool demo: the user name cannot be written in Windows-1252\n"
                << kUsage;
            return kExitUsage;
        }
        user = *name;
    } else if (!args.empty()) {
        err << "nutrovex-tool demo: unexpected '" << args[0] << "'\n" << kUsage;
        return kExitUsage;
    }

    const std::string shown = cp1252ToUtf8(quotedText(user));
    if (!isSafeUserName(user)) {
        err << "nutrovex-tool demo: " << shown
            << " is not a usable user name: " << unsafeUserNameReason(user) << "\n";
        return kExitDataError;
    }
    const DataRootChoice root = chooseDataRoot(options.root);
    IniSessionSettings settings(settingsFilePath(root));
    Session session(root.path, clock, settings, shipped);
    std::string reason;
    switch (session.start(reason)) {
        case Session::Start::Running:
            break;
        case Session::Start::AlreadyRunning:
            err << "nutrovex-tool demo: " << root.path.string()
                << ": Nutrovex has this data root open; close it first\n";
            return kExitDataError;
        case Session::Start::Failed:
            err << "nutrovex-tool demo: " << reason << "\n";
            return kExitDataError;
    }
    // The user's catalogue starts as the root's template, as the program's would.
    const std::filesystem::path templatePath = templateCataloguePath(root.path);
    if (!shipped.empty()) {
        if (const StorageStatus installed = installTemplateCatalogue(root.path, shipped);
            !installed) {
            err << "nutrovex-tool demo: " << installed.message() << "\n";
            return kExitDataError;
        }
    }
    ByteBuffer templateBytes;
    StorageError templateError;
    switch (readWholeFile(templatePath, templateBytes, templateError)) {
        case ReadFile::Read:
            break;
        case ReadFile::Missing:
            err << "nutrovex-tool demo: " << templatePath.string()
                << ": the data root has no starting catalogue, so there are no foods to log\n";
            return kExitDataError;
        case ReadFile::Failed:
            err << "nutrovex-tool demo: " << templateError.message() << "\n";
            return kExitDataError;
    }
    if (const StorageStatus read = session.users().read(); !read) {
        err << "nutrovex-tool demo: " << read.message() << "\n";
        return kExitDataError;
    }
    if (session.users().find(user) != kNoPosition) {
        err << "nutrovex-tool demo: there is already a user named " << shown
            << "; the demo never touches an existing user\n";
        return kExitDataError;
    }
    std::error_code ec;
    if (std::filesystem::exists(
            std::filesystem::symlink_status(*userFolderPath(root.path, user), ec))) {
        err << "nutrovex-tool demo: a folder for " << shown
            << " is already in the users folder; the demo never touches an existing user\n";
        return kExitDataError;
    }
    FoodCatalogue catalogue;
    if (const StorageStatus read =
            readCatalogueFile(templateBytes.bytes(), catalogue, {kCatalogueFileName});
        !read) {
        err << templatePath.string() << ": " << read.message() << "\n";
        return kExitDataError;
    }
    if (catalogue.foodCount() == 0) {
        err << "nutrovex-tool demo: the catalogue of " << shown
            << " has no foods to log (the data root has no starting catalogue)\n";
        return kExitDataError;
    }

    // The whole user is made in memory, then written at once: either it is there, listed and
    // whole, or nothing of it is.
    UserStore store(clock);
    store.profile.setUserName(user);
    store.userFolderPath = *userFolderPath(root.path, user);  // open, as the forms want it
    store.dataFilePath = store.userFolderPath / kUserFileName;
    DayCursor days(store);
    (void)days.setCurrentDate(store.today());
    ExerciseClipboard clipboard;
    const DemoSummary summary = fillDemoLogbook(days, catalogue, clipboard);
    for (std::size_t i = 0; i < store.days().size(); ++i) {
        (void)dayTotals(store.dayAt(static_cast<Position>(i)));
    }
    const StorageStatus added =
        session.users().addWithFiles(user, [&](const std::filesystem::path& folder) {
            store.dataFilePath = folder / kUserFileName;
            StorageStatus status = saveUser(store);
            if (status && summary.notices.catalogue) {
                catalogue.filePath = folder / kCatalogueFileName;
                status = saveCatalogue(catalogue);
            } else if (status) {
                status =
                    writeFileAtomically(folder / kCatalogueFileName, templateBytes.bytes(), false);
            }
            return status;
        });
    if (!added) {
        err << "nutrovex-tool demo: " << added.message() << "\n";
        return kExitDataError;
    }
    settings.setCurrentUserName(user);
    if (!settings.failure().empty()) {
        err << "nutrovex-tool demo: the user was made, but could not be remembered as the current "
               "user: "
            << settings.failure() << "\n";
        return kExitDataError;
    }
    out << "made the demo user " << shown << ": " << summary.days << " days from "
        << dateText(summary.first) << " to " << dateText(summary.last) << ", " << summary.foods
        << " foods, " << summary.exercises << " exercises, " << summary.weighIns << " weigh-ins\n";
    const Maintenance m = measureMaintenance(store.days(), clock.now());
    if (m.valid) {
        out << "measured maintenance: " << groupedCalories(roundedMaintenance(m.calories))
            << " a day\n";
    }
    return kExitOk;
}

}  // namespace nutrovex::tool
