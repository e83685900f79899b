#include "Platform/Linux/Control/ControlMessages.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <utility>

namespace platform::linux::ControlMessages {

namespace {

using Kind = ControlRefusal::Kind;

struct ErrorName {
    const char* name;
    Kind kind;
};

/// The first name of a kind is the one that is sent.
constexpr std::array<ErrorName, 11> errorNames{{
    {"org.freedesktop.DBus.Error.InvalidArgs", Kind::invalid},
    {"org.corvid.Tessel1.Error.Paused", Kind::paused},
    {"org.corvid.Tessel1.Error.NotTrusted", Kind::notTrusted},
    {"org.corvid.Tessel1.Error.NoWindow", Kind::noWindow},
    {"org.freedesktop.DBus.Error.ServiceUnknown", Kind::notRunning},
    {"org.freedesktop.DBus.Error.NameHasNoOwner", Kind::notRunning},
    {"org.freedesktop.DBus.Error.Disconnected", Kind::notRunning},
    // The connection ended before the answer came.
    {"org.freedesktop.DBus.Error.NoReply", Kind::notRunning},
    {"org.freedesktop.DBus.Error.Timeout", Kind::noAnswer},
    {"System.Error.ETIMEDOUT", Kind::noAnswer},
    {"org.corvid.Tessel1.Error.Failed", Kind::failed},
}};

int appendText(sd_bus_message* message, const char* key, const std::string& value) {
    return sd_bus_message_append(message, "{sv}", key, "s", value.c_str());
}

/// Opens the dictionary entry of `key` up to the inside of its variant.
int openEntry(sd_bus_message* message, const char* key, const char* type) {
    int result = sd_bus_message_open_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv");
    if (result >= 0) {
        result = sd_bus_message_append(message, "s", key);
    }
    if (result >= 0) {
        result = sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, type);
    }
    return result < 0 ? result : sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, type + 1);
}

int closeEntry(sd_bus_message* message) {
    int result = 0;
    for (int depth = 0; depth < 3 && result >= 0; ++depth) {
        result = sd_bus_message_close_container(message);
    }
    return result;
}

int appendShortcuts(sd_bus_message* message, const ControlStatus& status) {
    int result = openEntry(message, "shortcuts", "a(sss)");
    for (const ControlStatus::Shortcut& shortcut : status.shortcuts) {
        if (result >= 0) {
            result = sd_bus_message_append(message, "(sss)", shortcut.action.c_str(), shortcut.keys.c_str(),
                                           shortcut.state.c_str());
        }
    }
    return result < 0 ? result : closeEntry(message);
}

/// Two texts for each action that has the first of them.
int appendTexts(sd_bus_message* message, const char* key, const ControlStatus& status,
                std::string ControlStatus::Shortcut::* first, std::string ControlStatus::Shortcut::* second) {
    int result = openEntry(message, key, "a(sss)");
    for (const ControlStatus::Shortcut& shortcut : status.shortcuts) {
        if (result >= 0 && !(shortcut.*first).empty()) {
            result = sd_bus_message_append(message, "(sss)", shortcut.action.c_str(), (shortcut.*first).c_str(),
                                           (shortcut.*second).c_str());
        }
    }
    return result < 0 ? result : closeEntry(message);
}

/// The actions of the shortcuts for which that holds.
int appendActions(sd_bus_message* message, const char* key, const ControlStatus& status,
                  bool ControlStatus::Shortcut::* holds) {
    int result = openEntry(message, key, "as");
    for (const ControlStatus::Shortcut& shortcut : status.shortcuts) {
        if (result >= 0 && shortcut.*holds) {
            result = sd_bus_message_append(message, "s", shortcut.action.c_str());
        }
    }
    return result < 0 ? result : closeEntry(message);
}

