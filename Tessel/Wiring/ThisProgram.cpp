#include "Tessel/Wiring/ThisProgram.h"

#include "CorvidKitCore/PreferredLocalizations.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Program/ProgramFolder.h"
#include "Platform/Linux/Text/Languages.h"

#include <system_error>

namespace tessel {

platform::MainBundle mainBundle() {
    return {.identifier = "org.corvid.Tessel",
            .infoDictionary = {{"CFBundleShortVersionString", TESSEL_VERSION}},
            .website = TESSEL_WEBSITE,
            .preferredLocalizations = corvid::preferredLocalizations(
                platform::linux::partsBetweenColons(TESSEL_LANGUAGES), platform::linux::userLanguages())};
}

std::filesystem::path localeFolder() {
    return platform::linux::programFolder() / TESSEL_LOCALE_FOLDER;
}

std::filesystem::path iconFolder() {
    return platform::linux::programFolder() / TESSEL_ICON_FOLDER;
}

std::filesystem::path shellExtensionFolder() {
    return platform::linux::programFolder() / TESSEL_DATA_FOLDER / "gnome-shell";
}

std::filesystem::path cinnamonCore() {
    return platform::linux::programFolder() / TESSEL_DATA_FOLDER / "cinnamon/core.js";
}

std::filesystem::path kwinScript() {
    return platform::linux::programFolder() / TESSEL_DATA_FOLDER / "kwin/tessel.js";
}

std::filesystem::path menuPlugin() {
    constexpr const char* file = "tessel-menu.so";
    const std::filesystem::path beside = platform::linux::programFolder() / file;
    std::error_code error;
    return std::filesystem::exists(beside, error) ? beside
                                                  : platform::linux::programFolder() / TESSEL_PLUGIN_FOLDER / file;
}

} // namespace tessel
