#include "Platform/X11/ApplicationClues.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

std::string_view untilZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

} // namespace

WindowClass parseWindowClass(std::string_view bytes) {
    const std::string_view instance = untilZero(bytes);
    bytes.remove_prefix(std::min(bytes.size(), instance.size() + 1));
    return {.instance = std::string(instance), .className = std::string(untilZero(bytes))};
}

std::string namedApplicationId(std::string_view gtkApplicationId, std::string_view kdeDesktopFile) {
    const std::string_view given = untilZero(gtkApplicationId);
    if (!given.empty()) {
        return std::string(given);
    }
    constexpr std::string_view suffix = ".desktop";
    std::string_view file = untilZero(kdeDesktopFile);
    // Without a slash this removes nothing.
    file.remove_prefix(file.rfind('/') + 1);
    if (file.ends_with(suffix)) {
        file.remove_suffix(suffix.size());
    }
    return std::string(file);
}

bool isApplicationClue(const AtomTable& atoms, xcb_atom_t property) {
    return property == XCB_ATOM_WM_CLASS || property == atoms[Atom::gtkApplicationId] ||
           property == atoms[Atom::kdeNetWmDesktopFile];
}

ApplicationCluesRequest::ApplicationCluesRequest(Connection& connection, xcb_window_t window)
    : attributes(xcb_get_window_attributes(connection.raw(), window))
    , owner(connection, window)
    , windowClass(requestProperty(connection, window, XCB_ATOM_WM_CLASS))
    , gtkApplicationId(requestProperty(connection, window, connection.atom(Atom::gtkApplicationId)))
    , kdeDesktopFile(requestProperty(connection, window, connection.atom(Atom::kdeNetWmDesktopFile))) {
}

std::optional<linux::ApplicationClues> ApplicationCluesRequest::read(Connection& connection) const {
    const auto window = connection.reply<xcb_get_window_attributes_reply_t>(attributes);
    const ProcessIdentifier process = owner.read(connection);
    WindowClass parsed = parseWindowClass(readText(connection, windowClass));
    const std::string gtkText = readText(connection, gtkApplicationId);
    const std::string kdeText = readText(connection, kdeDesktopFile);
    if (!window || window->override_redirect != 0) {
        return std::nullopt;
    }
    return linux::ApplicationClues{.process = process,
                                   .applicationId = namedApplicationId(gtkText, kdeText),
                                   .windowClass = std::move(parsed.className),
                                   .windowInstance = std::move(parsed.instance)};
}

} // namespace platform::x11
