#pragma once

#include "Platform/ApplicationCatalogue.h"

namespace tessel {

/// The made-up applications of the pictures, which are the same on every machine: their icons are resources of the
/// interface (":/preview/…"), their names are in the catalogue of texts.
class PreviewCatalogue final : public platform::ApplicationCatalogue {
public:
    [[nodiscard]] std::vector<std::filesystem::path> locations() override;
    [[nodiscard]] std::optional<std::filesystem::path> location(std::string_view bundleIdentifier) override;
    [[nodiscard]] std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) override;
    [[nodiscard]] std::string displayName(const std::filesystem::path& location) override;
    [[nodiscard]] std::vector<std::string> searchTerms(const std::filesystem::path& location) override;
    [[nodiscard]] platform::Image icon(const std::filesystem::path& location) override;
};

} // namespace tessel
