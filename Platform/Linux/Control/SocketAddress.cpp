#include "Platform/Linux/Control/SocketAddress.h"

#include "Platform/Linux/Applications/GLibMemory.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace platform::linux {

namespace {

constexpr const char* folderName = "tessel";

/// The end of a long path identifies it better than its beginning.
std::string_view endOf(std::string_view text, std::size_t room) {
    return text.substr(text.size() - std::min(text.size(), room));
}

bool isOwnAndPrivate(const FileDescriptor& folder) {
    struct stat status{};
    return ::fstat(folder.get(), &status) == 0 && status.st_uid == ::getuid() && (status.st_mode & 077U) == 0;
}

} // namespace

std::string socketFolder(const Session& session) {
    // A path that is not absolute does not count (XDG Base Directory Specification 0.8).
    return session.runtimeFolder.starts_with('/') ? session.runtimeFolder + "/" + folderName : std::string();
}

FileDescriptor openSocketFolder(const Session& session, Missing missing) {
    constexpr int asFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;
    if (socketFolder(session).empty()) {
        return {};
    }
    const FileDescriptor runtime{::open(session.runtimeFolder.c_str(), asFolder)};
    if (!runtime || !isOwnAndPrivate(runtime)) {
        return {};
    }
    if (missing == Missing::isMade) {
        constexpr mode_t mode = 0700;
        ::mkdirat(runtime.get(), folderName, mode);
    }
    FileDescriptor folder{::openat(runtime.get(), folderName, asFolder | O_NOFOLLOW)};
    return folder && isOwnAndPrivate(folder) ? std::move(folder) : FileDescriptor();
}

std::string socketFileName(const Session& session, std::string_view ending) {
    // The address of a socket has little room, and the folder's part takes some of it.
    constexpr std::size_t room =
        sizeof(sockaddr_un::sun_path) - std::string_view("/proc/self/fd/2147483647/").size() - 1;
    const GLibText escaped(g_uri_escape_string(session.display.c_str(), ":", TRUE));
    return std::string(endOf(escaped.get(), room - ending.size())).append(ending);
}

std::vector<Session> sessionsWithSockets(const std::string& runtimeFolder) {
    std::vector<Session> sessions;
    const Session any{.display = {}, .runtimeFolder = runtimeFolder};
    if (!openSocketFolder(any, Missing::isLeft)) {
        return sessions;
    }
    std::error_code error;
    for (std::filesystem::directory_iterator entry(socketFolder(any), error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = entry->path().filename();
        if (!name.ends_with(socketEnding)) {
            continue;
        }
        name.resize(name.size() - socketEnding.size());
        // Nothing for a name that was cut off within a character.
        if (const GLibText display(g_uri_unescape_string(name.c_str(), nullptr)); display) {
            sessions.push_back({.display = display.get(), .runtimeFolder = runtimeFolder});
        }
    }
    return sessions;
}

SocketAddress SocketAddress::inFolder(const FileDescriptor& folder, const std::string& file) {
    return {"/proc/self/fd/" + std::to_string(folder.get()) + "/" + file, false};
}

SocketAddress SocketAddress::abstract(const Session& session) {
    const std::string owner = "org.corvid.Tessel/" + std::to_string(::getuid()) + "/";
    const std::size_t room = sizeof(sockaddr_un::sun_path) - 1 - owner.size();
    return {owner + std::string(endOf(session.display, room)), true};
}

SocketAddress::SocketAddress(std::string_view path, bool isAbstract) {
    name.sun_family = AF_UNIX;
    // A first character of zero makes the name abstract; its length is part of it.
    const std::size_t start = isAbstract ? 1 : 0;
    std::ranges::copy(path, std::begin(name.sun_path) + start);
    const std::size_t end = isAbstract ? 0 : 1;
    length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + start + path.size() + end);
}

} // namespace platform::linux
