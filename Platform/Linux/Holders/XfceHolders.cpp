#include "Platform/Linux/Holders/XfceHolders.h"

#include "Platform/Linux/Holders/Accelerator.h"
#include "Platform/Linux/Holders/CommonPurpose.h"
#include "Platform/Linux/Processes/ProgramOutput.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace platform::linux {

namespace {

constexpr std::string_view channelBlanks = " \t\r";

struct ChannelProperty {
    std::string_view name;
    std::string_view value;
};

/// Takes the next line off a text: a name, channelBlanks and a value.
ChannelProperty takeChannelProperty(std::string_view& printed) {
    const std::string_view line = printed.substr(0, printed.find('\n'));
    printed.remove_prefix(std::min(line.size() + 1, printed.size()));
    const std::string_view name = line.substr(0, line.find_first_of(channelBlanks));
    std::string_view value = line.substr(name.size());
    value.remove_prefix(std::min(value.find_first_not_of(channelBlanks), value.size()));
    return {.name = name, .value = value.substr(0, value.find_last_not_of(channelBlanks) + 1)};
}

/// The part of the name behind a folder, which has no folders of its own.
std::optional<std::string_view> behind(std::string_view folder, std::string_view name) {
    if (!name.starts_with(folder) || name.find('/', folder.size()) != std::string_view::npos) {
        return std::nullopt;
    }
    return name.substr(folder.size());
}

/// The value of a shortcut's keys in a folder: nothing for keys that are not in it.
std::optional<std::string_view> valueIn(std::string_view folder, std::string_view printed,
                                        const corvid::Shortcut& shortcut) {
    while (!printed.empty()) {
        const ChannelProperty property = takeChannelProperty(printed);
        const auto keys = behind(folder, property.name);
        const auto accelerator = keys ? readAccelerator(*keys) : std::nullopt;
        if (accelerator && isSame(*accelerator, shortcut)) {
            return property.value;
        }
    }
    return std::nullopt;
}

/// "maximize_window_key" in words.
std::string wordsOf(std::string_view name) {
    constexpr std::string_view suffix = "_key";
    name.remove_suffix(name.ends_with(suffix) ? suffix.size() : 0);
    std::string words(name);
    std::ranges::replace(words, '_', ' ');
    return words;
}

bool isOverridden(std::string_view group, std::string_view printed) {
    const std::string name = "/" + std::string(group) + "/custom/override";
    while (!printed.empty()) {
        const ChannelProperty property = takeChannelProperty(printed);
        if (property.name == name) {
            return property.value == "true";
        }
    }
    return false;
}

} // namespace

std::optional<ShortcutHolder> xfceHolder(std::string_view printed, const corvid::Shortcut& shortcut) {
    for (const std::string_view group : {"xfwm4", "commands"}) {
        const std::string folder = "/" + std::string(group) + "/";
        auto value = valueIn(folder + "custom/", printed, shortcut);
        if (!value && !isOverridden(group, printed)) {
            value = valueIn(folder + "default/", printed, shortcut);
        }
        if (value && !value->empty()) {
            const auto common = commonPurpose(group, *value);
            ShortcutHolder holder{.heldBy = "Xfce", .purpose = std::string(*value)};
            if (common) {
                holder.purpose = *common;
            } else if (group == "xfwm4") {
                holder.purpose = wordsOf(*value);
            }
            return holder;
        }
    }
    return std::nullopt;
}

namespace {

struct XfceSearch final : HolderSearch {
    std::unique_ptr<ProgramOutput> running;
};

} // namespace

std::unique_ptr<HolderSearch> XfceHolders::find(const std::vector<corvid::Shortcut>& shortcuts, Found found) {
    auto search = std::make_unique<XfceSearch>();
    search->running =
        ProgramOutput::of(mainLoop, "xfconf-query", {"--channel", "xfce4-keyboard-shortcuts", "--list", "--verbose"},
                          [shortcuts, reply = std::move(found)](const std::optional<std::string>& printed) {
                              Answers answers;
                              for (const corvid::Shortcut& shortcut : shortcuts) {
                                  answers.push_back(xfceHolder(printed.value_or(""), shortcut));
                              }
                              reply(answers);
                          });
    return search->running ? std::move(search) : nullptr;
}

} // namespace platform::linux
