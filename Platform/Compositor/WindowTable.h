#pragma once

#include "Platform/Compositor/Window.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace platform::compositor {

/// The known state of a compositor's windows: its `WindowAccess` keeps it up to date, and all other code reads it
/// without a request to the compositor. Main thread only.
class WindowTable {
public:
    /// Called synchronously with each change; must not change the table.
    class Follower {
    public:
        Follower() = default;
        Follower(const Follower&) = delete;
        Follower& operator=(const Follower&) = delete;
        virtual ~Follower() = default;

        /// A new window. `wasThere`: it was there when the access began.
        virtual void windowAppeared(const WindowIdentifier& identifier, const Window& window, bool wasThere) = 0;
        /// The clues that identify its application have changed.
        virtual void windowChangedIdentity(const WindowIdentifier& identifier, const Window& window) = 0;
        /// It is ready. Once for each window, after it appeared; at once for those that were there.
        virtual void windowBecameReady(const WindowIdentifier& identifier, const Window& window) = 0;
        /// It is gone; `window` is its last state.
        virtual void windowVanished(const WindowIdentifier& identifier, const Window& window) = 0;
    };

    /// The state that is read when the access begins.
    struct Contents {
        /// Oldest first.
        std::vector<std::pair<WindowIdentifier, Window>> windows;
        std::optional<WindowIdentifier> focused;
        /// The primary one first.
        std::vector<Output> outputs;
    };

    WindowTable() = default;
    WindowTable(const WindowTable&) = delete;
    WindowTable& operator=(const WindowTable&) = delete;
    ~WindowTable() = default;

    /// Sets the one follower. Windows that are known already are reported at once, as having been there.
    void setFollower(Follower& newFollower);

    /// Called synchronously when the access has begun or ended; must not change the table.
    void onAccessChange(std::function<void()> changed) { accessChanged = std::move(changed); }

    // For the window access.

    /// The access has begun, with this state. Known windows that are missing from it have vanished; unknown windows in
    /// it count as having been there.
    void open(Contents contents);
    /// The access has ended. The windows do not count as gone: they are there again when it begins anew.
    void close();
    /// The whole state, read again: missing windows have vanished, unknown ones are new. The outputs are there before
    /// anybody is told, because an observer may ask for them.
    void update(Contents contents);
    /// A new window, or the new state of one.
    void put(const WindowIdentifier& identifier, Window window);
    void remove(const WindowIdentifier& identifier);
    void setFocused(std::optional<WindowIdentifier> identifier) { focusedWindow = std::move(identifier); }
    void setOutputs(std::vector<Output> present) { presentOutputs = std::move(present); }

    // For all readers.

    [[nodiscard]] bool isOpen() const { return accessIsOpen; }

    /// Null for an unknown window.
    [[nodiscard]] const Window* find(const WindowIdentifier& identifier) const;
    /// Oldest first.
    [[nodiscard]] std::vector<WindowIdentifier> windows() const;
    /// Those of one process, oldest first.
    [[nodiscard]] std::vector<WindowIdentifier> windowsOf(ProcessIdentifier process) const;

    /// The focused window; empty without one.
    [[nodiscard]] const std::optional<WindowIdentifier>& focused() const { return focusedWindow; }

    /// The primary one first.
    [[nodiscard]] const std::vector<Output>& outputs() const { return presentOutputs; }

    /// Increases from one new window to the next; zero for those that were there when the access began.
    [[nodiscard]] std::uint64_t arrivalOf(const WindowIdentifier& identifier) const;
    /// The arrival of the newest window.
    [[nodiscard]] std::uint64_t lastArrival() const { return arrivals; }

private:
    struct Entry {
        Window window;
        /// The index in the order of appearance.
        std::uint64_t order = 0;
        std::uint64_t arrival = 0;
    };

    void removeAllBut(const Contents& contents);
    void add(const WindowIdentifier& identifier, Window window, bool wasThere);
    void change(const WindowIdentifier& identifier, Entry& entry, Window window);

    Follower* follower = nullptr;
    std::function<void()> accessChanged;
    bool accessIsOpen = false;
    std::map<WindowIdentifier, Entry> entries;
    std::optional<WindowIdentifier> focusedWindow;
    std::vector<Output> presentOutputs;
    std::uint64_t arrivals = 0;
    std::uint64_t orders = 0;
};

} // namespace platform::compositor
