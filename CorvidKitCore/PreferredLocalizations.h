#pragma once

#include <span>
#include <string>
#include <vector>

namespace corvid {

/// Those of the available languages that the user wants, in the user's order, each once; empty when there is none.
///
/// `wanted` has names of languages or locales ("de", "pt-BR", "de_DE.UTF-8", "sr_RS@latin") or several of them between
/// colons, as the environment has them. A language is also served by another country's form of it, as long as it is
/// written in the same script: "pt" and "pt_PT" by "pt_BR", but "zh_TW" not by "zh_CN". From "C" and "POSIX" on,
/// nothing more is wanted: they stand for the language that the program is written in (GNU gettext manual, "The
/// LANGUAGE variable").
[[nodiscard]] std::vector<std::string> preferredLocalizations(std::span<const std::string> available,
                                                              std::span<const std::string> wanted);

} // namespace corvid
