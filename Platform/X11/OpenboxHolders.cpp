#include "Platform/X11/OpenboxHolders.h"

#include "Platform/Linux/BaseFolders.h"
#include "Platform/Linux/Holders/LaterAnswer.h"
#include "Platform/Linux/Holders/OpenboxBindings.h"
#include "Platform/Linux/RegularFile.h"
#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace platform::x11 {

namespace {

std::string openboxConfiguration(Connection& connection) {
    // Any program may have named the file.
    constexpr std::size_t largestFile = std::size_t{1} << 20U;
    std::vector<std::string> paths;
    const auto request = requestProperty(connection, connection.root(), connection.atom(Atom::obConfigFile));
    if (const std::string named = readText(connection, request); !named.empty()) {
        paths.push_back(named);
    }
    const linux::BaseFolders folders = linux::BaseFolders::ofThisProcess();
    if (folders.userConfiguration) {
        paths.push_back(*folders.userConfiguration + "/openbox/rc.xml");
    }
    for (const std::string& folder : folders.systemConfiguration) {
        paths.push_back(folder + "/openbox/rc.xml");
    }
    for (const std::string& path : paths) {
        if (auto text = linux::readRegularFile(path, largestFile, linux::Excess::refused)) {
            return *std::move(text);
        }
    }
    return {};
}

} // namespace

std::unique_ptr<HolderSearch> OpenboxHolders::find(const std::vector<corvid::Shortcut>& shortcuts, Found found) {
    return linux::answerLater(
        mainLoop, shortcuts, std::move(found),
        [this, bindings = std::optional<std::vector<linux::OpenboxBinding>>()](
            const corvid::Shortcut& shortcut) mutable -> std::optional<ShortcutHolder> {
            if (!bindings) {
                bindings = linux::readOpenboxBindings(openboxConfiguration(connection));
            }
            const auto binding = std::ranges::find_if(
                *bindings, [&](const linux::OpenboxBinding& each) { return isSame(each.keys, shortcut); });
            return binding == bindings->end()
                       ? std::nullopt
                       : std::optional(ShortcutHolder{.heldBy = "openbox", .purpose = binding->purpose});
        });
}

} // namespace platform::x11
