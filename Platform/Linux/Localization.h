#pragma once

#include "Platform/Linux/SearchKey.h"
#include "Platform/Localization.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace platform::linux {

/// The texts of the C library's message catalogues: one domain, in which the table is the message's context. Which
/// languages they come in is said here, and nowhere else: not by the locale in force, nor by `LANGUAGE`, which are as
/// before after each call. One at a time.
class Localization final : public platform::Localization {
public:
    /// `folder` holds `LANGUAGE/LC_MESSAGES/DOMAIN.mo`; it need not exist. Each text comes in the first of `languages`
    /// that has it, else in English.
    Localization(std::string domain, const std::filesystem::path& folder, std::span<const std::string> languages);

    [[nodiscard]] std::string text(std::string_view table, std::string_view key) const override;
    [[nodiscard]] std::string text(std::string_view table, std::string_view key, std::uint64_t count) const override;

    [[nodiscard]] std::string searchKey(std::string_view text) const override { return linux::searchKey(text); }

private:
    std::string domain;
    /// As in `LANGUAGE`.
    std::string languages;
};

} // namespace platform::linux
