#include "Platform/Linux/Applications/FolderWatch.h"

#include "Platform/Linux/Applications/FolderTree.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace platform::linux {
namespace {

// IN_CREATE comes before a file has its contents, but it is the only event for a link; IN_CLOSE_WRITE follows for
// files.
constexpr std::uint32_t ofInterest =
    IN_CREATE | IN_CLOSE_WRITE | IN_ATTRIB | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF;
// In a folder that is only watched for the creation of another one, such as the home folder, most events must not wake
// the program. The folder may have a full watch as well; that stays.
constexpr std::uint32_t arrivals = IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_MASK_ADD;

bool isFolder(const std::string& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

FolderWatch::FolderWatch(MainLoop& loop, std::vector<std::string> folders, std::string ending, Duration coalescing,
                         std::function<void()> changed)
    : loop(loop)
    , folders(std::move(folders))
    , ending(std::move(ending))
    , coalescing(coalescing)
    , changed(std::move(changed))
    , inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    renewWatches();
    if (inotify) {
        readable = loop.watch(inotify.get(), [] { return false; }, [this] { readEvents(); });
    }
}

FolderWatch::~FolderWatch() = default;

bool FolderWatch::takeChange() {
    readEvents();
    if (!std::exchange(hasChanged, false)) {
        return false;
    }
    // Now, before the caller reads the folders: a change during that reading counts as a new change.
    renewWatches();
    return true;
}

void FolderWatch::renewWatches() {
    isEveryFolderWatched = static_cast<bool>(inotify);
    if (!inotify) {
        return;
    }
    std::map<int, AwaitedNames> renewed;
    for (const std::string& folder : folders) {
        if (isFolder(folder)) {
            watchTree(folder, renewed);
        } else {
            awaitFolder(folder, renewed);
        }
    }
    // The kernel gives a folder that is watched already the number that it has, so nothing is lost in between.
    for (const auto& [number, names] : watches) {
        if (!renewed.contains(number)) {
            ::inotify_rm_watch(inotify.get(), number);
        }
    }
    watches = std::move(renewed);
}

void FolderWatch::watchTree(const std::string& folder, std::map<int, AwaitedNames>& renewed) {
    for (const std::string& inner : FolderTree::read(folder, ending).folders) {
        if (const int number = addWatch(inner, ofInterest); number >= 0) {
            renewed[number].clear();
        }
    }
}

void FolderWatch::awaitFolder(const std::string& folder, std::map<int, AwaitedNames>& renewed) {
    std::string missing = folder;
    while (missing.size() > 1) {
        const std::size_t slash = missing.rfind('/');
        const std::string parent = slash == 0 ? "/" : missing.substr(0, slash);
        const int number = isFolder(parent) ? addWatch(parent, arrivals) : -1;
        if (number < 0) {
            missing = parent;
            continue;
        }
        const auto [watch, isNew] = renewed.try_emplace(number);
        // One that is watched for everything stays so.
        if (isNew || !watch->second.empty()) {
            watch->second.push_back(missing.substr(slash + 1));
        }
        // It may have come before it was waited for.
        hasChanged = hasChanged || isFolder(missing);
        return;
    }
    isEveryFolderWatched = false;
}

int FolderWatch::addWatch(const std::string& folder, std::uint32_t events) {
    const int number = ::inotify_add_watch(inotify.get(), folder.c_str(), events | IN_ONLYDIR);
    isEveryFolderWatched = isEveryFolderWatched && (number >= 0 || errno == ENOENT || errno == EACCES);
    return number;
}

void FolderWatch::readEvents() {
    constexpr std::size_t enough = 16384;
    alignas(inotify_event) std::array<char, enough> buffer{};
    ssize_t length = 0;
    while (inotify && (length = ::read(inotify.get(), buffer.data(), buffer.size())) > 0) {
        for (std::size_t position = 0; position < static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, &buffer.at(position), sizeof event);
            position += sizeof event;
            // The name is padded with zeros.
            const std::string_view padded(buffer.data() + position, event.len);
            position += event.len;
            if (matters(event, padded.substr(0, padded.find('\0')))) {
                notifyLater();
            }
        }
    }
}

bool FolderWatch::matters(const inotify_event& event, std::string_view name) const {
    if ((event.mask & std::uint32_t{IN_Q_OVERFLOW}) != 0) {
        return true;
    }
    const auto watch = watches.find(event.wd);
    if (watch == watches.end() || (event.mask & std::uint32_t{IN_IGNORED}) != 0) {
        return false;
    }
    const AwaitedNames& awaited = watch->second;
    if (name.empty()) {
        // The folder itself. The attributes of one that is only waited in change with everything in it.
        return awaited.empty() || (event.mask & std::uint32_t{IN_DELETE_SELF | IN_MOVE_SELF}) != 0;
    }
    if (awaited.empty()) {
        return name.ends_with(ending) || (event.mask & std::uint32_t{IN_ISDIR}) != 0;
    }
    return std::ranges::find(awaited, name) != awaited.end();
}

void FolderWatch::notifyLater() {
    hasChanged = true;
    if (notice) {
        return;
    }
    notice = loop.schedule(loop.now() + coalescing, coalescing / 2, [this] {
        notice.reset();
        // Folders may have appeared; no other event may follow before they have contents.
        renewWatches();
        changed();
    });
}

} // namespace platform::linux
