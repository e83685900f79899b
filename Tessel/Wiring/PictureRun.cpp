#include "Tessel/Wiring/PictureRun.h"

#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Platform/Absent/Desktop.h"
#include "Platform/Appearance.h"
#include "Platform/Linux/AddressOpener.h"
#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/Control/SessionBus.h"
#include "Platform/Linux/Localization.h"
#include "Platform/Linux/LoopApplication.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/ProcessInfo.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemLog.h"
#include "Platform/Platform.h"
#include "Tessel/MenuSnapshot.h"
#include "Tessel/PreviewCatalogue.h"
#include "Tessel/Wiring/Locale.h"
#include "Tessel/Wiring/PictureEnvironment.h"
#include "Tessel/Wiring/ThisProgram.h"
#include "Tessel/Wiring/ToolkitPlugin.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <memory>

namespace tessel {

namespace {

/// Pictures are drawn in both colour schemes, whatever the user has.
class NoAppearance final : public platform::Appearance {
public:
    [[nodiscard]] platform::ColorScheme colorScheme() const override { return platform::ColorScheme::light; }

    [[nodiscard]] bool reducesMotion() const override { return true; }

    void follow(std::function<void()> /*changed*/) override {}
};

/// Libraries that draw have their own ideas of what is worth saying.
void beSilent() {
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) {
        ::dup2(nowhere, STDOUT_FILENO);
        ::dup2(nowhere, STDERR_FILENO);
        ::close(nowhere);
    }
}

} // namespace

void runPictures(const std::string& directory) {
    beSilent();
    // A library that gives up takes the process with it. That, too, is a picture that could not be drawn.
    std::signal(SIGABRT, [](int) { std::_Exit(EXIT_SUCCESS); });
    enterLocale();
    forgetUserSettings();
    platform::linux::MainLoop mainLoop;
    platform::absent::Desktop desktop;
    NoAppearance appearance;
    platform::linux::SessionBus noBus(mainLoop, std::nullopt);
    platform::linux::AddressOpener addressOpener(mainLoop, noBus);
    platform::linux::AutostartLoginItem loginItem;
    platform::linux::LoopApplication application(mainLoop);
    platform::linux::ProcessInfo processInfo;
    platform::linux::SystemClock systemClock;
    platform::linux::SystemLog systemLog;
    PreviewCatalogue catalogue;
    corvid::InMemoryPreferenceStore noDefaults;
    const platform::MainBundle bundle = mainBundle();
    platform::linux::Localization localization("tessel", localeFolder(), bundle.preferredLocalizations);
    constexpr double pixelsPerPoint = 2;
    const std::unique_ptr<platform::Toolkit> toolkit = startToolkit({.mainLoop = mainLoop,
                                                                     .appearance = appearance,
                                                                     .ownWindows = nullptr,
                                                                     .screens = desktop.screens,
                                                                     .languages = bundle.preferredLocalizations,
                                                                     .pictureScale = pixelsPerPoint});
    const platform::Platform table{
        .accessibility = desktop.accessibility,
        .accessibilityObservers = desktop.accessibilityObservers,
        .addressOpener = addressOpener,
        .applicationCatalogue = catalogue,
        .sound = desktop.sound,
        .hotKeyEvents = desktop.hotKeyEvents,
        .imageRenderer = toolkit ? &toolkit->imageRenderer() : nullptr,
        .localization = localization,
        .log = systemLog,
        .loginItemService = loginItem,
        .mainActor = mainLoop,
        .mainBundle = bundle,
        .openPanel = nullptr,
        .processInfo = processInfo,
        .runningApplications = desktop.runningApplications,
        .screens = desktop.screens,
        .standardUserDefaults = noDefaults,
        .statusBar = desktop.statusBar,
        .systemClock = systemClock,
        .thisApplication = application,
        .workspace = desktop.workspace,
    };
    const platform::Installation installation(table);
    MenuSnapshot::render(directory);
}

} // namespace tessel
