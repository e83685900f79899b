#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// Finds the files of icons by their names (Icon Theme Specification 0.13). The themes' descriptions are read at the
/// first use and kept with the object; the folders are read each time. One thread at a time.
class IconTheme {
public:
    /// `folders` hold themes, and loose icons of programs that have none (`BaseFolders::icons`). `name` is that of the
    /// theme's folder.
    IconTheme(std::vector<std::string> folders, std::string name);
    IconTheme(IconTheme&&) noexcept;
    IconTheme& operator=(IconTheme&&) noexcept;
    ~IconTheme();

    /// The best file (PNG, SVG or XPM) for an icon of `size` points at `scale` pixels per point: in the theme, in those
    /// that it inherits from, in "hicolor", and then outside the themes. Empty if none has the icon.
    [[nodiscard]] std::optional<std::filesystem::path> find(const std::string& icon, int size, int scale = 1);

private:
    struct Description;

    /// The theme and those that it inherits from, in the order in which they are searched.
    std::vector<std::string> lineage();
    const Description& description(const std::string& theme);
    [[nodiscard]] std::optional<std::filesystem::path> findInTheme(const Description& theme, const std::string& icon,
                                                                   int size, int scale) const;

    std::vector<std::string> folders;
    std::string name;
    std::map<std::string, std::unique_ptr<Description>> descriptions;
};

} // namespace platform::linux
