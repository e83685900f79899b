#include "Tessel/Wiring/ProcessEnvironment.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

namespace {

/// A path where nothing can be read, and nothing can be created.
constexpr const char* nowhere = "/dev/null";

/// The location of Qt on machines with an unusual one.
constexpr std::array<std::string_view, 4> placesOfQt{"QT_PLUGIN_PATH", "QT_QPA_PLATFORM_PLUGIN_PATH", "QML_IMPORT_PATH",
                                                     "QML2_IMPORT_PATH"};

/// Variables for finding and drawing fonts (fontconfig's manual, "Environment variables"; FreeType's, "Properties"),
/// for the location of the desktop, and for exposing contents to a screen reader.
constexpr std::array<std::string_view, 9> others{"FONTCONFIG_FILE",     "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT",
                                                 "FREETYPE_PROPERTIES", "DISPLAY",         "WAYLAND_DISPLAY",
                                                 "WAYLAND_SOCKET",      "XDG_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS"};

bool isOfUser(std::string_view variable) {
    if (std::ranges::find(placesOfQt, variable) != placesOfQt.end()) {
        return false;
    }
    const bool isForQt = variable.starts_with("QT_") || variable.starts_with("QSG_") || variable.starts_with("QML");
    return isForQt || std::ranges::find(others, variable) != others.end();
}

} // namespace

// The process has one thread as yet.
// NOLINTBEGIN(concurrency-mt-unsafe)
void settleEnvironment() {
    // A session manager knows programs by their windows; ours opens and closes.
    unsetenv("SESSION_MANAGER");
    unsetenv("QT_STYLE_OVERRIDE");
}

void settleEnvironmentForPictures(int pixelsPerPoint) {
    std::vector<std::string> names;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view variable(*entry);
        names.emplace_back(variable.substr(0, variable.find('=')));
    }
    for (const std::string& name : names) {
        if (isOfUser(name)) {
            unsetenv(name.c_str());
        }
    }
    if (const char* home = std::getenv("HOME"); home != nullptr && std::getenv("XDG_DATA_HOME") == nullptr) {
        setenv("XDG_DATA_HOME", (std::string(home) + "/.local/share").c_str(), 1);
    }
    for (const char* folder : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
        setenv(folder, nowhere, 1);
    }
    setenv("QT_SCALE_FACTOR", std::to_string(pixelsPerPoint).c_str(), 1);
}
// NOLINTEND(concurrency-mt-unsafe)

} // namespace tessel
