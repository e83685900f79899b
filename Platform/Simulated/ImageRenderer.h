#pragma once

#include "Platform/Seam/Toolkit/ImageRenderer.h"
#include "Platform/Simulated/Trace.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform::simulated {

/// Draws nothing: the test supplies the contents of pictures.
///
/// Trace: "draw light on 0.93 in en at 2".
class ImageRenderer final : public platform::ImageRenderer {
public:
    explicit ImageRenderer(Trace& trace)
        : trace(trace) {}

    [[nodiscard]] std::optional<std::vector<std::byte>> png(const PictureOfView& picture) override {
        trace.record(std::string("draw ") + (picture.colorScheme == ColorScheme::dark ? "dark" : "light") + " on " +
                     text(picture.backgroundWhite) + " in " + picture.locale + " at " + text(picture.scale));
        const std::optional<std::string> contents = draw(picture);
        if (!contents) {
            return std::nullopt;
        }
        const auto bytes = std::as_bytes(std::span(*contents));
        return std::vector<std::byte>(bytes.begin(), bytes.end());
    }

    /// The contents of a picture's file; empty for one that cannot be drawn.
    std::function<std::optional<std::string>(const PictureOfView&)> draw = [](const PictureOfView&) {
        return "a picture";
    };

private:
    Trace& trace;
};

} // namespace platform::simulated
