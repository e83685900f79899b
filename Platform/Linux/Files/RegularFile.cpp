#include "Platform/Linux/Files/RegularFile.h"

#include "Platform/Linux/Files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace platform::linux {

std::optional<std::string> readRegularFile(const std::string& path, std::size_t most, Excess excess) {
    // Opening a device can have effects, so the file is checked first; and again afterwards, as it may have been
    // replaced.
    struct stat file{};
    if (::stat(path.c_str(), &file) != 0 || !S_ISREG(file.st_mode)) {
        return std::nullopt;
    }
    const FileDescriptor descriptor{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)};
    if (!descriptor || ::fstat(descriptor.get(), &file) != 0 || !S_ISREG(file.st_mode)) {
        return std::nullopt;
    }
    std::string contents;
    std::array<char, 16384> buffer{};
    while (contents.size() <= most) {
        const ssize_t count = ::read(descriptor.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            return contents;
        }
        contents.append(buffer.data(), static_cast<std::size_t>(count));
    }
    if (excess == Excess::refused) {
        return std::nullopt;
    }
    contents.resize(most);
    return contents;
}

bool isExecutableFile(const std::string& path) {
    struct stat file{};
    return ::stat(path.c_str(), &file) == 0 && S_ISREG(file.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

} // namespace platform::linux
