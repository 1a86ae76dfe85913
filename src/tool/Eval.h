#pragma once

#include <functional>
#include <map>
#include <string>

#include "tool/JsonValues.h"

namespace nutrovex::tool {

// An eval operation answers one request object.
using EvalOp = std::function<Json(const Json& request)>;
using EvalRegistry = std::map<std::string, EvalOp, std::less<>>;

// Each group of operations registers itself here.
void registerCalcOps(EvalRegistry& registry);
void registerControlOps(EvalRegistry& registry);
void registerTargetOps(EvalRegistry& registry);

// Answers one request line; never throws.
[[nodiscard]] std::string evalLine(const EvalRegistry& registry, const std::string& line);

}  // namespace nutrovex::tool