int appendRules(sd_bus_message* message, const ControlStatus& status) {
    int result = openEntry(message, "rules", "a{ss}");
    for (const auto& [identifier, action] : status.rules) {
        if (result >= 0) {
            result = sd_bus_message_append(message, "{ss}", identifier.c_str(), action.c_str());
        }
    }
    return result < 0 ? result : closeEntry(message);
}

int readText(sd_bus_message* message, std::string& value) {
    const char* text = nullptr;
    const int result = sd_bus_message_read(message, "v", "s", &text);
    if (result > 0) {
        value = text;
    }
    return result;
}

int readFlag(sd_bus_message* message, bool& value) {
    int flag = 0; // the library's boolean
    const int result = sd_bus_message_read(message, "v", "b", &flag);
    value = flag != 0;
    return result;
}

/// Reads an array of three texts each.
int readTriples(sd_bus_message* message,
                const std::function<void(const char* first, const char* second, const char* third)>& take) {
    int result = sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, "a(sss)");
    if (result > 0) {
        result = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "(sss)");
    }
    const char* first = nullptr;
    const char* second = nullptr;
    const char* third = nullptr;
    while (result > 0 && (result = sd_bus_message_read(message, "(sss)", &first, &second, &third)) > 0) {
        take(first, second, third);
    }
    if (result >= 0) {
        result = sd_bus_message_exit_container(message);
    }
    return result < 0 ? result : sd_bus_message_exit_container(message);
}

int readShortcuts(sd_bus_message* message, ControlStatus& status) {
    return readTriples(message, [&](const char* action, const char* keys, const char* state) {
        status.shortcuts.push_back({.action = action, .keys = keys, .state = state});
    });
}

/// Reads two texts for each of some actions.
int readTexts(sd_bus_message* message, ControlStatus& status, std::string ControlStatus::Shortcut::* first,
              std::string ControlStatus::Shortcut::* second) {
    return readTriples(message, [&](std::string_view action, const char* firstText, const char* secondText) {
        const auto found = std::ranges::find(status.shortcuts, action, &ControlStatus::Shortcut::action);
        if (found != status.shortcuts.end()) {
            (*found).*first = firstText;
            (*found).*second = secondText;
        }
    });
}

int readActions(sd_bus_message* message, ControlStatus& status, bool ControlStatus::Shortcut::* holds) {
    int result = sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, "as");
    if (result > 0) {
        result = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s");
    }
    const char* action = nullptr;
    while (result > 0 && (result = sd_bus_message_read(message, "s", &action)) > 0) {
        const auto found =
            std::ranges::find(status.shortcuts, std::string_view(action), &ControlStatus::Shortcut::action);
        if (found != status.shortcuts.end()) {
            (*found).*holds = true;
        }
    }
    if (result >= 0) {
        result = sd_bus_message_exit_container(message);
    }
    return result < 0 ? result : sd_bus_message_exit_container(message);
}

int readRules(sd_bus_message* message, ControlStatus& status) {
    int result = sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, "a{ss}");
    if (result > 0) {
        result = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{ss}");
    }
    const char* identifier = nullptr;
    const char* action = nullptr;
    while (result > 0 && (result = sd_bus_message_read(message, "{ss}", &identifier, &action)) > 0) {
        status.rules.insert_or_assign(identifier, action);
    }
    if (result >= 0) {
        result = sd_bus_message_exit_container(message);
    }
    return result < 0 ? result : sd_bus_message_exit_container(message);
}

