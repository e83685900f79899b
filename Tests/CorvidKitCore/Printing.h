#pragma once

#include "CorvidKitCore/Geometry.h"
#include "CorvidKitCore/Shortcut.h"

#include <ostream>

/// How values of the core show in a failed test.
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

} // namespace corvid
