// Feeds arbitrary text to the tool's JSON readers of the two large files, the streamed ones that
// write-user and write-catalogue use beside the whole-document ones. Both must refuse the same
// documents, never crash, and read the same records from the rest (compared as written files).
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "storage/CatalogueFile.h"
#include "storage/UserFile.h"
#include "tool/FileCommands.h"

namespace {

using nutrovex::ByteBuffer;
using nutrovex::tool::Json;
using nutrovex::tool::JsonShapeError;

// Runs a reader; false when it refuses the document.
template <typename Read>
bool reads(Read&& read) {
    try {
        read();
        return true;
    } catch (const Json::exception&) {
        return false;
    } catch (const JsonShapeError&) {
        return false;
    }
}

bool sameFile(const nutrovex::StorageStatus& a, const ByteBuffer& aBytes,
              const nutrovex::StorageStatus& b, const ByteBuffer& bBytes) {
    if (a.ok() != b.ok()) {
        return false;
    }
    return !a.ok() || (aBytes.size() == bBytes.size() &&
                       std::equal(aBytes.data(), aBytes.data() + aBytes.size(), bBytes.data()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace nutrovex;
    const std::string text(reinterpret_cast<const char*>(data), size);

    FoodCatalogue whole;
    FoodCatalogue streamed;
    const bool wholeRead = reads([&] { tool::readCatalogueJson(tool::parseJson(text), whole); });
    std::istringstream catalogueIn(text);
    const bool streamedRead = reads([&] { tool::readCatalogueJson(catalogueIn, streamed); });
    if (wholeRead != streamedRead) {
        std::abort();
    }
    if (wholeRead) {
        ByteBuffer a;
        ByteBuffer b;
        const StorageStatus sa = writeCatalogueFile(whole, a, VersionOnWrite::AsStored);
        const StorageStatus sb = writeCatalogueFile(streamed, b, VersionOnWrite::AsStored);
        if (!sameFile(sa, a, sb, b)) {
            std::abort();
        }
    }

    UserFile wholeUser;
    UserFile streamedUser;
    const bool wholeUserRead =
        reads([&] { tool::readUserFileJson(tool::parseJson(text), wholeUser); });
    std::istringstream userIn(text);
    const bool streamedUserRead = reads([&] { tool::readUserFileJson(userIn, streamedUser); });
    if (wholeUserRead != streamedUserRead) {
        std::abort();
    }
    if (wholeUserRead) {
        ByteBuffer a;
        ByteBuffer b;
        const StorageStatus sa =
            writeUserFile(wholeUser.header, wholeUser.profile.fields(), wholeUser.firstDayChunk,
                          wholeUser.dayCount, wholeUser.days, a);
        const StorageStatus sb =
            writeUserFile(streamedUser.header, streamedUser.profile.fields(),
                          streamedUser.firstDayChunk, streamedUser.dayCount, streamedUser.days, b);
        if (!sameFile(sa, a, sb, b)) {
            std::abort();
        }
    }
    return 0;
}
