#include "Platform/Simulated/Application.h"

#include "Platform/Simulated/Applications.h"
#include "Platform/Simulated/Element.h"

#include <memory>
#include <utility>

namespace platform::simulated {

Application::Application(Applications& desktop, ApplicationOptions options)
    : desktop(desktop)
    , options(std::move(options)) {
}

Window& Application::addWindow(WindowOptions windowOptions) {
    Window& window = desktop.makeWindow(options.process, std::move(windowOptions));
    if (focusedWindow == nullptr) {
        focusedWindow = &window;
    }
    return window;
}

Window& Application::openWindow(WindowOptions windowOptions) {
    Window& window = addWindow(std::move(windowOptions));
    if (desktop.windowOpened) {
        desktop.windowOpened(window);
    }
    return window;
}

std::vector<Window*> Application::windows() const {
    return desktop.windowsOf(options.process);
}

AXUIElement Application::element() const {
    return AXUIElement(std::make_shared<Element>(options.process, Element::applicationItself));
}

} // namespace platform::simulated
