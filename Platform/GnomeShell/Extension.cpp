#include "Platform/GnomeShell/Extension.h"

#include "Platform/GnomeShell/Protocol.h"
#include "Platform/Linux/Bus/Calls.h"
#include "Platform/Linux/Processes/ProgramStart.h"
#include "Platform/ShellCore/Protocol.h"

#include <string>
#include <utility>

namespace platform::gnomeshell {

namespace {

constexpr const char* shellTitle = "GNOME Shell";

constexpr const char* extensionsInterface = "org.gnome.Shell.Extensions";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

// The shell's states of an extension (gnome-shell, js/misc/extensionUtils.js, ExtensionState).
constexpr double stateError = 3;
constexpr double stateOutOfDate = 4;
constexpr double stateEnabled = 1;

/// Iterates over a dictionary from names to values: `take` reads a value of a type that it knows and returns true.
template <typename Take>
void readDictionary(sd_bus_message* message, const Take& take) {
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) {
        return;
    }
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const char* name = nullptr;
        const char* type = nullptr;
        if (sd_bus_message_read(message, "s", &name) <= 0 || sd_bus_message_peek_type(message, nullptr, &type) <= 0) {
            return;
        }
        if (!take(std::string_view(name), std::string_view(type))) {
            sd_bus_message_skip(message, "v");
        }
        if (sd_bus_message_exit_container(message) < 0) {
            return;
        }
    }
}

} // namespace

/// The handlers of the shell's replies; `data` is the extension.
struct Extension::Answers {
    static Extension& self(void* data) { return *static_cast<Extension*>(data); }

    static int stateArrived(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        self(data).takeState(reply);
        return 0;
    }

    static int versionArrived(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        self(data).takeVersion(reply);
        return 0;
    }

    static int generalSwitchArrived(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        int areOn = 1; // the library's boolean
        if (sd_bus_message_is_method_error(reply, nullptr) == 0) {
            sd_bus_message_read(reply, "v", "b", &areOn);
        }
        if (areOn != 0) {
            self(data).call(extensionsInterface, "EnableExtension", Protocol::extension, nullptr, &linux::ignoreReply);
        } else {
            linux::startProgram("gnome-extensions-app", {});
        }
        return 0;
    }
};

Extension::Extension(shellcore::ShellLink& link, ExtensionFiles files, ExtensionRecord record)
    : Listener(link)
    , link(link)
    , files(std::move(files))
    , record(std::move(record)) {
}

void Extension::switchOn() {
    isWanted = true;
    isWantedByTheUser = !std::exchange(isStarting, false);
    ask();
}

AccessObstacle Extension::silence() {
    return {.kind = AccessObstacle::Kind::silentCompositor, .desktop = shellTitle};
}

std::optional<AccessObstacle> Extension::obstacle() const {
    using Kind = AccessObstacle::Kind;
    const auto because = [](Kind kind) { return AccessObstacle{.kind = kind, .desktop = shellTitle}; };
    if (link.isOpen()) {
        return std::nullopt;
    }
    if (!known) {
        return silence();
    }
    const double state = known->state.value_or(stateEnabled);
    if (state == stateError || state == stateOutOfDate) {
        return because(isOutdated() ? Kind::extensionNotLoaded : Kind::extensionRefused);
    }
    if (state != stateEnabled) {
        return because(Kind::extensionOff);
    }
    if (link.obstacle() == shellcore::ShellLink::Obstacle::otherClient) {
        return AccessObstacle{.kind = Kind::busNameTaken, .detail = shellcore::Protocol::busName};
    }
    if (link.obstacle() == shellcore::ShellLink::Obstacle::unfitShell && !isOutdated()) {
        return AccessObstacle{.kind = Kind::extensionUnfit,
                              .desktop = std::string(shellTitle) + " " + shellVersion,
                              .detail = link.missing()};
    }
    return because(Kind::extensionNotLoaded);
}

