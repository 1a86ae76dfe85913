// Feeds arbitrary lines to the tool's eval. Every line must get exactly one answer: a single
// line holding one JSON object, never an exception, whatever the request.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tool/Eval.h"

namespace {

const nutrovex::tool::EvalRegistry& registry() {
    static const nutrovex::tool::EvalRegistry ops = [] {
        nutrovex::tool::EvalRegistry r;
        nutrovex::tool::registerCalcOps(r);
        nutrovex::tool::registerControlOps(r);
        nutrovex::tool::registerTargetOps(r);
        return r;
    }();
    return ops;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using nutrovex::tool::Json;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    while (!input.empty()) {
        const std::size_t end = input.find('\n');
        const std::string line(input.substr(0, end));
        input = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
        const std::string answer = nutrovex::tool::evalLine(registry(), line);
        const Json parsed = Json::parse(answer, nullptr, false);
        if (answer.find('\n') != std::string::npos || parsed.is_discarded() ||
            !parsed.is_object() || parsed.empty()) {
            std::abort();
        }
    }
    return 0;
}