int readEntry(sd_bus_message* message, ControlStatus& status) {
    const char* text = nullptr;
    const int result = sd_bus_message_read(message, "s", &text);
    if (result <= 0) {
        return result;
    }
    const std::string_view key = text;
    for (const auto& [name, member] : {std::pair{"status", &ControlStatus::status},
                                       {"statusText", &ControlStatus::statusText},
                                       {"version", &ControlStatus::version},
                                       {"backend", &ControlStatus::backend}}) {
        if (key == name) {
            return readText(message, status.*member);
        }
    }
    if (key == "enabled") {
        return readFlag(message, status.isEnabled);
    }
    if (key == "trusted") {
        return readFlag(message, status.isTrusted);
    }
    if (key == "borrowsShortcuts") {
        return readFlag(message, status.borrowsShortcuts);
    }
    if (key == "borrowed") {
        return readActions(message, status, &ControlStatus::Shortcut::isBorrowed);
    }
    if (key == "lendable") {
        return readActions(message, status, &ControlStatus::Shortcut::canBeBorrowed);
    }
    if (key == "updated") {
        return readFlag(message, status.isReplaced);
    }
    if (key == "shortcuts") {
        return readShortcuts(message, status);
    }
    if (key == "holders") {
        return readTexts(message, status, &ControlStatus::Shortcut::heldBy, &ControlStatus::Shortcut::purpose);
    }
    if (key == "obstacles") {
        return readTexts(message, status, &ControlStatus::Shortcut::notBorrowable, &ControlStatus::Shortcut::whyNot);
    }
    if (key == "rules") {
        return readRules(message, status);
    }
    return sd_bus_message_skip(message, "v");
}

} // namespace

int append(sd_bus_message* message, const ControlStatus& status) {
    int result = sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    for (const auto& [key, text] : {std::pair{"status", &status.status},
                                    {"statusText", &status.statusText},
                                    {"version", &status.version},
                                    {"backend", &status.backend}}) {
        if (result >= 0) {
            result = appendText(message, key, *text);
        }
    }
    for (const auto& [key, flag] : {std::pair{"enabled", status.isEnabled},
                                    {"trusted", status.isTrusted},
                                    {"borrowsShortcuts", status.borrowsShortcuts},
                                    {"updated", status.isReplaced}}) {
        if (result >= 0) {
            result = sd_bus_message_append(message, "{sv}", key, "b", flag ? 1 : 0);
        }
    }
    if (result >= 0) {
        result = appendShortcuts(message, status);
    }
    // Behind the shortcuts, which they belong to.
    if (result >= 0) {
        result = appendTexts(message, "holders", status, &ControlStatus::Shortcut::heldBy,
                             &ControlStatus::Shortcut::purpose);
    }
    if (result >= 0) {
        result = appendTexts(message, "obstacles", status, &ControlStatus::Shortcut::notBorrowable,
                             &ControlStatus::Shortcut::whyNot);
    }
    if (result >= 0) {
        result = appendActions(message, "borrowed", status, &ControlStatus::Shortcut::isBorrowed);
    }
    if (result >= 0) {
        result = appendActions(message, "lendable", status, &ControlStatus::Shortcut::canBeBorrowed);
    }
    if (result >= 0) {
        result = appendRules(message, status);
    }
    return result < 0 ? result : sd_bus_message_close_container(message);
}

std::optional<ControlStatus> readStatus(sd_bus_message* message) {
    ControlStatus status;
    int result = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    if (result <= 0) {
        return std::nullopt;
    }
    while ((result = sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv")) > 0) {
        if (readEntry(message, status) < 0 || sd_bus_message_exit_container(message) < 0) {
            return std::nullopt;
        }
    }
    return result < 0 ? std::nullopt : std::optional{status};
}

const char* errorName(ControlRefusal::Kind kind) {
    return std::ranges::find(errorNames, kind, &ErrorName::kind)->name;
}

ControlRefusal refusal(const sd_bus_error& error) {
    const std::string_view name = error.name == nullptr ? "" : error.name;
    const auto* const known =
        std::ranges::find_if(errorNames, [name](const ErrorName& entry) { return name == entry.name; });
    const Kind kind = known == errorNames.end() ? Kind::failed : known->kind;
    const std::string reason = error.message == nullptr ? std::string(name) : error.message;
    return {.kind = kind, .reason = reason};
}

} // namespace platform::linux::ControlMessages
