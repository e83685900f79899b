#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// A setting as `gsettings list-recursively` prints it: "SCHEMA KEY VALUE".
struct SettingLine {
    std::string schema;
    std::string key;
    /// In GVariant's text format.
    std::string value;

    /// The texts in its value, which is one text or a list of them; empty for any other value.
    [[nodiscard]] std::vector<std::string> texts() const;

    friend bool operator==(const SettingLine&, const SettingLine&) = default;
};

/// Parses the printed lines. Lines of another form are left out.
[[nodiscard]] std::vector<SettingLine> readSettingLines(std::string_view printed);

} // namespace platform::linux
