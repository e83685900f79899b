#pragma once

#include "CorvidKitCore/Geometry.h"

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <variant>

namespace platform {

/// An icon by its name in the desktop's icon theme, found when it is drawn, so that it follows a change of theme.
struct ThemeIcon {
    std::string name;

    friend bool operator==(const ThemeIcon&, const ThemeIcon&) = default;
};

/// A picture in a file (PNG or SVG).
struct ImageFile {
    std::filesystem::path path;

    friend bool operator==(const ImageFile&, const ImageFile&) = default;
};

/// A drawing of the program's own, by its name, as in "uiwindow.split.2x1".
struct SystemSymbol {
    std::string name;

    friend bool operator==(const SystemSymbol&, const SystemSymbol&) = default;
};

using ImageSource = std::variant<ThemeIcon, ImageFile, SystemSymbol>;

/// The source and the size of a picture; its pixels are made when it is drawn, so that the resident program decodes
/// nothing.
struct ImageDescription {
    ImageSource source;
    /// In points. Drawn into this size, at any size of the source.
    corvid::CGSize size;
    /// Pixels per point that a bitmap of it has.
    double scale = 1;
    /// Only the shape counts: the drawing code colours it to suit its background.
    bool isTemplate = false;
    /// A dot of 5 by 5 points in the top-right corner, with 1.5 points around it cut out of the picture.
    bool isBadged = false;
    /// The text of the picture for a screen reader.
    std::string accessibilityDescription;

    friend bool operator==(const ImageDescription&, const ImageDescription&) = default;
};

/// A picture: a retained, immutable reference. Two pictures are equal when they are the same object, not when they look
/// the same. Any thread.
class Image {
public:
    explicit Image(ImageDescription description)
        : contents(std::make_shared<const ImageDescription>(std::move(description))) {}

    [[nodiscard]] const ImageDescription& description() const { return *contents; }

    friend bool operator==(const Image& a, const Image& b) { return a.contents == b.contents; }

private:
    std::shared_ptr<const ImageDescription> contents;
};

} // namespace platform
