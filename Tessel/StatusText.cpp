#include "Tessel/StatusText.h"

#include "TesselCore/WindowAction.h"

#include <string_view>
#include <utility>

namespace tessel {

namespace {

constexpr std::string_view table = "Tessel";
constexpr std::string_view activeText = "Active · %lld shortcuts · %lld apps";

/// A placeholder and what is put in its place.
using Part = std::pair<std::string_view, std::string>;

/// Puts two texts in the place of two placeholders, which are looked for in the order given or, if they are told apart,
/// wherever they are. What is put in is not looked at again.
std::string filled(std::string_view text, const Part& first, const Part& second) {
    constexpr std::size_t none = std::string_view::npos;
    const std::size_t firstPlace = text.find(first.first);
    const std::size_t after = first.first == second.first && firstPlace != none ? firstPlace + 1 : 0;
    const std::size_t secondPlace = text.find(second.first, after);
    std::string result(text);
    const auto fill = [&result](std::size_t place, const Part& value) {
        if (place != none) {
            result.replace(place, value.first.size(), value.second);
        }
    };
    // From the end, so that the earlier place stays where it was found.
    const bool isFirstLast = firstPlace > secondPlace;
    fill(isFirstLast ? firstPlace : secondPlace, isFirstLast ? first : second);
    fill(isFirstLast ? secondPlace : firstPlace, isFirstLast ? second : first);
    return result;
}

std::string countedText(std::size_t shortcutCount, std::size_t ruleCount, const platform::Localization& localization) {
    const std::string translation = localization.text(table, activeText);
    if (translation == activeText) {
        return filled(activeText, {"%lld", std::to_string(shortcutCount)}, {"%lld", std::to_string(ruleCount)});
    }
    // Each number has a plural of its own, so a translation is put together from parts that are counted already.
    return filled(translation, {"%1", localization.text(table, "%n shortcuts", shortcutCount)},
                  {"%2", localization.text(table, "%n apps", ruleCount)});
}

} // namespace

std::string statusText(AppStatus status, std::size_t ruleCount, const platform::Localization& localization) {
    switch (status) {
    case AppStatus::paused:
        return localization.text(table, "Paused");
    case AppStatus::waitingForPermission:
        return localization.text(table, "Waiting for permission");
    case AppStatus::shortcutsTaken:
        return localization.text(table, "Some shortcuts are taken");
    case AppStatus::active:
        return countedText(WindowAction::shortcuts().size(), ruleCount, localization);
    }
    std::unreachable();
}

} // namespace tessel
