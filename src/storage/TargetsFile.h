#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/MacroTargets.h"
#include "storage/SideFile.h"
#include "storage/StorageError.h"

namespace nutrovex {

// Targets.json in a person's folder: {"version": 1, and for each target that is set,
// "protein" | "carbohydrate" | "fat" | "fiber" | "saturatedFat": {"grams": d} or {"percent": d}}.
// A set that targetsProblem refuses is not read.
inline constexpr const char* kTargetsFileName = "Targets.json";
inline constexpr unsigned kTargetsFormatVersion = 1;

[[nodiscard]] std::string targetsJson(const MacroTargets& targets);
// On a refusal the targets are left as they were and the error names `fileName` and the field.
[[nodiscard]] StorageStatus parseTargets(std::string_view text, MacroTargets& targets,
                                         std::string_view fileName = kTargetsFileName);

// The person's targets from `folder`/Targets.json. Missing leaves no target set.
[[nodiscard]] SideFileResult loadTargets(const std::filesystem::path& folder,
                                         MacroTargets& targets);
[[nodiscard]] StorageStatus saveTargets(const std::filesystem::path& folder,
                                        const MacroTargets& targets);

}  // namespace nutrovex
