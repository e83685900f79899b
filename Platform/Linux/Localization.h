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

private:
    std::string domain;
};

} // namespace platform::linux
