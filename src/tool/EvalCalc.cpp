#include "tool/Eval.h"

namespace nutrovex::tool {

void registerCalcOps(EvalRegistry&) {}

}  // namespace nutrovex::tool
