// Feeds arbitrary text to the tool's JSON readers of the two large files: the streamed ones that
// write-user and write-catalogue use, reading a few bytes at a time so that every kind of token
// falls across reads, beside the whole-document ones. Both must refuse the same documents for the
// same kind of reason (not JSON, or JSON of the wrong shape), never crash, and read the same
// records from the rest (compared as written files).
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "storage/CatalogueFile.h"
#include "storage/UserFile.h"
#include "tool/FileCommands.h"
#include "tool/JsonStream.h"

namespace {

using nutrovex::ByteBuffer;
using nutrovex::tool::Json;
using nutrovex::tool::JsonShapeError;
using nutrovex::tool::JsonSyntaxError;

enum class Reading { Read, NotJson, Refused };

template <typename Read>
Reading outcomeOf(Read&& read) {
    try {
        read();
        return Reading::Read;
    } catch (const Json::exception&) {
        return Reading::NotJson;
    } catch (const JsonSyntaxError&) {
        return Reading::NotJson;
    } catch (const JsonShapeError&) {
        return Reading::Refused;
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
    const std::size_t block = 1 + size % 7;

    FoodCatalogue whole;
    FoodCatalogue streamed;
    const Reading wholeRead =
        outcomeOf([&] { tool::readCatalogueJson(tool::parseJson(text), whole); });
    std::istringstream catalogueIn(text);
    const Reading streamedRead =
        outcomeOf([&] { tool::readCatalogueJson(catalogueIn, streamed, block); });
    if (wholeRead != streamedRead) {
        std::abort();
    }
    if (wholeRead == Reading::Read) {
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
    const Reading wholeUserRead =
        outcomeOf([&] { tool::readUserFileJson(tool::parseJson(text), wholeUser); });
    std::istringstream userIn(text);
    const Reading streamedUserRead =
        outcomeOf([&] { tool::readUserFileJson(userIn, streamedUser, block); });
    if (wholeUserRead != streamedUserRead) {
        std::abort();
    }
    if (wholeUserRead == Reading::Read) {
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
