#include <gtest/gtest.h>

#include "tool/Eval.h"

namespace nutrovex::tool {
namespace {

class EvalCalc : public ::testing::Test {
protected:
    EvalCalc() { registerCalcOps(registry); }
    std::string eval(const std::string& line) const { return evalLine(registry, line); }
    EvalRegistry registry;
};

TEST_F(EvalCalc, AnswersRequestsInTheToolsShapes) {
    const struct {
        const char* request;
        const char* answer;
    } table[] = {
        {R"({"op":"weightToWhole","weight":154.0,"toKg":true})", R"({"ok":true,"value":70})"},
        {R"({"op":"weightToWhole","weight":-1,"toKg":false})", R"({"ok":false,"value":-1})"},
        {R"({"op":"heightToWhole","height":70.0,"toCm":true})", R"({"ok":true,"value":178})"},
        {R"({"op":"bmr","height":70,"age":30,"gender":0,"weight":180,"level":2})",
         R"({"ok":true,"bmr":2234})"},
        {R"({"op":"bmr","height":70,"age":30,"gender":1,"weight":180,"level":5})",
         R"({"ok":false,"bmr":0})"},
        {R"({"op":"exercise","type":15,"variant":0,"sub":2,"weight":150,"minutes":30})",
         R"({"ok":true,"calories":360})"},
        {R"({"op":"exercise","type":26,"variant":-1,"sub":-1,"weight":150,"minutes":30})",
         R"({"ok":false,"calories":0})"},
        {R"({"op":"convert","amount":2,"from":2,"to":3})", R"({"ok":true,"amount":0.125})"},
        {R"({"op":"convert","amount":1,"from":8,"to":9})", R"({"ok":true,"amount":999.99994})"},
        {R"({"op":"convert","amount":1,"from":3,"to":12})", R"({"ok":false})"},
        {R"({"op":"convert","amount":1,"from":12,"to":15})", R"({"ok":true})"},
        // The shortest text that reads back as the same single-precision value.
        {R"({"op":"servingFactor","ref":{"amount":100,"unit":12,"sub":0},)"
         R"("logged":{"amount":2,"unit":10,"sub":0}})",
         R"({"factor":0.5669904})"},
        {R"({"op":"goalPlan","startWeight":150,"startDate":[3,1,2002],"goalWeight":160,)"
         R"("goalDate":[5,10,2002]})",
         R"({"valid":true,"change":-10,"days":70,"perDay":-500})"},
        {R"({"op":"goalPlan","startWeight":150,"startDate":[3,1,2002],"goalWeight":160,)"
         R"("goalDate":[2,27,2002]})",
         R"({"valid":false,"change":0,"days":-2,"perDay":0})"},
        {R"({"op":"goalSentence","startWeight":200,"startDate":[3,1,2002],"goalWeight":190,)"
         R"("goalDate":[4,5,2002],"units":1})",
         R"({"text":"To lose 5 kg in 35 days, you will need to eat 1000 fewer calories per day )"
         R"(than your body burns."})"},
        {R"({"op":"date","date":[3,3,2002]})",
         R"({"dayNumber":2476457,"weekday":0,"leap":false,"long":"Sunday March 3, 2002"})"},
        {R"({"op":"step","date":[2,28,2000],"n":1})", R"({"date":[2,29,2000]})"},
        {R"({"op":"step","date":[3,1,2003],"n":-1})", R"({"date":[2,28,2003]})"},
        {R"({"op":"uniqueName","wanted":"Bagel","taken":["Bagel","bagel1","Bagel1"]})",
         R"({"name":"Bagel2"})"},
        {R"({"op":"uniqueName","wanted":"Café","taken":["café"]})", R"({"name":"Café"})"},
        {R"({"op":"nameOrder","a":"bob","b":"Bob"})", R"({"order":-1})"},
        {R"({"op":"nameOrder","a":"Bob","b":"alice"})", R"({"order":1})"},
        {R"({"op":"nameOrder","a":"Bob","b":"Bob"})", R"({"order":0})"},
        {R"({"op":"foodBudget","day":{"weight":198,"level":2,"bmr":2400,"exerciseCalories":350},)"
         R"("profile":{"height":70,"age":30,"gender":0,"startWeight":200,"startDate":[9,25,2002],)"
         R"("goalWeight":190,"goalDate":[10,30,2002],"units":0}})",
         R"({"text":"1750 cal"})"},
    };
    for (const auto& c : table) {
        EXPECT_EQ(eval(c.request), c.answer) << c.request;
    }
}

