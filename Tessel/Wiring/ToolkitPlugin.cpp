#include "Tessel/Wiring/ToolkitPlugin.h"

#include "Platform/Linux/Log/Log.h"
#include "Platform/Linux/Processes/LargeBlocks.h"
#include "Tessel/MenuPlugin.h"

#include <string>

namespace tessel {

std::unique_ptr<platform::Toolkit> startToolkit(platform::linux::PluginFile& plugin,
                                                const corvid::toolkit::Dependencies& dependencies) {
    const auto function = plugin.function(startToolkitName);
    if (!function) {
        platform::linux::logToStandardError("cannot load the window: " + function.error());
        return nullptr;
    }
    platform::linux::keepLargeBlocksApart();
    std::unique_ptr<platform::Toolkit> toolkit(reinterpret_cast<StartToolkit>(*function)(dependencies));
    if (!toolkit) {
        platform::linux::logToStandardError("cannot show the window: Qt does not reach the display"
                                            " (on Wayland it takes the package qt6-wayland)");
    }
    return toolkit;
}

} // namespace tessel
