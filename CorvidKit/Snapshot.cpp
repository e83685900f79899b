#include "CorvidKit/Snapshot.h"

#include "Platform/ImageRenderer.h"
#include "Platform/MainActor.h"
#include "Platform/MainBundle.h"
#include "Platform/Platform.h"

#include <fstream>

namespace corvid::Snapshot {

namespace {

constexpr double pixelsPerPoint = 2;

} // namespace

bool isActive = false;

std::string language() {
    const auto& preferred = platform::current().mainBundle.preferredLocalizations;
    return preferred.empty() ? "en" : preferred.front();
}

void renderMenu(const std::string& directory, const std::optional<std::string>& variant,
                const std::function<std::shared_ptr<const platform::View>()>& content) {
    isActive = true;
    for (const Scheme& scheme : schemes) {
        const std::shared_ptr<const platform::View> view = content();
        std::string name = "menu-" + language();
        if (variant) {
            name += "-" + *variant;
        }
        name += "-" + std::string(scheme.name) + ".png";
        write(*view, scheme.surroundings, std::filesystem::path(directory) / name);
    }
}

void write(const platform::View& view, const Surroundings& surroundings, const std::filesystem::path& file) {
    platform::ImageRenderer* renderer = platform::current().imageRenderer;
    if (renderer == nullptr) {
        return;
    }
    const auto png = renderer->png({.view = view,
                                    .colorScheme = surroundings.colorScheme,
                                    .backgroundWhite = surroundings.backgroundWhite,
                                    .locale = language(),
                                    .scale = pixelsPerPoint});
    if (!png) {
        return;
    }
    std::ofstream output(file, std::ios::binary | std::ios::trunc);
    output.write(reinterpret_cast<const char*>(png->data()), static_cast<std::streamsize>(png->size()));
}

} // namespace corvid::Snapshot
