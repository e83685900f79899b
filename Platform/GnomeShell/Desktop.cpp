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

AccessRequirement requirementOf(Extension::State state) {
    switch (state) {
    case Extension::State::switchedOff:
        return AccessRequirement::extensionSwitchedOn;
    case Extension::State::notLoaded:
        return AccessRequirement::extensionLoaded;
    case Extension::State::refused:
    case Extension::State::unfit:
        return AccessRequirement::extensionAccepted;
    case Extension::State::unknown:
    case Extension::State::working:
    case Extension::State::servesAnother:
        break;
    }
    return AccessRequirement::compositor;
}

} // namespace

Ground::Ground(linux::MainLoop& mainLoop, const std::filesystem::path& extensionFolder)
    : bus(mainLoop)
    , link(mainLoop, bus)
    , extension(link, ExtensionFiles(extensionFolder, dataFolders()),
                ExtensionRecord(linux::BaseFolders::ofThisProcess().userState))
    , door(link, table,
           {.show = [this] { extension.switchOn(); },
            .requirement = [this] { return requirementOf(extension.state()); }}) {
}

Desktop::Desktop(linux::MainLoop& mainLoop, const Folders& folders)
    : Ground(mainLoop, folders.extension)
    , compositor::Desktop(mainLoop, Ground::table, door)
    , hotKeys(mainLoop, link)
    , holders(mainLoop, link)
    , topBar(mainLoop, link, Ground::table, folders.icons.string())
    , bell(link) {
    // So that the first check for trust has a result.
    link.await(mainLoop.now() + ShellLink::longestWait);
}

} // namespace platform::gnomeshell
