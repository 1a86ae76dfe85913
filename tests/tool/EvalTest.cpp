#include <gtest/gtest.h>

#include "tool/Eval.h"

namespace nutrovex::tool {
namespace {

TEST(Eval, BadLinesAnswerWithAnErrorAndNameTheProblem) {
    EvalRegistry registry;
    registry["echo"] = [](const Json& r) { return Json{{"x", intField<int32_t>(r, "x")}}; };
    const struct {
        const char* line;
        const char* errorContains;
    } cases[] = {
        {"not json", "parse error"},
        {R"({"x": 1})", "'op'"},
        {R"({"op": "nope"})", "unknown op 'nope'"},
        {R"({"op": "echo"})", "missing field 'x'"},
        {R"({"op": "echo", "x": "one"})", "'x' must be an integer"},
    };
    for (const auto& c : cases) {
        const Json answer = Json::parse(evalLine(registry, c.line));
        ASSERT_TRUE(answer.contains("error")) << c.line;
        EXPECT_NE(answer["error"].get<std::string>().find(c.errorContains), std::string::npos)
            << c.line << " -> " << answer.dump();
    }
    EXPECT_EQ(evalLine(registry, R"({"op": "echo", "x": -3})"), R"({"x":-3})");
}

}  // namespace
}  // namespace nutrovex::tool
