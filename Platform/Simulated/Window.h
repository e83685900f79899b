#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Accessibility.h"
#include "Platform/MainActor.h"
#include "Platform/Simulated/AttributeFaults.h"

#include <deque>
#include <limits>
#include <string>
#include <variant>

namespace platform::simulated {

/// Which sizes a window takes, as its application decides.
struct SizeRules {
    corvid::CGSize minimum{0, 0};
    corvid::CGSize maximum{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    /// Steps above the minimum in which the window grows, as a terminal's do; 0 for any size.
    corvid::CGSize increment{0, 0};
    /// The window never changes its size.
    bool isFixed = false;

    /// The size that a window of size `current` takes when it is asked for `asked`.
    [[nodiscard]] corvid::CGSize settle(corvid::CGSize asked, corvid::CGSize current) const;
};

/// How long a window takes until it shows that it was moved.
struct Lateness {
    /// So many readings of its position or size still give the old ones.
    int readings = 0;
    /// So much time has to pass.
    Duration time{};
};

/// What a window is like when it opens.
struct WindowOptions {
    /// In points in the accessibility space.
    corvid::CGRect frame{{100, 100}, {800, 600}};
    std::string subrole{AXSubrole::standardWindow};
    SizeRules sizes{};
    Lateness lateness{};
};

/// A window of another application.
class Window {
public:
    Window(int number, ProcessIdentifier process, const platform::MainActor& clock, WindowOptions options);

    [[nodiscard]] int number() const { return ownNumber; }
    [[nodiscard]] ProcessIdentifier process() const { return owner; }
    [[nodiscard]] AXUIElement element() const;

    /// The frame that the window has now, in points in the accessibility space.
    [[nodiscard]] corvid::CGRect frame();

    /// The frame as somebody sees it who asks through the accessibility interface: a reading that lateness counts.
    [[nodiscard]] corvid::CGRect readFrame();

    /// Moves the window at once, whatever its rules, as its application or the user does.
    void moveTo(corvid::CGRect frame);

    /// Asks the window for a position or size, as the accessibility interface does.
    void request(std::variant<corvid::CGPoint, corvid::CGSize> wish);

    void close() { closed = true; }
    [[nodiscard]] bool isClosed() const { return closed; }

    std::string subrole;
    SizeRules sizes;
    Lateness lateness;
    AttributeFaults faults;

private:
    struct Pending {
        std::variant<corvid::CGPoint, corvid::CGSize> wish;
        int readingsLeft;
        Instant due;
    };

    /// Fulfils the wishes whose time has come, in the order in which they were made.
    void settle();

    int ownNumber;
    ProcessIdentifier owner;
    const platform::MainActor& clock;
    corvid::CGRect current;
    std::deque<Pending> pending;
    bool closed = false;
};

} // namespace platform::simulated
