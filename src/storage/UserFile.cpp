#include "storage/UserFile.h"

#include <vector>

#include "storage/Records.h"

namespace nutrovex {

StorageStatus readUserFile(ChunkSource& source, UserFile& file, const CalendarDate& now,
                           const ReadOptions& options) {
    return readUserFile(source, file, now, options, nullptr);
}

StorageStatus readUserFile(ChunkSource& source, UserFile& file, const CalendarDate& now,
                           const ReadOptions& options, const DayVisitor& visit) {
    ChunkReader chunks(source, options);

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
    if (!visit) {
        // Every day takes at least its chunk header and its fixed fields.
        file.days.reserve(
            std::min<std::size_t>(count, source.size() / (kChunkHeaderSize + kMinDaySize)));
    }
    for (uint16_t i = 0; i < count; ++i) {
        ByteReader d = chunks.next("day " + std::to_string(i + 1));
        auto day = std::make_unique<DayRecord>(now);
        readDay(d, *day);
        if (!chunks.finish(d)) {
            return chunks.status();
        }
        day->deferAllFoods();
        if (visit) {
            visit(*day, i);
        } else {
            file.days.push_back(std::move(day));
        }
    }
    chunks.end();
    return chunks.status();
}

StorageStatus writeUserFile(const UserFileHeader& header, const ProfileFields& profile,
                            uint16_t firstDayChunk, uint16_t dayCount, const DayList& days,
                            ChunkSink& sink) {
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
    ByteWriter h = beginChunk(sink, 0, kUserHeaderSize);
    h.u16be(header.version);
    h.u16be(header.word);
    h.u32le(header.keyCounter.value);
    h.u16be(header.flags);
    ByteWriter p = beginChunk(sink, 1, profileBytes);
    writeProfile(p, profile);
    ByteWriter x = beginChunk(sink, 2, kDayIndexSize);
    x.u16be(firstDayChunk);
    x.u16be(dayCount);
    for (uint16_t i = 0; i < dayCount; ++i) {
        const std::size_t size = daySize(*days[i]);
        if (size > kMaxPayloadSize) {
            return payloadTooLarge(kUserFileName, 3u + i, "day " + std::to_string(i + 1), size);
        }
        ByteWriter d = beginChunk(sink, 3u + i, size);
        writeDay(d, *days[i]);
    }
    return {};
}

StorageStatus writeUserFile(const UserFileHeader& header, const ProfileFields& profile,
                            uint16_t firstDayChunk, uint16_t dayCount, const DayList& days,
                            ByteBuffer& out) {
    BufferSink sink;
    StorageStatus status = writeUserFile(header, profile, firstDayChunk, dayCount, days, sink);
    if (status) {
        out = ByteBuffer(sink.bytes());
    }
    return status;
}

}  // namespace nutrovex
