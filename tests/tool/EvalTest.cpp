#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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
        {"", "parse error"},
    };
    for (const auto& c : cases) {
        const Json answer = Json::parse(evalLine(registry, c.line));
        ASSERT_TRUE(answer.contains("error")) << c.line;
        EXPECT_NE(answer["error"].get<std::string>().find(c.errorContains), std::string::npos)
            << c.line << " -> " << answer.dump();
    }
    EXPECT_EQ(evalLine(registry, R"({"op": "echo", "x": -3})"), R"({"x":-3})");
}

TEST(Eval, ParsingKeepsANegativeZeroAndRefusesHugeNumbers) {
    const Json j = parseJson(R"({"a": -0, "b": [-0], "c": "-0", "d": -0.5, "e": "x\"-0"})");
    EXPECT_TRUE(std::signbit(floatValue(j["a"], "a")));
    EXPECT_TRUE(std::signbit(floatValue(j["b"][0], "b")));
    EXPECT_EQ(j["c"], "-0");
    EXPECT_EQ(j["d"], -0.5);
    EXPECT_EQ(j["e"], "x\"-0");
    EXPECT_THROW((void)parseJson(R"({"a": 1e400})"), Json::exception);
}

TEST(Eval, NumbersArePrintedInTheirShortestForm) {
    // Doubles that a general-purpose printer writes with 17 digits.
    EXPECT_EQ(compactJson(floatJson(0.01543236f)), "0.01543236");
    EXPECT_EQ(compactJson(Json(4552.400000000001)), "4552.400000000001");
    EXPECT_EQ(compactJson(Json{{"a", floatJson(70.0f)}, {"b", Json::array({1e20, -0.0})}}),
              R"({"a":70.0,"b":[1e+20,-0.0]})");
    EXPECT_EQ(compactJson(floatJson(std::numeric_limits<float>::infinity())), R"("inf")");
    // Large floats keep only their shortest digits; each text reads back to the same float.
    const struct {
        float value;
        const char* text;
    } large[] = {
        {6187037184.0f, "6.187037e+09"}, {-920025536.0f, "-9.2002554e+08"},
        {16777216.0f, "1.6777216e+07"},  {1000.0f, "1000.0"},
        {123456.0f, "123456.0"},         {3.4028235e38f, "3.4028235e+38"},
    };
    for (const auto& c : large) {
        const std::string text = compactJson(floatJson(c.value));
        EXPECT_EQ(text, c.text) << c.value;
        EXPECT_EQ(floatValue(parseJson(text), "value"), c.value) << text;
    }
}

}  // namespace
}  // namespace nutrovex::tool
