#include "Platform/Hyprland/Binds.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace platform::hyprland {

namespace {

using compositor::isSet;
using compositor::Json;
using compositor::nameOf;
using compositor::numberOf;

/// The word in front of our numbers.
constexpr std::string_view mark = "tessel:";

/// A modifier's bit of the X protocol, that of the protocols for hot keys, and its name in a configuration.
struct ModifierNames {
    std::uint32_t bit;
    std::uint32_t protocolBit;
    std::string_view name;
};

constexpr std::array modifierNames{
    ModifierNames{64, 8, "SUPER"},
    ModifierNames{4, 2, "CTRL"},
    ModifierNames{8, 4, "ALT"},
    ModifierNames{1, 1, "SHIFT"},
};

/// Caps Lock and Num Lock are not held down.
constexpr std::uint32_t locks = 2 | 16;

std::string lowered(std::string text) {
    std::ranges::transform(text, text.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return text;
}

std::optional<std::uint64_t> wholeNumber(std::string_view digits) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(number) : std::nullopt;
}

std::string joinedModifiers(std::uint32_t modifiers, std::string_view separator) {
    std::string names;
    for (const ModifierNames& each : modifierNames) {
        if ((modifiers & each.bit) != 0) {
            names += (names.empty() ? "" : std::string(separator)) + std::string(each.name);
        }
    }
    return names;
}

/// Whether a text such as "CTRL+ALT+Left" means this combination.
bool isTrigger(std::string_view text, const Combination& combination) {
    std::uint32_t modifiers = 0;
    for (std::size_t end = text.find('+'); end != std::string_view::npos; end = text.find('+')) {
        const auto* named = std::ranges::find(modifierNames, text.substr(0, end), &ModifierNames::name);
        if (named == modifierNames.end()) {
            return false;
        }
        modifiers |= named->bit;
        text.remove_prefix(end + 1);
    }
    return modifiers == combination.modifiers && combination.key->hasSymbol(lowered(std::string(text)));
}

std::string luaVariable(std::uint64_t number) {
    return "tessel" + std::to_string(number);
}

std::string luaRemoval(std::uint64_t number) {
    const std::string name = luaVariable(number);
    return "if " + name + " then " + name + ":remove() " + name + "=nil end";
}

/// A binding's effect; empty if it is not told. Up to 0.56 a function of Lua is only "__lua" and a number. From 0.57 on
/// a dispatcher of Lua is "HL.Dispatcher(NAME)" and a number, which says nothing (measured).
std::string purposeIn(std::string_view dispatcher, const std::string& argument) {
    constexpr std::string_view opening = "HL.Dispatcher(";
    if (dispatcher == "__lua") {
        return "";
    }
    if (dispatcher.starts_with(opening) && dispatcher.ends_with(')')) {
        return std::string(dispatcher.substr(opening.size(), dispatcher.size() - opening.size() - 1));
    }
    return std::string(dispatcher) + (argument.empty() ? "" : " " + argument);
}

std::optional<Bind> bindOf(const Json& object) {
    const auto modifiers = numberOf(object, "modmask");
    const auto keyCode = numberOf(object, "keycode");
    if (!modifiers || !std::in_range<std::uint32_t>(*modifiers) || isSet(object, "mouse")) {
        return std::nullopt;
    }
    Bind bind{.modifiers = static_cast<std::uint32_t>(*modifiers) & ~locks,
              .keyCode = keyCode && std::in_range<std::uint32_t>(*keyCode) ? static_cast<std::uint32_t>(*keyCode) : 0,
              .key = lowered(nameOf(object, "key")),
              .submap = nameOf(object, "submap"),
              .purpose = nameOf(object, "description")};
    constexpr std::string_view codePrefix = "code:";
    if (bind.keyCode == 0 && bind.key.starts_with(codePrefix)) {
        bind.keyCode =
            static_cast<std::uint32_t>(wholeNumber(std::string_view(bind.key).substr(codePrefix.size())).value_or(0));
    }
    const std::string dispatcher = nameOf(object, "dispatcher");
    const std::string argument = nameOf(object, "arg");
    bind.ours = pressedNumber(bind.purpose).value_or(dispatcher == "event" ? pressedNumber(argument).value_or(0) : 0);
    if (bind.purpose.empty()) {
        bind.purpose = purposeIn(dispatcher, argument);
    }
    return bind;
}

} // namespace

