#pragma once

#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/X11/ApplicationClues.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/Fence.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <vector>

namespace platform::x11 {

/// Further events of a window that an observer needs. Both cost wake-ups, so they are for the few windows that need
/// them.
struct WindowInterest {
    /// Changes of the properties that identify its application.
    bool identity = false;
    /// Its destruction, at once and while it is managed. This also sends an event at every move.
    bool destruction = false;
};

/// An existing window that the window manager has managed.
struct ManagedWindow {
    ProcessIdentifier process = 0;
    /// Increases from one new window to the next; zero for those that were there at the start.
    std::uint64_t arrival = 0;
    /// Whether it is in `_NET_CLIENT_LIST` now. A hidden window leaves the list, and so does every window while its
    /// window manager is replaced; it comes back as the same window.
    bool isListed = true;
    /// Whether the window manager has finished mapping it, so that its kind and frame are final.
    bool isReady = false;
    WindowInterest interest;
};

/// Follows `_NET_CLIENT_LIST`: which windows are new, when they are ready, and which are gone.
///
/// A changed list costs one round trip, for any number of changes. This round trip also reads the application of a new
/// window; a fence shows without waiting when the window manager has finished with it. A window that has left the list
/// is gone only if it no longer exists. The list is not trusted: it may name windows that are gone, and their ids may
/// be another program's by now.
class ManagedWindows {
public:
    /// Notified synchronously; must not call `work` or `handle`.
    class Follower {
    public:
        Follower() = default;
        Follower(const Follower&) = delete;
        Follower& operator=(const Follower&) = delete;
        virtual ~Follower() = default;

        /// A new window is in the list. `wasThere`: it was there at the very start.
        virtual WindowInterest windowAppeared(xcb_window_t window, const linux::ApplicationClues& clues,
                                              bool wasThere) = 0;
        /// The properties that identify its application have changed, and an observer needs that.
        virtual void windowChangedIdentity(xcb_window_t window, const linux::ApplicationClues& clues) = 0;
        /// The window manager has finished with a new window. Once for each, in the order of appearance.
        virtual void windowBecameReady(xcb_window_t window, const ManagedWindow& facts) = 0;
        /// A window is destroyed. `facts` are its last known ones.
        virtual void windowVanished(xcb_window_t window, const ManagedWindow& facts) = 0;
    };

    ManagedWindows(Connection& connection, EventSelection& selection, MainActor& mainActor);

    /// Sets the follower. Before that no window is followed.
    void start(Follower& newFollower) { follower = &newFollower; }

    /// The list as just read. The first one is the start; if it is empty because there is no window manager yet, or any
    /// more, the shown windows count as having been there.
    void follow(const std::vector<xcb_window_t>& clients);

    /// Whether `work` has pending work.
    [[nodiscard]] bool hasWork() const { return isDue; }

    /// Reads the changes, in one round trip within the turn's time. Very many changes take several calls.
    void work();

    /// Handles the event if it is about one of these windows.
    void handle(const xcb_generic_event_t& event);

    /// The window's facts; null for an unknown window.
    [[nodiscard]] const ManagedWindow* find(xcb_window_t window) const;

    /// The arrival of the newest window.
    [[nodiscard]] std::uint64_t lastArrival() const { return arrivals; }

    /// Ends the notifications of changed identification.
    void endIdentityInterest(xcb_window_t window);

    /// Forgets the windows of a process that has ended. A window that remains does not count as new.
    void forgetOwner(ProcessIdentifier process);

private:
    struct Changes {
        std::vector<xcb_window_t> arrived;
        std::vector<xcb_window_t> returned;
        std::vector<xcb_window_t> departed;
        std::vector<xcb_window_t> renamed;
    };

    /// New windows that wait for one answer of the fence.
    struct Unfinished {
        std::uint16_t question = 0;
        std::vector<xcb_window_t> windows;
    };

    void workLater();
    [[nodiscard]] Changes findChanges();
    void askAndReport(const Changes& changes);
    void takeArrival(xcb_window_t window, const std::optional<linux::ApplicationClues>& clues);
    [[nodiscard]] bool isOrphan(xcb_window_t window, const std::optional<linux::ApplicationClues>& clues);
    void takeReturn(xcb_window_t window);
    void takeDeparture(xcb_window_t window, bool exists);
    void vanish(xcb_window_t window);
    void awaitReadiness(std::uint16_t question, std::vector<xcb_window_t> awaited);
    void finish(std::size_t count);
    void selectEvents(xcb_window_t window, const ManagedWindow& facts);

    Connection& connection;
    EventSelection& selection;
    MainActor& mainActor;
    Fence fence;
    Follower* follower = nullptr;
    bool isDue = false;
    std::optional<std::vector<xcb_window_t>> list;
    std::map<xcb_window_t, ManagedWindow> windows;
    std::uint64_t arrivals = 0;
    /// Those that were there at the start and have not been read yet.
    std::set<xcb_window_t> unaskedFromStart;
    /// Windows in the list whose process has ended, and that process.
    std::map<xcb_window_t, ProcessIdentifier> orphans;
    /// Windows in the list that were gone, or no client's, when they were read. They are not read again before the list
    /// is, because it may name any number of them.
    std::set<xcb_window_t> unknown;
    std::set<xcb_window_t> renamed;
    std::deque<Unfinished> unfinished;
    std::unique_ptr<ScheduledWork> patience;
    std::unique_ptr<ScheduledWork> retry;
};

} // namespace platform::x11
