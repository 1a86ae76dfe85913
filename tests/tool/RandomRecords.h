#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "core/FoodCatalogue.h"
#include "storage/UserFile.h"

namespace nutrovex::tool {

// Random records with every field drawn over its whole range: any float bits (NaNs with
// payloads, infinities, denormals, -0), texts of any bytes, absent texts and empty ones.
class RandomRecords {
public:
    explicit RandomRecords(uint32_t seed) : m_rng(seed) {}

    template <typename T>
    T any() {
        return static_cast<T>(m_rng());
    }
    float anyFloat() {
        const uint32_t bits = m_rng() % 4 == 0 ? 0x7F800000u | m_rng() : m_rng();
        float f;
        std::memcpy(&f, &bits, sizeof f);
        return f;
    }
    Text anyText() {
        switch (m_rng() % 5) {
            case 0:
                return Text::null();
            case 1:
                return Text("");
            default: {
                std::string s(m_rng() % 40, '\0');
                for (char& c : s) {
                    c = static_cast<char>(m_rng());
                }
                return Text(s);
            }
        }
    }
    ServingQuantity anyServing() {
        return {anyFloat(), unitFromByte(any<uint8_t>()), any<uint8_t>()};
    }
    CalendarDate anyDate() {
        CalendarDate d;
        d.month = any<int16_t>();
        d.day = any<int16_t>();
        d.year = any<int16_t>();
        return d;
    }
    FoodItem food() {
        FoodItem f;
        f.key.value = any<uint32_t>();
        f.loggedFlag = any<uint8_t>();
        f.name = anyText();
        f.text2 = anyText();
        f.serving = anyServing();
        f.ref1 = anyServing();
        f.ref2 = anyServing();
        for (float& n : f.nutrients) {
            n = anyFloat();
        }
        f.meal = any<uint16_t>();
        f.ratio = anyFloat();
        f.group = any<uint16_t>();
        return f;
    }
    std::unique_ptr<DayRecord> day() {
        auto day = std::make_unique<DayRecord>(anyDate());
        DayFields& d = day->rawFields();
        d.weight = anyFloat();
        d.note = anyText();
        d.word = any<uint16_t>();
        d.level = any<uint16_t>();
        d.bmr = any<int16_t>();
        d.flags = any<uint16_t>();
        for (float& t : d.totals) {
            t = anyFloat();
        }
        for (FoodList& list : d.groups) {
            for (uint32_t n = m_rng() % 4; n > 0; --n) {
                list.push_back(food());
            }
        }
        for (uint32_t n = m_rng() % 3; n > 0; --n) {
            ExerciseEntry e;
            e.key.value = any<uint32_t>();
            e.byte = any<uint8_t>();
            e.type = any<uint16_t>();
            e.variant = any<int16_t>();
            e.third = any<int16_t>();
            e.name = anyText();
            e.minutes = any<uint16_t>();
            e.calories = any<uint16_t>();
            d.exercises.push_back(e);
        }
        return day;
    }
    UserFile userFile() {
        UserFile u;
        u.header = {any<uint16_t>(), any<uint16_t>(), PackedKey{any<uint32_t>()}, any<uint16_t>()};
        ProfileFields& p = u.profile.rawFields();
        p.byte = any<uint8_t>();
        p.text1 = anyText();
        p.displayName = anyText();
        p.userName = anyText();
        p.height = anyFloat();
        p.age = any<int16_t>();
        p.gender = any<uint16_t>();
        p.startWeight = anyFloat();
        p.startDate = anyDate();
        p.goalWeight = anyFloat();
        p.goalDate = anyDate();
        p.plan = {any<uint8_t>(), any<uint32_t>(), any<uint32_t>(), any<uint32_t>()};
        p.defaultLevel = any<uint16_t>();
        p.units = any<uint16_t>();
        p.flags = any<uint16_t>();
        u.firstDayChunk = any<uint16_t>();
        const int days = static_cast<int>(m_rng() % 6);
        for (int i = 0; i < days; ++i) {
            u.days.push_back(day());
        }
        u.dayCount = static_cast<uint16_t>(m_rng() % (u.days.size() + 1));
        return u;
    }
    void catalogue(FoodCatalogue& c) {
        c.reset();
        c.header.version = any<uint16_t>();
        for (Text& name : c.header.groupNames) {
            name = anyText();
        }
        c.header.byte = any<uint8_t>();
        for (auto& t : c.header.texts) {
            for (uint8_t& b : t) {
                b = any<uint8_t>();
            }
        }
        c.header.keyCounter.value = any<uint32_t>();
        for (CategoryList& list : c.groups) {
            for (uint32_t n = m_rng() % 3; n > 0; --n) {
                FoodCategory cat;
                cat.key.value = any<uint32_t>();
                cat.byte = any<uint8_t>();
                cat.name = anyText();
                for (uint32_t f = m_rng() % 4; f > 0; --f) {
                    cat.foods.push_back(food());
                }
                list.push_back(std::move(cat));
            }
        }
        c.renumberGroupChunks();
    }

private:
    std::mt19937 m_rng;
};

}  // namespace nutrovex::tool
