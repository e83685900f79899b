#pragma once

#include "Platform/Localization.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace platform::linux {

/// The texts of the C library's message catalogues: one domain, in which the table is the message's context. The
/// language is that of the locale in force and of `LANGUAGE` (GNU gettext manual, "Locale Environment Variables").
class Localization final : public platform::Localization {
public:
    /// `folder` holds `LANGUAGE/LC_MESSAGES/DOMAIN.mo`; it need not exist.
    Localization(std::string domain, const std::filesystem::path& folder);

    [[nodiscard]] std::string text(std::string_view table, std::string_view key) const override;
    [[nodiscard]] std::string text(std::string_view table, std::string_view key, std::uint64_t count) const override;

    /// Case folding and compatibility decomposition (Unicode Standard, sections 3.13 and 3.11), without the marks above
    /// and below letters and the vowel points that are usually not written. A text that is not UTF-8 counts as far as
    /// it can be read.
    [[nodiscard]] std::string searchKey(std::string_view text) const override;

private:
    std::string domain;
};

} // namespace platform::linux
