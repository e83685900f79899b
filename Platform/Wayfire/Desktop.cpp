#include "Platform/Wayfire/Desktop.h"

#include "Platform/Linux/Files/LocalSocket.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Wayfire/Configuration.h"

#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace platform::wayfire {

namespace {

constexpr std::string_view desktopName = "Wayfire";

bool existsFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

/// Without a connection, the configuration tells what is missing.
std::vector<std::string> missingPluginsOf(const std::string& configuration) {
    constexpr std::size_t longest = std::size_t{1} << 20U;
    return missingPluginsIn(
        linux::readRegularFile(configuration, longest, linux::Excess::cutOff).value_or(std::string()));
}

/// Of the compositor that listens at the socket; empty without one.
std::string configurationOf(const std::string& socket) {
    const auto process = linux::listenerAt(socket);
    return process ? configurationPath(CompositorProcess::of(*process), existsFile) : std::string();
}

AccessObstacle whyClosed(const Session& session, const Sockets& sockets) {
    std::vector<std::string> missing = session.missingPlugins();
    const std::string file = configurationOf(sockets.wayland);
    const bool isThere = linux::isListenedTo(sockets.wayland);
    if (missing.empty() && isThere && !linux::isListenedTo(sockets.ipc)) {
        missing = missingPluginsOf(file);
    }
    if (missing.empty()) {
        return {.kind = AccessObstacle::Kind::silentCompositor, .desktop = std::string(desktopName)};
    }
    std::string names;
    for (const std::string& each : missing) {
        names += (names.empty() ? "" : " ") + each;
    }
    return {.kind = AccessObstacle::Kind::pluginsMissing,
            .desktop = std::string(desktopName),
            .detail = names,
            .file = file.empty() ? "wayfire.ini" : file};
}

} // namespace

Desktop::Desktop(linux::MainLoop& mainLoop, Sockets where)
    : mainLoop(mainLoop)
    , sockets(std::move(where))
    , session(mainLoop, sockets.ipc)
    , access(session, table, mainLoop, ::getpid(), [this] { return whyClosed(session, sockets); })
    , windows(mainLoop, table, access)
    , end(mainLoop, compositor::absenceOf(sockets.ipc), [this] { endUnlessItRuns(); })
    , hotKeys((session.follow(*this), session)) {
    end.await();
    session.start();
}

void Desktop::sessionOpened() {
    end.reached();
    const std::string file = configurationOf(session.socketPath());
    if (!file.empty()) {
        configuration =
            std::make_unique<ConfigurationWatch>(mainLoop, file, [this] { hotKeys.configurationChanged(); });
    }
}

void Desktop::sessionClosed() {
    configuration.reset();
    end.lost();
}

void Desktop::endUnlessItRuns() {
    // Without the plugin "ipc" the compositor runs all the same.
    if (linux::isListenedTo(sockets.wayland)) {
        end.await();
        return;
    }
    compositor::endOfLoop(mainLoop, std::string(desktopName))();
}

} // namespace platform::wayfire
