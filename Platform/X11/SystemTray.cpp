#include "Platform/X11/SystemTray.h"

#include "Platform/X11/Event.h"
#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace platform::x11 {

namespace {

/// The smallest item size of panels, in pixels.
constexpr std::uint16_t leastSize = 22;

constexpr std::uint8_t transparentDepth = 32;

/// The depth of a visual of the screen; zero without such a visual.
std::uint8_t depthOf(const xcb_screen_t& screen, xcb_visualid_t visual) {
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths)) {
        const std::span<const xcb_visualtype_t> visuals(
            xcb_depth_visuals(depths.data), static_cast<std::size_t>(xcb_depth_visuals_length(depths.data)));
        if (std::ranges::find(visuals, visual, &xcb_visualtype_t::visual_id) != visuals.end()) {
            return depths.data->depth;
        }
    }
    return 0;
}

/// Whether pixels of that depth are 32 bits each in this processor's byte order, as they are on every system with a
/// tray.
bool takesWholePixels(const Connection& connection, std::uint8_t depth) {
    const xcb_setup_t* setup = xcb_get_setup(connection.raw());
    const bool isLittle = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    const std::span<const xcb_format_t> formats(xcb_setup_pixmap_formats(setup),
                                                static_cast<std::size_t>(xcb_setup_pixmap_formats_length(setup)));
    constexpr std::uint8_t wholePixel = 32;
    const auto format = std::ranges::find(formats, depth, &xcb_format_t::depth);
    return format != formats.end() && format->bits_per_pixel == wholePixel &&
           isLittle == (std::endian::native == std::endian::little);
}

void put(Connection& connection, xcb_window_t window, xcb_gcontext_t graphics, std::uint8_t depth, corvid::CGRect place,
         const std::vector<std::uint32_t>& pixels) {
    xcb_put_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, graphics,
                  static_cast<std::uint16_t>(place.size.width), static_cast<std::uint16_t>(place.size.height),
                  static_cast<std::int16_t>(place.minX()), static_cast<std::int16_t>(place.minY()), 0, depth,
                  static_cast<std::uint32_t>(pixels.size() * sizeof pixels[0]),
                  reinterpret_cast<const std::uint8_t*>(pixels.data()));
}

} // namespace

SystemTray::SystemTray(Connection& connection, EventSelection& selection, Turn& turn, MainActor& mainActor)
    : connection(connection)
    , selection(selection)
    , turn(turn)
    , mainActor(mainActor) {
}

void SystemTray::start() {
    const std::string name = "_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber());
    const auto interned = connection.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    if (!interned) {
        askAgain();
        return;
    }
    selectionName = interned->atom;
    lookForOwner();
}

void SystemTray::askAgain() {
    constexpr std::chrono::seconds delay{1};
    constexpr std::chrono::milliseconds leeway{100};
    question = mainActor.schedule(mainActor.now() + delay, leeway, [this] { start(); });
}

std::optional<xcb_window_t> SystemTray::readOwner() const {
    const auto answer =
        connection.reply<xcb_get_selection_owner_reply_t>(xcb_get_selection_owner(connection.raw(), selectionName));
    return answer ? std::optional(answer->owner) : std::nullopt;
}

void SystemTray::lookForOwner() {
    const std::optional<xcb_window_t> answer = readOwner();
    if (!answer) {
        askAgain();
        return;
    }
    xcb_window_t found = *answer;
    if (found == owner) {
        return;
    }
    if (found != XCB_WINDOW_NONE) {
        // Subscribes to its end. It may have ended before the request: then it is no longer the owner.
        selection.select(found, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        if (const auto present = readOwner(); present != found) {
            selection.forget(found);
            found = XCB_WINDOW_NONE;
            if (!present) {
                askAgain();
            }
        }
    }
    undock();
    if (owner != XCB_WINDOW_NONE) {
        selection.select(owner, XCB_EVENT_MASK_NO_EVENT);
    }
    owner = found;
    dock();
    offerChanged();
}

void SystemTray::handle(const xcb_generic_event_t& event) {
    if (const auto* message = eventAs<xcb_client_message_event_t>(event, XCB_CLIENT_MESSAGE)) {
        constexpr std::uint8_t words = 32;
        if (message->type == connection.atom(Atom::manager) && message->format == words &&
            message->data.data32[1] == selectionName) {
            lookForOwner();
        }
    } else if (const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY);
               destroyed != nullptr && destroyed->window == owner && owner != XCB_WINDOW_NONE) {
        selection.forget(owner);
        undock();
        owner = XCB_WINDOW_NONE;
        offerChanged();
        // Its successor may have announced itself before.
        lookForOwner();
    } else if (window != XCB_WINDOW_NONE) {
        handleOwnWindow(event);
    }
}

