#include "Platform/Linux/Settings/DurableFile.h"

#include "Platform/Linux/Files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <system_error>
#include <thread>
#include <utility>

namespace platform::linux::DurableFile {
namespace {

using Result = std::expected<void, std::string>;

/// No settings come near this; a file beyond it is something else under our name.
constexpr std::size_t largestFile = std::size_t{16} << 20U;

std::unexpected<std::string> failure(std::string_view what, const std::string& path, int error) {
    return std::unexpected("cannot " + std::string{what} + " " + path + ": " + std::generic_category().message(error));
}

/// The folder of an absolute path.
std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// Brings a folder's entries to the disk. File systems that cannot do that for folders answer EINVAL and order their
/// writes themselves.
Result syncFolder(const std::string& folder) {
    const FileDescriptor descriptor{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!descriptor || (::fsync(descriptor.get()) != 0 && errno != EINVAL)) {
        return failure("sync the folder", folder, errno);
    }
    return {};
}

Result makeFolders(const std::string& folder) {
    if (::mkdir(folder.c_str(), S_IRWXU) == 0) {
        return syncFolder(folderOf(folder));
    }
    if (errno == EEXIST) {
        return {};
    }
    if (errno != ENOENT || folder == "/") {
        return failure("make the folder", folder, errno);
    }
    if (Result parent = makeFolders(folderOf(folder)); !parent) {
        return parent;
    }
    if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        return failure("make the folder", folder, errno);
    }
    return syncFolder(folderOf(folder));
}

Result writeAll(int descriptor, std::string_view contents, const std::string& path) {
    while (!contents.empty()) {
        const ssize_t written = ::write(descriptor, contents.data(), contents.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return failure("write", path, errno);
        }
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

bool isAt(const std::string& path, const struct stat& file) {
    struct stat found{};
    return ::lstat(path.c_str(), &found) == 0 && found.st_dev == file.st_dev && found.st_ino == file.st_ino;
}

/// Locks a file, unless another process has it locked for longer than a write takes. Where locks are unknown, as on
/// some network file systems, only a user with copies on two machines at once can meet the race.
bool lock(int descriptor) {
    constexpr auto patience = std::chrono::milliseconds(100);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

/// Opens the file to be written, which an earlier process may have left there, and locks it.
std::expected<FileDescriptor, std::string> openLocked(const std::string& path) {
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        FileDescriptor descriptor{
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, S_IRUSR | S_IWUSR)};
        if (!descriptor) {
            return failure("open", path, errno);
        }
        if (!lock(descriptor.get())) {
            return std::unexpected(path + " is being written by another process");
        }
        struct stat file{};
        if (::fstat(descriptor.get(), &file) != 0) {
            return failure("examine", path, errno);
        }
        if (!S_ISREG(file.st_mode)) {
            return std::unexpected(path + " is not a file");
        }
        // Between the opening and the lock the file may have been given its final name by its other writer.
        if (isAt(path, file)) {
            return descriptor;
        }
    }
    return std::unexpected(path + " is being written by other processes");
}

Result fill(int descriptor, std::string_view contents, const std::string& path) {
    if (::ftruncate(descriptor, 0) != 0 || ::fchmod(descriptor, S_IRUSR | S_IWUSR) != 0) {
        return failure("prepare", path, errno);
    }
    if (Result written = writeAll(descriptor, contents, path); !written) {
        return written;
    }
    return ::fsync(descriptor) == 0 ? Result{} : failure("sync", path, errno);
}

/// The time of day in UTC, as in 20240229T235959Z.
std::string timestamp() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    std::array<char, 32> text{};
    if (::gmtime_r(&now, &utc) == nullptr) {
        return "unknown";
    }
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y%m%dT%H%M%SZ", &utc);
    return {text.data(), length};
}

} // namespace

std::expected<std::string, std::string> followLinks(std::string path) {
    constexpr int mostLinks = 40; // as in the kernel
    for (int links = 0; links < mostLinks; ++links) {
        std::array<char, PATH_MAX> buffer{};
        const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
        if (length < 0) {
            return path; // No link; any other fault shows when the file is used.
        }
        std::string target{buffer.data(), static_cast<std::size_t>(length)};
        path = target.starts_with('/') ? std::move(target) : folderOf(path).append("/").append(target);
    }
    return failure("follow the link", path, ELOOP);
}

std::expected<std::optional<std::string>, ReadFailure> read(const std::string& path) {
    using enum ReadFailure::Kind;
    const FileDescriptor descriptor{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)};
    const int openError = errno;
    struct stat file{};
    const bool exists = descriptor ? ::fstat(descriptor.get(), &file) == 0 : ::stat(path.c_str(), &file) == 0;
    if (exists && !S_ISREG(file.st_mode)) {
        return std::unexpected(ReadFailure{notAFile, path + " is not a file"});
    }
    if (!descriptor) {
        if (openError == ENOENT || openError == ENOTDIR) {
            return std::nullopt;
        }
        return std::unexpected(ReadFailure{unreadable, failure("open", path, openError).error()});
    }
    std::string contents;
    std::array<char, 16384> buffer{};
    while (std::cmp_less_equal(file.st_size, largestFile) && contents.size() <= largestFile) {
        const ssize_t count = ::read(descriptor.get(), buffer.data(), buffer.size());
        if (count == 0) {
            return contents;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return std::unexpected(ReadFailure{unreadable, failure("read", path, errno).error()});
        }
        contents.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return std::unexpected(ReadFailure{unreadable, path + " is too large"});
}

Result renew(const std::string& path, const std::function<std::expected<std::string, std::string>()>& renewed) {
    if (struct stat file{}; ::lstat(path.c_str(), &file) == 0 && !S_ISREG(file.st_mode)) {
        return std::unexpected(path + " is not a file");
    }
    const std::string folder = folderOf(path);
    if (Result made = makeFolders(folder); !made) {
        return made;
    }
    const std::string fresh = folder + "/." + nameOf(path) + ".new";
    const std::expected<FileDescriptor, std::string> descriptor = openLocked(fresh);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    const std::expected<std::string, std::string> contents = renewed();
    Result filled = contents ? fill(descriptor->get(), *contents, fresh) : std::unexpected(contents.error());
    if (filled && ::rename(fresh.c_str(), path.c_str()) != 0) {
        filled = failure("replace", path, errno);
    }
    if (!filled) {
        ::unlink(fresh.c_str()); // a full disk needs the room
        return filled;
    }
    return syncFolder(folder);
}

Result replace(const std::string& path, std::string_view contents) {
    return renew(path, [contents] { return std::string(contents); });
}

std::expected<std::optional<std::string>, std::string> keepBeside(const std::string& path) {
    const std::string base = path + ".unreadable-" + timestamp();
    std::string kept = base;
    for (int number = 2;; ++number) {
        // Creating the name first, and only if it is free, prevents the rename from replacing another file.
        const FileDescriptor name{::open(kept.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR)};
        if (name) {
            if (::rename(path.c_str(), kept.c_str()) == 0) {
                // Losing this to a power cut brings the unreadable file back, to be kept again.
                [[maybe_unused]] const Result synced = syncFolder(folderOf(path));
                return kept;
            }
            const int error = errno;
            ::unlink(kept.c_str());
            if (error == ENOENT) {
                return std::nullopt;
            }
            return failure("rename", path, error);
        }
        if (errno != EEXIST) {
            return failure("make", kept, errno);
        }
        kept = base + "-" + std::to_string(number);
    }
}

} // namespace platform::linux::DurableFile
