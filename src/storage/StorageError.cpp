#include "storage/StorageError.h"

#include <cerrno>
#include <cstring>

namespace nutrovex {

std::string StorageError::message() const {
    std::string m = file;
    if (chunk >= 0) {
        m += ": chunk " + std::to_string(chunk);
    }
    if (offset >= 0) {
        m += chunk >= 0 ? ", byte " : ": byte ";
        m += std::to_string(offset);
    }
    m += ": ";
    m += reason;
    return m;
}

StorageError fileError(std::string file, std::string reason) {
    StorageError e;
    e.file = std::move(file);
    e.reason = std::move(reason);
    return e;
}

std::string systemReason(int errorNumber) {
    switch (errorNumber) {
        case ENOSPC:
            return "the disk is full";
        case EDQUOT:
            return "the disk quota is used up";
        case EFBIG:
            return "the file would be larger than the system allows";
        case EACCES:
        case EPERM:
            return "permission denied";
        case EROFS:
            return "the disk is read-only";
        case ENOENT:
            return "the file or its folder does not exist";
        case ENOTDIR:
            return "a part of the path is not a folder";
        case EISDIR:
            return "it is a folder, not a file";
        case EIO:
            return "the disk reported an input/output error";
        case ENAMETOOLONG:
            return "the path is too long";
        case EMFILE:
        case ENFILE:
            return "too many files are open";
        case ENOMEM:
            return "there is not enough memory";
        default:
            break;
    }
    std::string text = std::strerror(errorNumber);
    if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z') {
        text[0] = static_cast<char>(text[0] - 'A' + 'a');
    }
    return text;
}

}  // namespace nutrovex
