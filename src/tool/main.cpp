#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "core/CalendarDate.h"
#include "tool/Commands.h"
#include "tool/DemoLogbook.h"
#include "tool/FileCommands.h"
#include "tool/FoodCommands.h"
#include "tool/LogCommands.h"
#include "tool/RecipeCommands.h"
#ifdef NUTROVEX_TOOL_SHIPPED_DATA
#include "data/ShippedCatalogue.h"
#endif
#ifdef NUTROVEX_TOOL_CHART
#include "tool/ChartCommand.h"
#endif

namespace {

using namespace nutrovex::tool;

int runDemo(const GlobalOptions& options, Args args) {
    const nutrovex::SystemClock clock;
#ifdef NUTROVEX_TOOL_SHIPPED_DATA
    const std::span<const uint8_t> shipped = nutrovex::shippedCatalogue();
#else
    // The build's own copy, which writes the shipped catalogue, cannot carry it.
    const std::span<const uint8_t> shipped;
#endif
    return makeDemo(options, args, std::cout, std::cerr, clock, shipped);
}

struct Command {
    const char* name;
    int (*run)(const GlobalOptions&, Args);
};

const Command kCommands[] = {
    {"eval", runEval},
    {"dump-user", runDumpUser},
    {"dump-catalogue", runDumpCatalogue},
    {"dump-users", runDumpUsers},
    {"write-user", runWriteUser},
    {"write-catalogue", runWriteCatalogue},
    {"write-users", runWriteUsers},
    {"check", runCheck},
    {"users", runUsers},
    {"export-log", runExportLog},
    {"import-foods", runImportFoods},
    {"export-foods", runExportFoods},
    {"demo", runDemo},
    {"recipe", runRecipe},
    {"recipes", runRecipes},
#ifdef NUTROVEX_TOOL_CHART
    {"chart", runChart},
#endif
};

void printUsage(std::ostream& out) {
    out << "usage: nutrovex-tool [--root DIR] COMMAND [ARGS...]\n"
           "       nutrovex-tool --help | --version\n"
           "\n"
           "Files as JSON (dump then write reproduces a file byte for byte):\n"
           "  dump-user FILE                print UserDB.ddb as JSON\n"
           "  dump-catalogue FILE           print FoodDB.ddb as JSON\n"
           "  dump-users FILE               print Users.udb as JSON\n"
           "  write-user JSON OUT           write UserDB.ddb from JSON (JSON \"-\" = stdin)\n"
           "  write-catalogue JSON OUT      write FoodDB.ddb from JSON\n"
           "  write-users JSON OUT          write Users.udb from JSON\n"
           "  check FILE...                 verify files; report the first problem of each\n"
           "\n"
           "Everyday:\n"
           "  users                         list the users of the data root\n"
           "  export-log --user NAME [--from M/D/YYYY] [--to M/D/YYYY] [--csv FILE]\n"
           "                                one CSV row per day of the user's logbook\n"
           "  import-foods --user NAME CSV  add foods to the user's catalogue (\"-\": stdin); "
           "columns\n"
           "                                by header name in any order, one row per line, each\n"
           "                                added or reported as FILE:LINE: reason;\n"
           "                                refused while Nutrovex has the data root open\n"
           "  export-foods --user NAME [--csv FILE]\n"
           "                                the user's catalogue as CSV: group, category, name, "
           "amount,\n"
           "                                unit, calories, carbohydrate, fiber, protein, fat, "
           "saturated fat\n"
           "  demo [--user NAME]            make a new user (NAME defaults to \"Demo\") with four "
           "months\n"
           "                                of days ending today, remembered as the current user\n"
           "  recipe --user NAME RECIPE.json\n"
           "                                make or update the recipe of RECIPE.json (\"-\": "
           "stdin) "
           "and\n"
           "                                its food in the category Recipes; print the food as\n"
           "                                dump-catalogue does; refused while Nutrovex has the\n"
           "                                data root open\n"
           "  recipes --user NAME           every recipe as JSON, with its food (null when it is "
           "not\n"
           "                                in the catalogue) and its missing ingredients\n"
           "  chart --user NAME --span N --png FILE [--trend] [--width PIXELS]\n"
           "                                the historic weight chart as a PNG of PIXELS x "
           "PIXELS/2\n"
           "                                (480 unless given); N: 0 7 Day, 1 14 Day, 2 1 Month,\n"
           "                                3 3 Month, 4 6 Month, 5 1 Year, 6 5 Year\n"
           "\n"
           "Calculations:\n"
           "  eval                          one JSON request per line on stdin, one answer per "
           "line\n"
           "                                (ops: weightToWhole heightToWhole bmr exercise "
           "convert\n"
           "                                servingFactor goalPlan goalSentence date step "
           "uniqueName\n"
           "                                nameOrder numericText numericLeave dayTotals "
           "foodBudget\n"
           "                                maintenance targets)\n"
           "                                targets: {\"op\":\"targets\",\"budget\":CAL,"
           "\"targets\":{NAME:\n"
           "                                {\"grams\":G}|{\"percent\":P},...},\"totals\":{NAME:G,"
           "...}}\n"
           "                                with NAME protein carbohydrate fat fiber "
           "saturatedFat;\n"
           "                                answers valid, dayWithin and for each target grams,\n"
           "                                percent, eaten, eatenPercent, left, within (or valid\n"
           "                                false and a message)\n"
           "\n"
           "The data root is --root DIR, else $NUTROVEX_ROOT, else ~/.local/share/Zerbu/Nutrovex.\n"
           "Floats are JSON numbers; a non-finite one is \"nan\", \"inf\" or \"-inf\", and dumps "
           "write\n"
           "a NaN other than the plain one with its bits, as \"nan(0x7fa00001)\".\n"
           "Exit status: 0 success, 1 the data could not be read or written, 2 wrong usage.\n";
}

}  // namespace

int main(int argc, char** argv) {
    // Past a file-size limit a write then fails with EFBIG, which a save reports and cleans up
    // after, instead of the process dying without a word.
    std::signal(SIGXFSZ, SIG_IGN);
    std::vector<std::string> args(argv + 1, argv + argc);
    GlobalOptions options;
    if (const char* env = std::getenv("NUTROVEX_ROOT")) {
        options.root = env;
    }
    std::size_t i = 0;
    while (i < args.size() && args[i].starts_with("--")) {
        if (args[i] == "--help") {
            printUsage(std::cout);
            return kExitOk;
        }
        if (args[i] == "--version") {
            std::cout << "nutrovex-tool " << NUTROVEX_VERSION << '\n';
            return kExitOk;
        }
        if (args[i] == "--root" && i + 1 < args.size()) {
            options.root = args[i + 1];
            i += 2;
            continue;
        }
        std::cerr << "nutrovex-tool: unknown option '" << args[i] << "'\n";
        printUsage(std::cerr);
        return kExitUsage;
    }
    if (i >= args.size()) {
        printUsage(std::cerr);
        return kExitUsage;
    }
    for (const Command& c : kCommands) {
        if (args[i] == c.name) {
            return c.run(options, Args(args).subspan(i + 1));
        }
    }
    std::cerr << "nutrovex-tool: unknown command '" << args[i] << "'\n";
    printUsage(std::cerr);
    return kExitUsage;
}
