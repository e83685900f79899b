#include "Platform/GnomeShell/Desktop.h"

#include "Platform/GnomeShell/Protocol.h"
#include "Platform/Linux/Files/BaseFolders.h"

#include <string>
#include <vector>

namespace platform::gnomeshell {

namespace {

std::vector<std::filesystem::path> dataFolders() {
    const std::vector<std::string> folders = linux::BaseFolders::ofThisProcess().data;
    return {folders.begin(), folders.end()};
}

} // namespace

Desktop::Desktop(linux::MainLoop& mainLoop, const Folders& folders)
    : bus(mainLoop)
    , link(mainLoop, bus, Protocol::shellName)
    , extension(link, ExtensionFiles(folders.extension, dataFolders()),
                ExtensionRecord(linux::BaseFolders::ofThisProcess().userState))
    , access(link, table,
             {.show = [this] { extension.switchOn(); },
              .obstacle = [this] { return extension.obstacle().value_or(Extension::silence()); }})
    , windows(mainLoop, table, access)
    , hotKeys(mainLoop, link)
    , holders(mainLoop, link, {.name = "GNOME", .settings = linux::settings::gnome})
    , topBar(mainLoop, link, table, folders.icons.string())
    , bell(link) {
    extension.onChange([this] { windows.announceAccess(); });
    // So that the first question for trust has an answer.
    link.await(link.deadline());
}

} // namespace platform::gnomeshell
