#pragma once

#include "Platform/GnomeShell/ExtensionFiles.h"
#include "Platform/GnomeShell/ExtensionRecord.h"
#include "Platform/Seam/Desktop/AccessObstacle.h"
#include "Platform/ShellCore/ShellLink.h"

#include <functional>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// The state of our extension in the shell, and the steps to make it work. The shell is asked without waiting whenever
/// the extension appears or disappears; the user's copy is kept up to date with this program. Main thread only.
class Extension final : private shellcore::ShellLink::Listener {
public:
    /// The link must outlive this.
    Extension(shellcore::ShellLink& link, ExtensionFiles files, ExtensionRecord record);

    /// Nothing while the extension works. `extensionNotLoaded` also where the shell knows another version of it:
    /// extensions are read when the session begins.
    [[nodiscard]] std::optional<AccessObstacle> obstacle() const;

    /// The obstacle where the shell has not answered yet, or there is no shell.
    [[nodiscard]] static AccessObstacle silence();

    /// Called when the shell's answer has come, so that `obstacle` may give another one. May be called within the
    /// connection's own work. One at a time; an empty function ends it.
    void onChange(std::function<void()> changed) { answered = std::move(changed); }

    /// While it works: a notice that the shell has not loaded this program's version of it yet, or that it was not
    /// tested on a shell as new as this. In the same form; empty without a notice.
    [[nodiscard]] std::string caution() const;

    /// Enables the extension if the shell has it. If the shell does not have it, or has one that does not run, copies
    /// the extension into the user's home: the shell loads it at the next login. If the user has disabled all
    /// extensions, shows that switch.
    ///
    /// The first request, before the extension has worked in this process, is the program's own at its start. It leaves
    /// an extension disabled that has worked for this user before, because the user has disabled it since. All other
    /// requests are the user's.
    void switchOn();

private:
    struct Answers;

    void opened(const shellcore::Hello& hello, bool isNew) override;
    void closed() override;

    void signalArrived(std::string_view /*signal*/, sd_bus_message* /*message*/) override {}

    /// Requests the shell's version, and then the extension's state.
    void ask();
    void takeVersion(sd_bus_message* answer);
    void takeState(sd_bus_message* answer);
    void readState(sd_bus_message* answer);
    void openTheWay();
    void call(const char* interface, const char* method, const char* argument, const char* second,
              sd_bus_message_handler_t handler);

    /// Whether the next session will have another version of the extension than this one.
    [[nodiscard]] bool isOutdated() const;

    /// The shell's reply.
    struct Known {
        /// Empty if the shell has no such extension.
        std::optional<double> state;
        std::string revision;
    };

    shellcore::ShellLink& link;
    std::function<void()> answered;
    ExtensionFiles files;
    ExtensionRecord record;
    std::string shellVersion;
    std::optional<Known> known;
    /// As last read from the files.
    std::optional<std::string> nextRevision;
    bool isWanted = false;
    /// No request has come yet, and the extension has not worked in this process.
    bool isStarting = true;
    bool isWantedByTheUser = false;
    linux::OwnedSlot question;
    linux::OwnedSlot opening;
};

} // namespace platform::gnomeshell
