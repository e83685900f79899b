#include "Platform/Linux/Text/Languages.h"

#include "Platform/Linux/Files/BaseFolders.h"

namespace platform::linux {

std::vector<std::string> userLanguages(const LanguageVariables& variables) {
    std::vector<std::string> languages = partsBetweenColons(variables.language.value_or(""));
    for (const auto& locale : {variables.all, variables.messages, variables.lang}) {
        // An empty variable is as good as none (POSIX.1-2017, 8.2, "Internationalization Variables").
        if (locale && !locale->empty()) {
            languages.push_back(*locale);
            break;
        }
    }
    return languages;
}

std::vector<std::string> userLanguages() {
    return userLanguages({.language = environmentVariable("LANGUAGE"),
                          .all = environmentVariable("LC_ALL"),
                          .messages = environmentVariable("LC_MESSAGES"),
                          .lang = environmentVariable("LANG")});
}

} // namespace platform::linux
