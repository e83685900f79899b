#pragma once

#include "Platform/GnomeShell/ExtensionFiles.h"
#include "Platform/GnomeShell/ExtensionRecord.h"
#include "Platform/GnomeShell/ShellLink.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// The state of our extension in the shell, and the steps to make it work. The shell is asked without waiting whenever
/// the extension appears or disappears; the user's copy is kept up to date with this program. Main thread only.
class Extension final : private ShellLink::Listener {
public:
    enum class State : std::uint8_t {
        /// The shell has not replied yet, or there is no shell.
        unknown,
        working,
        /// The shell has it, and it is disabled.
        switchedOff,
        /// The shell does not know it, or knows another version of it: the shell loads extensions when the session
        /// begins, so the user has to log out and in.
        notLoaded,
        /// The shell refuses to run it, for example because the shell is newer than the extension supports.
        refused,
        /// It runs and does nothing, because the shell lacks a function that it uses.
        unfit,
        /// It runs and serves another program, which owns this one's name on the bus.
        servesAnother,
    };

    /// The link must outlive this.
    Extension(ShellLink& link, ExtensionFiles files, ExtensionRecord record);

    [[nodiscard]] State state() const;

    /// While it does not work: the missing requirement, and what the user can do about it, as part of a sentence in
    /// English, without a full stop. Else empty.
    [[nodiscard]] std::string hindrance() const;

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

    void opened(const Hello& hello, bool isNew) override;
    void closed() override;

    void told(std::string_view /*signal*/, sd_bus_message* /*message*/) override {}

    /// Requests the shell's version, and then the extension's state.
    void ask();
    void takeVersion(sd_bus_message* answer);
    void takeState(sd_bus_message* answer);
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

    ShellLink& link;
    ExtensionFiles files;
    ExtensionRecord record;
    std::string shellVersion;
    std::optional<Known> known;
    /// As last read from the files.
    std::optional<std::string> nextRevision;
    bool isWanted = false;
    /// There was no request yet, and the extension has not worked in this process.
    bool isStarting = true;
    bool isWantedByTheUser = false;
    linux::OwnedSlot question;
    linux::OwnedSlot opening;
};

} // namespace platform::gnomeshell
