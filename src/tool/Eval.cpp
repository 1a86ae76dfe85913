#include "tool/Eval.h"

#include <iostream>

#include "tool/Commands.h"

namespace nutrovex::tool {

std::string evalLine(const EvalRegistry& registry, const std::string& line) {
    Json answer;
    try {
        const Json request = parseJson(line);
        const std::string op = stringField(request, "op");
        const auto it = registry.find(op);
        if (it == registry.end()) {
            answer = {{"error", "unknown op '" + op + "'"}};
        } else {
            answer = it->second(request);
        }
    } catch (const std::exception& e) {
        answer = {{"error", e.what()}};
    }
    return compactJson(answer);
}

int runEval(const GlobalOptions&, Args args) {
    if (!args.empty()) {
        std::cerr << "usage: nutrovex-tool eval   (requests on stdin, one JSON object a line)\n";
        return kExitUsage;
    }
    EvalRegistry registry;
    registerCalcOps(registry);
    registerControlOps(registry);
    registerTargetOps(registry);
    std::string line;
    while (std::getline(std::cin, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        std::cout << evalLine(registry, line) << '\n' << std::flush;
    }
    return kExitOk;
}

}  // namespace nutrovex::tool
