// The leaf of the layout tree: one host element.
#ifndef QUOREL_ARRANGE_SINGLE_H
#define QUOREL_ARRANGE_SINGLE_H

#include <quorel/arrange/ArrangementSet.h>
#include <quorel/arrange/IArrangeable.h>
#include <quorel/geom/Point.h>
#include <quorel/geom/Rect.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// A host element with one arrangement: its best size, how it grows, its
/// margins, and Place.
///
/// The engine reads the sizes, expandability and margins once per rebuild (a
/// snapshot); a host calls Invalidate when they change.  ExpandedWidth,
/// ExpandedHeight and Place are called while arranging.
///
/// IArrangeable is a virtual base: only the most derived class's constructor
/// reaches it.  A host's class gives its parent to IArrangeable itself, or
/// leaves it to the parent group's rebuild.
class QRL_EXPORT Single : public virtual IArrangeable {
public:
    explicit Single(IArrangeable* inParent = 0);
    ~Single() override;

    /// The smallest width without clipping, margins excluded.  Default: BestWidth().
    virtual float MinWidth() const;
    /// Default: BestHeight().
    virtual float MinHeight() const;
    /// The width taken when offered inWidth: inWidth if horizontally
    /// expandable, otherwise BestWidth().
    virtual float ExpandedWidth(float inWidth) const;
    /// inHeight if vertically expandable, otherwise BestHeight().
    virtual float ExpandedHeight(float inHeight) const;
    /// Default: false.
    virtual bool HorizontallyExpandable() const;
    /// Default: false.
    virtual bool VerticallyExpandable() const;
    /// Space kept around the element; default 0 each.
    virtual float LeftMargin() const;
    virtual float RightMargin() const;
    virtual float TopMargin() const;
    virtual float BottomMargin() const;
    /// The size the element would like, margins excluded.
    virtual float BestWidth() const = 0;
    virtual float BestHeight() const = 0;
    /// Moves the element to inRect (margins already taken off) and returns the
    /// size it took.  The engine passes the result on unchanged, and a row or
    /// column moves on by it: return the size with the margins included to
    /// keep the margins.
    virtual geom::PointT<float> Place(geom::RectT<float> const& inRect) = 0;

private:
    void RebuildSelf() override;
    impl::ArrangementSet& ArrangementsSelf() override;

    impl::ArrangementSet mArrangements;
};

}  // namespace arrange
}  // namespace quorel

#endif
