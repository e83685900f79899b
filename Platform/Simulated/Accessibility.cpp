#include "Platform/Simulated/Accessibility.h"

#include "Platform/Simulated/Element.h"

#include <cmath>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace platform::simulated {

namespace {

using Answer = std::expected<AXValue, AXError>;

std::string name(const Element& element) {
    return element.window == Element::applicationItself ? "application " + std::to_string(element.process)
                                                        : "window " + std::to_string(element.window);
}

std::string name(const AXUIElement& element) {
    const auto* ours = dynamic_cast<const Element*>(&element.contents());
    return ours == nullptr ? "foreign element" : name(*ours);
}

/// Texts for the trace of each kind of value.
struct Describe {
    std::string operator()(bool value) const { return value ? "true" : "false"; }

    std::string operator()(const std::string& value) const { return "\"" + value + "\""; }

    std::string operator()(corvid::CGPoint value) const { return text(value); }

    std::string operator()(corvid::CGSize value) const { return text(value); }

    std::string operator()(const AXUIElement& value) const { return name(value); }

    std::string operator()(const std::vector<AXUIElement>& value) const {
        std::string list = "[";
        for (const AXUIElement& element : value) {
            list += (list.size() > 1 ? ", " : "") + name(element);
        }
        return list + "]";
    }
};

Answer read(const Application& application, std::string_view attribute) {
    if (attribute == AXAttribute::focusedWindow) {
        if (application.focusedWindow == nullptr || application.focusedWindow->isClosed()) {
            return std::unexpected(AXError::noValue);
        }
        return application.focusedWindow->element();
    }
    if (attribute == AXAttribute::windows) {
        std::vector<AXUIElement> elements;
        for (const Window* window : application.windows()) {
            elements.push_back(window->element());
        }
        return elements;
    }
    if (attribute == AXAttribute::enhancedUserInterface && application.enhancedUserInterface) {
        return *application.enhancedUserInterface;
    }
    return std::unexpected(AXError::attributeUnsupported);
}

Answer read(Window& window, std::string_view attribute) {
    if (attribute == AXAttribute::subrole) {
        return window.subrole;
    }
    if (attribute == AXAttribute::position) {
        return window.readFrame().origin;
    }
    if (attribute == AXAttribute::size) {
        return window.readFrame().size;
    }
    return std::unexpected(AXError::attributeUnsupported);
}

AXError write(Application& application, std::string_view attribute, const AXValue& value) {
    if (attribute == AXAttribute::enhancedUserInterface && application.enhancedUserInterface) {
        application.enhancedUserInterface = value;
        return AXError::success;
    }
    return AXError::attributeUnsupported;
}

AXError write(Window& window, std::string_view attribute, const AXValue& value) {
    if (attribute == AXAttribute::position) {
        const auto* position = std::get_if<corvid::CGPoint>(&value);
        if (position == nullptr) {
            return AXError::illegalArgument;
        }
        window.request(*position);
        return AXError::success;
    }
    if (attribute == AXAttribute::size) {
        const auto* size = std::get_if<corvid::CGSize>(&value);
        if (size == nullptr) {
            return AXError::illegalArgument;
        }
        window.request(*size);
        return AXError::success;
    }
    return AXError::attributeUnsupported;
}

using Target = std::variant<Application*, Window*>;

/// The application or the window that an element names, or why there is none.
std::expected<Target, AXError> resolve(const Applications& applications, const AXUIElement& element) {
    const auto* ours = dynamic_cast<const Element*>(&element.contents());
    if (ours == nullptr) {
        return std::unexpected(AXError::illegalArgument);
    }
    if (ours->window == Element::applicationItself) {
        if (Application* application = applications.find(ours->process)) {
            return application;
        }
    } else if (Window* window = applications.findWindow(ours->window)) {
        return window;
    }
    return std::unexpected(AXError::invalidUIElement);
}

ProcessIdentifier process(const Application& application) {
    return application.processIdentifier();
}

ProcessIdentifier process(const Window& window) {
    return window.process();
}

} // namespace

