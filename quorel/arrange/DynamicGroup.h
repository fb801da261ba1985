// A host container whose kind of arrangement can change at run time.
#ifndef QUOREL_ARRANGE_DYNAMICGROUP_H
#define QUOREL_ARRANGE_DYNAMICGROUP_H

#include <quorel/arrange/Alignment.h>
#include <quorel/arrange/IArrangeable.h>
#include <quorel/arrange/Separator.h>
#include <quorel/geom/Point.h>
#include <quorel/utility/Export.h>

#include <boost/shared_ptr.hpp>

#include <cstdint>

namespace quorel {
namespace arrange {

namespace impl {
class AbstractArrangeableGroup;
}

/// The group kinds a DynamicGroup can take.
enum GroupArrangementType : std::int32_t {
    kGroupArrangementType_Row = 0,
    kGroupArrangementType_Column = 1,
    kGroupArrangementType_Flipping = 2,
    kGroupArrangementType_HorizontalWrapping = 3,
    kGroupArrangementType_VerticalWrapping = 4,
    kGroupArrangementType_AutoLayout = 5
};

/// The base of a host container: it owns an inner group of the current kind
/// (a HostedGroup<G, DynamicGroup>) that calls back into this object's
/// virtual operations, so the host overrides them once, whatever the kind.
///
/// A DynamicGroup is not itself an IArrangeable.  To arrange it, or to report
/// it as a child in a parent's VisitChildren, use Arrangeable().
///
/// Changing the kind makes a fresh inner group: empty arrangements, empty
/// bounds, arranging enabled, children and separators to come from the host
/// at its first rebuild.  Arrangements of a parent hold plain pointers to the
/// old group, so a host invalidates the parent when it changes the kind of a
/// group that has one, before the next Arrange.
class QRL_EXPORT DynamicGroup {
public:
    /// Makes the inner group of inType; none for a value outside the table.
    explicit DynamicGroup(IArrangeable* inParent = 0, GroupArrangementType inType = kGroupArrangementType_AutoLayout);
    DynamicGroup(DynamicGroup const&) = delete;
    DynamicGroup& operator=(DynamicGroup const&) = delete;
    /// Releases the inner group.
    virtual ~DynamicGroup();

    /// The host reports its children, as for any group.
    virtual bool VisitChildren(IArrangeable::ConstVisitor inFunction) const = 0;
    virtual bool VisitChildren(IArrangeable::Visitor inFunction) = 0;
    /// Defaults: 0, left, top, null separators, nothing on Position and
    /// SetDimensions, as for AbstractArrangeableGroup.
    virtual float HorizontalSpacing() const;
    virtual float VerticalSpacing() const;
    virtual AlignmentHorizontal HorizontalAlignment() const;
    virtual AlignmentVertical VerticalAlignment() const;
    virtual float LeftMargin() const;
    virtual float RightMargin() const;
    virtual float TopMargin() const;
    virtual float BottomMargin() const;
    virtual ISeparator* BuildSeparator();
    virtual void ClearSeparators();
    virtual void Position(geom::PointT<float> const& inTopLeft);
    virtual void SetDimensions(geom::PointT<float> const& inSize);

    /// Switches to another kind of inner group.  The same kind keeps the
    /// current group and invalidates nothing.  A new kind replaces the group
    /// (the old one dies with its arrangements unless shared) and invalidates
    /// the new one.  A value outside the table keeps the old group but is
    /// still stored as the type.  inParent is accepted for compatibility; the
    /// new group's parent is set by its parent's next rebuild.
    void SetArrangementType(GroupArrangementType inType, IArrangeable* inParent);
    GroupArrangementType ArrangementType() const { return mType; }

    /// Forwarded to the inner group; nothing (or (0, 0), false) without one.
    void Invalidate();
    void InvalidateAll();
    geom::PointT<float> BestSize();
    void Rearrange();
    void EnableArrangement(bool inEnable);
    bool ArrangementEnabled() const;

    /// The inner group as a tree node; null if there is none.
    IArrangeable* Arrangeable();
    IArrangeable const* Arrangeable() const;
    /// The inner group; null if there is none.
    impl::AbstractArrangeableGroup* Group() const { return mGroup.get(); }

private:
    boost::shared_ptr<impl::AbstractArrangeableGroup> mGroup;
    GroupArrangementType mType;
};

}  // namespace arrange
}  // namespace quorel

#endif
