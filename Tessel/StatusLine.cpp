#include "Tessel/StatusLine.h"

#include <utility>

namespace tessel {

std::string statusLine(AppStatus status, const std::set<WindowAction>& failedShortcuts) {
    switch (status) {
    case AppStatus::paused:
        return "Paused";
    case AppStatus::waitingForPermission:
        return "Waiting for permission";
    case AppStatus::shortcutsTaken: {
        std::string line = "Some shortcuts are taken:";
        for (const WindowAction action : failedShortcuts) {
            line += line.back() == ':' ? " " : ", ";
            line += action.rawValue();
        }
        return line;
    }
    case AppStatus::active:
        return "Active";
    }
    std::unreachable();
}

} // namespace tessel