AXUIElement Accessibility::applicationElement(ProcessIdentifier process) {
    return AXUIElement(std::make_shared<Element>(process, Element::applicationItself));
}

Answer Accessibility::copyAttributeValue(const AXUIElement& element, std::string_view attribute) {
    trace.record("read " + name(element) + " " + std::string(attribute));
    if (const AXError error = begin(); error != AXError::success) {
        return std::unexpected(error);
    }
    const auto target = resolve(applications, element);
    if (!target) {
        return std::unexpected(target.error());
    }
    return std::visit(
        [attribute](auto* found) {
            const std::optional<Answer> fault = found->faults.read(attribute);
            return fault ? *fault : read(*found, attribute);
        },
        *target);
}

AXError Accessibility::setAttributeValue(const AXUIElement& element, std::string_view attribute, const AXValue& value) {
    trace.record("write " + name(element) + " " + std::string(attribute) + " " + std::visit(Describe{}, value));
    if (const AXError error = begin(); error != AXError::success) {
        return error;
    }
    const auto target = resolve(applications, element);
    if (!target) {
        return target.error();
    }
    return std::visit(
        [attribute, &value](auto* found) {
            const std::optional<AXError> fault = found->faults.write(attribute);
            return fault ? *fault : write(*found, attribute, value);
        },
        *target);
}

std::expected<ProcessIdentifier, AXError> Accessibility::processIdentifier(const AXUIElement& element) {
    trace.record("read " + name(element) + " " + std::string(AttributeFaults::process));
    if (const AXError error = begin(); error != AXError::success) {
        return std::unexpected(error);
    }
    const auto target = resolve(applications, element);
    if (!target) {
        return std::unexpected(target.error());
    }
    return std::visit(
        [](auto* found) -> std::expected<ProcessIdentifier, AXError> {
            const std::optional<Answer> fault = found->faults.read(AttributeFaults::process);
            if (fault && !*fault) {
                return std::unexpected(fault->error());
            }
            return process(*found);
        },
        *target);
}

std::optional<AXValue> Accessibility::createValue(corvid::CGPoint point) {
    const bool fails = failingBoxings.contains(boxings++) || failsToBoxPoints;
    return fails || !std::isfinite(point.x) || !std::isfinite(point.y) ? std::nullopt : std::optional<AXValue>(point);
}

std::optional<AXValue> Accessibility::createValue(corvid::CGSize size) {
    const bool fails = failingBoxings.contains(boxings++) || failsToBoxSizes;
    return fails || !std::isfinite(size.width) || !std::isfinite(size.height) ? std::nullopt
                                                                              : std::optional<AXValue>(size);
}

std::optional<AccessObstacle> Accessibility::obstacle() const {
    trace.record("read trust");
    return isTrusted ? std::nullopt : std::optional(reason);
}

void Accessibility::announceChange() {
    notificationCenter()->post({.name = std::string(AccessNotification::didChange), .userInfo = {}});
}

bool Accessibility::isProcessTrustedWithPrompt() {
    trace.record("request trust");
    if (!isTrusted) {
        ++prompts;
    }
    return isTrusted;
}

void Accessibility::interrupt(std::size_t operation, std::function<void()> interruption) {
    interruptions.emplace(operation, std::move(interruption));
}

void Accessibility::failOperation(std::size_t operation, AXError error) {
    failures.insert_or_assign(operation, error);
}

AXError Accessibility::begin() {
    const std::size_t operation = operations++;
    const auto [first, last] = interruptions.equal_range(operation);
    for (auto interruption = first; interruption != last; ++interruption) {
        interruption->second();
    }
    if (const auto failure = failures.find(operation); failure != failures.end()) {
        return failure->second;
    }
    return isTrusted ? AXError::success : AXError::apiDisabled;
}

} // namespace platform::simulated