std::optional<Combination> Combination::of(std::uint32_t keyCode, std::uint32_t modifiers) {
    const corvid::Key* key = corvid::keyOf(keyCode);
    return key != nullptr ? std::optional(Combination{.modifiers = corvid::coreModifiers(modifiers), .key = key})
                          : std::nullopt;
}

std::uint32_t Combination::protocolModifiers() const {
    std::uint32_t bits = 0;
    for (const ModifierNames& each : modifierNames) {
        bits |= (modifiers & each.bit) != 0 ? each.protocolBit : 0;
    }
    return bits;
}

std::optional<std::uint32_t> Combination::keysym() const {
    // The numbers of Latin letters and digits are those of their characters (xkbcommon-keysyms.h).
    if (key->symbol.size() == 1) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(key->symbol.front()));
    }
    constexpr std::array<std::pair<std::string_view, std::uint32_t>, 4> arrows{
        {{"left", 0xff51}, {"up", 0xff52}, {"right", 0xff53}, {"down", 0xff54}}};
    const auto* found = std::ranges::find(arrows, key->symbol, &std::pair<std::string_view, std::uint32_t>::first);
    return found == arrows.end() ? std::nullopt : std::optional(found->second);
}

bool Bind::isOf(const Combination& combination) const {
    const bool isKey = keyCode != 0 ? keyCode == combination.key->keymapCode() : combination.key->hasSymbol(key);
    return isKey && modifiers == combination.modifiers;
}

std::optional<std::vector<Bind>> readBinds(const Json& answer) {
    if (!answer.is_array()) {
        return std::nullopt;
    }
    std::vector<Bind> binds;
    for (const Json& object : answer) {
        if (auto bind = bindOf(object)) {
            binds.push_back(*std::move(bind));
        }
    }
    return binds;
}

std::optional<ShortcutHolder> readHolder(const Json& answer, const Combination& combination) {
    if (!answer.is_array()) {
        return std::nullopt;
    }
    for (const Json& object : answer) {
        const std::string program = nameOf(object, "app_id");
        if (!program.empty() && isTrigger(nameOf(object, "trigger"), combination)) {
            return ShortcutHolder{.heldBy = program, .purpose = nameOf(object, "description")};
        }
    }
    return std::nullopt;
}

std::string bindingRequest(Language language, const Combination& combination, std::uint64_t number) {
    const std::string code = "code:" + std::to_string(combination.key->keymapCode());
    const std::string event = std::string(mark) + std::to_string(number);
    if (language == Language::lua) {
        const std::string modifiers = joinedModifiers(combination.modifiers, " + ");
        // One that a killed program has left has the same name.
        return "eval " + luaRemoval(number) + " " + luaVariable(number) + "=hl.bind(\"" + modifiers +
               (modifiers.empty() ? "" : " + ") + code + "\",hl.dsp.event(\"" + event + "\"),{description=\"" + event +
               "\"})";
    }
    return "keyword bind " + joinedModifiers(combination.modifiers, " ") + "," + code + ",event," + event;
}

std::string unbindingRequest(Language language, const Combination& combination, std::uint64_t number) {
    return language == Language::lua ? "eval " + luaRemoval(number)
                                     : "keyword unbind " + joinedModifiers(combination.modifiers, " ") +
                                           ",code:" + std::to_string(combination.key->keymapCode());
}

std::optional<std::uint64_t> pressedNumber(std::string_view data) {
    return data.starts_with(mark) ? wholeNumber(data.substr(mark.size())) : std::nullopt;
}

} // namespace platform::hyprland
