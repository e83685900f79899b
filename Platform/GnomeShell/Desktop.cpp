#include "Platform/GnomeShell/Desktop.h"

#include "Platform/Linux/BaseFolders.h"

#include <string>
#include <vector>

namespace platform::gnomeshell {

namespace {

std::vector<std::filesystem::path> dataFolders() {
    const std::vector<std::string> folders = linux::BaseFolders::ofThisProcess().data;
    return {folders.begin(), folders.end()};
}

} // namespace

Ground::Ground(linux::MainLoop& mainLoop, const std::filesystem::path& extensionFolder)
    : bus(mainLoop)
    , link(mainLoop, bus)
    , extension(link, ExtensionFiles(extensionFolder, dataFolders()),
                ExtensionRecord(linux::BaseFolders::ofThisProcess().userState))
    , door(link, table,
           {.show = [this] { extension.switchOn(); },
            .obstacle = [this] { return extension.obstacle().value_or(Extension::silence()); }}) {
}

Desktop::Desktop(linux::MainLoop& mainLoop, const Folders& folders)
    : Ground(mainLoop, folders.extension)
    , compositor::Desktop(mainLoop, Ground::table, door)
    , hotKeys(mainLoop, link)
    , holders(mainLoop, link)
    , topBar(mainLoop, link, Ground::table, folders.icons.string())
    , bell(link) {
    extension.onChange([this] { announceAccess(); });
    // So that the first question for trust has an answer.
    link.await(mainLoop.now() + ShellLink::longestWait);
}

} // namespace platform::gnomeshell
