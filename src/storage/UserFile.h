#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "core/CalendarDate.h"
#include "core/UserProfile.h"
#include "core/UserStore.h"
#include "storage/Chunks.h"
#include "storage/FileIo.h"

namespace nutrovex {

inline constexpr const char* kUserFileName = "UserDB.ddb";
inline constexpr std::size_t kUserHeaderSize = 10;
inline constexpr std::size_t kDayIndexSize = 4;

// The contents of UserDB.ddb exactly as stored: chunk 0 header, chunk 1 profile, chunk 2 day
// index, then one chunk per day in file order.
struct UserFile {
    UserFileHeader header;
    UserProfile profile;
    uint16_t firstDayChunk = 3;
    uint16_t dayCount = 0;  // as the day index says
    DayList days;           // in file order; each day's all-foods list rebuilt
};

// Reads a whole UserDB.ddb. New days are made at `now` (the clock parts of a stored date are
// not in the file). On failure, `file` keeps every chunk read before the one that failed.
[[nodiscard]] StorageStatus readUserFile(ChunkSource& source, UserFile& file,
                                         const CalendarDate& now, const ReadOptions& options);
// The same, handing each day to `visit` (with its position) as soon as it is read instead of
// keeping it: a file of any size is read in the memory of one day. file.days stays empty.
using DayVisitor = std::function<void(const DayRecord& day, uint16_t index)>;
[[nodiscard]] StorageStatus readUserFile(ChunkSource& source, UserFile& file,
                                         const CalendarDate& now, const ReadOptions& options,
                                         const DayVisitor& visit);
[[nodiscard]] inline StorageStatus readUserFile(std::span<const uint8_t> bytes, UserFile& file,
                                                const CalendarDate& now,
                                                const ReadOptions& options) {
    MemorySource source(bytes);
    return readUserFile(source, file, now, options);
}

// Serialises the records as they stand, totals included: the day index says `dayCount` and the
// first `dayCount` days of the list follow. A day count larger than the list is an error, as is
// a record too large for a chunk; then what the sink holds is to be thrown away.
[[nodiscard]] StorageStatus writeUserFile(const UserFileHeader& header,
                                          const ProfileFields& profile, uint16_t firstDayChunk,
                                          uint16_t dayCount, const DayList& days, ChunkSink& sink);
// The same into memory; on failure `out` is left as it was.
[[nodiscard]] StorageStatus writeUserFile(const UserFileHeader& header,
                                          const ProfileFields& profile, uint16_t firstDayChunk,
                                          uint16_t dayCount, const DayList& days, ByteBuffer& out);

}  // namespace nutrovex
