#include "Platform/Linux/Languages.h"

#include "Platform/Linux/BaseFolders.h"

#include <cstdlib>

namespace platform::linux {

namespace {

std::optional<std::string> variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace

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
    return userLanguages({.language = variable("LANGUAGE"),
                          .all = variable("LC_ALL"),
                          .messages = variable("LC_MESSAGES"),
                          .lang = variable("LANG")});
}

} // namespace platform::linux
