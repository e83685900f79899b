#pragma once

#include "CorvidKitCore/Geometry.h"

#include <rapidcheck.h>

#include <limits>

/// Rectangles for properties.
namespace tessel::generators {

inline rc::Gen<corvid::CGRect> rect(const rc::Gen<double>& coordinate, const rc::Gen<double>& length) {
    return rc::gen::map(rc::gen::tuple(coordinate, coordinate, length, length), [](const auto& values) {
        const auto [x, y, width, height] = values;
        return corvid::CGRect{{x, y}, {width, height}};
    });
}

/// A number that is a multiple of 1/parts, so that sums of such numbers are exact.
inline rc::Gen<double> multiples(int lowest, int highest, int parts) {
    return rc::gen::map(rc::gen::inRange(lowest * parts, (highest * parts) + 1),
                        [parts](int value) { return static_cast<double>(value) / parts; });
}

inline rc::Gen<corvid::CGRect> wholeVisibleFrame() {
    return rect(multiples(-6000, 6000, 1), multiples(1, 6000, 1));
}

inline rc::Gen<corvid::CGRect> anyVisibleFrame() {
    return rect(multiples(-6000, 6000, 8), multiples(1, 6000, 8));
}

inline rc::Gen<corvid::CGRect> anyWindow() {
    return rect(multiples(-9000, 9000, 8), multiples(0, 9000, 8));
}

/// Numbers of every kind, including those that no desktop should ever report.
inline rc::Gen<double> anyNumber() {
    using Limits = std::numeric_limits<double>;
    return rc::gen::oneOf(rc::gen::element(Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 0.0, -0.0,
                                           Limits::max(), Limits::lowest(), Limits::denorm_min(), Limits::epsilon(),
                                           -1.0, 0.5, -0.5),
                          multiples(-9000, 9000, 8), rc::gen::arbitrary<double>());
}

/// Whether a rectangle lies inside another one, within this tolerance.
inline bool inside(const corvid::CGRect& inner, const corvid::CGRect& outer, double slack) {
    return inner.minX() >= outer.minX() - slack && inner.maxX() <= outer.maxX() + slack &&
           inner.minY() >= outer.minY() - slack && inner.maxY() <= outer.maxY() + slack;
}

} // namespace tessel::generators
