#pragma once

#include "Platform/Image.h"

#include <QString>

namespace tessel {

/// What an `IconItem` draws the picture from: a file's path, or a name in the icon theme.
[[nodiscard]] inline QString imageSource(const platform::Image& image) {
    const auto& source = image.description().source;
    if (const auto* file = std::get_if<platform::ImageFile>(&source)) {
        return QString::fromStdString(file->path.string());
    }
    return QString::fromStdString(std::get<platform::ThemeIcon>(source).name);
}

} // namespace tessel
