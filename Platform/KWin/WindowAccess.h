#pragma once

#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/KWin/ScriptLink.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace platform::kwin {

/// Access to the windows of KWin, through our own script in it. Supports KWin 5.27 and 6. Main thread only.
class WindowAccess final : public compositor::WindowAccess, private ScriptLink::Receiver {
public:
    /// Everything has to outlive this; `script` is the file that KWin loads. The bus must be this desktop's own: a
    /// placement reads it while it waits. There is no access until the script has sent its first report.
    WindowAccess(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, compositor::WindowTable& table,
                 std::filesystem::path script, ScriptLink::Timing timing = {});

    /// Waits for the access; returns whether it has begun.
    bool waitUntilOpen(Instant deadline);

    /// Processes the messages that have arrived. KWin reports every change by itself.
    void refresh(Instant deadline) override;
    /// A window that KWin does not allow to move, such as a fullscreen one, stays as it is: `cannotComplete`.
    AXError place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;
    /// There is no permission to ask for.

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
        /// Whether the window may request another size after it has got this one.
        bool mayBeCorrected = false;
        /// Whether the window's program has restored the window's former frame.
        bool isTakenBack = false;
        /// The time of the last change of the window's frame since the command was carried out.
        std::optional<Instant> lastChange;
    };

    /// A placement that the window's program has undone.
    struct Undoing {
        compositor::WindowIdentifier window;
        std::unique_ptr<ScheduledWork> notice;
    };

    void scriptReported(ScriptMessages::News news) override;
    void scriptCarriedOut(const ScriptMessages::Result& result) override;
    void scriptLost() override;

    void take(ScriptMessages::Opened contents);
    void take(ScriptMessages::WindowReport report);
    void take(const ScriptMessages::Gone& gone);
    void take(ScriptMessages::Focused focused);
    void take(ScriptMessages::Screens screens);

    [[nodiscard]] AXError request(const compositor::WindowIdentifier& window, const corvid::CGRect& frame,
                                  Instant deadline);
    [[nodiscard]] AXError settle(Instant deadline);

    /// Whether a report shows a window back at its frame from before the present placement. That frame is no size that
    /// it has settled on but a new change, which the table gets when the placement is over. A window that refuses a
    /// size may have its former size again as well, but it stays at its new position.
    [[nodiscard]] bool isUndone(const ScriptMessages::WindowReport& report) const;

    linux::MainLoop& mainLoop;
    compositor::WindowTable& table;
    std::uint64_t lastNumber = 0;
    std::optional<Placement> placement;
    std::optional<Undoing> undoing;
    std::optional<ScriptMessages::Result> pointerResult;
    /// The positions of our own windows, for a reloaded script.
    std::map<std::string, corvid::CGPoint> ownPlaces;
    ScriptLink link;
};

} // namespace platform::kwin
