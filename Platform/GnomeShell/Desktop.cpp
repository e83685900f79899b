#include "Platform/GnomeShell/Desktop.h"

#include "Platform/Linux/BaseFolders.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace platform::gnomeshell {

namespace {

std::vector<std::filesystem::path> dataFolders() {
    const std::vector<std::string> folders = linux::BaseFolders::ofThisProcess().data;
    return {folders.begin(), folders.end()};
}

bool isGnome() {
    const std::vector<std::string> names = linux::currentDesktops();
    return std::ranges::find(names, "GNOME") != names.end();
}

} // namespace

bool isThisSession() {
    // Nothing in the program changes its environment.
    const char* display = std::getenv("WAYLAND_DISPLAY"); // NOLINT(concurrency-mt-unsafe)
    return display != nullptr && *display != '\0' && isGnome();
}

Ground::Ground(linux::MainLoop& mainLoop, const std::filesystem::path& extensionFolder)
    : bus(mainLoop)
    , link(mainLoop, bus)
    , extension(mainLoop, link, ExtensionFiles(extensionFolder, dataFolders()))
    , door(link, table, [this] { extension.switchOn(); }) {
}

Desktop::Desktop(linux::MainLoop& mainLoop, const Folders& folders)
    : Ground(mainLoop, folders.extension)
    , compositor::Desktop(mainLoop, Ground::table, door)
    , hotKeys(mainLoop, link)
    , topBar(mainLoop, link, Ground::table, folders.icons.string())
    , bell(link) {
    // So that the first question for trust has an answer.
    link.await(mainLoop.now() + ShellLink::longestWait);
}

} // namespace platform::gnomeshell
