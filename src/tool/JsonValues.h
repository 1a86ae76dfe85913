#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/ServingQuantity.h"
#include "core/Text.h"
#include "core/UserProfile.h"
#include "tool/JsonStream.h"

namespace nutrovex::tool {

using Json = nlohmann::ordered_json;

// A JSON document that does not have the shape a command needs.
class JsonShapeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Parses a JSON document; throws Json::exception (with what()) when it is not valid JSON or holds
// a number beyond a double. "-0" keeps its sign: it is how a negative zero is written.
[[nodiscard]] Json parseJson(std::string_view text);

// The readers below take a value of a whole document or of one read record by record
// (TreeValue, JsonStream.h) and read both alike.

// JSON text as the tool prints it: floating numbers in their shortest round-trip form (a
// whole number keeps ".0"), strings escaped, no blanks between tokens.
[[nodiscard]] std::string scalarJsonText(const Json& value);
[[nodiscard]] std::string compactJson(const Json& value);
// A string as a JSON string, quotes and escapes included.
[[nodiscard]] std::string jsonStringText(std::string_view text);

// Field access that names what is missing or of the wrong kind.
const Json& field(const Json& object, const char* name);
[[nodiscard]] TreeValue field(const TreeValue& object, const char* name);
[[nodiscard]] bool boolField(const Json& object, const char* name);
[[nodiscard]] double doubleField(const Json& object, const char* name);
[[nodiscard]] std::string stringField(const Json& object, const char* name);  // UTF-8 as given
// A string value's UTF-8.
[[nodiscard]] std::string_view stringOf(const Json& value);
[[nodiscard]] std::string_view stringOf(const TreeValue& value);

// Integers, range-checked into the record's width.
template <typename T, typename Value>
[[nodiscard]] T intValue(const Value& value, const char* what);
template <typename T, typename Value>
[[nodiscard]] T intField(const Value& object, const char* name) {
    return intValue<T>(field(object, name), name);
}

// Floats: the shortest form that reads back to the same single-precision value; non-finite
// values are the strings "nan", "inf" and "-inf".
[[nodiscard]] Json floatJson(float value);
// While one lives, floatJson writes a NaN other than the one "nan" reads as (0x7fc00000) with its
// exact bits, "nan(0x7fa00001)", so dumped files write back byte for byte. floatValue reads both.
class ExactNanBits {
public:
    ExactNanBits();
    ~ExactNanBits();
    ExactNanBits(const ExactNanBits&) = delete;
    ExactNanBits& operator=(const ExactNanBits&) = delete;

private:
    bool m_previous;
};
// floatJson's text appended straight: what scalarJsonText(floatJson(value)) gives, without the
// JSON value.
void appendFloatText(std::string& out, float value);
template <typename Value>
[[nodiscard]] float floatValue(const Value& value, const char* what);
template <typename Value>
[[nodiscard]] float floatField(const Value& object, const char* name) {
    return floatValue(field(object, name), name);
}

// Texts: Windows-1252 as UTF-8; "no text at all" is null.
[[nodiscard]] Json textJson(const Text& text);
// textJson's text appended straight: "null" or the quoted, escaped UTF-8.
void appendTextJson(std::string& out, const Text& text);
template <typename Value>
[[nodiscard]] Text textValue(const Value& value, const char* what);
template <typename Value>
[[nodiscard]] Text textField(const Value& object, const char* name) {
    return textValue(field(object, name), name);
}
[[nodiscard]] std::string cp1252Field(const Json& object, const char* name);

// A date is [month, day, year] as stored.
[[nodiscard]] Json dateJson(const CalendarDate& date);
// Sets month, day and year of date; its clock parts stay as they are.
template <typename Value>
void readDate(const Value& value, CalendarDate& date, const char* what);
[[nodiscard]] CalendarDate dateField(const Json& object, const char* name);

[[nodiscard]] Json servingJson(const ServingQuantity& s);
template <typename Value>
[[nodiscard]] ServingQuantity servingValue(const Value& value, const char* what);

[[nodiscard]] Json foodJson(const FoodItem& food);
template <typename Value>
[[nodiscard]] FoodItem foodValue(const Value& value);
[[nodiscard]] Json exerciseJson(const ExerciseEntry& entry);
template <typename Value>
[[nodiscard]] ExerciseEntry exerciseValue(const Value& value);
[[nodiscard]] Json nutrientsJson(const Nutrients& n);
template <typename Value>
[[nodiscard]] Nutrients nutrientsValue(const Value& value, const char* what);

[[nodiscard]] Json profileJson(const UserProfile& profile);
// Reads every field of the dump's profile object.
template <typename Value>
void readProfile(const Value& value, UserProfile& profile);
// Reads the fields that calculations use (height, age, gender, weights and dates, units); the
// rest keep their defaults.
template <typename Value>
void readProfileForCalc(const Value& value, UserProfile& profile);

[[nodiscard]] Json dayJson(const DayRecord& day);
template <typename Value>
void readDay(const Value& value, DayRecord& day);

// A food and a day in their plain form read straight into the record (see JsonQuick): the
// record foodValue and readDay make, or false when they are to read it. A food is a fresh
// FoodItem; a day a fresh DayRecord, its date's clock parts kept.
[[nodiscard]] bool quickFood(JsonQuick& q, FoodItem& food);
[[nodiscard]] bool quickDay(JsonQuick& q, DayRecord& day);

}  // namespace nutrovex::tool
