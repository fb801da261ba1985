// A rectangle as origin and size.
#ifndef QUOREL_GEOM_RECT_H
#define QUOREL_GEOM_RECT_H

namespace quorel {
namespace geom {

/// A rectangle given by its left edge x, top edge y, width and height.  The y
/// axis grows downward, as in a window's client area.
///
/// No operation normalises a rectangle: a negative width or height is kept as
/// it comes.  A flat value, header-only, like PointT.
template <class T>
struct RectT {
    T x;
    T y;
    T width;
    T height;

    /// All four fields 0.
    constexpr RectT() : x(0), y(0), width(0), height(0) {}
    constexpr RectT(T inX, T inY, T inWidth, T inHeight) : x(inX), y(inY), width(inWidth), height(inHeight) {}
};

template <class T>
constexpr bool operator==(RectT<T> const& inLeft, RectT<T> const& inRight) {
    return inLeft.x == inRight.x && inLeft.y == inRight.y && inLeft.width == inRight.width &&
           inLeft.height == inRight.height;
}

template <class T>
constexpr bool operator!=(RectT<T> const& inLeft, RectT<T> const& inRight) {
    return !(inLeft == inRight);
}

}  // namespace geom
}  // namespace quorel

#endif
