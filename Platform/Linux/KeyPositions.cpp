#include "Platform/Linux/KeyPositions.h"

#include <algorithm>
#include <array>

namespace platform::linux {

namespace {

struct KeyPosition {
    std::uint32_t carbonKeyCode;
    std::string_view xkbName;
    std::uint32_t kernelKeyCode;
};

// Rows of the keyboard from top to bottom, each from left to right as on an American keyboard.
constexpr std::array positions{
    KeyPosition{53, "ESC", 1},     KeyPosition{122, "FK01", 59},  KeyPosition{120, "FK02", 60},
    KeyPosition{99, "FK03", 61},   KeyPosition{118, "FK04", 62},  KeyPosition{96, "FK05", 63},
    KeyPosition{97, "FK06", 64},   KeyPosition{98, "FK07", 65},   KeyPosition{100, "FK08", 66},
    KeyPosition{101, "FK09", 67},  KeyPosition{109, "FK10", 68},  KeyPosition{103, "FK11", 87},
    KeyPosition{111, "FK12", 88},

    KeyPosition{50, "TLDE", 41},   KeyPosition{18, "AE01", 2},    KeyPosition{19, "AE02", 3},
    KeyPosition{20, "AE03", 4},    KeyPosition{21, "AE04", 5},    KeyPosition{23, "AE05", 6},
    KeyPosition{22, "AE06", 7},    KeyPosition{26, "AE07", 8},    KeyPosition{28, "AE08", 9},
    KeyPosition{25, "AE09", 10},   KeyPosition{29, "AE10", 11},   KeyPosition{27, "AE11", 12},
    KeyPosition{24, "AE12", 13},   KeyPosition{51, "BKSP", 14},

    KeyPosition{48, "TAB", 15},    KeyPosition{12, "AD01", 16},   KeyPosition{13, "AD02", 17},
    KeyPosition{14, "AD03", 18},   KeyPosition{15, "AD04", 19},   KeyPosition{17, "AD05", 20},
    KeyPosition{16, "AD06", 21},   KeyPosition{32, "AD07", 22},   KeyPosition{34, "AD08", 23},
    KeyPosition{31, "AD09", 24},   KeyPosition{35, "AD10", 25},   KeyPosition{33, "AD11", 26},
    KeyPosition{30, "AD12", 27},   KeyPosition{42, "BKSL", 43},

    KeyPosition{0, "AC01", 30},    KeyPosition{1, "AC02", 31},    KeyPosition{2, "AC03", 32},
    KeyPosition{3, "AC04", 33},    KeyPosition{5, "AC05", 34},    KeyPosition{4, "AC06", 35},
    KeyPosition{38, "AC07", 36},   KeyPosition{40, "AC08", 37},   KeyPosition{37, "AC09", 38},
    KeyPosition{41, "AC10", 39},   KeyPosition{39, "AC11", 40},   KeyPosition{36, "RTRN", 28},

    KeyPosition{6, "AB01", 44},    KeyPosition{7, "AB02", 45},    KeyPosition{8, "AB03", 46},
    KeyPosition{9, "AB04", 47},    KeyPosition{11, "AB05", 48},   KeyPosition{45, "AB06", 49},
    KeyPosition{46, "AB07", 50},   KeyPosition{43, "AB08", 51},   KeyPosition{47, "AB09", 52},
    KeyPosition{44, "AB10", 53},

    KeyPosition{49, "SPCE", 57},   KeyPosition{123, "LEFT", 105}, KeyPosition{124, "RGHT", 106},
    KeyPosition{125, "DOWN", 108}, KeyPosition{126, "UP", 103},
};

} // namespace

std::optional<std::string_view> xkbKeyName(std::uint32_t carbonKeyCode) {
    const auto* found = std::ranges::find(positions, carbonKeyCode, &KeyPosition::carbonKeyCode);
    return found == positions.end() ? std::nullopt : std::optional(found->xkbName);
}

std::optional<std::uint32_t> kernelKeyCode(std::uint32_t carbonKeyCode) {
    const auto* found = std::ranges::find(positions, carbonKeyCode, &KeyPosition::carbonKeyCode);
    return found == positions.end() ? std::nullopt : std::optional(found->kernelKeyCode);
}

} // namespace platform::linux
