#include "Platform/X11/KeyPositions.h"

#include <algorithm>
#include <array>

namespace platform::x11 {

namespace {

struct KeyPosition {
    std::uint32_t carbonKeyCode;
    std::string_view xkbName;
};

// Rows of the keyboard from top to bottom, each from left to right as on an American keyboard.
constexpr std::array positions{
    KeyPosition{53, "ESC"},   KeyPosition{122, "FK01"}, KeyPosition{120, "FK02"}, KeyPosition{99, "FK03"},
    KeyPosition{118, "FK04"}, KeyPosition{96, "FK05"},  KeyPosition{97, "FK06"},  KeyPosition{98, "FK07"},
    KeyPosition{100, "FK08"}, KeyPosition{101, "FK09"}, KeyPosition{109, "FK10"}, KeyPosition{103, "FK11"},
    KeyPosition{111, "FK12"},

    KeyPosition{50, "TLDE"},  KeyPosition{18, "AE01"},  KeyPosition{19, "AE02"},  KeyPosition{20, "AE03"},
    KeyPosition{21, "AE04"},  KeyPosition{23, "AE05"},  KeyPosition{22, "AE06"},  KeyPosition{26, "AE07"},
    KeyPosition{28, "AE08"},  KeyPosition{25, "AE09"},  KeyPosition{29, "AE10"},  KeyPosition{27, "AE11"},
    KeyPosition{24, "AE12"},  KeyPosition{51, "BKSP"},

    KeyPosition{48, "TAB"},   KeyPosition{12, "AD01"},  KeyPosition{13, "AD02"},  KeyPosition{14, "AD03"},
    KeyPosition{15, "AD04"},  KeyPosition{17, "AD05"},  KeyPosition{16, "AD06"},  KeyPosition{32, "AD07"},
    KeyPosition{34, "AD08"},  KeyPosition{31, "AD09"},  KeyPosition{35, "AD10"},  KeyPosition{33, "AD11"},
    KeyPosition{30, "AD12"},  KeyPosition{42, "BKSL"},

    KeyPosition{0, "AC01"},   KeyPosition{1, "AC02"},   KeyPosition{2, "AC03"},   KeyPosition{3, "AC04"},
    KeyPosition{5, "AC05"},   KeyPosition{4, "AC06"},   KeyPosition{38, "AC07"},  KeyPosition{40, "AC08"},
    KeyPosition{37, "AC09"},  KeyPosition{41, "AC10"},  KeyPosition{39, "AC11"},  KeyPosition{36, "RTRN"},

    KeyPosition{6, "AB01"},   KeyPosition{7, "AB02"},   KeyPosition{8, "AB03"},   KeyPosition{9, "AB04"},
    KeyPosition{11, "AB05"},  KeyPosition{45, "AB06"},  KeyPosition{46, "AB07"},  KeyPosition{43, "AB08"},
    KeyPosition{47, "AB09"},  KeyPosition{44, "AB10"},

    KeyPosition{49, "SPCE"},  KeyPosition{123, "LEFT"}, KeyPosition{124, "RGHT"}, KeyPosition{125, "DOWN"},
    KeyPosition{126, "UP"},
};

} // namespace

std::optional<std::string_view> xkbKeyName(std::uint32_t carbonKeyCode) {
    const auto* found = std::ranges::find(positions, carbonKeyCode, &KeyPosition::carbonKeyCode);
    return found == positions.end() ? std::nullopt : std::optional(found->xkbName);
}

} // namespace platform::x11
