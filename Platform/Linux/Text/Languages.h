#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// The environment's words on the language of texts, each possibly unset.
struct LanguageVariables {
    std::optional<std::string> language = {}; ///< `LANGUAGE`: several between colons, the most wanted first
    std::optional<std::string> all = {};      ///< `LC_ALL`
    std::optional<std::string> messages = {}; ///< `LC_MESSAGES`
    std::optional<std::string> lang = {};     ///< `LANG`
};

/// The languages that the user wants, the most wanted first, named as in the environment ("de_DE.UTF-8"): those of
/// `LANGUAGE`, then the locale of messages (GNU gettext manual, "Locale Environment Variables"). Unlike there,
/// `LANGUAGE` counts also where the locale is "C": sessions without a display manager often forget the locale.
[[nodiscard]] std::vector<std::string> userLanguages(const LanguageVariables& variables);

/// The same from this process's environment: main thread.
[[nodiscard]] std::vector<std::string> userLanguages();

} // namespace platform::linux
