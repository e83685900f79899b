#pragma once

#include "Platform/GnomeShell/ExtensionFiles.h"
#include "Platform/GnomeShell/ExtensionRecord.h"
#include "Platform/GnomeShell/ShellLink.h"
#include "Platform/Linux/DetachedPrograms.h"

#include <cstdint>

namespace platform::gnomeshell {

/// How our extension stands with the shell, and the way to have it work. The shell is asked when the extension is not
/// there, and nothing is waited for. Main thread only.
class Extension final : private ShellLink::Listener {
public:
    enum class State : std::uint8_t {
        /// The shell has not said yet, or there is no shell.
        unknown,
        working,
        /// The shell has it, and it is off.
        switchedOff,
        /// The shell does not know it, or knows another version of it: extensions are read when the session begins, so
        /// the user has to log out and in.
        notLoaded,
        /// The shell refuses to run it, for one because it is newer than the extension.
        refused,
    };

    /// Loop and link must outlive this.
    Extension(linux::MainLoop& mainLoop, ShellLink& link, ExtensionFiles files, ExtensionRecord record);

    [[nodiscard]] State state() const { return link.isOpen() ? State::working : known; }

    /// Switches the extension on where the shell has it. Where it does not, puts the extension into the user's home:
    /// the shell has it from the next login on. Where the user has all extensions switched off, shows that switch.
    ///
    /// A request that comes first, before the extension has worked in this process, is the program's own as it starts.
    /// It leaves an extension off that has worked for this user before: since then somebody has switched it off. All
    /// other requests are the user's.
    void switchOn();

private:
    struct Answers;

    void opened(const Hello& hello, bool isNew) override;
    void closed() override;

    void told(std::string_view /*signal*/, sd_bus_message* /*message*/) override {}

    /// Asks the shell what it knows of the extension.
    void ask();
    void takeState(sd_bus_message* answer);
    void openTheWay();
    void call(const char* interface, const char* method, const char* argument, const char* second,
              sd_bus_message_handler_t handler);

    ShellLink& link;
    ExtensionFiles files;
    ExtensionRecord record;
    linux::DetachedPrograms programs;
    State known = State::unknown;
    bool isWanted = false;
    /// Nobody has been asked yet, and the extension has not worked in this process.
    bool isStarting = true;
    bool isWantedByTheUser = false;
    linux::OwnedSlot question;
    linux::OwnedSlot opening;
};

} // namespace platform::gnomeshell
