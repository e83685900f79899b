#pragma once

#include "Platform/Compositor/Door.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/KWin/ScriptLink.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace platform::kwin {

/// The way to KWin, through a script of ours in it. Serves KWin 5.27 and 6. Main thread only.
class Door final : public compositor::Door, private ScriptLink::Receiver {
public:
    /// Everything has to outlive this; `script` is the file that KWin loads. The bus must be this desktop's own: a
    /// placement reads it while it waits. The door is closed until the script has sent its first report.
    Door(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, compositor::WindowTable& table,
         std::filesystem::path script, ScriptLink::Timing timing = {});

    /// Waits until the door is open; gives whether it is.
    bool waitUntilOpen(Instant deadline);

    /// Processes the messages that have arrived. KWin reports every change by itself.
    void refresh(Instant deadline) override;
    /// A fullscreen window, or another that KWin does not let anybody move, is left alone: `cannotComplete`.
    AXError place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;
    /// There is no permission to ask for.
    void prompt() override {}

    [[nodiscard]] AccessObstacle obstacle() const override {
        return {.kind = AccessObstacle::Kind::scriptNotRunning, .desktop = "KWin"};
    }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

private:
    /// The placement that is being waited for.
    struct Placement {
        std::uint64_t number = 0;
        compositor::WindowIdentifier window;
        /// The frame of a window that complies.
        corvid::CGRect frame;
        corvid::CGRect formerFrame;
        std::optional<ScriptMessages::Outcome> outcome;
        /// Whether the window may ask for another size after it has got this one.
        bool mayBeCorrected = false;
        /// Whether the window's program has taken the window back to where it was before.
        bool isTakenBack = false;
        /// When the window's frame last changed since the command was carried out.
        std::optional<Instant> lastChange;
    };

    /// A placement that the window's program has taken back.
    struct Undoing {
        compositor::WindowIdentifier window;
        std::unique_ptr<ScheduledWork> telling;
    };

    void scriptTold(ScriptMessages::News news) override;
    void scriptCarriedOut(const ScriptMessages::Result& result) override;
    void scriptLost() override;

    void take(ScriptMessages::Opened contents);
    void take(ScriptMessages::Told told);
    void take(const ScriptMessages::Gone& gone);
    void take(ScriptMessages::Focused focused);
    void take(ScriptMessages::Screens screens);

    [[nodiscard]] AXError request(const compositor::WindowIdentifier& window, const corvid::CGRect& frame,
                                  Instant deadline);
    [[nodiscard]] AXError settle(Instant deadline);

    /// Whether a window is told of that has gone back to its frame from before the present placement. That is no size
    /// that it has settled on but something new, of which the table learns when the placement is over. One that refuses
    /// a size may have its former one again as well, but stays at its new place.
    [[nodiscard]] bool isUndone(const ScriptMessages::Told& told) const;

    linux::MainLoop& mainLoop;
    compositor::WindowTable& table;
    std::uint64_t lastNumber = 0;
    std::optional<Placement> placement;
    std::optional<Undoing> undoing;
    std::optional<ScriptMessages::Result> pointerResult;
    /// Where our own windows are to be, for a script that is loaded again.
    std::map<std::string, corvid::CGPoint> ownPlaces;
    ScriptLink link;
};

} // namespace platform::kwin
