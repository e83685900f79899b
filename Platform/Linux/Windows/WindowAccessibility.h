#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Linux/Windows/Elements.h"
#include "Platform/Linux/Windows/PlacementRequest.h"
#include "Platform/Linux/Windows/WindowKind.h"
#include "Platform/Seam/Desktop/Accessibility.h"

#include <cmath>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace platform::linux {

/// Elements and their attributes for desktops where an application is a process that owns windows. Each request becomes
/// one of a few requests about a process or a window, which each desktop implements in its own way.
template <typename Name>
class WindowAccessibility : public platform::Accessibility {
public:
    [[nodiscard]] AXUIElement applicationElement(ProcessIdentifier process) final {
        return AXUIElement(std::make_shared<const ApplicationElement>(process));
    }

    [[nodiscard]] std::expected<AXValue, AXError> copyAttributeValue(const AXUIElement& element,
                                                                     std::string_view attribute) final {
        if (const auto* application = dynamic_cast<const ApplicationElement*>(&element.contents())) {
            return applicationAttribute(application->process, attribute);
        }
        if (const auto* window = dynamic_cast<const WindowElement<Name>*>(&element.contents())) {
            return windowAttribute(window->window, attribute);
        }
        return std::unexpected(AXError::invalidUIElement);
    }

    AXError setAttributeValue(const AXUIElement& element, std::string_view attribute, const AXValue& value) final {
        const auto* window = dynamic_cast<const WindowElement<Name>*>(&element.contents());
        if (window == nullptr) {
            return AXError::attributeUnsupported;
        }
        if (const AXError refusal = refusalToPlace(window->window); refusal != AXError::success) {
            return refusal;
        }
        PlacementRequest part;
        if (attribute == AXAttribute::position) {
            part.position = valueIn<corvid::CGPoint>(value);
        } else if (attribute == AXAttribute::size) {
            part.size = valueIn<corvid::CGSize>(value);
        } else {
            return AXError::attributeUnsupported;
        }
        return part.isEmpty() ? AXError::illegalArgument : place(window->window, part);
    }

    [[nodiscard]] std::expected<ProcessIdentifier, AXError> processIdentifier(const AXUIElement& element) final {
        if (const auto* application = dynamic_cast<const ApplicationElement*>(&element.contents())) {
            return application->process;
        }
        if (const auto* window = dynamic_cast<const WindowElement<Name>*>(&element.contents())) {
            return owner(window->window);
        }
        return std::unexpected(AXError::invalidUIElement);
    }

    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGPoint point) final {
        return std::isfinite(point.x) && std::isfinite(point.y) ? std::optional<AXValue>(point) : std::nullopt;
    }

    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGSize size) final {
        return std::isfinite(size.width) && std::isfinite(size.height) ? std::optional<AXValue>(size) : std::nullopt;
    }

private:
    /// The window that has the keyboard, if it is the process's and a window in a person's eyes.
    [[nodiscard]] virtual std::expected<Name, AXError> focusedWindow(ProcessIdentifier process) = 0;
    /// Oldest first.
    [[nodiscard]] virtual std::expected<std::vector<Name>, AXError> windows(ProcessIdentifier process) = 0;
    [[nodiscard]] virtual std::expected<ProcessIdentifier, AXError> owner(const Name& window) = 0;
    [[nodiscard]] virtual std::expected<WindowKind, AXError> kind(const Name& window) = 0;
    /// The visible rectangle that the window has settled on, in the accessibility space.
    [[nodiscard]] virtual std::expected<corvid::CGRect, AXError> frame(const Name& window) = 0;
    /// The reason why the window must not be placed now; `success` if it may be.
    [[nodiscard]] virtual AXError refusalToPlace(const Name& window) = 0;
    /// Takes the request, in the accessibility space; when it is carried out is up to the desktop.
    virtual AXError place(const Name& window, const PlacementRequest& part) = 0;

    template <typename Value>
    static std::optional<Value> valueIn(const AXValue& value) {
        const auto* found = std::get_if<Value>(&value);
        return found == nullptr ? std::nullopt : std::optional(*found);
    }

    static AXValue subrole(WindowKind kind) {
        switch (kind) {
        case WindowKind::standard:
            return std::string(AXSubrole::standardWindow);
        case WindowKind::auxiliary:
            return std::string("AXDialog");
        case WindowKind::ignored:
            break;
        }
        return std::string("AXUnknown");
    }

    static AXValue elements(const std::vector<Name>& windows) {
        std::vector<AXUIElement> all;
        all.reserve(windows.size());
        for (const Name& window : windows) {
            all.push_back(windowElement(window));
        }
        return all;
    }

    template <typename Answer, typename Box>
    static std::expected<AXValue, AXError> boxed(std::expected<Answer, AXError> answer, const Box& box) {
        if (!answer) {
            return std::unexpected(answer.error());
        }
        return AXValue(box(*std::move(answer)));
    }

    [[nodiscard]] std::expected<AXValue, AXError> applicationAttribute(ProcessIdentifier process,
                                                                       std::string_view attribute) {
        if (attribute == AXAttribute::focusedWindow) {
            return boxed(focusedWindow(process), &windowElement<Name>);
        }
        if (attribute == AXAttribute::windows) {
            return boxed(windows(process), &WindowAccessibility::elements);
        }
        return std::unexpected(AXError::attributeUnsupported);
    }

    [[nodiscard]] std::expected<AXValue, AXError> windowAttribute(const Name& window, std::string_view attribute) {
        if (attribute == AXAttribute::position) {
            return boxed(frame(window), [](const corvid::CGRect& visible) { return visible.origin; });
        }
        if (attribute == AXAttribute::size) {
            return boxed(frame(window), [](const corvid::CGRect& visible) { return visible.size; });
        }
        if (attribute == AXAttribute::subrole) {
            return boxed(kind(window), &WindowAccessibility::subrole);
        }
        return std::unexpected(AXError::attributeUnsupported);
    }
};

} // namespace platform::linux
