#pragma once

#include <QTranslator>
#include <memory>
#include <string>
#include <vector>

namespace corvid::toolkit {

/// Puts the catalogues of the first of these languages in force that has any ("en" where none has), and lays out
/// windows in its direction. They stay in force as long as the translators live.
[[nodiscard]] std::vector<std::unique_ptr<QTranslator>> loadTranslations(const std::vector<std::string>& languages);

} // namespace corvid::toolkit
