#pragma once

#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform::x11 {

/// Asks the source of holders for the present window manager. Main thread only.
class WindowManagerHolders final : public ShortcutHolders {
public:
    struct Source {
        /// As it identifies itself (`WindowManager::name`).
        std::string windowManager;
        std::unique_ptr<ShortcutHolders> holders;
    };

    void add(Source source) { sources.push_back(std::move(source)); }

    /// Sets the present window manager's name.
    void setWindowManager(const std::string& name) { windowManager = name; }

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override {
        const auto source = std::ranges::find(sources, windowManager, &Source::windowManager);
        return source == sources.end() ? nullptr : source->holders->find(shortcuts, std::move(found));
    }

private:
    std::vector<Source> sources;
    std::string windowManager;
};

} // namespace platform::x11
