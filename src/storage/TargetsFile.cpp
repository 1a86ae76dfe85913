#include "storage/TargetsFile.h"

#include "storage/SideFileJson.h"

namespace nutrovex {

namespace {

using sidejson::Json;
using sidejson::Refusal;

MacroTarget decodeTarget(const Json& value, const std::string& path) {
    using namespace sidejson;
    expectObject(value, path, {}, {"grams", "percent"});
    if (value.size() != 1) {
        throw Refusal{path, "must hold either 'grams' or 'percent'"};
    }
    const bool grams = value.contains("grams");
    const char* key = grams ? "grams" : "percent";
    return {grams ? MacroTarget::Kind::Grams : MacroTarget::Kind::Percent,
            number(value.at(key), member(path, key))};
}

}  // namespace

std::string targetsJson(const MacroTargets& targets) {
    std::string out = "{\"version\": " + std::to_string(kTargetsFormatVersion);
    for (const TargetNutrient n : kTargetNutrients) {
        if (const std::optional<MacroTarget>& t = targets.of(n)) {
            out += ",\n  \"";
            out += targetKey(n);
            out += t->kind == MacroTarget::Kind::Grams ? "\": {\"grams\": " : "\": {\"percent\": ";
            sidejson::appendDouble(out, t->value);
            out += "}";
        }
    }
    out += "}\n";
    return out;
}

StorageStatus parseTargets(std::string_view text, MacroTargets& targets,
                           std::string_view fileName) {
    using namespace sidejson;
    StorageError error;
    const std::optional<Json> doc = parse(text, error);
    if (!doc) {
        error.file = fileName;
        return error;
    }
    try {
        expectObject(*doc, "", {"version"},
                     {"protein", "carbohydrate", "fat", "fiber", "saturatedFat"});
        (void)wholeNumber(doc->at("version"), "version", kTargetsFormatVersion,
                          kTargetsFormatVersion);
        MacroTargets read;
        for (const TargetNutrient n : kTargetNutrients) {
            if (const auto it = doc->find(targetKey(n)); it != doc->end()) {
                read.of(n) = decodeTarget(*it, targetKey(n));
            }
        }
        if (std::optional<std::string> problem = targetsProblem(read)) {
            throw Refusal{"", *problem};
        }
        targets = read;
    } catch (const Refusal& refusal) {
        return refusalError(fileName, refusal);
    }
    return {};
}

SideFileResult loadTargets(const std::filesystem::path& folder, MacroTargets& targets) {
    return loadSideFile(
        folder / kTargetsFileName, targets,
        [](std::string_view text, MacroTargets& t) { return parseTargets(text, t); });
}

StorageStatus saveTargets(const std::filesystem::path& folder, const MacroTargets& targets) {
    return writeSideFile(folder / kTargetsFileName, targetsJson(targets));
}

}  // namespace nutrovex
