#pragma once

#include "Platform/Seam/Desktop/Image.h"

#include <QString>

namespace tessel {

/// The source from which an `IconItem` draws the picture: a file's path, or a name in the icon theme; empty for other
/// pictures.
[[nodiscard]] inline QString imageSource(const platform::Image& image) {
    const auto& source = image.description().source;
    if (const auto* file = std::get_if<platform::ImageFile>(&source)) {
        return QString::fromStdString(file->path.string());
    }
    const auto* icon = std::get_if<platform::ThemeIcon>(&source);
    return icon == nullptr ? QString() : QString::fromStdString(icon->name);
}

} // namespace tessel
