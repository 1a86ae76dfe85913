// Feeds arbitrary bytes to the UserDB.ddb reader. Whatever the bytes, reading must end in a clean
// result: a refusal names the chunk and an offset inside the file, and a file that reads whole
// writes back byte for byte, so that nothing read whole is ever changed by saving it.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "storage/UserFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace nutrovex;
    const std::span<const uint8_t> bytes(data, size);
    UserFile file;
    const StorageStatus read = readUserFile(bytes, file, CalendarDate(), {"UserDB.ddb"});
    if (!read) {
        const StorageError& e = read.error();
        if (read.message().empty() || e.chunk < 0 || e.offset < 0 ||
            static_cast<std::size_t>(e.offset) > size) {
            std::abort();
        }
        return 0;
    }
    ByteBuffer out;
    if (!writeUserFile(file.header, file.profile.fields(), file.firstDayChunk, file.dayCount,
                       file.days, out) ||
        out.size() != size || std::memcmp(out.data(), data, size) != 0) {
        std::abort();
    }
    return 0;
}
