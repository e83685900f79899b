#pragma once

#include "Platform/AccessObstacle.h"
#include "Platform/GnomeShell/ExtensionFiles.h"
#include "Platform/GnomeShell/ExtensionRecord.h"
#include "Platform/GnomeShell/ShellLink.h"

#include <functional>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// How our extension stands with the shell, and the way to have it work. The shell is asked whenever the extension
/// comes or goes, and nothing is waited for; the user's copy of it is kept from being older than this program. Main
/// thread only.
class Extension final : private ShellLink::Listener {
public:
    /// The link must outlive this.
    Extension(ShellLink& link, ExtensionFiles files, ExtensionRecord record);

    /// Nothing while the extension works. `extensionNotLoaded` also where the shell knows another version of it:
    /// extensions are read when the session begins.
    [[nodiscard]] std::optional<AccessObstacle> obstacle() const;

    /// The obstacle where the shell has not answered yet, or there is no shell.
    [[nodiscard]] static AccessObstacle silence();

    /// Called when the shell's answer has come, so that `obstacle` may give another one. May be called within the
    /// connection's own work. One at a time; an empty function ends it.
    void onChange(std::function<void()> changed) { answered = std::move(changed); }

    /// While it works: that the shell has yet to load this program's version of it, or that it was not tried on a shell
    /// as new as this. In the same form; empty where all is as it should be.
    [[nodiscard]] std::string caution() const;

    /// Switches the extension on where the shell has it. Where it does not, or has one that does not run, puts the
    /// extension into the user's home: the shell has it from the next login on. Where the user has all extensions
    /// switched off, shows that switch.
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

    /// Asks the shell for its version, and then what it knows of the extension.
    void ask();
    void takeVersion(sd_bus_message* answer);
    void takeState(sd_bus_message* answer);
    void readState(sd_bus_message* answer);
    void openTheWay();
    void call(const char* interface, const char* method, const char* argument, const char* second,
              sd_bus_message_handler_t handler);

    /// Whether the next session will have another version of the extension than this one has.
    [[nodiscard]] bool isOutdated() const;

    /// The shell's answer.
    struct Known {
        /// Nothing where the shell has no such extension.
        std::optional<double> state;
        std::string revision;
    };

    ShellLink& link;
    std::function<void()> answered;
    ExtensionFiles files;
    ExtensionRecord record;
    std::string shellVersion;
    std::optional<Known> known;
    /// As last seen among the files.
    std::optional<std::string> nextRevision;
    bool isWanted = false;
    /// No request has come yet, and the extension has not worked in this process.
    bool isStarting = true;
    bool isWantedByTheUser = false;
    linux::OwnedSlot question;
    linux::OwnedSlot opening;
};

} // namespace platform::gnomeshell
