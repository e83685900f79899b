#include "Platform/GnomeShell/Accelerator.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace platform::gnomeshell {

namespace {

struct Key {
    std::uint32_t carbon;
    std::uint32_t kernel;
};

// Rows of the keyboard from top to bottom, each from left to right as on an American keyboard.
constexpr std::array keys{
    Key{53, KEY_ESC},        Key{122, KEY_F1},       Key{120, KEY_F2},        Key{99, KEY_F3},
    Key{118, KEY_F4},        Key{96, KEY_F5},        Key{97, KEY_F6},         Key{98, KEY_F7},
    Key{100, KEY_F8},        Key{101, KEY_F9},       Key{109, KEY_F10},       Key{103, KEY_F11},
    Key{111, KEY_F12},

    Key{50, KEY_GRAVE},      Key{18, KEY_1},         Key{19, KEY_2},          Key{20, KEY_3},
    Key{21, KEY_4},          Key{23, KEY_5},         Key{22, KEY_6},          Key{26, KEY_7},
    Key{28, KEY_8},          Key{25, KEY_9},         Key{29, KEY_0},          Key{27, KEY_MINUS},
    Key{24, KEY_EQUAL},      Key{51, KEY_BACKSPACE},

    Key{48, KEY_TAB},        Key{12, KEY_Q},         Key{13, KEY_W},          Key{14, KEY_E},
    Key{15, KEY_R},          Key{17, KEY_T},         Key{16, KEY_Y},          Key{32, KEY_U},
    Key{34, KEY_I},          Key{31, KEY_O},         Key{35, KEY_P},          Key{33, KEY_LEFTBRACE},
    Key{30, KEY_RIGHTBRACE}, Key{42, KEY_BACKSLASH},

    Key{0, KEY_A},           Key{1, KEY_S},          Key{2, KEY_D},           Key{3, KEY_F},
    Key{5, KEY_G},           Key{4, KEY_H},          Key{38, KEY_J},          Key{40, KEY_K},
    Key{37, KEY_L},          Key{41, KEY_SEMICOLON}, Key{39, KEY_APOSTROPHE}, Key{36, KEY_ENTER},

    Key{6, KEY_Z},           Key{7, KEY_X},          Key{8, KEY_C},           Key{9, KEY_V},
    Key{11, KEY_B},          Key{45, KEY_N},         Key{46, KEY_M},          Key{43, KEY_COMMA},
    Key{47, KEY_DOT},        Key{44, KEY_SLASH},

    Key{49, KEY_SPACE},      Key{123, KEY_LEFT},     Key{124, KEY_RIGHT},     Key{125, KEY_DOWN},
    Key{126, KEY_UP},
};

struct Modifier {
    std::uint32_t mask;
    const char* name;
};

constexpr std::array modifierNames{Modifier{0x1000, "<Control>"}, Modifier{0x800, "<Alt>"}, Modifier{0x200, "<Shift>"},
                                   Modifier{0x100, "<Super>"}};

} // namespace

std::optional<std::string> accelerator(std::uint32_t keyCode, std::uint32_t modifiers) {
    const auto* key = std::ranges::find(keys, keyCode, &Key::carbon);
    if (key == keys.end()) {
        return std::nullopt;
    }
    std::string text;
    std::uint32_t known = 0;
    for (const auto& [mask, name] : modifierNames) {
        known |= mask;
        text += (modifiers & mask) != 0 ? name : "";
    }
    if ((modifiers & ~known) != 0) {
        return std::nullopt;
    }
    // XKB numbers keys as the X protocol does, which leaves out the first eight numbers.
    constexpr std::uint32_t firstKeyOfX = 8;
    std::array<char, 8> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), key->kernel + firstKeyOfX, 16);
    return error == std::errc() ? std::optional(text + "0x" + std::string(digits.data(), end)) : std::nullopt;
}

} // namespace platform::gnomeshell
