#include "Platform/Hyprland/Instance.h"

#include "Platform/Linux/Files/LocalSocket.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace platform::hyprland {

namespace {

/// The display of a compositor: the second line of the file that it keeps while it runs; the first one is its process
/// (Hyprland 0.57, src/Compositor.cpp, createLockFile).
std::string displayOf(const std::filesystem::path& folder) {
    std::ifstream file(folder / "hyprland.lock");
    std::string process;
    std::string display;
    std::getline(file, process);
    std::getline(file, display);
    return display;
}

std::string parentFolder(const InstanceFacts& facts) {
    return facts.runtimeFolder + "/hypr/";
}

} // namespace

std::string folderOf(const InstanceFacts& facts) {
    // It is the name of a folder.
    const bool isName = !facts.signature.empty() && !facts.signature.contains('/') && facts.signature.front() != '.';
    return isName ? parentFolder(facts) + facts.signature : std::string();
}

std::string runningFolder(const InstanceFacts& facts) {
    std::string own = folderOf(facts);
    if (own.empty() || linux::isListenedTo(eventSocket(own))) {
        return own;
    }
    const std::string name = std::filesystem::path(facts.display).filename();
    std::error_code failure;
    for (std::filesystem::directory_iterator each(parentFolder(facts), failure), end; !failure && each != end;
         each.increment(failure)) {
        std::string folder = each->path().string();
        if (!name.empty() && displayOf(folder) == name && linux::isListenedTo(eventSocket(folder))) {
            return folder;
        }
    }
    return {};
}

std::string displaySocket(const InstanceFacts& facts) {
    const bool isPath = facts.display.starts_with('/');
    return isPath || facts.display.empty() ? facts.display : facts.runtimeFolder + "/" + facts.display;
}

std::string requestSocket(const std::string& folder) {
    return folder + "/.socket.sock";
}

std::string eventSocket(const std::string& folder) {
    return folder + "/.socket2.sock";
}

} // namespace platform::hyprland
