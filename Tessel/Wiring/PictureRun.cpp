#include "Tessel/Wiring/PictureRun.h"

#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Platform/Absent/Desktop.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Log/SystemLog.h"
#include "Platform/Linux/Loop/LoopApplication.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Processes/ProcessInfo.h"
#include "Platform/Linux/Services/AddressOpener.h"
#include "Platform/Linux/Services/AutostartLoginItem.h"
#include "Platform/Linux/Services/SystemClock.h"
#include "Platform/Linux/Text/Localization.h"
#include "Platform/Seam/Desktop/Appearance.h"
#include "Platform/Seam/Platform.h"
#include "Platform/Seam/Toolkit/ImageRenderer.h"
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

/// Draws pictures in both colour schemes, independent of the user's setting.
class NoAppearance final : public platform::Appearance {
public:
    [[nodiscard]] platform::ColorScheme colorScheme() const override { return platform::ColorScheme::light; }

    [[nodiscard]] bool reducesMotion() const override { return true; }

    void follow(std::function<void()> /*changed*/) override {}
};

/// Drawing libraries log messages that do not matter here.
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

/// Skips the pictures that another process has begun already, and counts those that this one begins.
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

/// Whether a process exited by itself, with all pictures done.
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
        .desktop = desktop.parts(),
        .addressOpener = addressOpener,
        .applicationCatalogue = catalogue,
        .imageRenderer = renderer ? &*renderer : nullptr,
        .localization = localization,
        .log = systemLog,
        .loginItemService = loginItem,
        .mainActor = mainLoop,
        .mainBundle = bundle,
        .processInfo = processInfo,
        .standardUserDefaults = noDefaults,
        .statusBar = desktop.statusBar,
        .systemClock = systemClock,
        .thisApplication = application,
    };
    const platform::Installation installation(table);
    MenuSnapshot::render(directory);
}

} // namespace

// A library that aborts ends its process. So another process draws the pictures. If it ends before the last one, a
// further process starts with the picture after the one that failed.
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
        // A process that did not reach any picture would not do so the next time either.
        if (process < 0 || isDone(process) || begun == before) {
            return;
        }
    }
}

} // namespace tessel
