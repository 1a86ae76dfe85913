// Feeds arbitrary bytes to the UserDB.ddb reader. Whatever the bytes, reading must end in a
// clean result; a file the strict reader accepts must write back byte for byte.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "storage/UserFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace nutrovex;
    const std::span<const uint8_t> bytes(data, size);
    UserFile lenient;
    const StorageStatus loose = readUserFile(bytes, lenient, CalendarDate(), {"UserDB.ddb"});
    if (!loose && loose.message().empty()) {
        std::abort();
    }
    UserFile strict;
    if (!readUserFile(bytes, strict, CalendarDate(), {"UserDB.ddb", true})) {
        return 0;
    }
    ByteBuffer out;
    if (!writeUserFile(strict.header, strict.profile.fields(), strict.firstDayChunk,
                       strict.dayCount, strict.days, out) ||
        out.size() != size || std::memcmp(out.data(), data, size) != 0) {
        std::abort();
    }
    return 0;
}
