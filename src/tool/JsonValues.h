#pragma once

#include <istream>
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

// The same from a stream, read as it is parsed; `callback` may drop values as they are
// finished (see nlohmann's parser callbacks), so a document of any size can be read in parts.
[[nodiscard]] Json parseJson(std::istream& in, const Json::parser_callback_t& callback);

// JSON text as the tool prints it: floating numbers in their shortest round-trip form (a
// whole number keeps ".0"), strings escaped, no blanks between tokens.
[[nodiscard]] std::string scalarJsonText(const Json& value);
[[nodiscard]] std::string compactJson(const Json& value);
// A string as a JSON string, quotes and escapes included.
[[nodiscard]] std::string jsonStringText(std::string_view text);

// Field access that names what is missing or of the wrong kind.
const Json& field(const Json& object, const char* name);
[[nodiscard]] bool boolField(const Json& object, const char* name);
[[nodiscard]] double doubleField(const Json& object, const char* name);
[[nodiscard]] std::string stringField(const Json& object, const char* name);  // UTF-8 as given

// Integers, range-checked into the record's width.
template <typename T>
[[nodiscard]] T intValue(const Json& value, const char* what);
template <typename T>
[[nodiscard]] T intField(const Json& object, const char* name) {
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
[[nodiscard]] float floatValue(const Json& value, const char* what);
[[nodiscard]] inline float floatField(const Json& object, const char* name) {
    return floatValue(field(object, name), name);
}

// Texts: Windows-1252 as UTF-8; "no text at all" is null.
[[nodiscard]] Json textJson(const Text& text);
// textJson's text appended straight: "null" or the quoted, escaped UTF-8.
void appendTextJson(std::string& out, const Text& text);
[[nodiscard]] Text textValue(const Json& value, const char* what);
[[nodiscard]] inline Text textField(const Json& object, const char* name) {
    return textValue(field(object, name), name);
}
[[nodiscard]] std::string cp1252Field(const Json& object, const char* name);

// A date is [month, day, year] as stored.
[[nodiscard]] Json dateJson(const CalendarDate& date);
// Sets month, day and year of date; its clock parts stay as they are.
void readDate(const Json& value, CalendarDate& date, const char* what);
[[nodiscard]] CalendarDate dateField(const Json& object, const char* name);

[[nodiscard]] Json servingJson(const ServingQuantity& s);
[[nodiscard]] ServingQuantity servingValue(const Json& value, const char* what);

[[nodiscard]] Json foodJson(const FoodItem& food);
[[nodiscard]] FoodItem foodValue(const Json& value);
[[nodiscard]] Json exerciseJson(const ExerciseEntry& entry);
[[nodiscard]] ExerciseEntry exerciseValue(const Json& value);
[[nodiscard]] Json nutrientsJson(const Nutrients& n);
[[nodiscard]] Nutrients nutrientsValue(const Json& value, const char* what);

[[nodiscard]] Json profileJson(const UserProfile& profile);
// Reads every field of the dump's profile object.
void readProfile(const Json& value, UserProfile& profile);
// Reads the fields that calculations use (height, age, gender, weights and dates, units); the
// rest keep their defaults.
void readProfileForCalc(const Json& value, UserProfile& profile);

[[nodiscard]] Json dayJson(const DayRecord& day);
void readDay(const Json& value, DayRecord& day);

}  // namespace nutrovex::tool
