#include "Platform/Linux/KeySymbols.h"

#include "Platform/Linux/KeyPositions.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace platform::linux {

namespace {

struct KeyNames {
    std::string_view xkbName;
    std::string_view plain;
    std::string_view shifted;
};

// xkeyboard-config, symbols/us. Letters are their own names.
constexpr std::array symbolTable{
    KeyNames{"ESC", "escape", ""},
    KeyNames{"TLDE", "grave", "asciitilde"},
    KeyNames{"AE01", "1", "exclam"},
    KeyNames{"AE02", "2", "at"},
    KeyNames{"AE03", "3", "numbersign"},
    KeyNames{"AE04", "4", "dollar"},
    KeyNames{"AE05", "5", "percent"},
    KeyNames{"AE06", "6", "asciicircum"},
    KeyNames{"AE07", "7", "ampersand"},
    KeyNames{"AE08", "8", "asterisk"},
    KeyNames{"AE09", "9", "parenleft"},
    KeyNames{"AE10", "0", "parenright"},
    KeyNames{"AE11", "minus", "underscore"},
    KeyNames{"AE12", "equal", "plus"},
    KeyNames{"BKSP", "backspace", ""},
    KeyNames{"TAB", "tab", "iso_left_tab"},
    KeyNames{"AD11", "bracketleft", "braceleft"},
    KeyNames{"AD12", "bracketright", "braceright"},
    KeyNames{"BKSL", "backslash", "bar"},
    KeyNames{"AC10", "semicolon", "colon"},
    KeyNames{"AC11", "apostrophe", "quotedbl"},
    KeyNames{"RTRN", "return", ""},
    KeyNames{"AB08", "comma", "less"},
    KeyNames{"AB09", "period", "greater"},
    KeyNames{"AB10", "slash", "question"},
    KeyNames{"SPCE", "space", ""},
    KeyNames{"LEFT", "left", ""},
    KeyNames{"RGHT", "right", ""},
    KeyNames{"UP", "up", ""},
    KeyNames{"DOWN", "down", ""},
    KeyNames{"FK01", "f1", ""},
    KeyNames{"FK02", "f2", ""},
    KeyNames{"FK03", "f3", ""},
    KeyNames{"FK04", "f4", ""},
    KeyNames{"FK05", "f5", ""},
    KeyNames{"FK06", "f6", ""},
    KeyNames{"FK07", "f7", ""},
    KeyNames{"FK08", "f8", ""},
    KeyNames{"FK09", "f9", ""},
    KeyNames{"FK10", "f10", ""},
    KeyNames{"FK11", "f11", ""},
    KeyNames{"FK12", "f12", ""},
};

struct LetterRow {
    std::string_view prefix;
    std::string_view letters;
};

constexpr std::array letterRows{LetterRow{"AD", "qwertyuiop"}, LetterRow{"AC", "asdfghjkl"},
                                LetterRow{"AB", "zxcvbnm"}};

} // namespace

std::vector<std::string_view> keySymbols(std::uint32_t carbonKeyCode) {
    const std::string_view xkbName = xkbKeyName(carbonKeyCode).value_or("");
    const auto* found = std::ranges::find(symbolTable, xkbName, &KeyNames::xkbName);
    if (found != symbolTable.end()) {
        return found->shifted.empty() ? std::vector{found->plain} : std::vector{found->plain, found->shifted};
    }
    for (const LetterRow& row : letterRows) {
        // Keys count from "01".
        if (xkbName.size() == 4 && xkbName.starts_with(row.prefix)) {
            const auto place = static_cast<std::size_t>((xkbName[2] - '0') * 10 + xkbName[3] - '1');
            if (place < row.letters.size()) {
                return {row.letters.substr(place, 1)};
            }
        }
    }
    return {};
}

} // namespace platform::linux
