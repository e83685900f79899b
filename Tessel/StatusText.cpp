#include "Tessel/StatusText.h"

#include "Tessel/FilledText.h"

#include <array>
#include <string_view>
#include <utility>

namespace tessel {

namespace {

constexpr std::string_view table = "Tessel";
constexpr std::string_view pausedText = "Paused";
constexpr std::string_view waitingText = "Waiting for permission";
constexpr std::string_view takenText = "Some shortcuts are taken";
constexpr std::string_view activeText = "Active · %lld shortcuts · %lld apps";

std::string countedText(std::size_t shortcutCount, std::size_t ruleCount, const platform::Localization& localization) {
    const std::string translation = localization.text(table, activeText);
    if (translation == activeText) {
        return filled(activeText, std::array{std::to_string(shortcutCount), std::to_string(ruleCount)});
    }
    // Each number has a plural of its own, so a translation joins parts that are counted separately.
    return filled(translation, std::array{localization.text(table, "%n shortcuts", shortcutCount),
                                          localization.text(table, "%n apps", ruleCount)});
}

} // namespace

std::string statusText(AppStatus status, std::size_t ruleCount, const platform::Localization& localization) {
    switch (status) {
    case AppStatus::paused:
        return localization.text(table, pausedText);
    case AppStatus::waitingForPermission:
        return localization.text(table, waitingText);
    case AppStatus::shortcutsTaken:
        return localization.text(table, takenText);
    case AppStatus::active:
        return countedText(WindowAction::shortcuts().size(), ruleCount, localization);
    }
    std::unreachable();
}

std::string statusLine(AppStatus status, const std::set<WindowAction>& failedShortcuts) {
    switch (status) {
    case AppStatus::paused:
        return std::string(pausedText);
    case AppStatus::waitingForPermission:
        return std::string(waitingText);
    case AppStatus::shortcutsTaken: {
        std::string line = std::string(takenText) + ":";
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
