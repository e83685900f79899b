#pragma once

#include "Platform/Compositor/OwnPlaces.h"
#include "Platform/Compositor/TableReader.h"
#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Wayfire/Session.h"
#include "Platform/Wayfire/Views.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::wayfire {

/// Access to the views of Wayfire, named by their numbers.
///
/// No event tells work areas, outputs that come and go, or fullscreen windows, and those of geometry would wake this up
/// for each step of a window that is dragged. So everything is read at the first question of a turn. Events only say
/// that windows have come or gone, upon which it is read once for all of them.
class WindowAccess final : public compositor::WindowAccess, private Session::Follower {
public:
    /// A window that has been released, or has taken another size, counts as settled once it has not moved for so long.
    static constexpr std::chrono::milliseconds rest{40};

    /// Why there is no access, for `AccessObstacle`; asked only while the session is closed.
    using Obstacle = std::function<AccessObstacle()>;

    /// All must outlive this. `ownProcess`: this program's.
    WindowAccess(Session& session, compositor::WindowTable& table, linux::MainLoop& mainLoop,
                 ProcessIdentifier ownProcess, Obstacle whyClosed);

    void refresh(Instant deadline) override { reader.update(deadline); }

    AXError place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;

    [[nodiscard]] AccessObstacle obstacle() const override { return whyClosed(); }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

private:
    void sessionOpened() override { reader.begin(); }

    void sessionClosed() override;
    void sessionReported(std::string_view event, const Json& content) override;

    void sessionIsQuiet() override { reader.catchUp(); }

    /// The present state, with the facts of each view; nothing if the compositor does not answer.
    [[nodiscard]] std::optional<compositor::WindowTable::Contents> read(Instant deadline);
    /// Adds what takes a window out of a layout, and releases it if it is maximized.
    void addRelease(std::vector<Request>& requests, const compositor::WindowIdentifier& window, const ViewFacts& view,
                    Instant deadline);
    /// Waits until the window has come to rest after the requests of a placement.
    [[nodiscard]] AXError awaitRest(Connection& events, const compositor::WindowIdentifier& window,
                                    const corvid::CGRect& geometry, bool isReleased, Instant deadline);
    void placeOwnWindows(const compositor::WindowTable::Contents& present);

    Session& session;
    compositor::WindowTable& table;
    linux::MainLoop& mainLoop;
    Obstacle whyClosed;
    compositor::TableReader reader;
    std::vector<OutputFacts> outputs;
    std::map<compositor::WindowIdentifier, ViewFacts> views;
    compositor::OwnPlaces ownPlaces;
};

} // namespace platform::wayfire
