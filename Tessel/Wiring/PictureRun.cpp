#include "Tessel/Wiring/PictureRun.h"

#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Platform/Absent/Desktop.h"
#include "Platform/Appearance.h"
#include "Platform/ImageRenderer.h"
#include "Platform/Linux/AddressOpener.h"
#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/Bus/SessionBus.h"
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
#include "Tessel/Wiring/ProcessEnvironment.h"
#include "Tessel/Wiring/ThisProgram.h"
#include "Tessel/Wiring/ToolkitPlugin.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <new>
#include <optional>
#include <vector>

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

using Count = std::atomic<unsigned>;
static_assert(Count::is_always_lock_free, "it is shared between processes");

/// Leaves out the pictures that another process has begun already, and counts those that this one begins.
class ResumedRenderer final : public platform::ImageRenderer {
public:
    ResumedRenderer(platform::ImageRenderer& renderer, Count& begun)
        : renderer(renderer)
        , begun(begun)
        , left(begun) {}

    [[nodiscard]] std::optional<std::vector<std::byte>> png(const platform::PictureOfView& picture) override {
        if (left > 0) {
            --left;
            return std::nullopt;
        }
        ++begun;
        return renderer.png(picture);
    }

private:
    platform::ImageRenderer& renderer;
    Count& begun;
    unsigned left;
};

/// Whether a process ended by itself, all done.
bool isDone(pid_t process) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) {
            return true;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

void drawPictures(const std::string& directory, Count& begun) {
    std::signal(SIGABRT, [](int) { std::_Exit(EXIT_FAILURE); });
    enterLocale();
    constexpr int pixelsPerPoint = 2;
    settleEnvironmentForPictures(pixelsPerPoint);
    platform::linux::MainLoop mainLoop;
    platform::absent::Desktop desktop;
    NoAppearance appearance;
    platform::linux::SessionBus noBus(mainLoop, std::nullopt);
    platform::linux::AddressOpener addressOpener(noBus);
    platform::linux::AutostartLoginItem loginItem;
    const platform::linux::ProgramFile programFile(mainLoop);
    platform::linux::LoopApplication application(mainLoop, programFile);
    platform::linux::ProcessInfo processInfo;
    platform::linux::SystemClock systemClock;
    platform::linux::SystemLog systemLog;
    PreviewCatalogue catalogue;
    corvid::InMemoryPreferenceStore noDefaults;
    const platform::MainBundle bundle = mainBundle();
    platform::linux::Localization localization("tessel", localeFolder(), bundle.preferredLocalizations);
    platform::linux::PluginFile plugin(menuPlugin());
    const std::unique_ptr<platform::Toolkit> toolkit =
        startToolkit(plugin, {.mainLoop = mainLoop,
                              .mainActor = mainLoop,
                              .appearance = appearance,
                              .ownWindows = nullptr,
                              .screens = desktop.screens,
                              .sessionLock = nullptr,
                              .languages = bundle.preferredLocalizations});
    std::optional<ResumedRenderer> renderer;
    if (toolkit) {
        renderer.emplace(toolkit->imageRenderer(), begun);
    }
    const platform::Platform table{
        .accessibility = desktop.accessibility,
        .accessibilityObservers = desktop.accessibilityObservers,
        .addressOpener = addressOpener,
        .applicationCatalogue = catalogue,
        .sound = desktop.sound,
        .hotKeyEvents = desktop.hotKeyEvents,
        .imageRenderer = renderer ? &*renderer : nullptr,
        .localization = localization,
        .log = systemLog,
        .loginItemService = loginItem,
        .mainActor = mainLoop,
        .mainBundle = bundle,
        .openPanel = nullptr,
        .processInfo = processInfo,
        .runningApplications = desktop.runningApplications,
        .screens = desktop.screens,
        .shortcutHolders = nullptr,
        .standardUserDefaults = noDefaults,
        .statusBar = desktop.statusBar,
        .systemClock = systemClock,
        .thisApplication = application,
        .workspace = desktop.workspace,
    };
    const platform::Installation installation(table);
    MenuSnapshot::render(directory);
}

} // namespace

// A library that gives up takes its process with it. So pictures are drawn in another one and, should it end before the
// last is there, in one more, from the picture after the one that was its end.
void runPictures(const std::string& directory) {
    beSilent();
    void* const shared = ::mmap(nullptr, sizeof(Count), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) {
        return;
    }
    Count& begun = *::new (shared) Count(0);
    for (;;) {
        const unsigned before = begun;
        const pid_t process = ::fork();
        if (process == 0) {
            drawPictures(directory, begun);
            ::_exit(EXIT_SUCCESS);
        }
        // One that did not even come to a picture would not the next time either.
        if (process < 0 || isDone(process) || begun == before) {
            return;
        }
    }
}

} // namespace tessel
