#include "Tessel/Wiring/ResidentRun.h"

#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Platform/Linux/Log/Log.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Processes/StandardStreams.h"
#include "Platform/Linux/Processes/StartEnvironment.h"
#include "Platform/Linux/Program/PluginFile.h"
#include "Platform/Linux/Text/Localization.h"
#include "Platform/Seam/Desktop/MainBundle.h"
#include "Tessel/Wiring/DesktopChoice.h"
#include "Tessel/Wiring/Locale.h"
#include "Tessel/Wiring/ProcessEnvironment.h"
#include "Tessel/Wiring/ResidentProgram.h"
#include "Tessel/Wiring/SessionFacts.h"
#include "Tessel/Wiring/ThisProgram.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace tessel {

namespace {

/// Runs the program until it ends. `next`: the program to become then, if any.
int runUntilTheEnd(std::optional<std::string>& next) {
    // Opened first, because an upgrade may later replace the file by another build's.
    platform::linux::PluginFile plugin(menuPlugin());
    platform::linux::MainLoop mainLoop;
    mainLoop.endOnTerminationSignals();

    const SessionFacts session = SessionFacts::ofThisProcess();
    auto instance = platform::linux::claimSession(sessionOf(session));
    if (!instance) {
        if (!instance.error().asked) {
            platform::linux::logToStandardError(instance.error().reason);
            return EXIT_FAILURE;
        }
        std::puts("tessel: already running in this session");
        return EXIT_SUCCESS;
    }
    // Ended after the desktop: a client that waits for the end of this socket finds the keys free.
    platform::linux::ControlSocket controlSocket(mainLoop, *instance);
    platform::linux::SessionBus sessionBus(mainLoop);
    const platform::MainBundle bundle = mainBundle();
    platform::linux::Localization localization("tessel", localeFolder(), bundle.preferredLocalizations);
    auto desktop = openDesktop({.mainLoop = mainLoop,
                                .sessionBus = sessionBus,
                                .localization = localization,
                                .folders = {.icons = iconFolder(),
                                            .shellExtension = shellExtensionFolder(),
                                            .kwinScript = kwinScript(),
                                            .cinnamonCore = cinnamonCore()}},
                               session);
    if (!desktop) {
        platform::linux::logToStandardError(desktop.error());
        return EXIT_FAILURE;
    }
    ResidentProgram program({.mainLoop = mainLoop,
                             .plugin = plugin,
                             .controlSocket = controlSocket,
                             .sessionBus = sessionBus,
                             .bundle = bundle,
                             .localization = localization},
                            *std::move(desktop));
    const int status = program.run();
    next = program.nextProgram();
    return status;
}

} // namespace

int runResident() {
    settleEnvironment();
    enterLocale();
    platform::linux::outliveStandardReaders();
    std::optional<std::string> next;
    const int status = runUntilTheEnd(next);
    if (!next) {
        return status;
    }
    platform::linux::becomeProgram(*next);
    platform::linux::logToStandardError("cannot start " + *next + ": " + std::generic_category().message(errno));
    return EXIT_FAILURE;
}

} // namespace tessel
