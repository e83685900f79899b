#pragma once

#include "Platform/Compositor/OwnPlaces.h"
#include "Platform/Compositor/TableReader.h"
#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowKinds.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Hyprland/Layout.h"
#include "Platform/Hyprland/Session.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace platform::hyprland {

/// Access to the windows of Hyprland. Windows are named by their addresses.
///
/// No event carries geometry, so the layout is read for each question about it; events only say that windows have come
/// or gone. What is read is where a window is going to be: animations are not waited for.
///
/// The frame of a window is its contents with its border, which lies around them. The configuration and window rules
/// set its width; a rule may set another one for a window that leaves the layout. So it is asked for of the focused
/// window, and of one that is placed; others have the configured one until then.
class WindowAccess final : public compositor::WindowAccess, private Session::Follower {
public:
    /// How long a resized window must keep its box to count as settled: a program that is asked for less than its
    /// smallest size answers with that within some milliseconds, and the compositor grows the window around its middle.
    static constexpr std::chrono::milliseconds rest{50};

    /// All must outlive this. `ownProcess`: this program's.
    WindowAccess(Session& session, compositor::WindowTable& table, linux::MainLoop& mainLoop,
                 ProcessIdentifier ownProcess);

    void refresh(Instant deadline) override { reader.update(deadline); }

    AXError place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;

    [[nodiscard]] AccessObstacle obstacle() const override {
        return {.kind = AccessObstacle::Kind::silentCompositor, .desktop = "Hyprland"};
    }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

private:
    void sessionOpened() override { reader.begin(); }

    void sessionClosed() override;
    void sessionReported(std::string_view event, std::string_view data) override;

    void sessionIsQuiet() override { reader.catchUp(); }

    /// The present state; the frames include the borders.
    [[nodiscard]] std::optional<compositor::WindowTable::Contents> read(Instant deadline);
    [[nodiscard]] std::optional<std::vector<Client>> readWindows(Instant deadline);
    void updateWindows(const std::vector<Client>& clients);
    /// Waits until the window keeps its frame for that long; the box of its contents. Empty if it does not in time.
    [[nodiscard]] std::optional<corvid::CGRect> settledBox(const compositor::WindowIdentifier& window, Duration calm,
                                                           Instant deadline);

    [[nodiscard]] double border(const compositor::WindowIdentifier& window) const;
    void readBorder(const compositor::WindowIdentifier& window, Instant deadline);
    void addBorders(std::vector<Client>& clients) const;
    [[nodiscard]] corvid::CGRect boxIn(const corvid::CGRect& frame, const compositor::WindowIdentifier& window) const;

    void placeOwnWindows(const std::vector<Client>& clients);

    Session& session;
    compositor::WindowTable& table;
    linux::MainLoop& mainLoop;
    compositor::TableReader reader;
    compositor::WindowKinds kinds;
    /// Those that were there at the last reading.
    std::map<compositor::WindowIdentifier, Client> known;
    /// Empty until it is read.
    std::optional<double> configuredBorder;
    std::map<compositor::WindowIdentifier, double> borders;
    compositor::OwnPlaces ownPlaces;
};

} // namespace platform::hyprland
