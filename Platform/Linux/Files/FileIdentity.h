#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <optional>
#include <string>

namespace platform::linux {

/// Identifies a file, also when another one has replaced it while it is still open.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;

    [[nodiscard]] static std::optional<FileIdentity> of(const FileDescriptor& file) {
        struct stat status{};
        return ::fstat(file.get(), &status) == 0 ? std::optional(FileIdentity{status.st_dev, status.st_ino})
                                                 : std::nullopt;
    }

    [[nodiscard]] static std::optional<FileIdentity> of(const FileDescriptor& folder, const std::string& name) {
        struct stat status{};
        return ::fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0
                   ? std::optional(FileIdentity{status.st_dev, status.st_ino})
                   : std::nullopt;
    }
};

} // namespace platform::linux
