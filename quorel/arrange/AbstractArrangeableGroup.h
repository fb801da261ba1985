// The base of all groups: children, separators and the enumeration of the
// combinations of the children's arrangements.
#ifndef QUOREL_ARRANGE_ABSTRACTARRANGEABLEGROUP_H
#define QUOREL_ARRANGE_ABSTRACTARRANGEABLEGROUP_H

#include <quorel/arrange/Alignment.h>
#include <quorel/arrange/Arrangement.h>
#include <quorel/arrange/ArrangementSet.h>
#include <quorel/arrange/IArrangeable.h>
#include <quorel/arrange/Separator.h>
#include <quorel/geom/Point.h>
#include <quorel/utility/Export.h>

#include <cstddef>
#include <vector>

namespace quorel {
namespace arrange {
namespace impl {

/// A group of child nodes, arranged together.
///
/// A rebuild asks the host for the children (VisitChildren), makes them point
/// to this group as their parent, makes sure there is one separator between
/// each two neighbours, and then offers the group's arrangements for every
/// combination of the children's arrangements (AddArrangements, by the
/// concrete kind).  A child without arrangements takes no part; a null child
/// leaves the group without arrangements.
///
/// The group's margins lie outside its arrangements: the content starts at
/// the left and top margin.  The group's answers (spacing, alignment,
/// margins) are asked anew at each use, many times per arrangement: keep them
/// cheap.  Separators belong to the host; the destructor leaves them alone.
class QRL_EXPORT AbstractArrangeableGroup : public virtual IArrangeable {
public:
    /// As for Single: only the most derived class's constructor reaches the
    /// virtual base IArrangeable.
    explicit AbstractArrangeableGroup(IArrangeable* inParent = 0);
    ~AbstractArrangeableGroup() override;

    /// The host reports the children.
    bool VisitChildren(ConstVisitor inFunction) const override = 0;
    bool VisitChildren(Visitor inFunction) override = 0;

    /// Gap between neighbours in a row; default 0.
    virtual float HorizontalSpacing() const;
    /// Gap between neighbours in a column; default 0.
    virtual float VerticalSpacing() const;
    /// Default: left.
    virtual AlignmentHorizontal HorizontalAlignment() const;
    /// Default: top.
    virtual AlignmentVertical VerticalAlignment() const;
    /// A new separator for the gap between two neighbours, or null for none.
    /// Default: null.
    virtual ISeparator* BuildSeparator();
    /// Tells the host to remove the separators it built.  Default: nothing.
    virtual void ClearSeparators();
    /// Space around the group's content; default 0 each.
    virtual float LeftMargin() const;
    virtual float RightMargin() const;
    virtual float TopMargin() const;
    virtual float BottomMargin() const;
    /// The top left of the content, at each Arrange.  Default: nothing.
    virtual void Position(geom::PointT<float> const& inTopLeft);
    /// The size the content took, at each Arrange.  Default: nothing.
    virtual void SetDimensions(geom::PointT<float> const& inSize);

    /// Replaces the children by a copy of inChildren; nothing else changes.
    void SetChildren(std::vector<IArrangeable*> const& inChildren);
    /// ClearSeparators, then one fresh BuildSeparator for each gap between the
    /// children, in order (none without children).
    void BuildSeparators();

    /// The children as of the last rebuild or SetChildren.
    std::vector<IArrangeable*> const& Children() const { return mChildren; }
    /// The separators; entry i lies between children i and i + 1.
    SeparatorList const& Separators() const { return mSeparators; }

protected:
    /// Adds to ioSet the arrangements of this group kind for one combination
    /// of child arrangements, using inSeparators between them.
    virtual void AddArrangements(ArrangementSet& ioSet, ArrangementList const& inChildren,
                                 SeparatorList const& inSeparators) = 0;

private:
    void RebuildSelf() override;
    ArrangementSet& ArrangementsSelf() override;

    void CollectChildren();
    void AddCombinations(std::size_t inChild, ArrangementList& ioCombination);

    std::vector<IArrangeable*> mChildren;
    SeparatorList mSeparators;
    ArrangementSet mArrangements;
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
