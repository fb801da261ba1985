// A pair of numbers: a position, or a size of width and height.
#ifndef QUOREL_GEOM_POINT_H
#define QUOREL_GEOM_POINT_H

namespace quorel {
namespace geom {

/// Two coordinates, x then y.  The layout engine uses PointT<float> for sizes
/// as well, with x the width and y the height.
///
/// A flat value without virtual operations; the library exports nothing of
/// it, so any T with arithmetic works.
template <class T>
struct PointT {
    T x;
    T y;

    /// Both fields 0.
    constexpr PointT() : x(0), y(0) {}
    constexpr PointT(T inX, T inY) : x(inX), y(inY) {}
};

template <class T>
constexpr bool operator==(PointT<T> const& inLeft, PointT<T> const& inRight) {
    return inLeft.x == inRight.x && inLeft.y == inRight.y;
}

template <class T>
constexpr bool operator!=(PointT<T> const& inLeft, PointT<T> const& inRight) {
    return !(inLeft == inRight);
}

}  // namespace geom
}  // namespace quorel

#endif
