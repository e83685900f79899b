#pragma once

#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Simulated/Trace.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

/// A few installed applications.
///
/// Trace: "list applications", "locate org.example.Editor", "icon of /applications/Editor".
class ApplicationCatalogue final : public platform::ApplicationCatalogue {
public:
    struct Installed {
        std::string bundleIdentifier;
        std::string displayName;
        std::string iconName;
        /// Whether a chooser lists it.
        bool isShown = true;
        /// Search terms beside its name and identifier.
        std::vector<std::string> searchTerms = {};
    };

    explicit ApplicationCatalogue(Trace& trace)
        : trace(trace) {}

    void install(const std::filesystem::path& location, Installed application);
    void uninstall(const std::filesystem::path& location);

    [[nodiscard]] std::vector<std::filesystem::path> locations() override;
    [[nodiscard]] std::optional<std::filesystem::path> location(std::string_view bundleIdentifier) override;
    [[nodiscard]] std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) override;
    [[nodiscard]] std::string displayName(const std::filesystem::path& location) override;
    [[nodiscard]] std::vector<std::string> searchTerms(const std::filesystem::path& location) override;
    [[nodiscard]] Image icon(const std::filesystem::path& location) override;

private:
    Trace& trace;
    std::map<std::filesystem::path, Installed> applications;
};

} // namespace platform::simulated
