#include "Platform/Linux/Text/SearchKey.h"

#include "Platform/Linux/Applications/GLibMemory.h"
#include "Platform/Linux/Text/ValidText.h"

namespace platform::linux {

namespace {

/// Whether people leave the mark out: the marks above, below and through letters (combining class 200 and up), and the
/// points of Hebrew and Arabic (10 to 35). The vowel signs of other scripts are as good as letters.
bool isLeftOut(gunichar character) {
    constexpr int firstPoint = 10;
    constexpr int lastPoint = 35;
    constexpr int firstAttached = 200;
    const int combiningClass = g_unichar_combining_class(character);
    return (combiningClass >= firstPoint && combiningClass <= lastPoint) || combiningClass >= firstAttached;
}

/// The letters, in lower case, that people type another for and that Unicode does not take apart.
std::string_view plainLetters(gunichar character) {
    switch (character) {
    case U'æ':
        return "ae";
    case U'đ':
        return "d";
    case U'ħ':
        return "h";
    case U'ı':
        return "i";
    case U'ł':
        return "l";
    case U'ø':
        return "o";
    case U'œ':
        return "oe";
    default:
        return {};
    }
}

} // namespace

std::string searchKey(std::string_view text) {
    const GLibText folded(g_utf8_casefold(validText(text).c_str(), -1));
    const GLibText decomposed(g_utf8_normalize(folded.get(), -1, G_NORMALIZE_ALL));
    std::string key;
    for (const char* place = decomposed.get(); *place != '\0';) {
        const char* next = g_utf8_next_char(place);
        const gunichar character = g_utf8_get_char(place);
        if (const std::string_view plain = plainLetters(character); !plain.empty()) {
            key += plain;
        } else if (!isLeftOut(character)) {
            key.append(place, next);
        }
        place = next;
    }
    return key;
}

} // namespace platform::linux
