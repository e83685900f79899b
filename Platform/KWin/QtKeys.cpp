#include "Platform/KWin/QtKeys.h"

#include <algorithm>
#include <array>

namespace platform::kwin {

namespace {

struct Key {
    std::uint32_t carbonKeyCode;
    /// A character, or a number of `Qt::Key`.
    std::int32_t qtKey;
};

// Rows of the keyboard from top to bottom, each from left to right as on an American keyboard.
constexpr std::array keys{
    Key{53, 0x01000000},  Key{122, 0x01000030}, Key{120, 0x01000031}, Key{99, 0x01000032},  Key{118, 0x01000033},
    Key{96, 0x01000034},  Key{97, 0x01000035},  Key{98, 0x01000036},  Key{100, 0x01000037}, Key{101, 0x01000038},
    Key{109, 0x01000039}, Key{103, 0x0100003a}, Key{111, 0x0100003b},

    Key{50, '`'},         Key{18, '1'},         Key{19, '2'},         Key{20, '3'},         Key{21, '4'},
    Key{23, '5'},         Key{22, '6'},         Key{26, '7'},         Key{28, '8'},         Key{25, '9'},
    Key{29, '0'},         Key{27, '-'},         Key{24, '='},         Key{51, 0x01000003},

    Key{48, 0x01000001},  Key{12, 'Q'},         Key{13, 'W'},         Key{14, 'E'},         Key{15, 'R'},
    Key{17, 'T'},         Key{16, 'Y'},         Key{32, 'U'},         Key{34, 'I'},         Key{31, 'O'},
    Key{35, 'P'},         Key{33, '['},         Key{30, ']'},         Key{42, '\\'},

    Key{0, 'A'},          Key{1, 'S'},          Key{2, 'D'},          Key{3, 'F'},          Key{5, 'G'},
    Key{4, 'H'},          Key{38, 'J'},         Key{40, 'K'},         Key{37, 'L'},         Key{41, ';'},
    Key{39, '\''},        Key{36, 0x01000004},

    Key{6, 'Z'},          Key{7, 'X'},          Key{8, 'C'},          Key{9, 'V'},          Key{11, 'B'},
    Key{45, 'N'},         Key{46, 'M'},         Key{43, ','},         Key{47, '.'},         Key{44, '/'},

    Key{49, ' '},         Key{123, 0x01000012}, Key{124, 0x01000014}, Key{125, 0x01000015}, Key{126, 0x01000013},
};

struct Modifier {
    std::uint32_t carbon;
    std::int32_t qt;
};

constexpr std::array modifiers{
    Modifier{0x100, 0x10000000},  // command, Qt::MetaModifier
    Modifier{0x200, 0x02000000},  // shift
    Modifier{0x800, 0x08000000},  // option, Qt::AltModifier
    Modifier{0x1000, 0x04000000}, // control
};

} // namespace

std::optional<std::int32_t> qtKey(std::uint32_t carbonKeyCode, std::uint32_t carbonModifiers) {
    const auto* found = std::ranges::find(keys, carbonKeyCode, &Key::carbonKeyCode);
    if (found == keys.end()) {
        return std::nullopt;
    }
    std::int32_t combined = found->qtKey;
    for (const Modifier& modifier : modifiers) {
        if ((carbonModifiers & modifier.carbon) != 0) {
            combined |= modifier.qt;
            carbonModifiers &= ~modifier.carbon;
        }
    }
    return carbonModifiers == 0 ? std::optional(combined) : std::nullopt;
}

} // namespace platform::kwin
