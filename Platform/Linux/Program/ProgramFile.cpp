#include "Platform/Linux/Program/ProgramFile.h"

#include "Platform/Linux/Files/FileIdentity.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Program/ElfNote.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace platform::linux {

namespace {

constexpr const char* ownFile = "/proc/self/exe";

} // namespace

std::optional<std::string> programPath() {
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = ::readlink(ownFile, buffer.data(), buffer.size());
    if (length <= 0) {
        return std::nullopt;
    }
    std::string path(buffer.data(), static_cast<std::size_t>(length));
    // So the kernel marks a file that is not there any more under its name.
    constexpr std::string_view deleted = " (deleted)";
    if (!isExecutableFile(path) && path.ends_with(deleted)) {
        path.resize(path.size() - deleted.size());
    }
    return path;
}

FileDescriptor openProgram() {
    return FileDescriptor{::open(ownFile, O_RDONLY | O_CLOEXEC)};
}

ProgramFile::ProgramFile(MainLoop& mainLoop)
    : inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (inotify) {
        watch();
        readable = mainLoop.watch(inotify.get(), [] { return false; }, [this] { readEvents(); });
    }
}

ProgramFile::~ProgramFile() = default;

bool ProgramFile::isReplaced() const {
    const std::optional<std::string> path = programPath();
    const FileDescriptor own = openProgram();
    const FileDescriptor present{path ? ::open(path->c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1};
    if (!own || !present || FileIdentity::of(own) == FileIdentity::of(present)) {
        return false;
    }
    const std::optional<std::string> build = buildIdentity(own);
    return !build || build != buildIdentity(present);
}

void ProgramFile::watch() const {
    // A file that another takes the name of loses it: its number of names changes.
    constexpr std::uint32_t losses = IN_ATTRIB | IN_MOVE_SELF | IN_DELETE_SELF;
    if (const std::optional<std::string> path = programPath()) {
        ::inotify_add_watch(inotify.get(), path->c_str(), losses);
    }
}

void ProgramFile::readEvents() {
    constexpr std::size_t enough = 4096;
    alignas(inotify_event) std::array<char, enough> events{};
    while (::read(inotify.get(), events.data(), events.size()) > 0) {
    }
    // Once more the same build may be there, which can be replaced in its turn.
    watch();
    if (changed) {
        changed();
    }
}

} // namespace platform::linux
