#pragma once

#include "Platform/Seam/Desktop/Appearance.h"
#include "Platform/Seam/Toolkit/View.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A view and its surroundings in a picture.
struct PictureOfView {
    const View& view;
    ColorScheme colorScheme = ColorScheme::light;
    /// The grey behind the view, in the sRGB colour space: 0 is black, 1 is white.
    double backgroundWhite = 1;
    /// The language of its texts, as in "pt_BR".
    std::string locale;
    /// Pixels per point.
    double scale = 1;
};

/// Draws views without a window. Main thread only.
class ImageRenderer {
public:
    ImageRenderer() = default;
    ImageRenderer(const ImageRenderer&) = delete;
    ImageRenderer& operator=(const ImageRenderer&) = delete;
    virtual ~ImageRenderer() = default;

    /// The view in its preferred size, as a file in the Portable Network Graphics format; empty if it cannot be drawn.
    /// The same picture gives the same bytes on the same machine.
    [[nodiscard]] virtual std::optional<std::vector<std::byte>> png(const PictureOfView& picture) = 0;
};

} // namespace platform
