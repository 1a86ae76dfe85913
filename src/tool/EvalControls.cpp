#include <algorithm>
#include <cmath>
#include <string_view>

#include "controls/NumericField.h"
#include "core/Cp1252.h"
#include "tool/Eval.h"

namespace nutrovex::tool {

namespace {

// A double as a JSON number; the values JSON cannot hold as the strings floats use.
Json doubleJson(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value > 0 ? "inf" : "-inf";
    }
    return value;
}

// The field's text as the 8-bit conversion gives it: a character Windows-1252 cannot hold becomes
// "?", which ends the number like any other junk.
std::string fieldText(const Json& request) {
    const std::string utf8 = stringField(request, "text");
    if (auto bytes = utf8ToCp1252(utf8)) {
        return *bytes;
    }
    std::string out;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        length = std::min(length, utf8.size() - i);
        const auto one = utf8ToCp1252(std::string_view(utf8).substr(i, length));
        out += one && one->size() == 1 ? (*one)[0] : '?';
        i += length;
    }
    return out;
}

uint16_t decimalsField(const Json& request) {
    return intField<uint16_t>(request, "decimals");
}

Json numericText(const Json& request) {
    NumericField field;
    field.setRange(doubleField(request, "min"), doubleField(request, "max"));
    field.setPrefix(cp1252Field(request, "prefix"));
    field.setSuffix(cp1252Field(request, "suffix"));
    const uint16_t decimals = decimalsField(request);
    const bool grouping = boolField(request, "grouping");
    const bool decorated = boolField(request, "decorated");
    field.setFormat(decimals, grouping);
    field.setValue(doubleField(request, "value"));
    field.show(decorated);
    return {{"text", textJson(Text(field.text()))}, {"value", doubleJson(field.value())}};
}

// The field as it stands after the person typed the text and left it.
Json numericLeave(const Json& request) {
    NumericField field;
    field.setRange(doubleField(request, "min"), doubleField(request, "max"));
    field.setFormat(decimalsField(request), false);
    field.setText(fieldText(request));
    field.leave();
    return {{"hasValue", field.hasValue()},
            {"value", doubleJson(field.value())},
            {"text", textJson(Text(field.text()))}};
}

}  // namespace

void registerControlOps(EvalRegistry& registry) {
    registry["numericText"] = numericText;
    registry["numericLeave"] = numericLeave;
}

}  // namespace nutrovex::tool
