#include "Platform/GnomeShell/Extension.h"

#include "Platform/GnomeShell/Protocol.h"

#include <string>
#include <utility>

namespace platform::gnomeshell {

namespace {

constexpr const char* extensionsInterface = "org.gnome.Shell.Extensions";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

// How the shell counts the states of an extension (gnome-shell, js/misc/extensionUtils.js, ExtensionState).
constexpr double stateError = 3;
constexpr double stateOutOfDate = 4;
constexpr double stateEnabled = 1;

/// The number under a name in a dictionary from names to values; steps over values of other types.
std::optional<double> numberIn(sd_bus_message* message, std::string_view wanted) {
    std::optional<double> found;
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) {
        return found;
    }
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const char* name = nullptr;
        const char* type = nullptr;
        if (sd_bus_message_read(message, "s", &name) <= 0 || sd_bus_message_peek_type(message, nullptr, &type) <= 0) {
            break;
        }
        double number = 0;
        if (wanted == name && std::string_view(type) == "d") {
            if (sd_bus_message_read(message, "v", "d", &number) > 0) {
                found = number;
            }
        } else {
            sd_bus_message_skip(message, "v");
        }
        if (sd_bus_message_exit_container(message) < 0) {
            break;
        }
    }
    return found;
}

} // namespace

/// What comes from the shell; `data` is the extension.
struct Extension::Answers {
    static Extension& self(void* data) { return *static_cast<Extension*>(data); }

    static int stateTold(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        self(data).takeState(reply);
        return 0;
    }

    static int versionTold(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        const char* version = nullptr;
        if (sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read(reply, "v", "s", &version) > 0) {
            // The shell switches on only what it knows: that is for the program's next start.
            // Where that fails there is nobody to tell: what is missing is known anyway.
            static_cast<void>(self(data).files.install(version));
        }
        return 0;
    }

    static int generalSwitchTold(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        int areOn = 1; // the library's boolean
        if (sd_bus_message_is_method_error(reply, nullptr) == 0) {
            sd_bus_message_read(reply, "v", "b", &areOn);
        }
        if (areOn != 0) {
            self(data).call(extensionsInterface, "EnableExtension", Protocol::extension, nullptr, &linux::ignoreReply);
        } else {
            self(data).programs.start("gnome-extensions-app", {});
        }
        return 0;
    }
};

Extension::Extension(linux::MainLoop& mainLoop, ShellLink& link, ExtensionFiles files, ExtensionRecord record)
    : Listener(link)
    , link(link)
    , files(std::move(files))
    , record(std::move(record))
    , programs(mainLoop) {
}

void Extension::switchOn() {
    isWanted = true;
    isWantedByTheUser = !std::exchange(isStarting, false);
    ask();
}

void Extension::opened(const Hello& /*hello*/, bool /*isNew*/) {
    isWanted = false;
    isStarting = false;
    question.reset();
    opening.reset();
    record.noteThatItWorked();
}

void Extension::closed() {
    known = State::unknown;
    ask();
}

void Extension::ask() {
    call(extensionsInterface, "GetExtensionInfo", Protocol::extension, nullptr, &Answers::stateTold);
}

void Extension::takeState(sd_bus_message* answer) {
    if (sd_bus_message_is_method_error(answer, nullptr) != 0) {
        known = State::unknown;
        return;
    }
    const std::optional<double> state = numberIn(answer, "state");
    if (!state || *state == stateEnabled) {
        known = State::notLoaded;
    } else {
        known = *state == stateError || *state == stateOutOfDate ? State::refused : State::switchedOff;
    }
    if (std::exchange(isWanted, false) && !link.isOpen()) {
        openTheWay();
    }
}

void Extension::openTheWay() {
    if (known == State::notLoaded) {
        call(propertiesInterface, "Get", Protocol::shellName, "ShellVersion", &Answers::versionTold);
    } else if (known == State::switchedOff && (isWantedByTheUser || !record.hasItWorked())) {
        call(propertiesInterface, "Get", extensionsInterface, "UserExtensionsEnabled", &Answers::generalSwitchTold);
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
    constexpr std::uint64_t usualTimeout = 0;
    sd_bus_slot* slot = nullptr;
    if (sd_bus_message_append(raw, "s", argument) >= 0 &&
        (second == nullptr || sd_bus_message_append(raw, "s", second) >= 0) &&
        sd_bus_call_async(link.connection(), &slot, raw, handler, this, usualTimeout) >= 0) {
        // The shell may be asked anew how the extension stands while the way is being opened.
        (handler == &Answers::stateTold ? question : opening).reset(slot);
    }
}

} // namespace platform::gnomeshell
