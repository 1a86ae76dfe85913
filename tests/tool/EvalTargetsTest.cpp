#include <gtest/gtest.h>

#include <string>

#include "tool/Eval.h"

namespace nutrovex::tool {
namespace {

class EvalTargets : public ::testing::Test {
protected:
    EvalTargets() { registerTargetOps(registry); }
    std::string eval(const std::string& line) const { return evalLine(registry, line); }
    EvalRegistry registry;
};

// A 2,000-calorie day: 32 % protein is 160 g, 50 % carbohydrate 250 g, 18 % fat 40 g.
TEST_F(EvalTargets, EachTargetInGramsAndShareOfTheBudgetWithWhatIsLeft) {
    EXPECT_EQ(
        eval(R"({"op":"targets","budget":2000,"targets":{"protein":{"percent":32},)"
             R"("carbohydrate":{"percent":50},"fat":{"percent":18},"fiber":{"grams":30},)"
             R"("saturatedFat":{"grams":20}},"totals":{"protein":150,"carbohydrate":250,)"
             R"("fat":42,"fiber":20,"saturatedFat":22}})"),
        R"({"valid":true,"dayWithin":false,"targets":{)"
        R"("protein":{"grams":160.0,"percent":32.0,"eaten":150.0,"eatenPercent":30.0,)"
        R"("left":10.0,"within":true},)"
        R"("carbohydrate":{"grams":250.0,"percent":50.0,"eaten":250.0,"eatenPercent":50.0,)"
        R"("left":0.0,"within":true},)"
        R"("fat":{"grams":40.0,"percent":18.0,"eaten":42.0,"eatenPercent":18.9,"left":-2.0,)"
        R"("within":true},)"
        R"("fiber":{"grams":30.0,"percent":null,"eaten":20.0,"eatenPercent":null,"left":10.0,)"
        R"("within":false},)"
        R"("saturatedFat":{"grams":20.0,"percent":9.0,"eaten":22.0,"eatenPercent":9.9,)"
        R"("left":-2.0,"within":false}}})");
}

TEST_F(EvalTargets, RefusedSetsAndMissingFieldsAreAnswered) {
    const struct {
        const char* request;
        const char* answer;
    } table[] = {
        {R"({"op":"targets","budget":2000,"targets":{"protein":{"percent":30},)"
         R"("carbohydrate":{"percent":30},"fat":{"percent":30}},)"
         R"("totals":{"protein":0,"carbohydrate":0,"fat":0}})",
         R"({"valid":false,"message":"Protein, carbohydrate and fat add up to 90.0% of the food )"
         R"(budget; as percentages they must add up to 100%."})"},
        {R"({"op":"targets","budget":2000,"targets":{"fiber":{"grams":-1}},)"
         R"("totals":{"fiber":0}})",
         R"({"valid":false,"message":"Fiber cannot be a negative number of grams."})"},
        // Without a budget a share has no grams; grams are still measured.
        {R"({"op":"targets","budget":0,"targets":{"protein":{"percent":30},)"
         R"("saturatedFat":{"grams":20}},"totals":{"protein":90,"saturatedFat":10}})",
         R"({"valid":true,"dayWithin":false,"targets":{"protein":{"grams":null,"percent":null,)"
         R"("eaten":90.0,"eatenPercent":null,"left":null,"within":false},"saturatedFat":)"
         R"({"grams":20.0,"percent":null,"eaten":10.0,"eatenPercent":null,"left":10.0,)"
         R"("within":true}}})"},
        {R"({"op":"targets","budget":2000,"targets":{},"totals":{}})",
         R"({"valid":true,"dayWithin":false,"targets":{}})"},
        {R"({"op":"targets","budget":2000,"targets":{"sugar":{"grams":20}},"totals":{}})",
         R"x({"error":"'sugar' is not a target (protein, carbohydrate, fat, fiber, saturatedFat)"})x"},
        {R"({"op":"targets","budget":2000,"targets":{"fat":{"grams":20,"percent":9}},)"
         R"("totals":{"fat":1}})",
         R"({"error":"the target 'fat' must be {\"grams\": d} or {\"percent\": d}"})"},
    };
    for (const auto& c : table) {
        EXPECT_EQ(eval(c.request), c.answer) << c.request;
    }
    // A total missing for a target, or a budget that is not a count of calories.
    EXPECT_EQ(eval(R"({"op":"targets","budget":2000,"targets":{"fat":{"grams":20}},)"
                   R"("totals":{"protein":1}})")
                  .rfind(R"({"error":)", 0),
              0u);
    EXPECT_EQ(
        eval(R"({"op":"targets","budget":-5,"targets":{},"totals":{}})").rfind(R"({"error":)", 0),
        0u);
}

}  // namespace
}  // namespace nutrovex::tool
