#include <optional>
#include <string>

#include "calc/TargetProgress.h"
#include "core/MacroTargets.h"
#include "tool/Eval.h"

namespace nutrovex::tool {

namespace {

Json optionalNumber(const std::optional<double>& v) {
    return v ? Json(*v) : Json(nullptr);
}

MacroTargets requestTargets(const Json& r) {
    const Json& given = field(r, "targets");
    if (!given.is_object()) {
        throw JsonShapeError("'targets' must be an object");
    }
    MacroTargets targets;
    for (auto it = given.begin(); it != given.end(); ++it) {
        std::optional<TargetNutrient> nutrient;
        for (const TargetNutrient n : kTargetNutrients) {
            if (it.key() == targetKey(n)) {
                nutrient = n;
            }
        }
        if (!nutrient) {
            throw JsonShapeError("'" + it.key() +
                                 "' is not a target (protein, carbohydrate, fat, fiber, "
                                 "saturatedFat)");
        }
        const Json& t = it.value();
        if (!t.is_object() || t.size() != 1 || !(t.contains("grams") || t.contains("percent"))) {
            throw JsonShapeError("the target '" + it.key() +
                                 "' must be {\"grams\": d} or {\"percent\": d}");
        }
        const bool grams = t.contains("grams");
        targets.of(*nutrient) =
            MacroTarget{grams ? MacroTarget::Kind::Grams : MacroTarget::Kind::Percent,
                        doubleField(t, grams ? "grams" : "percent")};
    }
    return targets;
}

Json targetsOp(const Json& r) {
    const auto budget = intField<uint32_t>(r, "budget");
    const MacroTargets targets = requestTargets(r);
    const Json& totals = field(r, "totals");
    if (!totals.is_object()) {
        throw JsonShapeError("'totals' must be an object of grams eaten");
    }
    TargetGrams eaten{};
    for (const TargetNutrient n : kTargetNutrients) {
        if (targets.of(n)) {
            eaten[static_cast<std::size_t>(n)] = doubleField(totals, targetKey(n));
        }
    }
    if (const std::optional<std::string> problem = targetsProblem(targets)) {
        return {{"valid", false}, {"message", *problem}};
    }
    const std::optional<int32_t> dayBudget =
        budget <= INT32_MAX ? std::optional<int32_t>(static_cast<int32_t>(budget)) : std::nullopt;
    const TargetProgress progress = targetProgress(targets, dayBudget, eaten);
    Json lines = Json::object();
    for (const TargetLine& line : progress.lines) {
        if (line.target) {
            lines[targetKey(line.nutrient)] = {{"grams", optionalNumber(line.grams)},
                                               {"percent", optionalNumber(line.percent)},
                                               {"eaten", line.eaten},
                                               {"eatenPercent", optionalNumber(line.eatenPercent)},
                                               {"left", optionalNumber(line.left)},
                                               {"within", line.within}};
        }
    }
    return {{"valid", true}, {"dayWithin", progress.dayWithin}, {"targets", std::move(lines)}};
}

}  // namespace

void registerTargetOps(EvalRegistry& registry) {
    registry["targets"] = targetsOp;
}

}  // namespace nutrovex::tool
