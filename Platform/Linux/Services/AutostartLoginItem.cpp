#include "Platform/Linux/Services/AutostartLoginItem.h"

#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Applications/KeyFile.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Program/ProgramFile.h"
#include "Platform/Linux/Settings/DurableFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

namespace platform::linux {
namespace {

constexpr const char* entryGroup = "Desktop Entry";
constexpr std::string_view fileName = "/org.corvid.Tessel.desktop";
/// Our own key, beside `Hidden`: marks an entry that was unregistered here, not switched off elsewhere.
constexpr const char* unregisteredKey = "X-Tessel-Unregistered";

bool exists(const std::string& path) {
    struct stat file{};
    return ::lstat(path.c_str(), &file) == 0;
}

} // namespace

AutostartLoginItem::Places AutostartLoginItem::Places::ofThisProcess() {
    const BaseFolders folders = BaseFolders::ofThisProcess();
    Places places{
        .userFolder = folders.userConfiguration,
        .systemFolders = {},
        .program = programPath(),
        .currentDesktops = linux::currentDesktops(),
        .searchPath = programSearchPath(),
    };
    if (places.userFolder) {
        places.userFolder->append("/autostart");
    }
    for (const std::string& folder : folders.systemConfiguration) {
        places.systemFolders.push_back(folder + "/autostart");
    }
    return places;
}

AutostartLoginItem::AutostartLoginItem(Places places)
    : places(std::move(places)) {
}

LoginItemStatus AutostartLoginItem::status() {
    if (!places.userFolder) {
        return LoginItemStatus::notFound;
    }
    const std::string own = *places.userFolder + std::string(fileName);
    if (exists(own)) {
        return statusOf(own);
    }
    for (const std::string& folder : places.systemFolders) {
        if (const std::string path = folder + std::string(fileName); exists(path)) {
            return statusOf(path);
        }
    }
    return LoginItemStatus::notRegistered;
}

LoginItemStatus AutostartLoginItem::statusOf(const std::string& path) const {
    const std::optional<std::string> contents = readRegularFile(path, DesktopEntry::largestFile, Excess::refused);
    const std::optional<KeyFile> file = contents ? KeyFile::parse(*contents) : std::nullopt;
    const std::optional<DesktopEntry> entry =
        file ? DesktopEntry::parse(*contents, places.currentDesktops) : std::nullopt;
    if (!entry) {
        return LoginItemStatus::notRegistered;
    }
    if (entry->isHidden) {
        const bool isOurs = file->flag(entryGroup, unregisteredKey).value_or(false);
        return isOurs ? LoginItemStatus::notRegistered : LoginItemStatus::requiresApproval;
    }
    if (!entry->isApplication) {
        return LoginItemStatus::notRegistered;
    }
    if (!entry->isAutostartEnabled || !entry->isForThisDesktop) {
        return LoginItemStatus::requiresApproval;
    }
    const std::optional<ExecLine::Program> program = ExecLine::program(entry->exec);
    const bool isThere = program && ExecLine::locate(program->name, places.searchPath) &&
                         (entry->tryExec.empty() || ExecLine::locate(entry->tryExec, places.searchPath));
    return isThere ? LoginItemStatus::enabled : LoginItemStatus::notFound;
}

std::expected<void, std::string> AutostartLoginItem::registerItem() {
    return write(false);
}

std::expected<void, std::string> AutostartLoginItem::unregisterItem() {
    if (!places.userFolder) {
        return {};
    }
    if (systemEntry()) {
        return write(true);
    }
    const std::string path = *places.userFolder + std::string(fileName);
    if (::unlink(path.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
        return std::unexpected("Tessel still opens at login: cannot remove " + path + ": " +
                               std::generic_category().message(errno) + ".");
    }
    return {};
}

std::optional<std::string> AutostartLoginItem::systemEntry() const {
    for (const std::string& folder : places.systemFolders) {
        std::string path = folder + std::string(fileName);
        if (exists(path)) {
            const std::optional<DesktopEntry> entry = DesktopEntry::read(path);
            return entry && !entry->isHidden ? std::optional(std::move(path)) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::expected<void, std::string> AutostartLoginItem::write(bool isHidden) const {
    const std::string failure = isHidden ? "Tessel still opens at login: " : "Tessel does not open at login: ";
    if (!places.userFolder) {
        return std::unexpected(failure + "there is no home folder.");
    }
    if (!isHidden && (!places.program || !isExecutableFile(*places.program))) {
        const std::string program = places.program.value_or("the program");
        return std::unexpected(failure + program + " is not there or cannot be run.");
    }
    KeyFile file;
    file.set(entryGroup, "Type", "Application");
    file.set(entryGroup, "Name", "Tessel");
    file.set(entryGroup, "Comment", "Moves and resizes windows from the keyboard");
    file.set(entryGroup, "Exec", ExecLine::quoted(places.program.value_or("tessel")));
    // A desktop skips the entry silently after the program is removed.
    file.set(entryGroup, "TryExec", places.program.value_or("tessel"));
    file.set(entryGroup, "Icon", "org.corvid.Tessel");
    file.set(entryGroup, "Terminal", "false");
    if (isHidden) {
        file.set(entryGroup, "Hidden", "true");
        file.set(entryGroup, unregisteredKey, "true");
    }
    file.set(entryGroup, "X-GNOME-Autostart-enabled", "true");
    // A tray icon needs a panel to go to. Each desktop has its own way to say so; the delays are in seconds.
    file.set(entryGroup, "X-GNOME-Autostart-Delay", "2");
    file.set(entryGroup, "X-MATE-Autostart-Delay", "2");
    file.set(entryGroup, "X-KDE-autostart-after", "panel");
    file.set(entryGroup, "X-LXQt-Need-Tray", "true");

    const std::expected<std::string, std::string> path =
        DurableFile::followLinks(*places.userFolder + std::string(fileName));
    if (!path) {
        return std::unexpected(failure + path.error() + ".");
    }
    const std::expected<void, std::string> written = DurableFile::replace(*path, file.contents());
    if (!written) {
        return std::unexpected(failure + written.error() + ".");
    }
    return {};
}

} // namespace platform::linux
