#include "Platform/Linux/Applications/IconTheme.h"

#include "Platform/Linux/Applications/KeyFile.h"
#include "Platform/Linux/RegularFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

namespace platform::linux {
/// A folder of a theme with icons of one size, or of a range of sizes.
struct SizeFolder {
    enum class Type : std::uint8_t { fixed, scalable, threshold };

    std::string path;
    Type type = Type::threshold;
    int size = 0;
    int scale = 1;
    int smallestSize = 0;
    int largestSize = 0;
    int threshold = 0;

    /// DirectoryMatchesSize (Icon Theme Specification, Icon Lookup).
    [[nodiscard]] bool matches(int wanted, int wantedScale) const {
        return scale == wantedScale && least() <= wanted && wanted <= most();
    }

    /// DirectorySizeDistance, in pixels.
    [[nodiscard]] int distance(int wanted, int wantedScale) const {
        const int pixels = wanted * wantedScale;
        return std::max({least() * scale - pixels, pixels - most() * scale, 0});
    }

private:
    [[nodiscard]] int least() const {
        return type == Type::fixed ? size : type == Type::scalable ? smallestSize : size - threshold;
    }

    [[nodiscard]] int most() const {
        return type == Type::fixed ? size : type == Type::scalable ? largestSize : size + threshold;
    }
};

namespace {

constexpr std::string_view fallbackTheme = "hicolor";
/// Sizes and scales beyond it are mistakes, and their products would overflow.
constexpr int largest = 16384;

bool isRegularFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

std::optional<std::filesystem::path> fileIn(const std::string& folder, const std::string& icon) {
    constexpr std::array<std::string_view, 3> endings{".png", ".svg", ".xpm"};
    for (const std::string_view ending : endings) {
        std::string path = std::string(folder).append("/").append(icon).append(ending);
        if (isRegularFile(path)) {
            return path;
        }
    }
    return std::nullopt;
}

std::optional<SizeFolder> sizeFolder(const KeyFile& file, const std::string& path) {
    const auto number = [&](const char* key, int standard) {
        return std::clamp(file.number(path.c_str(), key).value_or(standard), 0, largest);
    };
    const int size = number("Size", 0);
    if (size == 0) {
        return std::nullopt;
    }
    constexpr int standardThreshold = 2;
    const std::string type = file.text(path.c_str(), "Type").value_or("Threshold");
    using enum SizeFolder::Type;
    return SizeFolder{
        .path = path,
        .type = type == "Fixed"      ? fixed
                : type == "Scalable" ? scalable
                                     : threshold,
        .size = size,
        .scale = std::max(number("Scale", 1), 1),
        .smallestSize = number("MinSize", size),
        .largestSize = number("MaxSize", size),
        .threshold = number("Threshold", standardThreshold),
    };
}

/// Names come from desktop entries and themes; they must not lead out of the folders.
bool isPlainName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && !name.contains('/');
}

} // namespace

struct IconTheme::Description {
    /// The theme's folder in each of the base folders that has one.
    std::vector<std::string> places;
    std::vector<SizeFolder> sizes;
    std::vector<std::string> parents;
};

IconTheme::IconTheme(std::vector<std::string> folders, std::string name)
    : folders(std::move(folders))
    , name(std::move(name)) {
}

IconTheme::IconTheme(IconTheme&&) noexcept = default;
IconTheme& IconTheme::operator=(IconTheme&&) noexcept = default;
IconTheme::~IconTheme() = default;

std::optional<std::filesystem::path> IconTheme::find(const std::string& icon, int size, int scale) {
    if (!isPlainName(icon)) {
        return std::nullopt;
    }
    size = std::clamp(size, 1, largest);
    scale = std::clamp(scale, 1, largest);
    for (const std::string& theme : lineage()) {
        if (std::optional<std::filesystem::path> file = findInTheme(description(theme), icon, size, scale)) {
            return file;
        }
    }
    for (const std::string& folder : folders) {
        if (std::optional<std::filesystem::path> file = fileIn(folder, icon)) {
            return file;
        }
    }
    return std::nullopt;
}

std::vector<std::string> IconTheme::lineage() {
    // Depth first, each theme once, however they inherit from one another. The fallback comes behind all of them.
    std::vector<std::string> themes;
    std::vector<std::string> waiting{name};
    std::set<std::string> visited{std::string(fallbackTheme)};
    while (!waiting.empty()) {
        const std::string theme = std::move(waiting.back());
        waiting.pop_back();
        if (visited.insert(theme).second) {
            const std::vector<std::string>& parents = description(theme).parents;
            waiting.insert(waiting.end(), parents.rbegin(), parents.rend());
            themes.push_back(theme);
        }
    }
    themes.emplace_back(fallbackTheme);
    return themes;
}

const IconTheme::Description& IconTheme::description(const std::string& theme) {
    std::unique_ptr<Description>& known = descriptions[theme];
    if (known) {
        return *known;
    }
    known = std::make_unique<Description>();
    if (!isPlainName(theme)) {
        return *known;
    }
    // Themes come from anybody.
    constexpr std::size_t largestFile = std::size_t{1} << 20U;
    std::optional<KeyFile> file;
    for (const std::string& folder : folders) {
        const std::string place = std::string(folder).append("/").append(theme);
        std::error_code ignored;
        if (!std::filesystem::is_directory(place, ignored)) {
            continue;
        }
        known->places.push_back(place);
        // The first description counts, the icons lie in all places.
        if (!file) {
            const std::optional<std::string> contents =
                readRegularFile(place + "/index.theme", largestFile, Excess::refused);
            file = contents ? KeyFile::parse(*contents) : std::nullopt;
        }
    }
    if (!file) {
        return *known;
    }
    constexpr const char* group = "Icon Theme";
    for (const char* list : {"Directories", "ScaledDirectories"}) {
        for (const std::string& path : file->texts(group, list, ',')) {
            if (std::optional<SizeFolder> folder = sizeFolder(*file, path); folder && !path.contains("..")) {
                known->sizes.push_back(std::move(*folder));
            }
        }
    }
    known->parents = file->texts(group, "Inherits", ',');
    return *known;
}

std::optional<std::filesystem::path> IconTheme::findInTheme(const Description& theme, const std::string& icon, int size,
                                                            int scale) const {
    // Those that match are nearest, then the others by their distance; among equals the order of the theme counts.
    std::vector<std::pair<int, const SizeFolder*>> order;
    order.reserve(theme.sizes.size());
    for (const SizeFolder& folder : theme.sizes) {
        order.emplace_back(folder.matches(size, scale) ? -1 : folder.distance(size, scale), &folder);
    }
    // The folders lie one after the other, so that their addresses are in that order too.
    std::ranges::sort(order);
    for (const auto& [distance, folder] : order) {
        for (const std::string& place : theme.places) {
            if (std::optional<std::filesystem::path> file = fileIn(place + "/" + folder->path, icon)) {
                return file;
            }
        }
    }
    return std::nullopt;
}

} // namespace platform::linux
