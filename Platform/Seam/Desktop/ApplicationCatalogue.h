#pragma once

#include "Platform/Seam/Desktop/Image.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The installed applications, running or not. Main thread only; every call reads them again.
class ApplicationCatalogue {
public:
    ApplicationCatalogue() = default;
    ApplicationCatalogue(const ApplicationCatalogue&) = delete;
    ApplicationCatalogue& operator=(const ApplicationCatalogue&) = delete;
    virtual ~ApplicationCatalogue() = default;

    /// The descriptions of all applications that a chooser lists, in no particular order; each identifier once.
    [[nodiscard]] virtual std::vector<std::filesystem::path> locations() = 0;

    /// The description of the application with that identifier (on Linux its desktop entry's absolute path); empty if
    /// no such application is installed.
    [[nodiscard]] virtual std::optional<std::filesystem::path> location(std::string_view bundleIdentifier) = 0;

    /// The identifier of the application described there; empty if that is not an application.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) = 0;

    /// The name of the application described there, in the user's language; the file's own name if that is not an
    /// application.
    [[nodiscard]] virtual std::string displayName(const std::filesystem::path& location) = 0;

    /// Other words by which people look for the application described there, such as its kind and the name of its
    /// program. Texts in no particular order; empty if that is not an application.
    [[nodiscard]] virtual std::vector<std::string> searchTerms(const std::filesystem::path& location) = 0;

    /// The icon of the application described there, a generic one if it has none.
    [[nodiscard]] virtual Image icon(const std::filesystem::path& location) = 0;
};

} // namespace platform
