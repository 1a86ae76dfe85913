#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

#include "core/DayRecord.h"
#include "core/ExerciseEntry.h"
#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "tool/JsonValues.h"

namespace nutrovex::tool {

// The tool's JSON as people read it: a container that fits a line of 100 stays on one line, a
// record (an object of scalars and small lists: a food, an exercise entry) stays on one line
// whatever its length, anything else has an element per line.
inline constexpr std::size_t kJsonLineWidth = 100;

// A JSON value laid out so, its first line at `indent`.
void appendPretty(std::string& out, const Json& value, std::size_t indent);

// The files' largest parts printed straight from the records, in exactly the text appendPretty
// gives their JSON (dayJson, foodJson, a catalogue category), without building it. A food or
// exercise entry is one line; a day, category or group list is printed as if at `indent`.
void appendFoodJson(std::string& out, const FoodItem& food);
void appendExerciseJson(std::string& out, const ExerciseEntry& entry);
void appendDayJson(std::string& out, const DayRecord& day, std::size_t indent);
void appendCategoryJson(std::string& out, const FoodCategory& category, std::size_t indent);
// A catalogue's "groups", the eight lists of categories; `flush` is called after every category
// so that the text can be written out as it grows.
void appendCatalogueGroupsJson(std::string& out, const FoodCatalogue& catalogue, std::size_t indent,
                               const std::function<void()>& flush);
// A catalogue category as dumped, with its foods; catalogueJson is made of these.
[[nodiscard]] Json categoryJson(const FoodCategory& category);

// Pretty JSON written out in pieces of about 64 KiB, so that a document too large to hold goes
// out as it is made.
class PrettyStream {
public:
    explicit PrettyStream(std::ostream& out) : m_out(out) {}
    ~PrettyStream() { flush(); }
    PrettyStream(const PrettyStream&) = delete;
    PrettyStream& operator=(const PrettyStream&) = delete;

    PrettyStream& operator<<(std::string_view text) {
        m_text += text;
        return *this;
    }
    // One member of the outermost object, as appendPretty writes it.
    void member(const char* key, const Json& value);
    // The text to append to; written out by flushIfFull() and flush().
    std::string& text() { return m_text; }
    void flushIfFull() {
        if (m_text.size() >= kFlushSize) {
            flush();
        }
    }
    void flush();

private:
    static constexpr std::size_t kFlushSize = std::size_t{1} << 16;
    std::ostream& m_out;
    std::string m_text;
};

}  // namespace nutrovex::tool
