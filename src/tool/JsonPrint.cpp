#include "tool/JsonPrint.h"

#include <charconv>

namespace nutrovex::tool {

namespace {

void appendPad(std::string& out, std::size_t n) {
    out.append(n, ' ');
}

bool holdsFoods(const CategoryList& list) {
    for (const FoodCategory& c : list) {
        if (!c.foods.empty()) {
            return true;
        }
    }
    return false;
}

// The measure that decides whether a container fits a line: a scalar's text; for a container
// its brackets and, for every element, the element and the ", " after it (after the last one
// too) and an object's key with its quotes and ": ". It stops as soon as it exceeds `limit`.
std::size_t compactSize(const Json& v, std::size_t limit) {
    if (v.is_object() || v.is_array()) {
        std::size_t n = 2;
        for (auto it = v.begin(); it != v.end(); ++it) {
            if (v.is_object()) {
                n += it.key().size() + 4;
            }
            n += compactSize(*it, limit > n ? limit - n : 0) + 2;
            if (n > limit) {
                return n;
            }
        }
        return n;
    }
    return scalarJsonText(v).size();
}

void appendCompact(std::string& out, const Json& v) {
    if (v.is_object()) {
        out += '{';
        bool first = true;
        for (auto it = v.begin(); it != v.end(); ++it) {
            out += first ? "" : ", ";
            first = false;
            out += jsonStringText(it.key());
            out += ": ";
            appendCompact(out, *it);
        }
        out += '}';
    } else if (v.is_array()) {
        out += '[';
        bool first = true;
        for (const Json& x : v) {
            out += first ? "" : ", ";
            first = false;
            appendCompact(out, x);
        }
        out += ']';
    } else {
        out += scalarJsonText(v);
    }
}

// Whether v nests at most `most` deep (a scalar 0, a container of scalars 1, and so on); it
// looks no deeper than that, so asking at every level of a document stays linear.
bool nestsAtMost(const Json& v, int most) {
    if (!v.is_object() && !v.is_array()) {
        return true;
    }
    if (most == 0) {
        return false;
    }
    for (const Json& x : v) {
        if (!nestsAtMost(x, most - 1)) {
            return false;
        }
    }
    return true;
}

template <typename T>
void appendInt(std::string& out, T value) {
    char buf[24];
    const auto r = std::to_chars(buf, buf + sizeof buf, +value);
    out.append(buf, static_cast<std::size_t>(r.ptr - buf));
}

void appendServing(std::string& out, const ServingQuantity& s) {
    out += "{\"amount\": ";
    appendFloatText(out, s.amount);
    out += ", \"unit\": ";
    appendInt(out, unitByte(s.unit));
    out += ", \"sub\": ";
    appendInt(out, s.sub);
    out += '}';
}

void appendNutrients(std::string& out, const Nutrients& n) {
    out += '[';
    for (std::size_t i = 0; i < n.size(); ++i) {
        if (i != 0) {
            out += ", ";
        }
        appendFloatText(out, n[i]);
    }
    out += ']';
}

// A list of scalars: on one line when its measure (the line's text and two) fits, else one
// element a line.
template <typename Item>
void appendScalarList(std::string& out, std::size_t indent, std::size_t count, Item&& item) {
    const std::size_t start = out.size();
    out += '[';
    for (std::size_t i = 0; i < count; ++i) {
        if (i != 0) {
            out += ", ";
        }
        item(i);
    }
    out += ']';
    if (count == 0 || indent + (out.size() - start) + 2 <= kJsonLineWidth) {
        return;
    }
    out.resize(start);
    out += "[\n";
    for (std::size_t i = 0; i < count; ++i) {
        appendPad(out, indent + 2);
        item(i);
        out += i + 1 < count ? ",\n" : "\n";
    }
    appendPad(out, indent);
    out += ']';
}

// A list of records (foods, exercise entries), each longer than a line: one a line.
template <typename List, typename Append>
void appendRecordList(std::string& out, std::size_t indent, const List& list, Append&& append) {
    if (list.empty()) {
        out += "[]";
        return;
    }
    out += "[\n";
    for (std::size_t i = 0; i < list.size(); ++i) {
        appendPad(out, indent + 2);
        append(out, list[i]);
        out += i + 1 < list.size() ? ",\n" : "\n";
    }
    appendPad(out, indent);
    out += ']';
}

}  // namespace

void appendPretty(std::string& out, const Json& v, std::size_t indent) {
    const bool container = v.is_object() || v.is_array();
    if (!container || v.empty() || (v.is_object() && nestsAtMost(v, 2)) ||
        indent + compactSize(v, kJsonLineWidth) <= kJsonLineWidth) {
        appendCompact(out, v);
        return;
    }
    out += v.is_object() ? "{\n" : "[\n";
    bool first = true;
    for (auto it = v.begin(); it != v.end(); ++it) {
        out += first ? "" : ",\n";
        first = false;
        appendPad(out, indent + 2);
        if (v.is_object()) {
            out += jsonStringText(it.key());
            out += ": ";
        }
        appendPretty(out, *it, indent + 2);
    }
    out += '\n';
    appendPad(out, indent);
    out += v.is_object() ? '}' : ']';
}

void appendFoodJson(std::string& out, const FoodItem& f) {
    out += "{\"key\": ";
    appendInt(out, f.key.value);
    out += ", \"flag\": ";
    appendInt(out, f.loggedFlag);
    out += ", \"name\": ";
    appendTextJson(out, f.name);
    out += ", \"text2\": ";
    appendTextJson(out, f.text2);
    out += ", \"serving\": ";
    appendServing(out, f.serving);
    out += ", \"ref1\": ";
    appendServing(out, f.ref1);
    out += ", \"ref2\": ";
    appendServing(out, f.ref2);
    out += ", \"nutrients\": ";
    appendNutrients(out, f.nutrients);
    out += ", \"meal\": ";
    appendInt(out, f.meal);
    out += ", \"ratio\": ";
    appendFloatText(out, f.ratio);
    out += ", \"group\": ";
    appendInt(out, f.group);
    out += '}';
}

void appendExerciseJson(std::string& out, const ExerciseEntry& e) {
    out += "{\"key\": ";
    appendInt(out, e.key.value);
    out += ", \"byte\": ";
    appendInt(out, e.byte);
    out += ", \"type\": ";
    appendInt(out, e.type);
    out += ", \"variant\": ";
    appendInt(out, e.variant);
    out += ", \"third\": ";
    appendInt(out, e.third);
    out += ", \"name\": ";
    appendTextJson(out, e.name);
    out += ", \"minutes\": ";
    appendInt(out, e.minutes);
    out += ", \"calories\": ";
    appendInt(out, e.calories);
    out += '}';
}

// A day never fits a line (its keys alone are longer) and is no record (its groups are lists of
// lists), so its members are always one a line.
void appendDayJson(std::string& out, const DayRecord& day, std::size_t indent) {
    const DayFields& d = day.fields();
    const std::size_t inner = indent + 2;
    auto member = [&](const char* key) {
        appendPad(out, inner);
        out += '"';
        out += key;
        out += "\": ";
    };
    out += "{\n";
    member("date");
    appendScalarList(out, inner, 3, [&](std::size_t i) {
        appendInt(out, i == 0 ? d.date.month : i == 1 ? d.date.day : d.date.year);
    });
    out += ",\n";
    member("weight");
    appendFloatText(out, d.weight);
    out += ",\n";
    member("note");
    appendTextJson(out, d.note);
    out += ",\n";
    member("word");
    appendInt(out, d.word);
    out += ",\n";
    member("level");
    appendInt(out, d.level);
    out += ",\n";
    member("bmr");
    appendInt(out, d.bmr);
    out += ",\n";
    member("flags");
    appendInt(out, d.flags);
    out += ",\n";
    member("totals");
    appendScalarList(out, inner, d.totals.size(),
                     [&](std::size_t i) { appendFloatText(out, d.totals[i]); });
    out += ",\n";
    member("groups");
    bool anyFoods = false;
    for (const FoodList& list : d.groups) {
        anyFoods = anyFoods || !list.empty();
    }
    if (!anyFoods) {
        // Eight empty lists: "[]" and the measure's ", " each, and the brackets.
        const std::size_t measure = 2 + d.groups.size() * 4;
        if (inner + measure <= kJsonLineWidth) {
            out += "[[], [], [], [], [], [], [], []]";
        } else {
            appendRecordList(out, inner, d.groups,
                             [](std::string& o, const FoodList&) { o += "[]"; });
        }
    } else {
        appendRecordList(out, inner, d.groups, [&](std::string& o, const FoodList& list) {
            appendRecordList(o, inner + 2, list, appendFoodJson);
        });
    }
    out += ",\n";
    member("exercises");
    appendRecordList(out, inner, d.exercises, appendExerciseJson);
    out += '\n';
    appendPad(out, indent);
    out += '}';
}

void appendCategoryJson(std::string& out, const FoodCategory& c, std::size_t indent) {
    if (c.foods.empty()) {  // a record, on one line
        out += "{\"key\": ";
        appendInt(out, c.key.value);
        out += ", \"byte\": ";
        appendInt(out, c.byte);
        out += ", \"name\": ";
        appendTextJson(out, c.name);
        out += ", \"foods\": []}";
        return;
    }
    const std::size_t inner = indent + 2;
    out += "{\n";
    appendPad(out, inner);
    out += "\"key\": ";
    appendInt(out, c.key.value);
    out += ",\n";
    appendPad(out, inner);
    out += "\"byte\": ";
    appendInt(out, c.byte);
    out += ",\n";
    appendPad(out, inner);
    out += "\"name\": ";
    appendTextJson(out, c.name);
    out += ",\n";
    appendPad(out, inner);
    out += "\"foods\": ";
    appendRecordList(out, inner, c.foods, appendFoodJson);
    out += '\n';
    appendPad(out, indent);
    out += '}';
}

Json categoryJson(const FoodCategory& c) {
    Json foods = Json::array();
    for (const FoodItem& f : c.foods) {
        foods.push_back(foodJson(f));
    }
    return {{"key", c.key.value},
            {"byte", c.byte},
            {"name", textJson(c.name)},
            {"foods", std::move(foods)}};
}

namespace {

Json categoriesJson(const CategoryList& list) {
    Json categories = Json::array();
    for (const FoodCategory& c : list) {
        categories.push_back(categoryJson(c));
    }
    return categories;
}

}  // namespace

void appendCatalogueGroupsJson(std::string& out, const FoodCatalogue& catalogue, std::size_t indent,
                               const std::function<void()>& flush) {
    // A list holding a food never fits a line (a food's keys alone are longer), so the lists
    // with foods are one element a line; the rest are small and laid out from their JSON.
    bool anyFoods = false;
    for (const CategoryList& list : catalogue.groups) {
        anyFoods = anyFoods || holdsFoods(list);
    }
    if (!anyFoods) {
        Json groups = Json::array();
        for (const CategoryList& list : catalogue.groups) {
            groups.push_back(categoriesJson(list));
        }
        appendPretty(out, groups, indent);
        return;
    }
    const std::size_t inner = indent + 2;
    out += "[\n";
    for (std::size_t g = 0; g < catalogue.groups.size(); ++g) {
        const CategoryList& list = catalogue.groups[g];
        appendPad(out, inner);
        if (!holdsFoods(list)) {
            appendPretty(out, categoriesJson(list), inner);
        } else {
            out += "[\n";
            for (std::size_t c = 0; c < list.size(); ++c) {
                appendPad(out, inner + 2);
                appendCategoryJson(out, list[c], inner + 2);
                out += c + 1 < list.size() ? ",\n" : "\n";
                flush();
            }
            appendPad(out, inner);
            out += ']';
        }
        out += g + 1 < catalogue.groups.size() ? ",\n" : "\n";
    }
    appendPad(out, indent);
    out += ']';
}

void PrettyStream::member(const char* key, const Json& value) {
    m_text += "  \"";
    m_text += key;
    m_text += "\": ";
    appendPretty(m_text, value, 2);
}

void PrettyStream::flush() {
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
    m_text.clear();
}

}  // namespace nutrovex::tool
