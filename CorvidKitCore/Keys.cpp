#include "CorvidKitCore/Keys.h"

#include <algorithm>

namespace corvid {

namespace {

constexpr auto keys = std::to_array<Key>({
    {53, "⎋", 1, "ESC", "escape", "", 0x01000000},
    {122, "F1", 59, "FK01", "f1", "", 0x01000030},
    {120, "F2", 60, "FK02", "f2", "", 0x01000031},
    {99, "F3", 61, "FK03", "f3", "", 0x01000032},
    {118, "F4", 62, "FK04", "f4", "", 0x01000033},
    {96, "F5", 63, "FK05", "f5", "", 0x01000034},
    {97, "F6", 64, "FK06", "f6", "", 0x01000035},
    {98, "F7", 65, "FK07", "f7", "", 0x01000036},
    {100, "F8", 66, "FK08", "f8", "", 0x01000037},
    {101, "F9", 67, "FK09", "f9", "", 0x01000038},
    {109, "F10", 68, "FK10", "f10", "", 0x01000039},
    {103, "F11", 87, "FK11", "f11", "", 0x0100003a},
    {111, "F12", 88, "FK12", "f12", "", 0x0100003b},

    {50, "`", 41, "TLDE", "grave", "asciitilde", '`'},
    {18, "1", 2, "AE01", "1", "exclam", '1'},
    {19, "2", 3, "AE02", "2", "at", '2'},
    {20, "3", 4, "AE03", "3", "numbersign", '3'},
    {21, "4", 5, "AE04", "4", "dollar", '4'},
    {23, "5", 6, "AE05", "5", "percent", '5'},
    {22, "6", 7, "AE06", "6", "asciicircum", '6'},
    {26, "7", 8, "AE07", "7", "ampersand", '7'},
    {28, "8", 9, "AE08", "8", "asterisk", '8'},
    {25, "9", 10, "AE09", "9", "parenleft", '9'},
    {29, "0", 11, "AE10", "0", "parenright", '0'},
    {27, "-", 12, "AE11", "minus", "underscore", '-'},
    {24, "=", 13, "AE12", "equal", "plus", '='},
    {51, "⌫", 14, "BKSP", "backspace", "", 0x01000003},

    {48, "⇥", 15, "TAB", "tab", "iso_left_tab", 0x01000001},
    {12, "Q", 16, "AD01", "q", "", 'Q'},
    {13, "W", 17, "AD02", "w", "", 'W'},
    {14, "E", 18, "AD03", "e", "", 'E'},
    {15, "R", 19, "AD04", "r", "", 'R'},
    {17, "T", 20, "AD05", "t", "", 'T'},
    {16, "Y", 21, "AD06", "y", "", 'Y'},
    {32, "U", 22, "AD07", "u", "", 'U'},
    {34, "I", 23, "AD08", "i", "", 'I'},
    {31, "O", 24, "AD09", "o", "", 'O'},
    {35, "P", 25, "AD10", "p", "", 'P'},
    {33, "[", 26, "AD11", "bracketleft", "braceleft", '['},
    {30, "]", 27, "AD12", "bracketright", "braceright", ']'},
    {42, "\\", 43, "BKSL", "backslash", "bar", '\\'},

    {0, "A", 30, "AC01", "a", "", 'A'},
    {1, "S", 31, "AC02", "s", "", 'S'},
    {2, "D", 32, "AC03", "d", "", 'D'},
    {3, "F", 33, "AC04", "f", "", 'F'},
    {5, "G", 34, "AC05", "g", "", 'G'},
    {4, "H", 35, "AC06", "h", "", 'H'},
    {38, "J", 36, "AC07", "j", "", 'J'},
    {40, "K", 37, "AC08", "k", "", 'K'},
    {37, "L", 38, "AC09", "l", "", 'L'},
    {41, ";", 39, "AC10", "semicolon", "colon", ';'},
    {39, "'", 40, "AC11", "apostrophe", "quotedbl", '\''},
    {36, "↩", 28, "RTRN", "return", "", 0x01000004},

    {6, "Z", 44, "AB01", "z", "", 'Z'},
    {7, "X", 45, "AB02", "x", "", 'X'},
    {8, "C", 46, "AB03", "c", "", 'C'},
    {9, "V", 47, "AB04", "v", "", 'V'},
    {11, "B", 48, "AB05", "b", "", 'B'},
    {45, "N", 49, "AB06", "n", "", 'N'},
    {46, "M", 50, "AB07", "m", "", 'M'},
    {43, ",", 51, "AB08", "comma", "less", ','},
    {47, ".", 52, "AB09", "period", "greater", '.'},
    {44, "/", 53, "AB10", "slash", "question", '/'},

    {49, "Space", 57, "SPCE", "space", "", ' '},
    {123, "←", 105, "LEFT", "left", "", 0x01000012},
    {124, "→", 106, "RGHT", "right", "", 0x01000014},
    {125, "↓", 108, "DOWN", "down", "", 0x01000015},
    {126, "↑", 103, "UP", "up", "", 0x01000013},
});

static_assert(
    [] {
        auto codes = keys;
        std::ranges::sort(codes, {}, &Key::code);
        return std::ranges::adjacent_find(codes, {}, &Key::code) == codes.end();
    }(),
    "a key code is listed twice");

} // namespace

std::span<const Key> allKeys() {
    return keys;
}

const Key* keyOf(std::uint32_t code) {
    const auto* found = std::ranges::find(keys, code, &Key::code);
    return found == keys.end() ? nullptr : found;
}

} // namespace corvid
