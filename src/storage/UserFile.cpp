#include "storage/UserFile.h"

#include <vector>

#include "calc/Totals.h"
#include "storage/Records.h"

namespace nutrovex {

StorageStatus readUserFile(std::span<const uint8_t> bytes, UserFile& file, const CalendarDate& now,
                           const ReadOptions& options) {
    ChunkReader chunks(bytes, options);

    ByteReader h = chunks.next("the header");
    UserFileHeader header;
    header.version = h.u16be();
    header.word = h.u16be();
    header.keyCounter.value = h.u32le();  // raw little-endian, unlike the payload numbers
    header.flags = h.u16be();
    if (!chunks.finish(h)) {
        return chunks.status();
    }
    file.header = header;

    ByteReader p = chunks.next("the profile");
    ProfileFields profile = file.profile.fields();
    readProfile(p, profile);
    if (!chunks.finish(p)) {
        return chunks.status();
    }
    file.profile.rawFields() = std::move(profile);

    ByteReader x = chunks.next("the day index");
    const uint16_t first = x.u16be();
    const uint16_t count = x.u16be();
    if (!chunks.finish(x)) {
        return chunks.status();
    }
    file.firstDayChunk = first;
    file.dayCount = count;

    file.days.clear();
    // Every day takes at least its chunk header and its fixed fields.
    file.days.reserve(
        std::min<std::size_t>(count, bytes.size() / (kChunkHeaderSize + kMinDaySize)));
    for (uint16_t i = 0; i < count; ++i) {
        ByteReader d = chunks.next("day " + std::to_string(i + 1));
        auto day = std::make_unique<DayRecord>(now);
        readDay(d, *day);
        if (!chunks.finish(d)) {
            return chunks.status();
        }
        std::size_t foods = 0;
        for (const FoodList& list : day->fields().groups) {
            foods += list.size();
        }
        day->allFoods().reserve(foods);  // one allocation for the rebuilt list
        rebuildAllFoods(*day);
        file.days.push_back(std::move(day));
    }
    chunks.end();
    return chunks.status();
}

StorageStatus writeUserFile(const UserFileHeader& header, const ProfileFields& profile,
                            uint16_t firstDayChunk, uint16_t dayCount, const DayList& days,
                            ByteBuffer& out) {
    if (dayCount > days.size()) {
        StorageError e =
            fileError(kUserFileName, "the day index counts " + std::to_string(dayCount) +
                                         " days but the list holds " + std::to_string(days.size()));
        e.chunk = 2;
        return e;
    }
    const std::size_t profileBytes = profileSize(profile);
    if (profileBytes > kMaxPayloadSize) {
        return payloadTooLarge(kUserFileName, 1, "the profile", profileBytes);
    }
    std::vector<uint32_t> daySizes(dayCount);
    std::size_t total = 3 * kChunkHeaderSize + kUserHeaderSize + profileBytes + kDayIndexSize;
    for (uint16_t i = 0; i < dayCount; ++i) {
        const std::size_t size = daySize(*days[i]);
        if (size > kMaxPayloadSize) {
            return payloadTooLarge(kUserFileName, 3u + i, "day " + std::to_string(i + 1), size);
        }
        daySizes[i] = static_cast<uint32_t>(size);
        total += kChunkHeaderSize + size;
    }

    ByteBuffer buffer(total);
    ByteWriter w(buffer.data(), buffer.data() + total);
    writeChunkHeader(w, 0, kUserHeaderSize);
    w.u16be(header.version);
    w.u16be(header.word);
    w.u32le(header.keyCounter.value);
    w.u16be(header.flags);
    writeChunkHeader(w, 1, profileBytes);
    writeProfile(w, profile);
    writeChunkHeader(w, 2, kDayIndexSize);
    w.u16be(firstDayChunk);
    w.u16be(dayCount);
    for (uint16_t i = 0; i < dayCount; ++i) {
        writeChunkHeader(w, 3u + i, daySizes[i]);
        writeDay(w, *days[i]);
    }
    out = std::move(buffer);
    return {};
}

}  // namespace nutrovex
