#pragma once

#include "Platform/Image.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The applications that are installed, running or not. Main thread only; every call looks afresh.
class ApplicationCatalogue {
public:
    ApplicationCatalogue() = default;
    ApplicationCatalogue(const ApplicationCatalogue&) = delete;
    ApplicationCatalogue& operator=(const ApplicationCatalogue&) = delete;
    virtual ~ApplicationCatalogue() = default;

    /// Where all applications are described that are to be shown to people who choose among them, in no particular
    /// order; each identifier once.
    [[nodiscard]] virtual std::vector<std::filesystem::path> locations() = 0;

    /// Where the application of that identifier is described (on Linux its desktop entry's absolute path); nothing
    /// where no such application is installed.
    [[nodiscard]] virtual std::optional<std::filesystem::path> location(std::string_view bundleIdentifier) = 0;

    /// The identifier of the application described there; nothing where that is not an application.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) = 0;

    /// The name of the application described there, in the user's language; the file's own name where that is not an
    /// application.
    [[nodiscard]] virtual std::string displayName(const std::filesystem::path& location) = 0;

    /// What else people may look for the application described there by, such as what kind of application it is and the
    /// name of its program. Texts in no particular order; empty where that is not an application.
    [[nodiscard]] virtual std::vector<std::string> searchTerms(const std::filesystem::path& location) = 0;

    /// The icon of the application described there, a generic one where it has none.
    [[nodiscard]] virtual Image icon(const std::filesystem::path& location) = 0;
};

} // namespace platform
