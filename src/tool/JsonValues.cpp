#include "tool/JsonValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>

#include "core/Cp1252.h"
#include "tool/JsonStream.h"

namespace nutrovex::tool {

namespace {

[[noreturn]] void shapeError(const std::string& what) {
    throw JsonShapeError(what);
}

thread_local bool exactNanBits = false;
constexpr uint32_t kPlainNan = 0x7FC00000;

// "nan(0x7fa00001)": a NaN with its exact bits.
bool nanWithBits(std::string_view s, float& out) {
    if (s.size() != 15 || !s.starts_with("nan(0x") || s.back() != ')') {
        return false;
    }
    uint32_t bits = 0;
    const auto r = std::from_chars(s.data() + 6, s.data() + 14, bits, 16);
    if (r.ec != std::errc() || r.ptr != s.data() + 14) {
        return false;
    }
    std::memcpy(&out, &bits, sizeof out);
    return std::isnan(out);
}

}  // namespace

Json parseJson(std::string_view text) {
    // The parser reads "-0" as the integer 0; a negative zero float must keep its sign, so such
    // a number (outside strings) is read as "-0.0".
    std::string fixed;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        fixed += c;
        if (inString) {
            if (c == '\\' && i + 1 < text.size()) {
                fixed += text[++i];
            } else if (c == '"') {
                inString = false;
            }
        } else if (c == '"') {
            inString = true;
        } else if (c == '-' && i + 1 < text.size() && text[i + 1] == '0' &&
                   (i + 2 == text.size() ||
                    std::string_view(",]} \t\r\n").find(text[i + 2]) != std::string_view::npos) &&
                   (i == 0 ||
                    std::string_view("[,: \t\r\n").find(text[i - 1]) != std::string_view::npos)) {
            // Only where a value starts: the "-0" of an exponent ("1e-0") is left alone.
            fixed += "0.0";
            ++i;
        }
    }
    return Json::parse(fixed);
}

namespace {

// A string that JSON writes as it is, between quotes: printable ASCII without '"' or '\\'.
bool plainString(std::string_view s) {
    for (const char c : s) {
        if (c < 0x20 || c > 0x7E || c == '"' || c == '\\') {
            return false;
        }
    }
    return true;
}

template <typename T>
std::string integerText(T value) {
    char buf[24];
    const auto r = std::to_chars(buf, buf + sizeof buf, value);
    return std::string(buf, r.ptr);
}

}  // namespace