std::string Extension::caution() const {
    if (obstacle()) {
        return {};
    }
    if (isOutdated()) {
        return "GNOME Shell still runs another version of its extension Tessel; log out and in once";
    }
    const int shell = majorVersion(shellVersion);
    return shell > Protocol::lastTriedShell ? "not tried on GNOME " + std::to_string(shell) + " yet" : "";
}

bool Extension::isOutdated() const {
    return known && known->state && nextRevision && *nextRevision != known->revision;
}

void Extension::opened(const shellcore::Hello& /*hello*/, bool /*isNew*/) {
    isWanted = false;
    isStarting = false;
    opening.reset();
    record.noteThatItWorked();
    ask();
}

void Extension::closed() {
    known.reset();
    ask();
}

void Extension::ask() {
    call(propertiesInterface, "Get", Protocol::shellName, "ShellVersion", &Answers::versionArrived);
}

void Extension::takeVersion(sd_bus_message* answer) {
    const char* version = nullptr;
    if (sd_bus_message_is_method_error(answer, nullptr) == 0 && sd_bus_message_read(answer, "v", "s", &version) > 0) {
        shellVersion = version;
        files.refresh(shellVersion);
    }
    call(extensionsInterface, "GetExtensionInfo", Protocol::extension, nullptr, &Answers::stateArrived);
}

void Extension::takeState(sd_bus_message* answer) {
    readState(answer);
    nextRevision = files.nextRevision();
    if (std::exchange(isWanted, false) && !link.isOpen()) {
        openTheWay();
    }
    if (answered) {
        answered();
    }
}

void Extension::readState(sd_bus_message* answer) {
    known.reset();
    if (sd_bus_message_is_method_error(answer, nullptr) != 0) {
        return;
    }
    known.emplace();
    readDictionary(answer, [&](std::string_view name, std::string_view type) {
        double number = 0;
        const char* text = nullptr;
        if (name == "state" && type == "d" && sd_bus_message_read(answer, "v", "d", &number) > 0) {
            known->state = number;
        } else if (name == "revision" && type == "s" && sd_bus_message_read(answer, "v", "s", &text) > 0) {
            known->revision = text;
        } else {
            return false;
        }
        return true;
    });
}

void Extension::openTheWay() {
    const std::optional<AccessObstacle> present = obstacle();
    if (!present) {
        return;
    }
    switch (present->kind) {
    case AccessObstacle::Kind::extensionNotLoaded:
    case AccessObstacle::Kind::extensionRefused:
    case AccessObstacle::Kind::extensionUnfit:
        // The shell switches on only an extension that it knows: this one is for the program's next start.
        // A failure is not reported: the obstacle says already what is missing.
        static_cast<void>(files.install(shellVersion));
        nextRevision = files.nextRevision();
        break;
    case AccessObstacle::Kind::extensionOff:
        if (isWantedByTheUser || !record.hasItWorked()) {
            call(propertiesInterface, "Get", extensionsInterface, "UserExtensionsEnabled",
                 &Answers::generalSwitchArrived);
        }
        break;
    default:
        break;
    }
}

void Extension::call(const char* interface, const char* method, const char* argument, const char* second,
                     sd_bus_message_handler_t handler) {
    sd_bus_message* raw = nullptr;
    if (link.connection() == nullptr || sd_bus_message_new_method_call(link.connection(), &raw, Protocol::shellName,
                                                                       Protocol::shellPath, interface, method) < 0) {
        return;
    }
    const linux::OwnedMessage message(raw);
    sd_bus_message_set_auto_start(raw, 0);
    if (sd_bus_message_append(raw, "s", argument) >= 0 &&
        (second == nullptr || sd_bus_message_append(raw, "s", second) >= 0)) {
        // Beginning the access may request the extension's state from the shell again.
        auto& slot = handler == &Answers::generalSwitchArrived || handler == &linux::ignoreReply ? opening : question;
        slot = linux::send(link.connection(), raw, handler, this);
    }
}

} // namespace platform::gnomeshell
