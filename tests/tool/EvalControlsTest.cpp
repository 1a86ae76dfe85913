#include <gtest/gtest.h>

#include "tool/Eval.h"

namespace nutrovex::tool {
namespace {

EvalRegistry controlOps() {
    EvalRegistry registry;
    registerControlOps(registry);
    return registry;
}

TEST(EvalControls, NumericTextShowsTheClampedValue) {
    const EvalRegistry registry = controlOps();
    const struct {
        const char* request;
        const char* answer;
    } cases[] = {
        {R"({"op":"numericText","value":1234567.891,"decimals":2,"grouping":true,"min":0,)"
         R"("max":1e9,"prefix":"","suffix":"","decorated":true})",
         R"({"text":"1,234,567.89","value":1234567.891})"},
        {R"({"op":"numericText","value":1234567.891,"decimals":2,"grouping":true,"min":0,)"
         R"("max":1e9,"prefix":"","suffix":"","decorated":false})",
         R"({"text":"1234567.89","value":1234567.891})"},
        {R"({"op":"numericText","value":1234.567,"decimals":2,"grouping":false,"min":0,)"
         R"("max":999.99,"prefix":"","suffix":"","decorated":true})",
         R"({"text":"999.99","value":999.99})"},
        {R"({"op":"numericText","value":-0.5,"decimals":2,"grouping":false,"min":-1,)"
         R"("max":1,"prefix":"£","suffix":" g","decorated":true})",
         R"({"text":"£-.50 g","value":-0.5})"},
        {R"({"op":"numericText","value":5.35e-06,"decimals":2,"grouping":false,"min":0,)"
         R"("max":1,"prefix":"","suffix":"","decorated":true})",
         R"({"text":"0.00","value":5.35e-06})"},
        {R"({"op":"numericText","value":0,"decimals":0,"grouping":false,"min":0,)"
         R"("max":1,"prefix":"","suffix":"","decorated":true})",
         R"({"text":"0","value":0.0})"},
        {R"({"op":"numericText","value":"nan","decimals":1,"grouping":false,"min":0,)"
         R"("max":1,"prefix":"","suffix":"","decorated":true})",
         R"({"text":"nan","value":"nan"})"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(evalLine(registry, c.request), c.answer) << c.request;
    }
}

TEST(EvalControls, NumericLeaveReadsRoundsAndClamps) {
    const EvalRegistry registry = controlOps();
    const struct {
        const char* request;
        const char* answer;
    } cases[] = {
        {R"({"op":"numericLeave","text":"1234.567","decimals":2,"min":0,"max":999.99})",
         R"({"hasValue":true,"value":999.99,"text":"999.99"})"},
        {R"({"op":"numericLeave","text":"-.5abc","decimals":2,"min":-10,"max":10})",
         R"({"hasValue":true,"value":-0.5,"text":"-.50"})"},
        {R"({"op":"numericLeave","text":"","decimals":2,"min":0,"max":999.99})",
         R"({"hasValue":false,"value":0.0,"text":"0.00"})"},
        {R"({"op":"numericLeave","text":"-5","decimals":1,"min":0,"max":999.99})",
         R"({"hasValue":true,"value":0.0,"text":"0.0"})"},
        {R"({"op":"numericLeave","text":"0.049","decimals":0,"min":0,"max":100})",
         R"({"hasValue":true,"value":0.0,"text":"0"})"},
        {R"({"op":"numericLeave","text":"7π2","decimals":0,"min":0,"max":100})",
         R"({"hasValue":true,"value":7.0,"text":"7"})"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(evalLine(registry, c.request), c.answer) << c.request;
    }
}

TEST(EvalControls, MissingFieldsAreNamed) {
    const EvalRegistry registry = controlOps();
    const std::string answer =
        evalLine(registry, R"({"op":"numericLeave","text":"1","decimals":2,"min":0})");
    EXPECT_NE(answer.find("'max'"), std::string::npos) << answer;
    const std::string negative =
        evalLine(registry, R"({"op":"numericLeave","text":"1","decimals":-1,"min":0,"max":1})");
    EXPECT_NE(negative.find("error"), std::string::npos) << negative;
}

}  // namespace
}  // namespace nutrovex::tool
