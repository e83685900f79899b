#pragma once

#include "Platform/StatusItem.h"

#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// What a status item is at present, whichever way it is shown.
struct TrayContents {
    /// Tells it from other programs' items, and is the same in every session.
    std::string identifier;
    std::string title;
    std::string toolTip;
    std::optional<Image> image;
    std::vector<StatusMenuLine> menu;
    StatusItem::Action action;
};

} // namespace platform::linux
