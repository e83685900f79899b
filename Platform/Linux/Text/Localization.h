#pragma once

#include "Platform/Linux/Text/MessageCatalogue.h"
#include "Platform/Linux/Text/SearchKey.h"
#include "Platform/Seam/Desktop/Localization.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The texts of gettext's catalogues: one domain, in which the table is the message's context. Only this class sets
/// their languages: neither the current locale nor `LANGUAGE` does.
class Localization final : public platform::Localization {
public:
    /// Reads `LANGUAGE/LC_MESSAGES/DOMAIN.mo` in `folder`; none of it needs to exist. Each text comes in the first of
    /// `languages` that has it, else in English.
    Localization(const std::string& domain, const std::filesystem::path& folder,
                 std::span<const std::string> languages);

    [[nodiscard]] std::string text(std::string_view table, std::string_view key) const override;
    [[nodiscard]] std::string text(std::string_view table, std::string_view key, std::uint64_t count) const override;

    [[nodiscard]] std::string searchKey(std::string_view text) const override { return linux::searchKey(text); }

private:
    /// The best language first.
    std::vector<MessageCatalogue> catalogues;
};

} // namespace platform::linux
