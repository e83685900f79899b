#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/AccessObstacle.h"
#include "Platform/NotificationCenter.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

/// A process as the desktop names it. Positive numbers are process ids of this machine; a backend gives a negative
/// number, stable for as long as the owner lives, to an owner whose process it cannot know (a remote display client).
using ProcessIdentifier = std::int32_t;

/// Why an accessibility operation failed. The logic treats every error as a missing value; the values are for logs and
/// tests.
enum class AXError : std::int32_t {
    success = 0,
    failure = -25200,
    illegalArgument = -25201,
    invalidUIElement = -25202,
    cannotComplete = -25204,
    attributeUnsupported = -25205,
    apiDisabled = -25211,
    noValue = -25212,
};

/// What a backend keeps behind an element. Derived by every backend; never seen by the logic.
class AXElementStorage {
public:
    AXElementStorage() = default;
    AXElementStorage(const AXElementStorage&) = delete;
    AXElementStorage& operator=(const AXElementStorage&) = delete;
    virtual ~AXElementStorage() = default;

    /// Whether both name the same application or the same window. `other` may be of another backend's type.
    [[nodiscard]] virtual bool isEqual(const AXElementStorage& other) const = 0;
};

/// A retained, comparable reference to an application or to one of its windows. Copies share the storage. A reference
/// outlives what it names: operations on a vanished window fail with `AXError::invalidUIElement`.
class AXUIElement {
public:
    explicit AXUIElement(std::shared_ptr<const AXElementStorage> storage)
        : storage(std::move(storage)) {}

    [[nodiscard]] const AXElementStorage& contents() const { return *storage; }

    friend bool operator==(const AXUIElement& a, const AXUIElement& b) { return a.storage->isEqual(*b.storage); }

private:
    std::shared_ptr<const AXElementStorage> storage;
};

/// The value of an attribute. Points are in the accessibility space, sizes in points.
using AXValue = std::variant<bool, std::string, corvid::CGPoint, corvid::CGSize, AXUIElement, std::vector<AXUIElement>>;

/// The attributes that the logic uses, and what a backend answers.
namespace AXAttribute {
/// Of an application: the `AXUIElement` of its window that has the keyboard focus. A desktop background, a panel or any
/// other surface that is not a window of the user's is not a focused window: `noValue`.
inline constexpr std::string_view focusedWindow = "AXFocusedWindow";
/// Of an application: a list of `AXUIElement`, its managed windows of every kind, oldest first.
inline constexpr std::string_view windows = "AXWindows";
/// Of a window: a text; `AXSubrole::standardWindow` for a normal document window, anything else for the others.
inline constexpr std::string_view subrole = "AXSubrole";
/// Of a window: the top-left corner of the visible outer rectangle (decorations in, shadows out).
inline constexpr std::string_view position = "AXPosition";
/// Of a window: the size of the same rectangle.
inline constexpr std::string_view size = "AXSize";
/// Of an application: a boolean, present only where the platform animates or delays window moves while it is true.
inline constexpr std::string_view enhancedUserInterface = "AXEnhancedUserInterface";
} // namespace AXAttribute

namespace AXSubrole {
inline constexpr std::string_view standardWindow = "AXStandardWindow";
} // namespace AXSubrole

namespace AccessNotification {
/// The answer of `Accessibility::obstacle` may have changed.
inline constexpr std::string_view didChange = "TesselAccessDidChangeNotification";
} // namespace AccessNotification

/// Other applications' windows: reading, writing, and whether the desktop lets us.
///
/// Main thread only. Every operation is synchronous and bounded: all that is asked of the desktop in one turn of the
/// event loop takes at most 250 ms, even if the window's owner or the window manager hangs; what did not answer by then
/// fails with `AXError::cannotComplete`.
class Accessibility {
public:
    Accessibility() = default;
    Accessibility(const Accessibility&) = delete;
    Accessibility& operator=(const Accessibility&) = delete;
    virtual ~Accessibility() = default;

    /// The element of an application. Never fails: an element of a process that does not exist fails when it is used.
    [[nodiscard]] virtual AXUIElement applicationElement(ProcessIdentifier process) = 0;

    /// Reads an attribute. A position or size read after a write of the same turn is what the window settled on:
    /// the backend waits for the owner and the window manager to have handled the write, within the bound above.
    [[nodiscard]] virtual std::expected<AXValue, AXError> copyAttributeValue(const AXUIElement& element,
                                                                             std::string_view attribute) = 0;

    /// Writes an attribute. A write is a request: the backend may hold it back and join it with later ones of the same
    /// window, but sends it before the next read of that window, and at the latest when the event loop's turn ends.
    /// A window that must not be moved (fullscreen) refuses with `cannotComplete`.
    virtual AXError setAttributeValue(const AXUIElement& element, std::string_view attribute, const AXValue& value) = 0;

    /// The process that owns a window or that an application element was made for.
    [[nodiscard]] virtual std::expected<ProcessIdentifier, AXError> processIdentifier(const AXUIElement& element) = 0;

    /// Boxes a point or a size for `setAttributeValue`; nothing where the platform cannot represent it (a coordinate
    /// that is not a finite number).
    [[nodiscard]] virtual std::optional<AXValue> createValue(corvid::CGPoint point) = 0;
    [[nodiscard]] virtual std::optional<AXValue> createValue(corvid::CGSize size) = 0;

    /// The reason why the desktop does not let this process move other applications' windows now; nothing while it
    /// does. A pure query: it never prompts and changes nothing.
    [[nodiscard]] virtual std::optional<AccessObstacle> obstacle() const = 0;

    [[nodiscard]] bool isProcessTrusted() const { return !obstacle(); }

    /// The same answer; where it is no and the desktop has a way to ask the user, that is shown (without waiting for
    /// the answer).
    virtual bool isProcessTrustedWithPrompt() = 0;

    /// Posts `AccessNotification::didChange`, in a turn of the event loop of its own. Always the same center. A desktop
    /// does not notice every change, so an observer asks from time to time as well.
    [[nodiscard]] const std::shared_ptr<NotificationCenter>& notificationCenter() const { return center; }

private:
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
};

} // namespace platform
