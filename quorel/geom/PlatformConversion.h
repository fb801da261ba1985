// Conversions between the library's integer points and rectangles and the
// platform's forms (a rectangle of left, top, right and bottom).
#ifndef QUOREL_GEOM_PLATFORMCONVERSION_H
#define QUOREL_GEOM_PLATFORMCONVERSION_H

#include <quorel/geom/Point.h>
#include <quorel/geom/Rect.h>

#include <cstdint>

namespace quorel {
namespace utility {

/// A point in the platform's layout: x, then y, 32-bit signed.
struct PlatformPoint {
    std::int32_t x;
    std::int32_t y;
};

/// A rectangle in the platform's layout: two corners, 32-bit signed.
struct PlatformRect {
    std::int32_t left;
    std::int32_t top;
    std::int32_t right;
    std::int32_t bottom;
};

namespace detail {

// 32-bit two's complement arithmetic that wraps instead of overflowing.
inline std::int32_t WrappingAdd(std::int32_t inLeft, std::int32_t inRight) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(inLeft) + static_cast<std::uint32_t>(inRight));
}

inline std::int32_t WrappingSubtract(std::int32_t inLeft, std::int32_t inRight) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(inLeft) - static_cast<std::uint32_t>(inRight));
}

}  // namespace detail

/// left = x, top = y, right = x + width, bottom = y + height (wrapping in 32
/// bits).  A negative width gives right < left; nothing is normalised.
inline PlatformRect QRLtoWIN(geom::RectT<std::int32_t> const& inRect) {
    return PlatformRect{inRect.x, inRect.y, detail::WrappingAdd(inRect.x, inRect.width),
                        detail::WrappingAdd(inRect.y, inRect.height)};
}

/// x = left, y = top, width = right - left, height = bottom - top (wrapping).
inline geom::RectT<std::int32_t> WINtoQRL(PlatformRect const& inRect) {
    return geom::RectT<std::int32_t>(inRect.left, inRect.top, detail::WrappingSubtract(inRect.right, inRect.left),
                                     detail::WrappingSubtract(inRect.bottom, inRect.top));
}

/// Copies x and y.
inline PlatformPoint QRLtoWIN(geom::PointT<std::int32_t> const& inPoint) { return PlatformPoint{inPoint.x, inPoint.y}; }

/// Copies x and y.
inline geom::PointT<std::int32_t> WINtoQRL(PlatformPoint const& inPoint) {
    return geom::PointT<std::int32_t>(inPoint.x, inPoint.y);
}

}  // namespace utility
}  // namespace quorel

#endif
