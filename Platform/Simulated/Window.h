#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Simulated/AttributeFaults.h"

#include <deque>
#include <limits>
#include <string>
#include <variant>

namespace platform::simulated {

/// The sizes that a window takes, by its application's rules.
struct SizeRules {
    corvid::CGSize minimum{0, 0};
    corvid::CGSize maximum{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    /// Steps above the minimum in which the window grows, as a terminal's do; 0 for any size.
    corvid::CGSize increment{0, 0};
    /// The window never changes its size.
    bool isFixed = false;

    /// The size that a window of size `current` takes for a requested one, `asked`.
    [[nodiscard]] corvid::CGSize settle(corvid::CGSize asked, corvid::CGSize current) const;
};

/// The delay until a window shows that it was moved.
struct Lateness {
    /// That many readings of its position or size still return the old ones.
    int readings = 0;
    /// That much time has to pass.
    Duration time{};
};

/// The properties of a window at its opening.
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

    /// The window's present frame, in points in the accessibility space.
    [[nodiscard]] corvid::CGRect frame();

    /// The frame as the accessibility interface returns it: a reading that the delay counts.
    [[nodiscard]] corvid::CGRect readFrame();

    /// Moves the window at once, regardless of its rules, as its application or the user does.
    void moveTo(corvid::CGRect frame);

    /// Requests a position or size from the window, as the accessibility interface does.
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

    /// Fulfils the due requests, in their order.
    void settle();

    int ownNumber;
    ProcessIdentifier owner;
    const platform::MainActor& clock;
    corvid::CGRect current;
    std::deque<Pending> pending;
    bool closed = false;
};

} // namespace platform::simulated
