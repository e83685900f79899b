#pragma once

#include "Platform/Compositor/Window.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace platform::compositor {

/// What is known of the windows of a compositor: its door keeps it up to date, and everybody else reads it without
/// asking the compositor. Main thread only.
class WindowTable {
public:
    /// Called synchronously with each change; must not change the table.
    class Follower {
    public:
        Follower() = default;
        Follower(const Follower&) = delete;
        Follower& operator=(const Follower&) = delete;
        virtual ~Follower() = default;

        /// A window that was not known. `wasThere`: it was there when the door opened.
        virtual void windowAppeared(const WindowIdentifier& identifier, const Window& window, bool wasThere) = 0;
        /// The clues that identify its application have changed.
        virtual void windowChangedIdentity(const WindowIdentifier& identifier, const Window& window) = 0;
        /// It can be dealt with. Once for each window, after it appeared; at once for those that were there.
        virtual void windowBecameReady(const WindowIdentifier& identifier, const Window& window) = 0;
        /// It is gone; `window` is what was known of it.
        virtual void windowVanished(const WindowIdentifier& identifier, const Window& window) = 0;
    };

    /// All that a door learns when it opens.
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
    void setFollower(Follower& told);

    /// Called synchronously when the door has opened or closed; must not change the table.
    void onDoorChange(std::function<void()> changed) { doorChanged = std::move(changed); }

    // For the door.

    /// The door is open, and this is what there is. What was known and is not there any more has vanished; what was not
    /// known counts as having been there.
    void open(Contents contents);
    /// The door is closed. The windows are not taken for gone: they are there again when it opens.
    void close();
    /// A window that is new, or as it is now.
    void put(const WindowIdentifier& identifier, Window window);
    void remove(const WindowIdentifier& identifier);
    void setFocused(std::optional<WindowIdentifier> identifier) { focusedWindow = std::move(identifier); }
    void setOutputs(std::vector<Output> present) { presentOutputs = std::move(present); }

    // For everybody.

    [[nodiscard]] bool isOpen() const { return doorIsOpen; }

    /// Null where no such window is known.
    [[nodiscard]] const Window* find(const WindowIdentifier& identifier) const;
    /// Oldest first.
    [[nodiscard]] std::vector<WindowIdentifier> windows() const;
    /// Those of one process, oldest first.
    [[nodiscard]] std::vector<WindowIdentifier> windowsOf(ProcessIdentifier process) const;

    /// The window that has the keyboard; nothing while none has.
    [[nodiscard]] const std::optional<WindowIdentifier>& focused() const { return focusedWindow; }

    /// The primary one first.
    [[nodiscard]] const std::vector<Output>& outputs() const { return presentOutputs; }

    /// Rises from one new window to the next; zero for those that were there when the door opened.
    [[nodiscard]] std::uint64_t arrivalOf(const WindowIdentifier& identifier) const;
    /// The arrival of the newest window.
    [[nodiscard]] std::uint64_t lastArrival() const { return arrivals; }

private:
    struct Entry {
        Window window;
        /// The place in the order of appearance.
        std::uint64_t order = 0;
        std::uint64_t arrival = 0;
    };

    void add(const WindowIdentifier& identifier, Window window, bool wasThere);
    void change(const WindowIdentifier& identifier, Entry& entry, Window window);

    Follower* follower = nullptr;
    std::function<void()> doorChanged;
    bool doorIsOpen = false;
    std::map<WindowIdentifier, Entry> entries;
    std::optional<WindowIdentifier> focusedWindow;
    std::vector<Output> presentOutputs;
    std::uint64_t arrivals = 0;
    std::uint64_t orders = 0;
};

} // namespace platform::compositor
