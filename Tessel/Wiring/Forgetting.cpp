#include "Tessel/Wiring/Forgetting.h"

#include "Platform/GnomeShell/Protocol.h"
#include "Platform/KWin/HotKeys.h"
#include "Platform/KWin/KeyLoans.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/SocketAddress.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Processes/StandardStreams.h"
#include "Tessel/StatusReport.h"
#include "Tessel/Wiring/SessionFacts.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace tessel {

namespace {

using platform::ControlAnswer;
using platform::ControlRefusal;
using platform::linux::ControlClient;
using platform::linux::MadeFiles;
using platform::linux::Session;

/// Whether no instance runs any more; otherwise the reason.
ControlAnswer<void> endAll() {
    const Session own = sessionOf(SessionFacts::ofThisProcess());
    std::vector<Session> sessions = platform::linux::sessionsWithSockets(own.runtimeFolder);
    sessions.push_back(own);
    for (const Session& session : sessions) {
        const ControlAnswer<void> answer = session.display.empty()
                                               ? ControlClient::onBus(platform::linux::sessionBusAddress()).quit()
                                               : ControlClient::ofSession(session).quit();
        if (!answer && answer.error().kind != ControlRefusal::Kind::notRunning) {
            return answer;
        }
    }
    return {};
}

/// Gives back the shortcuts that a killed program had borrowed on Plasma. Afterwards the note of them exists only if
/// giving back failed.
void giveBackShortcuts(const std::string& note) {
    constexpr std::chrono::seconds patience{2};
    platform::linux::MainLoop loop;
    platform::linux::SessionBus bus(loop);
    platform::kwin::HotKeys keys(loop, bus, [](std::uint32_t, std::uint32_t) { return std::string(); }, note);
    bus.awaitArrival(loop.now() + patience);
    keys.setBorrows(false);
}

int refuse(const CommandLine::Forget& request, const ControlRefusal& refusal) {
    if (request.json) {
        static_cast<void>(platform::linux::printToStandardOutput(StatusReport::json(refusal)));
    } else {
        std::fputs(("tessel: " + refusal.reason + "\n").c_str(), stderr);
    }
    return EXIT_FAILURE;
}

} // namespace

std::vector<MadeFiles> filesOfUser(const platform::linux::BaseFolders& folders) {
    std::vector<MadeFiles> all;
    if (folders.userConfiguration) {
        const std::filesystem::path configuration(*folders.userConfiguration);
        all.push_back({.folder = configuration / "autostart",
                       .names = {"org.corvid.Tessel.desktop", ".org.corvid.Tessel.desktop.new"}});
        all.push_back({.folder = configuration / "tessel",
                       .names = {"preferences.plist", ".preferences.plist.new", "preferences.plist.unreadable-*"},
                       .isOwnFolder = true});
    }
    if (folders.userState) {
        all.push_back({.folder = std::filesystem::path(*folders.userState) / "tessel",
                       // Giving the borrowed shortcuts back removes their note.
                       .names = {"gnome-shell-extension-has-worked", ".borrowed-shortcuts.json.new",
                                 "borrowed-shortcuts.json.unreadable-*"},
                       .isOwnFolder = true});
    }
    // The first is the user's own, if there is a home at all.
    if (folders.home && !folders.data.empty()) {
        const std::filesystem::path extension = std::filesystem::path(folders.data.front()) / "gnome-shell" /
                                                "extensions" / platform::gnomeshell::Protocol::extension;
        std::error_code error;
        // A link there belongs to a developer of the extension.
        if (!std::filesystem::is_symlink(extension, error)) {
            all.push_back({.folder = extension,
                           .names = {"extension.js", "extension.js.new", "metadata.json", "metadata.json.new"},
                           .isOwnFolder = true});
        }
    }
    return all;
}

int forget(const CommandLine::Forget& request) {
    if (const ControlAnswer<void> ended = endAll(); !ended) {
        return refuse(request, ended.error());
    }
    const std::optional<std::string> note = platform::kwin::KeyLoans::standardFile();
    std::error_code error;
    const bool isNoteThere = note && std::filesystem::exists(*note, error);
    if (isNoteThere) {
        giveBackShortcuts(*note);
    }
    platform::linux::Removal removal =
        platform::linux::removeFiles(filesOfUser(platform::linux::BaseFolders::ofThisProcess()));
    if (isNoteThere && std::filesystem::exists(*note, error)) {
        removal.failures.push_back("there are borrowed shortcuts to give back, which takes a session of Plasma: " +
                                   *note);
    }
    const bool isPrinted = platform::linux::printToStandardOutput(
        request.json ? StatusReport::forgottenJson(removal.removed, removal.failures)
                     : StatusReport::forgottenText(removal.removed));
    if (!request.json) {
        for (const std::string& failure : removal.failures) {
            std::fputs(("tessel: " + failure + "\n").c_str(), stderr);
        }
    }
    return isPrinted && removal.failures.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace tessel