void SystemTray::handleOwnWindow(const xcb_generic_event_t& event) {
    if (const auto* press = eventAs<xcb_button_press_event_t>(event, XCB_BUTTON_PRESS)) {
        constexpr xcb_button_t lastButton = 3; // The others are the wheel.
        if (press->event == window && press->detail <= lastButton) {
            clicked({static_cast<double>(press->root_x), static_cast<double>(press->root_y)});
        }
    } else if (const auto* exposed = eventAs<xcb_expose_event_t>(event, XCB_EXPOSE)) {
        if (exposed->window == window && exposed->count == 0) {
            paint();
        }
    } else if (const auto* configured = eventAs<xcb_configure_notify_event_t>(event, XCB_CONFIGURE_NOTIFY)) {
        if (configured->window == window && (configured->width != width || configured->height != height)) {
            width = configured->width;
            height = configured->height;
            paint();
        }
    } else if (const auto* mapped = eventAs<xcb_map_notify_event_t>(event, XCB_MAP_NOTIFY)) {
        isMapped = isMapped || mapped->window == window;
    } else if (const auto* unmapped = eventAs<xcb_unmap_notify_event_t>(event, XCB_UNMAP_NOTIFY)) {
        isMapped = isMapped && unmapped->window != window;
    } else if (const auto* parted = eventAs<xcb_reparent_notify_event_t>(event, XCB_REPARENT_NOTIFY)) {
        if (parted->window == window) {
            if (isEmbedded && parted->parent == connection.root()) {
                // The panel has reparented it to the root; it must not appear on the screen by itself.
                undock();
                return;
            }
            isEmbedded = parted->parent != connection.root();
        }
    } else if (const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY)) {
        if (destroyed->window == window) {
            window = XCB_WINDOW_NONE;
            undock();
        }
    }
}

void SystemTray::show(const linux::TrayContents& newContents) {
    contents = &newContents;
    dock();
}

void SystemTray::hide() {
    contents = nullptr;
    undock();
}

void SystemTray::update(Change change) {
    if (window == XCB_WINDOW_NONE) {
        return;
    }
    if (change == Change::image) {
        paint();
    } else if (change == Change::title) {
        describeWindow();
    }
}

SystemTray::Looks SystemTray::readLooks() const {
    constexpr std::uint32_t colourValues = 12;
    const auto visual = requestProperty(connection, owner, connection.atom(Atom::netSystemTrayVisual), 1);
    const auto colour = requestProperty(connection, owner, connection.atom(Atom::netSystemTrayColors), colourValues);
    const std::vector<std::uint32_t> wanted = readWords(connection, visual);
    Looks result{.depth = connection.screenSetup().root_depth, .colour = symbolColour(readWords(connection, colour))};
    if (!wanted.empty() && depthOf(connection.screenSetup(), wanted.front()) == transparentDepth) {
        result.visual = wanted.front();
        result.depth = transparentDepth;
    }
    return result;
}

void SystemTray::dock() {
    if (contents == nullptr || owner == XCB_WINDOW_NONE || window != XCB_WINDOW_NONE) {
        return;
    }
    xcb_connection_t* const raw = connection.raw();
    looks = readLooks();
    width = height = leastSize;
    window = xcb_generate_id(raw);
    constexpr std::uint32_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (looks.isTransparent()) {
        colours = xcb_generate_id(raw);
        xcb_create_colormap(raw, XCB_COLORMAP_ALLOC_NONE, colours, connection.root(), looks.visual);
        // In the order of the mask's bits: background, border, events, colormap.
        const std::array<std::uint32_t, 4> values{0, 0, events, colours};
        xcb_create_window(raw, looks.depth, window, connection.root(), 0, 0, width, height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, looks.visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values.data());
    } else {
        const std::array<std::uint32_t, 2> values{XCB_BACK_PIXMAP_PARENT_RELATIVE, events};
        xcb_create_window(raw, XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, width, height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK,
                          values.data());
    }
    graphics = xcb_generate_id(raw);
    xcb_create_gc(raw, graphics, window, 0, nullptr);
    describeWindow();
    // XEmbed Protocol Specification, "_XEMBED_INFO": version and flags; the panel is to map the window.
    constexpr std::array<std::uint32_t, 2> embedding{0, 1};
    const xcb_atom_t info = connection.atom(Atom::xembedInfo);
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, info, info, 32, embedding.size(), embedding.data());

    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = owner;
    request.type = connection.atom(Atom::netSystemTrayOpcode);
    constexpr std::uint32_t requestDock = 0;
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = window;
    xcb_send_event(raw, 0, owner, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&request));
}

