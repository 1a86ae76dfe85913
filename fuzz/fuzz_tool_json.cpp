// Feeds arbitrary text to the tool's JSON readers of the two large files: the streamed ones that
// write-user and write-catalogue use, reading a few bytes at a time so that every kind of token
// falls across reads, and all at once so that records in their plain form are read straight,
// beside the whole-document ones. All must refuse the same documents for the same kind of reason
// (not JSON, or JSON of the wrong shape), never crash, and read the same records from the rest
// (compared as written files).
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
    const std::size_t smallBlock = 1 + size % 7;

    FoodCatalogue whole;
    const Reading wholeRead =
        outcomeOf([&] { tool::readCatalogueJson(tool::parseJson(text), whole); });
    ByteBuffer wholeBytes;
    const StorageStatus wholeWritten =
        wholeRead == Reading::Read ? writeCatalogueFile(whole, wholeBytes, VersionOnWrite::AsStored)
                                   : StorageStatus();
    for (const std::size_t block : {smallBlock, size + 1}) {
        FoodCatalogue streamed;
        std::istringstream in(text);
        const Reading streamedRead =
            outcomeOf([&] { tool::readCatalogueJson(in, streamed, block); });
        if (wholeRead != streamedRead) {
            std::abort();
        }
        if (wholeRead == Reading::Read) {
            ByteBuffer bytes;
            const StorageStatus written =
                writeCatalogueFile(streamed, bytes, VersionOnWrite::AsStored);
            if (!sameFile(wholeWritten, wholeBytes, written, bytes)) {
                std::abort();
            }
        }
    }

    const auto writeUser = [](const UserFile& user, ByteBuffer& bytes) {
        return writeUserFile(user.header, user.profile.fields(), user.firstDayChunk, user.dayCount,
                             user.days, bytes);
    };
    UserFile wholeUser;
    const Reading wholeUserRead =
        outcomeOf([&] { tool::readUserFileJson(tool::parseJson(text), wholeUser); });
    ByteBuffer wholeUserBytes;
    const StorageStatus wholeUserWritten =
        wholeUserRead == Reading::Read ? writeUser(wholeUser, wholeUserBytes) : StorageStatus();
    for (const std::size_t block : {smallBlock, size + 1}) {
        UserFile streamed;
        std::istringstream in(text);
        const Reading streamedRead =
            outcomeOf([&] { tool::readUserFileJson(in, streamed, block); });
        if (wholeUserRead != streamedRead) {
            std::abort();
        }
        if (wholeUserRead == Reading::Read) {
            ByteBuffer bytes;
            const StorageStatus written = writeUser(streamed, bytes);
            if (!sameFile(wholeUserWritten, wholeUserBytes, written, bytes)) {
                std::abort();
            }
        }
    }
    return 0;
}
