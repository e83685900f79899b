#pragma once

#include "Platform/I3Ipc/LineHolder.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Holders/LaterAnswer.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/Sway/HotKeys.h"

#include <utility>

namespace platform::sway {

/// Finds shortcuts in sway's configuration, which was read when they were refused. Main thread only.
class ConfigurationHolders final : public ShortcutHolders {
public:
    /// Both must outlive this.
    ConfigurationHolders(linux::MainLoop& mainLoop, const HotKeys& hotKeys)
        : mainLoop(mainLoop)
        , hotKeys(hotKeys) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override {
        return linux::answerLater(mainLoop, shortcuts, std::move(found),
                                  [this](const corvid::Shortcut& shortcut) -> std::optional<ShortcutHolder> {
                                      const i3ipc::KeyUse use = hotKeys.useOf(shortcut);
                                      if (use.line == nullptr) {
                                          return std::nullopt;
                                      }
                                      const auto home = linux::environmentVariable("HOME").value_or("");
                                      ShortcutHolder holder =
                                          i3ipc::lineHolder("sway", use.particular ? *use.particular : *use.line, home);
                                      if (use.particular != nullptr) {
                                          // Its layout or keyboard is the reason why it is not lent.
                                          holder.purpose = use.particular->definition;
                                      }
                                      return holder;
                                  });
    }

private:
    linux::MainLoop& mainLoop;
    const HotKeys& hotKeys;
};

} // namespace platform::sway
