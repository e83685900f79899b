#pragma once

#include "CorvidKitCore/Geometry.h"
#include "CorvidKitCore/PropertyListValue.h"
#include "CorvidKitCore/Shortcut.h"

#include <concepts>
#include <cstddef>
#include <ostream>
#include <string>

/// Printing of the core's values in a failed test.
namespace corvid {

inline std::ostream& operator<<(std::ostream& out, const CGPoint& point) {
    return out << "(" << point.x << ", " << point.y << ")";
}

inline std::ostream& operator<<(std::ostream& out, const CGSize& size) {
    return out << size.width << " x " << size.height;
}

inline std::ostream& operator<<(std::ostream& out, const CGRect& rect) {
    return out << rect.size << " at " << rect.origin;
}

inline std::ostream& operator<<(std::ostream& out, const Shortcut& shortcut) {
    return out << "key " << shortcut.keyCode << ", modifiers " << shortcut.modifiers;
}

inline std::ostream& operator<<(std::ostream& out, const PropertyListValue& value) {
    value.visit([&out]<typename Kind>(const Kind& content) {
        if constexpr (std::same_as<Kind, bool>) {
            out << (content ? "true" : "false");
        } else if constexpr (std::same_as<Kind, std::string>) {
            out << '"' << content << '"';
        } else if constexpr (std::same_as<Kind, Data>) {
            out << "data";
            for (const std::byte byte : content) {
                out << ' ' << std::to_integer<int>(byte);
            }
        } else if constexpr (std::same_as<Kind, PropertyListValue::Dictionary>) {
            out << "{";
            for (const auto& [key, entry] : content) {
                out << '"' << key << "\": " << entry << ", ";
            }
            out << "}";
        } else {
            out << (std::same_as<Kind, double> ? "float " : "integer ") << content;
        }
    });
    return out;
}

} // namespace corvid
