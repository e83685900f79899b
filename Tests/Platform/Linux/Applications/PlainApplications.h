#pragma once

#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// Uses the application id unchanged, else the class in lower case, if that application is "installed".
class PlainIdentification final : public ApplicationIdentification {
public:
    std::set<std::string> installed{"editor", "browser", "terminal"};

    [[nodiscard]] std::optional<std::string> bundleIdentifier(const ApplicationClues& clues) override;
};

/// Knows a path for every application, and uses the identifier as its name.
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
