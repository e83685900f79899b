#include "Platform/X11/PropertyValue.h"

namespace platform::x11 {

xcb_get_property_cookie_t requestProperty(Connection& connection, xcb_window_t window, xcb_atom_t property,
                                          std::uint32_t maximumLength) {
    return xcb_get_property(connection.raw(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, maximumLength);
}

std::vector<std::uint32_t> readWords(Connection& connection, xcb_get_property_cookie_t cookie) {
    return readOptionalWords(connection, cookie).value_or(std::vector<std::uint32_t>{});
}

std::optional<std::vector<std::uint32_t>> readOptionalWords(Connection& connection, xcb_get_property_cookie_t cookie) {
    const auto property = connection.reply<xcb_get_property_reply_t>(cookie);
    if (!property || property->type == XCB_ATOM_NONE || property->format != 32) {
        return std::nullopt;
    }
    const auto* words = static_cast<const std::uint32_t*>(xcb_get_property_value(property.get()));
    const auto count = static_cast<std::size_t>(xcb_get_property_value_length(property.get())) / sizeof(std::uint32_t);
    return std::vector<std::uint32_t>(words, words + count);
}

std::string readText(Connection& connection, xcb_get_property_cookie_t cookie) {
    const auto property = connection.reply<xcb_get_property_reply_t>(cookie);
    if (!property || property->type == XCB_ATOM_NONE || property->format != 8) {
        return {};
    }
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(property.get()));
    return {bytes, static_cast<std::size_t>(xcb_get_property_value_length(property.get()))};
}

} // namespace platform::x11
