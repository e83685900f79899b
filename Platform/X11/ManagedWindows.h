#pragma once

#include "Platform/MainActor.h"
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

/// What somebody wants to know of a window beyond its being managed. Both cost wake-ups, so they are for the few
/// windows that need them.
struct WindowInterest {
    /// Changes of what identifies its application.
    bool identity = false;
    /// Its destruction, at once and while it is managed. Also brings events whenever it is moved.
    bool destruction = false;
};

/// A window that the window manager has managed and that exists.
struct ManagedWindow {
    ProcessIdentifier process = 0;
    /// Rises from one new window to the next; zero for those that were there from the start.
    std::uint64_t arrival = 0;
    /// Whether it is in `_NET_CLIENT_LIST` now. A window that its program hides, or whose window manager is just being
    /// replaced, is not, and comes back as the same window.
    bool isListed = true;
    /// Whether the window manager has finished taking it in, so that its kind and frame are final.
    bool isReady = false;
    WindowInterest interest;
};

/// Follows `_NET_CLIENT_LIST`: which windows are new, when they can be dealt with, and which are gone.
///
/// A list that has changed costs one round trip, whatever has changed in it. A new window is asked for its application
/// there and then; that the window manager has finished with it is learned from a fence, without waiting. A window that
/// has left the list is gone only if it does not exist any more. What the list claims is not taken for granted: it may
/// name windows that are gone, and their ids may be another program's by now.
class ManagedWindows {
public:
    /// Told synchronously; must not call `work` or `handle`.
    class Follower {
    public:
        Follower() = default;
        Follower(const Follower&) = delete;
        Follower& operator=(const Follower&) = delete;
        virtual ~Follower() = default;

        /// A window that was not known is in the list. `wasThere`: it was at the very start.
        virtual WindowInterest windowAppeared(xcb_window_t window, const linux::ApplicationClues& clues,
                                              bool wasThere) = 0;
        /// What identifies its application has changed, and there was an interest in that.
        virtual void windowChangedIdentity(xcb_window_t window, const linux::ApplicationClues& clues) = 0;
        /// The window manager has finished with a new window. Once for each, in the order of appearance.
        virtual void windowBecameReady(xcb_window_t window, const ManagedWindow& facts) = 0;
        /// A window is destroyed. `facts` are what was known of it.
        virtual void windowVanished(xcb_window_t window, const ManagedWindow& facts) = 0;
    };

    ManagedWindows(Connection& connection, EventSelection& selection, MainActor& mainActor);

    /// Whom to tell. Before that nothing is followed.
    void start(Follower& told) { follower = &told; }

    /// The list as it has just been read. The first one is the start; where it is empty because no window manager is in
    /// charge yet, or not any more, the windows that are shown count as having been there.
    void follow(const std::vector<xcb_window_t>& clients);

    /// Whether `work` has something to do.
    [[nodiscard]] bool hasWork() const { return isDue; }

    /// Finds out about what has changed, in one round trip within the turn's time. Very many changes take several
    /// calls.
    void work();

    /// Looks whether the event is about one of these windows.
    void handle(const xcb_generic_event_t& event);

    /// The window's facts; null where it is not known.
    [[nodiscard]] const ManagedWindow* find(xcb_window_t window) const;

    /// The arrival of the newest window.
    [[nodiscard]] std::uint64_t lastArrival() const { return arrivals; }

    /// Ends the interest in changes of what identifies its application.
    void endIdentityInterest(xcb_window_t window);

    /// Forgets the windows of a process that has ended. One that lingers is not taken for a new one.
    void forgetOwner(ProcessIdentifier process);

private:
    struct Changes {
        std::vector<xcb_window_t> arrived;
        std::vector<xcb_window_t> returned;
        std::vector<xcb_window_t> departed;
        std::vector<xcb_window_t> renamed;
    };

    /// New windows that wait for the answer to one question of the fence.
    struct Unfinished {
        std::uint16_t question = 0;
        std::vector<xcb_window_t> windows;
    };

    void workLater();
    [[nodiscard]] Changes findChanges();
    void askAndTell(const Changes& changes);
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
    /// Those that were there from the start and were not asked yet.
    std::set<xcb_window_t> unaskedFromStart;
    /// Windows in the list whose process has ended, and that process.
    std::map<xcb_window_t, ProcessIdentifier> orphans;
    /// Windows in the list that were nobody's when they were asked. Not asked again before the list is read again: it
    /// may name as many as it likes.
    std::set<xcb_window_t> unknown;
    std::set<xcb_window_t> renamed;
    std::deque<Unfinished> unfinished;
    std::unique_ptr<ScheduledWork> patience;
    std::unique_ptr<ScheduledWork> retry;
};

} // namespace platform::x11
