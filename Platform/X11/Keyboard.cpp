#include "Platform/X11/Keyboard.h"

#include "CorvidKitCore/Keys.h"
#include "Platform/X11/XkbProtocol.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace platform::x11 {

namespace {

// Keysyms of the keys whose modifiers are looked for (X11 protocol, appendix A).
constexpr xcb_keysym_t scrollLockSymbol = 0xff14;
constexpr xcb_keysym_t numLockSymbol = 0xff7f;
constexpr xcb_keysym_t altLeftSymbol = 0xffe9;
constexpr xcb_keysym_t superLeftSymbol = 0xffeb;

constexpr std::uint16_t namesWanted = XCB_XKB_NAME_DETAIL_KEY_NAMES | XCB_XKB_NAME_DETAIL_KEY_ALIASES;

constexpr std::size_t nameLength = KeyName().size();

KeyName keyName(std::string_view characters) {
    KeyName name{};
    std::ranges::copy(characters.substr(0, nameLength), name.begin());
    return name;
}

std::vector<KeyPosition> keyPositions(const xcb_xkb_get_names_reply_t& names) {
    xcb_xkb_get_names_value_list_t list{};
    xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(&names), names.nTypes, names.indicators,
                                        names.virtualMods, names.groupNames, names.nKeys, names.nKeyAliases,
                                        names.nRadioGroups, names.which, &list);
    std::vector<KeyPosition> positions;
    positions.reserve(std::size_t{names.nKeys} + names.nKeyAliases);
    if ((names.which & XCB_XKB_NAME_DETAIL_KEY_NAMES) != 0) {
        for (unsigned index = 0; index < names.nKeys; ++index) {
            const KeyName name = keyName({list.keyNames[index].name, nameLength});
            if (name != KeyName()) {
                positions.push_back({name, static_cast<xcb_keycode_t>(names.firstKey + index)});
            }
        }
    }
    if ((names.which & XCB_XKB_NAME_DETAIL_KEY_ALIASES) != 0) {
        // Room was made for all, so the real keys stay where they are.
        const std::span<const KeyPosition> realKeys(positions);
        for (unsigned index = 0; index < names.nKeyAliases; ++index) {
            const KeyName name = keyName({list.keyAliases[index].real, nameLength});
            const auto real = std::ranges::find(realKeys, name, &KeyPosition::name);
            if (real != realKeys.end()) {
                positions.push_back({keyName({list.keyAliases[index].alias, nameLength}), real->keyCode});
            }
        }
    }
    // Of keys of the same name the one with the lowest code counts.
    std::ranges::sort(positions);
    return positions;
}

/// The symbols of each key and the keys of each modifier, as the core protocol gives them.
class ModifierKeys {
public:
    ModifierKeys(const xcb_get_keyboard_mapping_reply_t& symbols, const xcb_get_modifier_mapping_reply_t& modifiers,
                 xcb_keycode_t firstKeyCode)
        : symbols(symbols)
        , modifiers(modifiers)
        , firstKeyCode(firstKeyCode) {}

    /// The bits of the modifiers that a key with this symbol sets.
    [[nodiscard]] std::uint16_t maskOf(xcb_keysym_t symbol) const {
        constexpr unsigned modifierCount = 8;
        const xcb_keycode_t* keyCodes = xcb_get_modifier_mapping_keycodes(&modifiers);
        unsigned mask = 0;
        for (unsigned modifier = 0; modifier < modifierCount; ++modifier) {
            for (unsigned slot = 0; slot < modifiers.keycodes_per_modifier; ++slot) {
                if (hasSymbol(keyCodes[modifier * modifiers.keycodes_per_modifier + slot], symbol)) {
                    mask |= 1U << modifier;
                }
            }
        }
        return static_cast<std::uint16_t>(mask);
    }

private:
    [[nodiscard]] bool hasSymbol(xcb_keycode_t keyCode, xcb_keysym_t symbol) const {
        const auto available = static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(&symbols));
        const std::size_t perKey = symbols.keysyms_per_keycode;
        if (keyCode < firstKeyCode || (keyCode - firstKeyCode + std::size_t{1}) * perKey > available) {
            return false;
        }
        const xcb_keysym_t* first = xcb_get_keyboard_mapping_keysyms(&symbols) + (keyCode - firstKeyCode) * perKey;
        return std::find(first, first + perKey, symbol) != first + perKey;
    }

    const xcb_get_keyboard_mapping_reply_t& symbols;
    const xcb_get_modifier_mapping_reply_t& modifiers;
    xcb_keycode_t firstKeyCode;
};

