#include "Tessel/StatusReport.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace tessel::StatusReport {

namespace {

using Json = nlohmann::ordered_json;
using Kind = platform::ControlRefusal::Kind;

std::string line(const Json& json) {
    // Otherwise a text that is not UTF-8 would throw.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

const char* wordOf(Kind kind) {
    switch (kind) {
    case Kind::invalid:
        return "invalid";
    case Kind::paused:
        return "paused";
    case Kind::notTrusted:
        return "notTrusted";
    case Kind::noWindow:
        return "noWindow";
    case Kind::notRunning:
        return "notRunning";
    case Kind::noAnswer:
        return "noAnswer";
    case Kind::failed:
        return "failed";
    }
    std::unreachable();
}

} // namespace

std::string json(const platform::ControlStatus& status) {
    Json shortcuts = Json::array();
    for (const auto& shortcut : status.shortcuts) {
        Json entry{{"action", shortcut.action}, {"keys", shortcut.keys}, {"state", shortcut.state}};
        if (!shortcut.heldBy.empty()) {
            entry["heldBy"] = shortcut.heldBy;
            entry["purpose"] = shortcut.purpose;
        }
        if (shortcut.isBorrowed) {
            entry["borrowed"] = true;
        }
        if (shortcut.canBeBorrowed) {
            entry["canBeBorrowed"] = true;
        }
        if (!shortcut.notBorrowable.empty()) {
            entry["notBorrowable"] = shortcut.notBorrowable;
            entry["whyNot"] = shortcut.whyNot;
        }
        shortcuts.push_back(std::move(entry));
    }
    Json rules = Json::object();
    for (const auto& [identifier, action] : status.rules) {
        rules[identifier] = action;
    }
    return line({{"running", true},
                 {"version", status.version},
                 {"backend", status.backend},
                 {"status", status.status},
                 {"statusText", status.statusText},
                 {"enabled", status.isEnabled},
                 {"trusted", status.isTrusted},
                 {"borrowsShortcuts", status.borrowsShortcuts},
                 {"updated", status.isReplaced},
                 {"shortcuts", std::move(shortcuts)},
                 {"rules", std::move(rules)}});
}

std::string doneJson() {
    return line({{"done", true}});
}

std::string forgottenJson(const std::vector<std::string>& removed, const std::vector<std::string>& failures) {
    Json answer{{"done", failures.empty()}, {"removed", removed}};
    if (!failures.empty()) {
        answer["error"] = wordOf(Kind::failed);
        answer["message"] = failures.front();
    }
    return line(answer);
}

std::string json(const platform::ControlRefusal& refusal) {
    return line({{"done", false}, {"error", wordOf(refusal.kind)}, {"message", refusal.reason}});
}

std::string notRunningJson() {
    return line({{"running", false}});
}

} // namespace tessel::StatusReport