void SystemTray::describeWindow() const {
    xcb_connection_t* const raw = connection.raw();
    constexpr std::string_view windowClass("tessel\0Tessel\0", 14);
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, windowClass.size(),
                        windowClass.data());
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, connection.atom(Atom::netWmName),
                        connection.atom(Atom::utf8String), 8, static_cast<std::uint32_t>(contents->title.size()),
                        contents->title.data());
    // ICCCM, WM_NORMAL_HINTS: the flags and, as sixth and seventh value, the least size.
    constexpr std::uint32_t hasLeastSize = 1U << 4U;
    std::array<std::uint32_t, 18> hints{};
    hints[0] = hasLeastSize;
    hints[5] = hints[6] = leastSize;
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32,
                        hints.size(), hints.data());
}

void SystemTray::undock() {
    xcb_connection_t* const raw = connection.raw();
    if (graphics != XCB_NONE) {
        xcb_free_gc(raw, graphics);
        graphics = XCB_NONE;
    }
    if (window != XCB_WINDOW_NONE) {
        xcb_destroy_window(raw, window);
        window = XCB_WINDOW_NONE;
    }
    if (colours != XCB_NONE) {
        xcb_free_colormap(raw, colours);
        colours = XCB_NONE;
    }
    isEmbedded = isMapped = false;
}

void SystemTray::paint() const {
    if (contents == nullptr || !contents->image || !takesWholePixels(connection, looks.depth)) {
        return;
    }
    const auto picture = linux::pictureFor(contents->image->description(), std::min(width, height));
    if (!picture) {
        return;
    }
    xcb_connection_t* const raw = connection.raw();
    // All of it: the last picture may have been larger.
    xcb_clear_area(raw, 0, window, 0, 0, 0, 0);
    const std::uint16_t size = std::min({picture->size, width, height});
    if (size != picture->size) {
        return;
    }
    const int left = (width - size) / 2;
    const int top = (height - size) / 2;
    const corvid::CGRect place{{static_cast<double>(left), static_cast<double>(top)},
                               {static_cast<double>(size), static_cast<double>(size)}};
    if (looks.isTransparent()) {
        put(connection, window, graphics, looks.depth, place, premultipliedPixels(*picture, looks.colour));
        return;
    }
    const auto behind = connection.reply<xcb_get_image_reply_t>(
        xcb_get_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(place.minX()),
                      static_cast<std::int16_t>(place.minY()), size, size, ~0U));
    std::vector<std::uint32_t> background(picture->alpha.size());
    if (!behind ||
        static_cast<std::size_t>(xcb_get_image_data_length(behind.get())) != background.size() * sizeof background[0]) {
        // It is not on the screen; it is painted when it is mapped.
        return;
    }
    std::memcpy(background.data(), xcb_get_image_data(behind.get()), background.size() * sizeof background[0]);
    put(connection, window, graphics, looks.depth, place, blendedPixels(*picture, looks.colour, background));
}

void SystemTray::clicked(corvid::CGPoint root) const {
    if (contents == nullptr || !contents->action) {
        return;
    }
    const auto place = inScreenSpace({root, {}});
    const auto position = place ? std::optional(place->origin) : std::nullopt;
    // A copy: the item may be gone by then, with its action.
    mainActor.post([action = contents->action, position] { action(position); });
}

std::optional<corvid::CGRect> SystemTray::frame() const {
    if (!isMapped) {
        return std::nullopt;
    }
    const auto origin = connection.reply<xcb_translate_coordinates_reply_t>(
        xcb_translate_coordinates(connection.raw(), window, connection.root(), 0, 0));
    if (!origin) {
        return std::nullopt;
    }
    return inScreenSpace({{static_cast<double>(origin->dst_x), static_cast<double>(origin->dst_y)},
                          {static_cast<double>(width), static_cast<double>(height)}});
}

std::optional<corvid::CGRect> SystemTray::inScreenSpace(const corvid::CGRect& root) const {
    const RootFacts* facts = turn.root();
    if (facts == nullptr) {
        return std::nullopt;
    }
    const corvid::CGRect& primary = facts->monitors.front();
    return corvid::CGRect{{root.minX() - primary.minX(), primary.maxY() - root.maxY()}, root.size};
}

} // namespace platform::x11
