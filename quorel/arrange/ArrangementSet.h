// The alternative arrangements of one node, and how one of them is chosen.
#ifndef QUOREL_ARRANGE_ARRANGEMENTSET_H
#define QUOREL_ARRANGE_ARRANGEMENTSET_H

#include <quorel/arrange/Arrangement.h>
#include <quorel/geom/Point.h>
#include <quorel/geom/Rect.h>
#include <quorel/utility/Export.h>

#include <cstddef>

namespace quorel {
namespace arrange {
namespace impl {

/// The golden ratio as the float 1.618034, widened to double.
constexpr double kGoldenRatio = static_cast<double>(1.618034f);

/// a outdoes b when neither of a's minimum width and height is larger than
/// b's.  Equal minimum sizes outdo one another.
QRL_EXPORT bool Outdoes(IArrangement const& inA, IArrangement const& inB);
/// One of the two outdoes the other.
QRL_EXPORT bool Comparable(IArrangement const& inA, IArrangement const& inB);
/// The minimum size lies within inSize.
QRL_EXPORT bool Fits(IArrangement const& inArrangement, geom::PointT<float> const& inSize);
/// a's best width / best height lies strictly nearer kGoldenRatio than b's.
/// Quotient and distance are computed in double; each distance is rounded to
/// float before the comparison.
QRL_EXPORT bool NearerGoldenRatio(IArrangement const& inA, IArrangement const& inB);

/// An ordered set of arrangements in which none outdoes another.
///
/// The order is the history of insertions, not a sort by size.  Ties between
/// equally suitable arrangements go to the front one.
class QRL_EXPORT ArrangementSet {
public:
    /// Adds inArrangement unless the first arrangement comparable with it has
    /// a smaller minimum size; then removes, from that one onward, every
    /// arrangement the new one outdoes, and appends the new one.  So among
    /// equal minimum sizes the last one added stays.  Null is ignored.
    void AddArrangement(ArrangementPtr const& inArrangement);
    /// Empties the set.
    void Clear();
    /// Prepare on each arrangement, in order.
    void PrepareAll();

    /// The minimum size of the arrangement whose best size is nearest the
    /// golden ratio (the front one on ties); (0, 0) when empty.
    geom::PointT<float> BestSize() const;

    /// The arrangement that suits inSize best; null when empty.
    ///
    /// One that fits beats one that does not.  Among those that do not fit,
    /// the smaller clipped area wins; among those that fit, the smaller wasted
    /// area, then the smaller minimum area (as float), then the proportions
    /// nearer the golden ratio.  Every tie goes to the front one.
    ArrangementPtr Choose(geom::PointT<float> const& inSize) const;

    /// Choose for the rectangle's size, then Arrange of the chosen one; (0, 0)
    /// when empty.
    geom::PointT<float> Arrange(geom::RectT<float> const& inRect);

    std::size_t Size() const { return mArrangements.size(); }
    bool IsEmpty() const { return mArrangements.empty(); }
    /// The arrangement at inIndex (< Size()), in set order.
    ArrangementPtr const& At(std::size_t inIndex) const { return mArrangements[inIndex]; }

private:
    ArrangementList mArrangements;
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
