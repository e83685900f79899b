#include "Tessel/Wiring/Locale.h"

#include <clocale>
#include <string_view>

namespace tessel {

void enterLocale() {
    for (const int category : {LC_CTYPE, LC_COLLATE, LC_MESSAGES}) {
        const char* entered = std::setlocale(category, "");
        // The locale "C" never translates texts, with any LANGUAGE, and supports only ASCII.
        if (entered == nullptr || entered == std::string_view("C") || entered == std::string_view("POSIX")) {
            std::setlocale(category, "C.UTF-8");
        }
    }
}

} // namespace tessel
