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

struct CatalogueFood {
    int group;
    int category;
    int item;
    float calories;  // for the catalogue's own serving
    bool served;     // measured as people serve it (an item, a cup, an ounce), not weighed
};

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

const char* const kNotes[] = {
    "Slept badly, hungry all day.",
    "Long walk with the dog after dinner.",
    "Dinner out with friends: guessed the portions.",
    "Felt full of energy today.",
    "Skipped the afternoon snack.",
    "Busy day at work, ate at my desk.",
    "Rainy day, stayed in and cooked.",
    "Weekend brunch with the family.",
    "Clothes fit a little looser.",
    "Drank more water than usual.",
};

std::vector<CatalogueFood> usableFoods(const FoodCatalogue& catalogue) {
    std::vector<CatalogueFood> foods;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const CategoryList& categories = catalogue.groups[static_cast<std::size_t>(g)];
        for (std::size_t c = 0; c < categories.size(); ++c) {
            for (std::size_t i = 0; i < categories[c].foods.size(); ++i) {
                const FoodItem& food = categories[c].foods[i];
                const float calories = food.shownNutrient(kCalories);
                // Grams and kilograms: the catalogue's foods without a household measure come
                // weighed.
                const bool served = food.serving.unit != ServingUnit::Gram &&
                                    food.serving.unit != ServingUnit::Kilogram;
                // Skip what nobody eats by itself as a meal's part (a spoon of sugar, tea).
                if (calories >= 40.0f && calories <= 800.0f) {
                    foods.push_back(
                        {g, static_cast<int>(c), static_cast<int>(i), calories, served});
                }
            }
        }
    }
    return foods;
}

// A food of one of the meal's groups whose serving is near the calories wanted, so that nobody
// eats a plate of chillies, preferring dishes served as they are to weighed ingredients; failing
// that, a food of any of its groups, then any food.
const CatalogueFood& pickFood(const std::vector<CatalogueFood>& foods, Meal meal, double wanted,
                              DemoRandom& random) {
    const std::vector<int>& groups = kMealGroups[meal];
    const int group = groups[static_cast<std::size_t>(random.between(0, int(groups.size()) - 1))];
    const auto near = [&](const CatalogueFood& f) {
        return f.calories >= wanted * 0.4 && f.calories <= wanted * 1.6;
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
        double most = 2.0;
        if (n + 1 == meals.size()) {
            // The last food of the day makes up what the day still lacks, within reason.
            const DayRecord* day = days.currentRecord();
            const double eaten = day ? computeDayTotals(*day)[kCalories] : 0.0;
            wanted = std::max(target - eaten, 60.0);
            most = 2.5;
        }
        const CatalogueFood& food = pickFood(foods, meal, wanted, random);
        // Servings in halves, as people measure them.
        const double servings =
            std::clamp(std::round(wanted / food.calories * 2.0) / 2.0, 0.5, most);
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
    profile.setGoalWeight(165.0f);
    profile.setGoalDate(steppedDate(start, 210));  // 19 lb in 30 weeks: about 320 cal a day
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
        const bool weekend = date.weekday == 0 || date.weekday == 6;
        // The first day is the start of the goal: weighed and logged.
        const bool weighs = i == 0 || random.chance(0.8);
        const bool logsFood = !foods.empty() && (i == 0 || random.chance(0.9));
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
            const double target = 1800.0 + (weekend ? 200.0 : 0.0) + random.noise(170.0);
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
                const int n = static_cast<int>(std::size(kNotes));
                summary.notices |=
                    JournalForm(days)
                        .edit(JournalForm::Field::Note, kNotes[random.between(0, n - 1)])
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
