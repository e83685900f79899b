#pragma once

#include "Platform/ApplicationCatalogue.h"
#include "Platform/Linux/Applications/ApplicationIdentification.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// Takes the application id as it stands, else the class in lower case, if that application is "installed".
class PlainIdentification final : public ApplicationIdentification {
public:
    std::set<std::string> installed{"editor", "browser", "terminal"};

    [[nodiscard]] std::optional<std::string> bundleIdentifier(const ApplicationClues& clues) override;
};

/// Knows where every application is, and calls it by its identifier.
class PlainCatalogue final : public ApplicationCatalogue {
public:
    [[nodiscard]] std::vector<std::filesystem::path> locations() override { return {}; }
    [[nodiscard]] std::optional<std::filesystem::path> location(std::string_view bundleIdentifier) override;
    [[nodiscard]] std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) override;
    [[nodiscard]] std::string displayName(const std::filesystem::path& location) override;
    [[nodiscard]] std::vector<std::string> searchTerms(const std::filesystem::path& /*location*/) override {
        return {};
    }
    [[nodiscard]] Image icon(const std::filesystem::path& location) override;
};

} // namespace platform::linux