std::string jsonStringText(std::string_view s) {
    if (plainString(s)) {
        std::string text;
        text.reserve(s.size() + 2);
        text += '"';
        text += s;
        text += '"';
        return text;
    }
    return Json(std::string(s)).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string scalarJsonText(const Json& value) {
    // The common kinds directly: a dump makes a serializer for every value.
    if (value.is_number_unsigned()) {
        return integerText(value.get<uint64_t>());
    }
    if (value.is_number_integer()) {
        return integerText(value.get<int64_t>());
    }
    if (value.is_string()) {
        return jsonStringText(value.get_ref<const std::string&>());
    }
    if (value.is_number_float()) {
        const double d = value.get<double>();
        if (std::isfinite(d)) {
            char buf[40];
            auto r = std::to_chars(buf, buf + sizeof buf, d);
            // A double that is the reading of a single-precision value's shortest text prints
            // as that text: a float's integer digits beyond its shortest ones are never shown.
            if (const auto f = static_cast<float>(d); std::isfinite(f)) {
                char fbuf[40];
                const auto fr =
                    std::to_chars(fbuf, fbuf + sizeof fbuf, f, std::chars_format::general);
                double back = 0.0;
                std::from_chars(fbuf, fr.ptr, back);
                if (back == d) {
                    r.ptr = std::copy(fbuf, fr.ptr, buf);
                }
            }
            std::string text(buf, r.ptr);
            if (text.find_first_of(".e") == std::string::npos) {
                text += ".0";
            }
            return text;
        }
    }
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

namespace {

void appendCompact(std::string& out, const Json& value) {
    if (value.is_object()) {
        out += '{';
        bool first = true;
        for (auto it = value.begin(); it != value.end(); ++it) {
            if (!first) {
                out += ',';
            }
            first = false;
            out += jsonStringText(it.key());
            out += ':';
            appendCompact(out, *it);
        }
        out += '}';
    } else if (value.is_array()) {
        out += '[';
        bool first = true;
        for (const Json& item : value) {
            if (!first) {
                out += ',';
            }
            first = false;
            appendCompact(out, item);
        }
        out += ']';
    } else {
        out += scalarJsonText(value);
    }
}

}  // namespace

std::string compactJson(const Json& value) {
    std::string out;
    appendCompact(out, value);
    return out;
}

namespace {

[[noreturn]] void notAnObjectHolding(const char* name) {
    shapeError(std::string("expected an object holding '") + name + "'");
}

[[noreturn]] void missingField(const char* name) {
    shapeError(std::string("missing field '") + name + "'");
}

double doubleOf(const Json& value) {
    return value.get<double>();
}

double doubleOf(const TreeValue& value) {
    return value.asDouble();
}

uint64_t unsignedOf(const Json& value) {
    return value.get<uint64_t>();
}

uint64_t unsignedOf(const TreeValue& value) {
    return value.asUnsigned();
}

int64_t signedOf(const Json& value) {
    return value.get<int64_t>();
}

int64_t signedOf(const TreeValue& value) {
    return value.asSigned();
}

}  // namespace

std::string_view stringOf(const Json& value) {
    return value.get_ref<const std::string&>();
}

std::string_view stringOf(const TreeValue& value) {
    return value.string();
}

const Json& field(const Json& object, const char* name) {
    if (!object.is_object()) {
        notAnObjectHolding(name);
    }
    const auto it = object.find(name);
    if (it == object.end()) {
        missingField(name);
    }
    return *it;
}

namespace {

// A field name's number, remembered by where the name lies: the readers ask with the same few
// literals, millions of times in a large file.
uint8_t keyIdOf(const char* name) {
    struct Known {
        const char* name = nullptr;
        uint8_t id = 0;
    };
    thread_local Known known[256];
    Known& k = known[(reinterpret_cast<std::uintptr_t>(name) >> 1) & 255];
    if (k.name != name) {
        k = {name, jsonKeyId(name)};
    }
    return k.id;
}

}  // namespace

TreeValue field(const TreeValue& object, const char* name) {
    if (!object.is_object()) {
        notAnObjectHolding(name);
    }
    TreeValue found = object;
    if (!object.find(keyIdOf(name), found)) {
        missingField(name);
    }
    return found;
}

bool boolField(const Json& object, const char* name) {
    const Json& v = field(object, name);
    if (!v.is_boolean()) {
        shapeError(std::string("'") + name + "' must be true or false");
    }
    return v.get<bool>();
}

double doubleField(const Json& object, const char* name) {
    const Json& v = field(object, name);
    if (v.is_number()) {
        return v.get<double>();
    }
    if (v.is_string()) {
        const auto s = v.get<std::string>();
        if (s == "nan") {
            return std::numeric_limits<double>::quiet_NaN();
        }
        if (s == "inf") {
            return std::numeric_limits<double>::infinity();
        }
        if (s == "-inf") {
            return -std::numeric_limits<double>::infinity();
        }
    }
    shapeError(std::string("'") + name + "' must be a number");
}

std::string stringField(const Json& object, const char* name) {
    const Json& v = field(object, name);
    if (!v.is_string()) {
        shapeError(std::string("'") + name + "' must be a string");
    }
    return v.get<std::string>();
}

template <typename T, typename Value>
T intValue(const Value& value, const char* what) {
    if (value.is_number_float() && doubleOf(value) == 0.0) {
        return T{0};  // "-0", which parseJson reads as a float
    }
    if (value.is_number_unsigned()) {
        const auto u = unsignedOf(value);
        if (u <= static_cast<uint64_t>(std::numeric_limits<T>::max())) {
            return static_cast<T>(u);
        }
    } else if (value.is_number_integer()) {
        const auto i = signedOf(value);
        if (i >= static_cast<int64_t>(std::numeric_limits<T>::min()) &&
            i <= static_cast<int64_t>(std::numeric_limits<T>::max())) {
            return static_cast<T>(i);
        }
    }
    shapeError(std::string("'") + what + "' must be an integer from " +
               std::to_string(static_cast<int64_t>(std::numeric_limits<T>::min())) + " to " +
               std::to_string(static_cast<uint64_t>(std::numeric_limits<T>::max())));
}

template uint8_t intValue<uint8_t>(const Json&, const char*);
template uint16_t intValue<uint16_t>(const Json&, const char*);
template int16_t intValue<int16_t>(const Json&, const char*);
template uint32_t intValue<uint32_t>(const Json&, const char*);
template int32_t intValue<int32_t>(const Json&, const char*);
template int64_t intValue<int64_t>(const Json&, const char*);
template uint8_t intValue<uint8_t>(const TreeValue&, const char*);
template uint16_t intValue<uint16_t>(const TreeValue&, const char*);
template int16_t intValue<int16_t>(const TreeValue&, const char*);
template uint32_t intValue<uint32_t>(const TreeValue&, const char*);

ExactNanBits::ExactNanBits() : m_previous(exactNanBits) {
    exactNanBits = true;
}

ExactNanBits::~ExactNanBits() {
    exactNanBits = m_previous;
}

Json floatJson(float value) {
    if (std::isnan(value)) {
        uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        if (exactNanBits && bits != kPlainNan) {
            char buf[16];
            std::snprintf(buf, sizeof buf, "nan(0x%08x)", static_cast<unsigned>(bits));
            return buf;
        }
        return "nan";
    }
    if (std::isinf(value)) {
        return value > 0 ? "inf" : "-inf";
    }
    // The shortest digits of the float (the plain form would print every integer digit of a
    // large one), held as the double they read as; printed back it is that same text, and it
    // narrows to the same float.
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general);
    double d = 0.0;
    std::from_chars(buf, r.ptr, d);
    return d;
}

namespace {

// The texts of recently printed floats: a file's values repeat (whole numbers, the same foods
// on many days), and the shortest form of a float is the costly part of a dump.
class FloatTextCache {
public:
    // The text of a finite float.
    std::string_view text(float value) {
        uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        Entry& e = m_entries[(bits * 0x9E3779B1u) >> (32 - kBits)];
        if (e.bits != bits) {
            // floatJson's double prints back as the float's shortest text (see scalarJsonText).
            const auto r =
                std::to_chars(e.text, e.text + sizeof e.text, value, std::chars_format::general);
            char* end = r.ptr;
            if (std::find_if(e.text, end, [](char c) { return c == '.' || c == 'e'; }) == end) {
                *end++ = '.';
                *end++ = '0';
            }
            e.size = static_cast<uint8_t>(end - e.text);
            e.bits = bits;
        }
        return {e.text, e.size};
    }

private:
    static constexpr int kBits = 12;
    struct Entry {
        uint32_t bits = 0xFFFFFFFF;  // a NaN, which is never kept here
        uint8_t size = 0;
        char text[27] = {};
    };
    Entry m_entries[std::size_t{1} << kBits];
};

}  // namespace

void appendFloatText(std::string& out, float value) {
    if (!std::isfinite(value)) {
        out += scalarJsonText(floatJson(value));
        return;
    }
    thread_local FloatTextCache cache;
    out += cache.text(value);
}

template <typename Value>
float floatValue(const Value& value, const char* what) {
    if (value.is_number()) {
        return static_cast<float>(doubleOf(value));
    }
    if (value.is_string()) {
        const std::string_view s = stringOf(value);
        if (s == "nan") {
            return std::numeric_limits<float>::quiet_NaN();
        }
        if (s == "inf") {
            return std::numeric_limits<float>::infinity();
        }
        if (s == "-inf") {
            return -std::numeric_limits<float>::infinity();
        }
        float f = 0.0f;
        if (nanWithBits(s, f)) {
            return f;
        }
    }
    shapeError(std::string("'") + what + "' must be a number, \"nan\", \"inf\" or \"-inf\"");
}

Json textJson(const Text& text) {
    if (text.isNull()) {
        return nullptr;
    }
    return cp1252ToUtf8(text.view());
}

void appendTextJson(std::string& out, const Text& text) {
    if (text.isNull()) {
        out += "null";
        return;
    }
    const std::string_view bytes = text.view();
    if (plainString(bytes)) {  // the same in Windows-1252 and UTF-8
        out += '"';
        out += bytes;
        out += '"';
        return;
    }
    out += jsonStringText(cp1252ToUtf8(bytes));
}

template <typename Value>
Text textValue(const Value& value, const char* what) {
    if (value.is_null()) {
        return Text::null();
    }
    if (!value.is_string()) {
        shapeError(std::string("'") + what + "' must be a string or null");
    }
    const std::string_view utf8 = stringOf(value);
    if (utf8.size() < 0xFFFF && std::all_of(utf8.begin(), utf8.end(), [](char c) {
            return static_cast<unsigned char>(c) < 0x80;
        })) {
        return Text(utf8);  // ASCII is the same in both
    }
    auto bytes = utf8ToCp1252(utf8);
    if (!bytes) {
        shapeError(std::string("'") + what + "' holds a character that Windows-1252 cannot store");
    }
    if (bytes->size() >= 0xFFFF) {
        shapeError(std::string("'") + what + "' is longer than 65,534 characters");
    }
    return Text(*bytes);
}

std::string cp1252Field(const Json& object, const char* name) {
    const Json& v = field(object, name);
    if (!v.is_string()) {
        shapeError(std::string("'") + name + "' must be a string");
    }
    return textValue(v, name).str();
}

Json dateJson(const CalendarDate& date) {
    return Json::array({date.month, date.day, date.year});
}

template <typename Value>
void readDate(const Value& value, CalendarDate& date, const char* what) {
    if (!value.is_array() || value.size() != 3) {
        shapeError(std::string("'") + what + "' must be [month, day, year]");
    }
    date.month = intValue<int16_t>(value[0], what);
    date.day = intValue<int16_t>(value[1], what);
    date.year = intValue<int16_t>(value[2], what);
}

CalendarDate dateField(const Json& object, const char* name) {
    CalendarDate d;
    readDate(field(object, name), d, name);
    d.weekday = static_cast<int16_t>(weekdayOf(packDate(d)));
    return d;
}

Json servingJson(const ServingQuantity& s) {
    Json j;
    j["amount"] = floatJson(s.amount);
    j["unit"] = unitByte(s.unit);
    j["sub"] = s.sub;
    return j;
}

template <typename Value>
ServingQuantity servingValue(const Value& value, const char* what) {
    if (!value.is_object()) {
        shapeError(std::string("'") + what + "' must be {\"amount\", \"unit\", \"sub\"}");
    }
    ServingQuantity s;
    s.amount = floatField(value, "amount");
    s.unit = unitFromByte(intField<uint8_t>(value, "unit"));
    s.sub = intField<uint8_t>(value, "sub");
    return s;
}

Json nutrientsJson(const Nutrients& n) {
    Json j = Json::array();
    for (const float v : n) {
        j.push_back(floatJson(v));
    }
    return j;
}

template <typename Value>
Nutrients nutrientsValue(const Value& value, const char* what) {
    if (!value.is_array() || value.size() != kNutrientCount) {
        shapeError(std::string("'") + what + "' must be a list of six numbers");
    }
    Nutrients n{};
    for (std::size_t i = 0; i < n.size(); ++i) {
        n[i] = floatValue(value[i], what);
    }
    return n;
}

Json foodJson(const FoodItem& food) {
    Json j;
    j["key"] = food.key.value;
    j["flag"] = food.loggedFlag;
    j["name"] = textJson(food.name);
    j["text2"] = textJson(food.text2);
    j["serving"] = servingJson(food.serving);
    j["ref1"] = servingJson(food.ref1);
    j["ref2"] = servingJson(food.ref2);
    j["nutrients"] = nutrientsJson(food.nutrients);
    j["meal"] = food.meal;
    j["ratio"] = floatJson(food.ratio);
    j["group"] = food.group;
    return j;
}

template <typename Value>
FoodItem foodValue(const Value& value) {
    FoodItem f;
    f.key.value = intField<uint32_t>(value, "key");
    f.loggedFlag = intField<uint8_t>(value, "flag");
    f.name = textField(value, "name");
    f.text2 = textField(value, "text2");
    f.serving = servingValue(field(value, "serving"), "serving");
    f.ref1 = servingValue(field(value, "ref1"), "ref1");
    f.ref2 = servingValue(field(value, "ref2"), "ref2");
    f.nutrients = nutrientsValue(field(value, "nutrients"), "nutrients");
    f.meal = intField<uint16_t>(value, "meal");
    f.ratio = floatField(value, "ratio");
    f.group = intField<uint16_t>(value, "group");
    return f;
}

Json exerciseJson(const ExerciseEntry& e) {
    Json j;
    j["key"] = e.key.value;
    j["byte"] = e.byte;
    j["type"] = e.type;
    j["variant"] = e.variant;
    j["third"] = e.third;
    j["name"] = textJson(e.name);
    j["minutes"] = e.minutes;
    j["calories"] = e.calories;
    return j;
}

template <typename Value>
ExerciseEntry exerciseValue(const Value& value) {
    ExerciseEntry e;
    e.key.value = intField<uint32_t>(value, "key");
    e.byte = intField<uint8_t>(value, "byte");
    e.type = intField<uint16_t>(value, "type");
    e.variant = intField<int16_t>(value, "variant");
    e.third = intField<int16_t>(value, "third");
    e.name = textField(value, "name");
    e.minutes = intField<uint16_t>(value, "minutes");
    e.calories = intField<uint16_t>(value, "calories");
    return e;
}

Json profileJson(const UserProfile& profile) {
    const ProfileFields& p = profile.fields();
    Json j;
    j["byte"] = p.byte;
    j["text1"] = textJson(p.text1);
    j["displayName"] = textJson(p.displayName);
    j["userName"] = textJson(p.userName);
    j["height"] = floatJson(p.height);
    j["age"] = p.age;
    j["gender"] = p.gender;
    j["startWeight"] = floatJson(p.startWeight);
    j["startDate"] = dateJson(p.startDate);
    j["goalWeight"] = floatJson(p.goalWeight);
    j["goalDate"] = dateJson(p.goalDate);
    j["plan"] = {{"byte", p.plan.valid},
                 {"values", Json::array({p.plan.change, p.plan.days, p.plan.perDay})}};
    j["defaultLevel"] = p.defaultLevel;
    j["units"] = p.units;
    j["flags"] = p.flags;
    return j;
}

template <typename Value>
void readProfileForCalc(const Value& value, UserProfile& profile) {
    ProfileFields& p = profile.rawFields();
    p.height = floatField(value, "height");
    p.age = intField<int16_t>(value, "age");
    p.gender = intField<uint16_t>(value, "gender");
    p.startWeight = floatField(value, "startWeight");
    readDate(field(value, "startDate"), p.startDate, "startDate");
    p.goalWeight = floatField(value, "goalWeight");
    readDate(field(value, "goalDate"), p.goalDate, "goalDate");
    p.units = intField<uint16_t>(value, "units");
}

template <typename Value>
void readProfile(const Value& value, UserProfile& profile) {
    readProfileForCalc(value, profile);
    ProfileFields& p = profile.rawFields();
    p.byte = intField<uint8_t>(value, "byte");
    p.text1 = textField(value, "text1");
    p.displayName = textField(value, "displayName");
    p.userName = textField(value, "userName");
    const auto& plan = field(value, "plan");
    p.plan.valid = intField<uint8_t>(plan, "byte");
    const auto& values = field(plan, "values");
    if (!values.is_array() || values.size() != 3) {
        shapeError("'values' of the plan must be a list of three numbers");
    }
    p.plan.change = intValue<uint32_t>(values[0], "values");
    p.plan.days = intValue<uint32_t>(values[1], "values");
    p.plan.perDay = intValue<uint32_t>(values[2], "values");
    p.defaultLevel = intField<uint16_t>(value, "defaultLevel");
    p.flags = intField<uint16_t>(value, "flags");
}

Json dayJson(const DayRecord& day) {
    const DayFields& d = day.fields();
    Json j;
    j["date"] = dateJson(d.date);
    j["weight"] = floatJson(d.weight);
    j["note"] = textJson(d.note);
    j["word"] = d.word;
    j["level"] = d.level;
    j["bmr"] = d.bmr;
    j["flags"] = d.flags;
    j["totals"] = nutrientsJson(d.totals);
    Json groups = Json::array();
    for (const FoodList& list : d.groups) {
        Json g = Json::array();
        for (const FoodItem& f : list) {
            g.push_back(foodJson(f));
        }
        groups.push_back(std::move(g));
    }
    j["groups"] = std::move(groups);
    Json exercises = Json::array();
    for (const ExerciseEntry& e : d.exercises) {
        exercises.push_back(exerciseJson(e));
    }
    j["exercises"] = std::move(exercises);
    return j;
}

template <typename Value>
void readDay(const Value& value, DayRecord& day) {
    DayFields& d = day.rawFields();
    readDate(field(value, "date"), d.date, "date");
    d.weight = floatField(value, "weight");
    d.note = textField(value, "note");
    d.word = intField<uint16_t>(value, "word");
    d.level = intField<uint16_t>(value, "level");
    d.bmr = intField<int16_t>(value, "bmr");
    d.flags = intField<uint16_t>(value, "flags");
    d.totals = nutrientsValue(field(value, "totals"), "totals");
    const auto& groups = field(value, "groups");
    if (!groups.is_array() || groups.size() != kFoodGroupCount) {
        shapeError("'groups' must be a list of eight food lists");
    }
    for (std::size_t g = 0; g < d.groups.size(); ++g) {
        if (!groups[g].is_array()) {
            shapeError("each of 'groups' must be a list of foods");
        }
        d.groups[g].clear();
        for (const auto& f : groups[g]) {
            d.groups[g].push_back(foodValue(f));
        }
    }
    const auto& exercises = field(value, "exercises");
    if (!exercises.is_array()) {
        shapeError("'exercises' must be a list");
    }
    d.exercises.clear();
    for (const auto& e : exercises) {
        d.exercises.push_back(exerciseValue(e));
    }
}

// ---- the plain form read straight (see JsonQuick) ----

namespace {

using Kind = JsonTree::Kind;

// An integer in the record's width, as intValue takes it.
template <typename T>
bool quickInt(JsonQuick& q, T& out) {
    JsonNumber n;
    if (!q.number(n)) {
        return false;
    }
    switch (n.kind) {
        case Kind::Unsigned:
            if (n.u > static_cast<uint64_t>(std::numeric_limits<T>::max())) {
                return false;
            }
            out = static_cast<T>(n.u);
            return true;
        case Kind::Integer:
            if (n.i < static_cast<int64_t>(std::numeric_limits<T>::min()) ||
                n.i > static_cast<int64_t>(std::numeric_limits<T>::max())) {
                return false;
            }
            out = static_cast<T>(n.i);
            return true;
        default:
            out = T{0};
            return n.d == 0.0;  // "-0"
    }
}

// A number as floatValue takes it; the strings of non-finite values are left to it.
bool quickFloat(JsonQuick& q, float& out) {
    JsonNumber n;
    if (!q.number(n)) {
        return false;
    }
    switch (n.kind) {
        case Kind::Unsigned:
            out = static_cast<float>(static_cast<double>(n.u));
            break;
        case Kind::Integer:
            out = static_cast<float>(static_cast<double>(n.i));
            break;
        default:
            out = static_cast<float>(n.d);
            break;
    }
    return true;
}

bool quickText(JsonQuick& q, Text& out) {
    bool isNull = false;
    std::string_view s;
    if (!q.text(isNull, s) || s.size() >= 0xFFFF) {
        return false;
    }
    if (isNull) {
        out.clear();
    } else {
        out.assign(s);
    }
    return true;
}

template <std::size_t N>
constexpr uint64_t bitsOf(const uint8_t (&keys)[N]) {
    uint64_t bits = 0;
    for (const uint8_t key : keys) {
        bits |= uint64_t{1} << key;
    }
    return bits;
}

// An object holding each of `keys` once and nothing else, each member's value read by
// member(key). The keys are expected in their order, and taken in any.
template <std::size_t N, typename Member>
bool quickObject(JsonQuick& q, const uint8_t (&keys)[N], Member&& member) {
    if (!q.take('{')) {
        return false;
    }
    uint64_t seen = 0;
    std::size_t i = 0;
    do {
        uint8_t key = 0;
        if (!q.name(i < N ? keys[i] : 0, key)) {
            return false;
        }
        ++i;
        const uint64_t bit = uint64_t{1} << key;
        if ((seen & bit) != 0 || !member(key)) {
            return false;
        }
        seen |= bit;
    } while (q.take(','));
    return q.take('}') && seen == bitsOf(keys);
}

// A list of exactly `count` elements, each read by element(i).
template <typename Element>
bool quickList(JsonQuick& q, std::size_t count, Element&& element) {
    if (!q.take('[')) {
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        if ((i > 0 && !q.take(',')) || !element(i)) {
            return false;
        }
    }
    return q.take(']');
}

// A list of any length, each element read by element().
template <typename Element>
bool quickListOfAny(JsonQuick& q, Element&& element) {
    if (!q.take('[')) {
        return false;
    }
    if (q.take(']')) {
        return true;
    }
    do {
        if (!element()) {
            return false;
        }
    } while (q.take(','));
    return q.take(']');
}

bool quickServing(JsonQuick& q, ServingQuantity& s) {
    static constexpr uint8_t kKeys[] = {jsonKey("amount"), jsonKey("unit"), jsonKey("sub")};
    uint8_t unit = 0;
    const bool read = quickObject(q, kKeys, [&](uint8_t key) {
        switch (key) {
            case jsonKey("amount"):
                return quickFloat(q, s.amount);
            case jsonKey("unit"):
                return quickInt(q, unit);
            case jsonKey("sub"):
                return quickInt(q, s.sub);
            default:
                return false;
        }
    });
    s.unit = unitFromByte(unit);
    return read;
}

bool quickNutrients(JsonQuick& q, Nutrients& n) {
    return quickList(q, n.size(), [&](std::size_t i) { return quickFloat(q, n[i]); });
}

bool quickDate(JsonQuick& q, CalendarDate& date) {
    return quickList(q, 3, [&](std::size_t i) {
        return quickInt(q, i == 0 ? date.month : i == 1 ? date.day : date.year);
    });
}

bool quickExercise(JsonQuick& q, ExerciseEntry& e) {
    static constexpr uint8_t kKeys[] = {jsonKey("key"),     jsonKey("byte"),    jsonKey("type"),
                                        jsonKey("variant"), jsonKey("third"),   jsonKey("name"),
                                        jsonKey("minutes"), jsonKey("calories")};
    return quickObject(q, kKeys, [&](uint8_t key) {
        switch (key) {
            case jsonKey("key"):
                return quickInt(q, e.key.value);
            case jsonKey("byte"):
                return quickInt(q, e.byte);
            case jsonKey("type"):
                return quickInt(q, e.type);
            case jsonKey("variant"):
                return quickInt(q, e.variant);
            case jsonKey("third"):
                return quickInt(q, e.third);
            case jsonKey("name"):
                return quickText(q, e.name);
            case jsonKey("minutes"):
                return quickInt(q, e.minutes);
            case jsonKey("calories"):
                return quickInt(q, e.calories);
            default:
                return false;
        }
    });
}

}  // namespace

bool quickFood(JsonQuick& q, FoodItem& f) {
    static constexpr uint8_t kKeys[] = {jsonKey("key"),   jsonKey("flag"),      jsonKey("name"),
                                        jsonKey("text2"), jsonKey("serving"),   jsonKey("ref1"),
                                        jsonKey("ref2"),  jsonKey("nutrients"), jsonKey("meal"),
                                        jsonKey("ratio"), jsonKey("group")};
    return quickObject(q, kKeys, [&](uint8_t key) {
        switch (key) {
            case jsonKey("key"):
                return quickInt(q, f.key.value);
            case jsonKey("flag"):
                return quickInt(q, f.loggedFlag);
            case jsonKey("name"):
                return quickText(q, f.name);
            case jsonKey("text2"):
                return quickText(q, f.text2);
            case jsonKey("serving"):
                return quickServing(q, f.serving);
            case jsonKey("ref1"):
                return quickServing(q, f.ref1);
            case jsonKey("ref2"):
                return quickServing(q, f.ref2);
            case jsonKey("nutrients"):
                return quickNutrients(q, f.nutrients);
            case jsonKey("meal"):
                return quickInt(q, f.meal);
            case jsonKey("ratio"):
                return quickFloat(q, f.ratio);
            case jsonKey("group"):
                return quickInt(q, f.group);
            default:
                return false;
        }
    });
}

bool quickDay(JsonQuick& q, DayRecord& day) {
    static constexpr uint8_t kKeys[] = {jsonKey("date"),     jsonKey("weight"), jsonKey("note"),
                                        jsonKey("word"),     jsonKey("level"),  jsonKey("bmr"),
                                        jsonKey("flags"),    jsonKey("totals"), jsonKey("groups"),
                                        jsonKey("exercises")};
    DayFields& d = day.rawFields();
    return quickObject(q, kKeys, [&](uint8_t key) {
        switch (key) {
            case jsonKey("date"):
                return quickDate(q, d.date);
            case jsonKey("weight"):
                return quickFloat(q, d.weight);
            case jsonKey("note"):
                return quickText(q, d.note);
            case jsonKey("word"):
                return quickInt(q, d.word);
            case jsonKey("level"):
                return quickInt(q, d.level);
            case jsonKey("bmr"):
                return quickInt(q, d.bmr);
            case jsonKey("flags"):
                return quickInt(q, d.flags);
            case jsonKey("totals"):
                return quickNutrients(q, d.totals);
            case jsonKey("groups"):
                return quickList(q, d.groups.size(), [&](std::size_t g) {
                    return quickListOfAny(q,
                                          [&] { return quickFood(q, d.groups[g].emplace_back()); });
                });
            case jsonKey("exercises"):
                return quickListOfAny(q,
                                      [&] { return quickExercise(q, d.exercises.emplace_back()); });
            default:
                return false;
        }
    });
}

// The readers for both kinds of value.
template float floatValue(const Json&, const char*);
template float floatValue(const TreeValue&, const char*);
template Text textValue(const Json&, const char*);
template Text textValue(const TreeValue&, const char*);
template void readDate(const Json&, CalendarDate&, const char*);
template void readDate(const TreeValue&, CalendarDate&, const char*);
template ServingQuantity servingValue(const Json&, const char*);
template ServingQuantity servingValue(const TreeValue&, const char*);
template Nutrients nutrientsValue(const Json&, const char*);
template Nutrients nutrientsValue(const TreeValue&, const char*);
template FoodItem foodValue(const Json&);
template FoodItem foodValue(const TreeValue&);
template ExerciseEntry exerciseValue(const Json&);
template ExerciseEntry exerciseValue(const TreeValue&);
template void readProfileForCalc(const Json&, UserProfile&);
template void readProfileForCalc(const TreeValue&, UserProfile&);
template void readProfile(const Json&, UserProfile&);
template void readProfile(const TreeValue&, UserProfile&);
template void readDay(const Json&, DayRecord&);
template void readDay(const TreeValue&, DayRecord&);

}  // namespace nutrovex::tool
