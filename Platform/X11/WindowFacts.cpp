#include "Platform/X11/WindowFacts.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <array>
#include <span>

namespace platform::x11 {

namespace {

// Borders beyond this are no borders but a broken property, and adding them up must stay far from overflow.
constexpr std::uint32_t widestBorder = 32767;

Extents extents(const std::vector<std::uint32_t>& words) {
    if (words.size() < 4 || std::ranges::any_of(words, [](std::uint32_t word) { return word > widestBorder; })) {
        return {};
    }
    const auto width = [&words](std::size_t index) { return static_cast<std::int32_t>(words[index]); };
    return {.left = width(0), .right = width(1), .top = width(2), .bottom = width(3)};
}

std::optional<WindowKind> kindOfType(const AtomTable& atoms, xcb_atom_t type) {
    struct KnownType {
        Atom name;
        WindowKind kind;
    };

    static constexpr std::array knownTypes{
        KnownType{Atom::netWmWindowTypeNormal, WindowKind::standard},
        KnownType{Atom::netWmWindowTypeDialog, WindowKind::auxiliary},
        KnownType{Atom::netWmWindowTypeUtility, WindowKind::auxiliary},
        KnownType{Atom::netWmWindowTypeToolbar, WindowKind::auxiliary},
        KnownType{Atom::netWmWindowTypeMenu, WindowKind::auxiliary},
        KnownType{Atom::netWmWindowTypeSplash, WindowKind::auxiliary},
        KnownType{Atom::netWmWindowTypeDesktop, WindowKind::furniture},
        KnownType{Atom::netWmWindowTypeDock, WindowKind::furniture},
        KnownType{Atom::netWmWindowTypeDropdownMenu, WindowKind::furniture},
        KnownType{Atom::netWmWindowTypePopupMenu, WindowKind::furniture},
        KnownType{Atom::netWmWindowTypeTooltip, WindowKind::furniture},
        KnownType{Atom::netWmWindowTypeNotification, WindowKind::furniture},
        KnownType{Atom::netWmWindowTypeCombo, WindowKind::furniture},
        KnownType{Atom::netWmWindowTypeDnd, WindowKind::furniture},
    };
    const auto* known =
        std::ranges::find_if(knownTypes, [&](const KnownType& entry) { return atoms[entry.name] == type; });
    if (type == XCB_ATOM_NONE || known == knownTypes.end()) {
        return std::nullopt;
    }
    return known->kind;
}

} // namespace

WindowKind windowKind(const AtomTable& atoms, const std::vector<std::uint32_t>& types, bool isTransient) {
    for (const xcb_atom_t type : types) {
        if (const auto kind = kindOfType(atoms, type)) {
            return *kind;
        }
    }
    return isTransient ? WindowKind::auxiliary : WindowKind::standard;
}

WindowFactsRequest::WindowFactsRequest(Connection& connection, xcb_window_t window)
    : geometry(xcb_get_geometry(connection.raw(), window))
    , origin(xcb_translate_coordinates(connection.raw(), window, connection.root(), 0, 0))
    , decoration(requestProperty(connection, window, connection.atom(Atom::netFrameExtents), 4))
    , shadow(requestProperty(connection, window, connection.atom(Atom::gtkFrameExtents), 4))
    , sizeHints(requestSizeHints(connection, window))
    , states(requestProperty(connection, window, connection.atom(Atom::netWmState)))
    , types(requestProperty(connection, window, connection.atom(Atom::netWmWindowType)))
    , transientFor(requestProperty(connection, window, XCB_ATOM_WM_TRANSIENT_FOR, 1))
    , owner(connection, window) {
}

std::optional<WindowFacts> WindowFactsRequest::read(Connection& connection) {
    const auto size = connection.reply<xcb_get_geometry_reply_t>(geometry);
    const auto corner = connection.reply<xcb_translate_coordinates_reply_t>(origin);
    const auto decorationWords = readWords(connection, decoration);
    const auto shadowWords = readOptionalWords(connection, shadow);
    const SizeHints hints = sizeHintsFromValues(readWords(connection, sizeHints));
    const auto stateWords = readWords(connection, states);
    const auto typeWords = readWords(connection, types);
    const auto transientWords = readWords(connection, transientFor);
    const ProcessIdentifier process = owner.read(connection);
    if (!size || !corner) {
        return std::nullopt;
    }

    const auto hasState = [&](Atom state) {
        return std::ranges::find(stateWords, connection.atom(state)) != stateWords.end();
    };
    const bool isTransient = !transientWords.empty() && transientWords.front() != XCB_WINDOW_NONE;
    return WindowFacts{
        .geometry = {.client = {{static_cast<double>(corner->dst_x), static_cast<double>(corner->dst_y)},
                                {static_cast<double>(size->width), static_cast<double>(size->height)}},
                     .decoration = extents(decorationWords),
                     .shadow = extents(shadowWords.value_or(std::vector<std::uint32_t>{}))},
        .borderWidth = size->border_width,
        .sizeHints = hints,
        .drawsOwnDecoration = shadowWords.has_value(),
        .isMaximizedHorizontally = hasState(Atom::netWmStateMaximizedHorz),
        .isMaximizedVertically = hasState(Atom::netWmStateMaximizedVert),
        .isFullscreen = hasState(Atom::netWmStateFullscreen),
        .skipsTaskBars = hasState(Atom::netWmStateSkipTaskbar),
        .kind = windowKind(connection.atomTable(), typeWords, isTransient),
        .process = process,
    };
}

} // namespace platform::x11
