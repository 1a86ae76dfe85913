#include "tool/Eval.h"

namespace nutrovex::tool {

void registerControlOps(EvalRegistry&) {}

}  // namespace nutrovex::tool
