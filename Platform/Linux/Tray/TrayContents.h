#pragma once

#include "Platform/Seam/Desktop/StatusItem.h"

#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// The present contents of a status item, for any kind of panel.
struct TrayContents {
    /// Distinguishes it from other programs' items, and is the same in every session.
    std::string identifier;
    std::string title;
    std::string toolTip;
    std::optional<Image> image;
    std::vector<StatusMenuLine> menu;
    StatusItem::Action action;
};

} // namespace platform::linux
