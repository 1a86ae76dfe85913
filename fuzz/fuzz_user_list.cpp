// Feeds arbitrary bytes to the Users.udb reader. Whatever the bytes, reading must end in a
// clean result; a file the strict reader accepts must write back byte for byte.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "storage/UserList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace nutrovex;
    const std::span<const uint8_t> bytes(data, size);
    UserListFile lenient;
    const StorageStatus loose = readUserListFile(bytes, lenient, {"Users.udb"});
    if (!loose && loose.message().empty()) {
        std::abort();
    }
    UserListFile strict;
    if (!readUserListFile(bytes, strict, {"Users.udb", true})) {
        return 0;
    }
    ByteBuffer out;
    if (!writeUserListFile(strict, out, FormatOnWrite::AsStored) || out.size() != size ||
        std::memcmp(out.data(), data, size) != 0) {
        std::abort();
    }
    return 0;
}