std::uint16_t orElse(std::uint16_t mask, std::uint16_t usual) {
    return mask != 0 ? mask : usual;
}

} // namespace

std::expected<void, std::string> prepareKeyboard(Connection& connection) {
    constexpr const char* lacking = "it lacks the XKEYBOARD extension";
    xcb_connection_t* raw = connection.raw();
    if (!connection.has(xcb_xkb_id)) {
        return std::unexpected(lacking);
    }
    const auto useRequest = xcb_xkb_use_extension(raw, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    constexpr std::uint32_t repeatFlag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto flagsRequest = xcb_xkb_per_client_flags(raw, XCB_XKB_ID_USE_CORE_KBD, repeatFlag, repeatFlag, 0, 0, 0);
    constexpr std::uint16_t changes = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(raw, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, mapParts, mapParts, nullptr);

    const auto used = connection.reply<xcb_xkb_use_extension_reply_t>(useRequest);
    const auto flags = connection.reply<xcb_xkb_per_client_flags_reply_t>(flagsRequest);
    if (used && used->supported != 0 && flags && (flags->value & repeatFlag) != 0) {
        return {};
    }
    return std::unexpected(connection.isOutOfTime() ? "it does not answer in time" : lacking);
}

std::optional<KeyboardMap> readKeyboardMap(Connection& connection) {
    xcb_connection_t* raw = connection.raw();
    const xcb_setup_t& setup = *xcb_get_setup(raw);
    const auto keyCount = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const auto namesRequest = xcb_xkb_get_names(raw, XCB_XKB_ID_USE_CORE_KBD, namesWanted);
    const auto symbolsRequest = xcb_get_keyboard_mapping(raw, setup.min_keycode, keyCount);
    const auto modifiersRequest = xcb_get_modifier_mapping(raw);

    const auto names = connection.reply<xcb_xkb_get_names_reply_t>(namesRequest);
    const auto symbols = connection.reply<xcb_get_keyboard_mapping_reply_t>(symbolsRequest);
    const auto modifiers = connection.reply<xcb_get_modifier_mapping_reply_t>(modifiersRequest);
    if (!names || !symbols || !modifiers) {
        return std::nullopt;
    }
    const ModifierKeys keys(*symbols, *modifiers, setup.min_keycode);
    return KeyboardMap{
        .positions = keyPositions(*names),
        .lockModifiers =
            static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | keys.maskOf(numLockSymbol) | keys.maskOf(scrollLockSymbol)),
        .altModifier = orElse(keys.maskOf(altLeftSymbol), XCB_MOD_MASK_1),
        .superModifier = orElse(keys.maskOf(superLeftSymbol), XCB_MOD_MASK_4),
    };
}

std::optional<xcb_keycode_t> KeyboardMap::keyCode(std::string_view name) const {
    const auto found = std::ranges::lower_bound(positions, keyName(name), {}, &KeyPosition::name);
    return found == positions.end() || found->name != keyName(name) ? std::nullopt : std::optional(found->keyCode);
}

std::uint16_t coreModifiers(const KeyboardMap& map, std::uint32_t modifiers) {
    unsigned mask = 0;
    for (const corvid::Modifier& each : corvid::modifiersIn(modifiers)) {
        mask |= each.bit == corvid::Shortcut::command  ? map.superModifier
                : each.bit == corvid::Shortcut::option ? map.altModifier
                                                       : each.coreMask;
    }
    return static_cast<std::uint16_t>(mask);
}

std::vector<std::uint16_t> lockVariants(std::uint16_t lockModifiers) {
    // Counting through the subsets of a bit mask: the next one is (present - mask) & mask.
    std::vector<std::uint16_t> variants;
    unsigned variant = 0;
    do {
        variants.push_back(static_cast<std::uint16_t>(variant));
        variant = (variant - lockModifiers) & lockModifiers;
    } while (variant != 0);
    return variants;
}

} // namespace platform::x11
