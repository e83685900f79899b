#pragma once

#include "CorvidKit/Toolkit/ViewBuilder.h"
#include "Platform/Seam/Toolkit/ImageRenderer.h"

namespace corvid::toolkit {

/// Draws views into pictures in memory.
class ImageRenderer final : public platform::ImageRenderer {
public:
    explicit ImageRenderer(ViewBuilder build)
        : build(std::move(build)) {}

    [[nodiscard]] std::optional<std::vector<std::byte>> png(const platform::PictureOfView& picture) override;

private:
    ViewBuilder build;
};

} // namespace corvid::toolkit
