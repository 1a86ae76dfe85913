#include "storage/CatalogueStorage.h"

#include "core/Cp1252.h"
#include "storage/CatalogueFile.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"

namespace nutrovex {

namespace {

constexpr std::size_t kMaxFolderName = 256;

StorageError catalogueError(std::string reason) {
    return fileError(kCatalogueFileName, std::move(reason));
}

}  // namespace

StorageStatus setCataloguePath(FoodCatalogue& catalogue, const UserList& users,
                               const std::filesystem::path& userDataFile) {
    const std::filesystem::path relative =
        userDataFile.lexically_normal().lexically_relative(users.usersFolder().lexically_normal());
    auto part = relative.begin();
    if (relative.empty() || part == relative.end() || *part == ".." || *part == "." ||
        std::next(part) == relative.end()) {
        return catalogueError("the user's data file is not inside a user's folder");
    }
    const std::optional<std::string> folder = utf8ToCp1252(part->string());
    if (!folder || folder->size() > kMaxFolderName) {
        return catalogueError("the user's folder name is not a user name");
    }
    Position pos = users.find(*folder);
    if (pos == kNoPosition) {
        if (users.count() == 0) {
            return catalogueError("the user list is empty");
        }
        pos = 0;  // as the format always has: the first user's catalogue
    }
    const std::optional<std::filesystem::path> folderPath = users.userFolder(users.nameAt(pos));
    if (!folderPath) {
        return catalogueError(quotedName(users.nameAt(pos)) + " is not a usable user name");
    }
    catalogue.folderPath = *folderPath;
    catalogue.filePath = catalogue.folderPath / kCatalogueFileName;
    return {};
}

CatalogueLoadResult loadCatalogue(FoodCatalogue& catalogue,
                                  const std::filesystem::path& templatePath) {
    catalogue.reset();
    catalogue.modified = false;
    if (catalogue.filePath.empty()) {
        return {CatalogueLoad::Failed, catalogueError("no catalogue path is set")};
    }
    FileSource source;
    StorageError error;
    switch (source.open(catalogue.filePath, error)) {
        case ReadFile::Failed:
            return {CatalogueLoad::Failed, error};
        case ReadFile::Missing: {
            // The template becomes the user's catalogue: read, so that a first edit is an edit
            // of it, and copied in.
            ByteBuffer copy;
            StorageError copyError;
            if (readWholeFile(templatePath, copy, copyError) != ReadFile::Read) {
                if (!copyError.failed()) {
                    copyError = fileError(templatePath.filename().string(),
                                          "the template catalogue is missing");
                }
                return {CatalogueLoad::Failed, copyError};
            }
            const StorageStatus read =
                readCatalogueFile(copy.bytes(), catalogue, {templatePath.filename().string()});
            if (!read) {
                catalogue.reset();
                return {CatalogueLoad::Failed, read};
            }
            catalogue.modified = false;
            const StorageStatus written =
                writeFileAtomically(catalogue.filePath, copy.bytes(), true);
            if (!written) {
                return {CatalogueLoad::Failed, written};
            }
            return {CatalogueLoad::Copied, {}};
        }
        case ReadFile::Read:
            break;
    }
    // A catalogue's records take about 1.1 times its file.
    const HeapReserve reserve(source.size() + source.size() / 8);
    StorageStatus status = readCatalogueFile(source, catalogue, {kCatalogueFileName});
    catalogue.modified = false;
    if (!status) {
        return {CatalogueLoad::Failed, status};
    }
    return {CatalogueLoad::Read, {}};
}

StorageStatus saveCatalogue(FoodCatalogue& catalogue) {
    if (catalogue.filePath.empty()) {
        return catalogueError("no catalogue path is set");
    }
    AtomicFile file(catalogue.filePath);
    StorageStatus status = file.open(true);
    if (status) {
        status = writeCatalogueFile(catalogue, file, VersionOnWrite::Current);
    }
    if (status) {
        status = file.commit();
    }
    if (status) {
        catalogue.modified = false;
    }
    return status;
}

StorageStatus installTemplateCatalogue(const std::filesystem::path& root,
                                       std::span<const uint8_t> shipped) {
    const std::filesystem::path path = templateCataloguePath(root);
    std::error_code ec;
    if (std::filesystem::exists(path, ec)) {
        return {};
    }
    std::filesystem::create_directories(root, ec);
    if (ec) {
        return fileError(kCatalogueFileName,
                         "the data folder cannot be made: " + systemReason(ec.value()));
    }
    return writeFileAtomically(path, shipped, false);
}

std::filesystem::path installedTemplatePath(const std::filesystem::path& programDir) {
    const std::filesystem::path bin =
        programDir.has_filename() ? programDir : programDir.parent_path();
    return bin.parent_path() / "share" / "nutrovex" / kCatalogueFileName;
}

std::vector<uint8_t> chooseTemplateCatalogue(const std::filesystem::path& programDir,
                                             std::span<const uint8_t> builtIn) {
    ByteBuffer bytes;
    StorageError error;
    if (readWholeFile(installedTemplatePath(programDir), bytes, error) == ReadFile::Read) {
        FoodCatalogue check;
        if (readCatalogueFile(bytes.bytes(), check, {kCatalogueFileName}).ok()) {
            return {bytes.bytes().begin(), bytes.bytes().end()};
        }
    }
    return {builtIn.begin(), builtIn.end()};
}

}  // namespace nutrovex
