#include "Tessel/Wiring/Locale.h"

#include <clocale>
#include <string_view>

namespace tessel {

void enterLocale() {
    for (const int category : {LC_CTYPE, LC_COLLATE, LC_MESSAGES}) {
        const char* entered = std::setlocale(category, "");
        // In the locale "C" texts are never translated, whatever LANGUAGE says, and hold nothing but ASCII.
        if (entered == nullptr || entered == std::string_view("C") || entered == std::string_view("POSIX")) {
            std::setlocale(category, "C.UTF-8");
        }
    }
}

} // namespace tessel