TEST_F(EvalCalc, DayTotalsHoldEachGroupAndCrossTheExerciseClamp) {
    std::string food =
        R"({"key":1,"flag":1,"name":"Pie","text2":"Pie",)"
        R"("serving":{"amount":1,"unit":14,"sub":0},)"
        R"("ref1":{"amount":0,"unit":0,"sub":0},"ref2":{"amount":1,"unit":14,"sub":0},)"
        R"("nutrients":[1500,20.5,1,4,10,2],"meal":0,"ratio":1.0,"group":0})";
    std::string group0;
    for (int i = 0; i < 10; ++i) {
        group0 += (i ? "," : "") + food;
    }
    const std::string exercise =
        R"({"key":5,"byte":0,"type":15,"variant":0,"third":2,"name":"Running",)"
        R"("minutes":50000,"calories":10})";
    const std::string request = R"({"op":"dayTotals","groups":[[)" + group0 + "],[" + food +
                                R"(],[],[],[],[],[],[]],"exercises":[)" + exercise + "," +
                                exercise + "]}";
    EXPECT_EQ(eval(request), R"({"totals":[11499.0,225.5,11.0,44.0,110.0,22.0],"calories":11499,)"
                             R"("exerciseCalories":99999,"exerciseMinutes":100000})");
}

TEST_F(EvalCalc, MalformedRequestsAnswerWithAnError) {
    const struct {
        const char* request;
        const char* errorContains;
    } table[] = {
        {R"({"op":"exercise","type":15,"variant":0,"sub":2,"weight":150})", "'minutes'"},
        {R"({"op":"exercise","type":15,"variant":0,"sub":2,"weight":40000,"minutes":1})",
         "'weight'"},
        {R"({"op":"weightToWhole","weight":"heavy","toKg":true})", "'weight'"},
        {R"({"op":"weightToWhole","weight":1,"toKg":1})", "'toKg'"},
        {R"({"op":"date","date":[3,3]})", "'date'"},
        {R"({"op":"uniqueName","wanted":"Bagel","taken":"Bagel"})", "'taken'"},
        {R"({"op":"dayTotals","groups":[[],[]],"exercises":[]})", "'groups'"},
        {R"({"op":"foodBudget","day":{"weight":1,"level":2,"bmr":1,"exerciseCalories":0}})",
         "'profile'"},
        {R"({"op":"numericText"})", "unknown op"},
    };
    for (const auto& c : table) {
        const Json answer = Json::parse(eval(c.request));
        ASSERT_TRUE(answer.contains("error")) << c.request << " -> " << answer.dump();
        EXPECT_NE(answer["error"].get<std::string>().find(c.errorContains), std::string::npos)
            << c.request << " -> " << answer.dump();
    }
}

TEST_F(EvalCalc, MeasuresMaintenanceFromTheDaysGiven) {
    // 28 days of 2000 calories to 21 November 2002; the trend goes from 200 to 198.
    Json days = Json::array();
    for (int i = 0; i < 28; ++i) {
        const CalendarDate d = steppedDate(CalendarDate::fromDmy(21, 11, 2002), -i);
        days.push_back({{"date", {d.month, d.day, d.year}},
                        {"weight", i == 0 ? 180.0 : (i == 10 ? 200.0 : -1.0)},
                        {"calories", 2000}});
    }
    days.push_back({{"date", {10, 24, 2002}}, {"weight", 200.0}, {"calories", 0}});
    Json request = {{"op", "maintenance"}, {"current", {11, 21, 2002}}, {"days", days}};
    EXPECT_EQ(eval(compactJson(request)),
              R"({"valid":true,"calories":2250,"loggedDays":28,"weighIns":2,"trendStart":200.0,)"
              R"("trendEnd":198.0})");

    // 13 logged days: not valid, and no calories are claimed.
    days.erase(days.begin() + 13, days.begin() + 28);
    request["days"] = days;
    EXPECT_EQ(eval(compactJson(request)),
              R"({"valid":false,"calories":0,"loggedDays":13,"weighIns":2,"trendStart":200.0,)"
              R"("trendEnd":198.0})");

    EXPECT_EQ(eval(R"({"op":"maintenance","current":[11,21,2002],"days":[]})"),
              R"({"valid":false,"calories":0,"loggedDays":0,"weighIns":0,"trendStart":-1.0,)"
              R"("trendEnd":-1.0})");
    EXPECT_NE(eval(R"({"op":"maintenance","current":[11,21,2002],"days":{}})").find("error"),
              std::string::npos);
    EXPECT_NE(eval(R"({"op":"maintenance","current":[11,21,2002],"days":[{"date":[1,1,2002]}]})")
                  .find("error"),
              std::string::npos);
}

}  // namespace
}  // namespace nutrovex::tool
