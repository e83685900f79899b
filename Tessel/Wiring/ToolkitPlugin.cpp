#include "Tessel/Wiring/ToolkitPlugin.h"

#include "Platform/Linux/LargeBlocks.h"
#include "Platform/Linux/Log.h"
#include "Platform/Linux/PluginFile.h"
#include "Tessel/MenuPlugin.h"
#include "Tessel/Wiring/ThisProgram.h"

#include <string>

namespace tessel {

std::unique_ptr<platform::Toolkit> startToolkit(const corvid::toolkit::Surroundings& surroundings) {
    const auto function = platform::linux::functionOfPlugin(menuPlugin(), startToolkitName);
    if (!function) {
        platform::linux::logToStandardError("cannot load the window: " + function.error());
        return nullptr;
    }
    platform::linux::keepLargeBlocksApart();
    std::unique_ptr<platform::Toolkit> toolkit(reinterpret_cast<StartToolkit>(*function)(surroundings));
    if (!toolkit) {
        platform::linux::logToStandardError("cannot show the window: Qt does not reach the display"
                                            " (on Wayland it takes the package qt6-wayland)");
    }
    return toolkit;
}

} // namespace tessel
