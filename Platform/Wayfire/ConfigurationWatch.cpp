#include "Platform/Wayfire/ConfigurationWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace platform::wayfire {

namespace {

constexpr std::chrono::milliseconds notificationLeeway{100};

} // namespace

ConfigurationWatch::ConfigurationWatch(linux::MainLoop& mainLoop, const std::string& path,
                                       std::function<void()> changed)
    : mainLoop(mainLoop)
    , file(path.substr(path.rfind('/') + 1))
    , changed(std::move(changed))
    , inotify(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    constexpr std::uint32_t events = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ONLYDIR;
    if (inotify && ::inotify_add_watch(inotify.get(), folder.c_str(), events) >= 0) {
        readable = mainLoop.watch(inotify.get(), [] { return false; }, [this] { readEvents(); });
    }
}

void ConfigurationWatch::readEvents() {
    alignas(inotify_event) std::array<char, 4096> buffer{};
    ssize_t size = 0;
    while ((size = ::read(inotify.get(), buffer.data(), buffer.size())) > 0) {
        for (std::size_t place = 0; place < static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + place, sizeof event);
            const char* name = buffer.data() + place + sizeof event;
            if (event.len > 0 && file == name) {
                notification = mainLoop.schedule(mainLoop.now() + delay, notificationLeeway, changed);
            }
            place += sizeof event + event.len;
        }
    }
}

} // namespace platform::wayfire
