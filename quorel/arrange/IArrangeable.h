// The node of the layout tree.
//
// A host's user-interface elements form a tree of IArrangeable objects: leaves
// derive from Single, containers from the group classes (Row, Column,
// Flipping, HorizontalWrapping, VerticalWrapping, AutoLayout) or hold a
// DynamicGroup.  Each node offers a set of alternative arrangements; when the
// root is given a rectangle, the arrangement that suits it best is chosen and
// carried out, and the host's elements receive their rectangles.
//
// The tree owns no nodes and has no locks: one thread at a time.
#ifndef QUOREL_ARRANGE_IARRANGEABLE_H
#define QUOREL_ARRANGE_IARRANGEABLE_H

#include <quorel/geom/Point.h>
#include <quorel/geom/Rect.h>
#include <quorel/utility/Export.h>

#include <boost/function.hpp>

namespace quorel {
namespace arrange {

namespace impl {
class ArrangementSet;
}

/// An element of the layout tree.
///
/// State: the node's arrangement set is either valid or invalid.  It starts
/// invalid; Arrange, BestSize and Arrangements rebuild it when needed, and
/// Invalidate marks it (and the path up to the root) invalid again.  The root
/// keeps the rectangle of the last accepted Arrange and a flag that allows or
/// suspends arranging.
class QRL_EXPORT IArrangeable {
public:
    typedef boost::function<bool(IArrangeable const&)> ConstVisitor;
    typedef boost::function<bool(IArrangeable&)> Visitor;

    /// Valid arrangements: no; arranging enabled; empty bounds; the parent as
    /// given (not owned).
    explicit IArrangeable(IArrangeable* inParent = 0);
    IArrangeable(IArrangeable const&) = delete;
    IArrangeable& operator=(IArrangeable const&) = delete;
    virtual ~IArrangeable();

    /// Calls inFunction on each direct child, in order.  A node without
    /// children (this implementation) ignores the function and returns true.
    virtual bool VisitChildren(ConstVisitor inFunction) const;
    virtual bool VisitChildren(Visitor inFunction);

    /// Arranges the whole tree in inRect and returns the size it took.
    ///
    /// A node with a parent hands the call to its root.  The root refuses a
    /// rectangle that is not wider and higher than 0, and any rectangle while
    /// arranging is disabled: it returns (0, 0), keeps its bounds and calls no
    /// host function.  Otherwise it stores inRect as its bounds and arranges,
    /// rebuilding invalid arrangements first.  A host callback that invalidates
    /// the tree during the pass gets another pass, five passes at most.
    geom::PointT<float> Arrange(geom::RectT<float> const& inRect);

    /// Arrange on the root with the root's bounds (nothing while they are empty).
    void Rearrange();

    /// The minimum size of this node's arrangement whose best proportions are
    /// nearest the golden ratio; (0, 0) without arrangements.  Rebuilds this
    /// node (not the root) when it is invalid.
    geom::PointT<float> BestSize();

    /// This node's arrangement set, rebuilt first when invalid.
    impl::ArrangementSet& Arrangements();

    /// Allows or suspends arranging on the root.  Switching it on again
    /// rearranges the root with its stored bounds; calls that change nothing do
    /// nothing.
    void EnableArrangement(bool inEnable);
    /// Whether the root allows arranging.
    bool ArrangementEnabled() const;

    /// Tells the engine that this node's answers changed: marks the node and
    /// (if it was valid) its ancestors invalid, then rearranges the root once,
    /// synchronously - unless arranging is disabled, in which case nothing is
    /// rearranged.  Invalidate calls nested in one outermost call cost no
    /// further rearrangement.
    void Invalidate();

    /// Invalidate on every node below this one, children before parents, and
    /// then on this one; each call rearranges.  Does nothing while arranging is
    /// disabled.
    void InvalidateAll();

    IArrangeable* Parent() { return mParent; }
    IArrangeable const* Parent() const { return mParent; }
    /// Stores the parent pointer; nothing else changes.
    void SetParent(IArrangeable* inParent) { mParent = inParent; }

    /// The rectangle of the root's last accepted Arrange (kept on the root only).
    geom::RectT<float> const& Bounds() const { return mBounds; }
    /// Whether the arrangement set is built and nothing has invalidated it since.
    bool ArrangementsValid() const { return mArrangementsValid; }

private:
    /// Refills the arrangement set from the node's current answers.
    virtual void RebuildSelf();
    /// The node's arrangement set as it stands.
    virtual impl::ArrangementSet& ArrangementsSelf() = 0;

    IArrangeable& Root();
    IArrangeable const& Root() const;
    void RebuildIfInvalid();
    geom::PointT<float> ArrangeAsRoot(geom::RectT<float> const& inRect);

    bool mArrangementsValid;
    bool mArrangementEnabled;
    geom::RectT<float> mBounds;
    IArrangeable* mParent;
};

/// The node's parent, or null for a root.
inline IArrangeable* Parent(IArrangeable& inNode) { return inNode.Parent(); }
inline IArrangeable const* Parent(IArrangeable const& inNode) { return inNode.Parent(); }

/// Calls the node's VisitChildren with a copy of inFunction.
inline bool VisitChildren(IArrangeable& inNode, IArrangeable::Visitor inFunction) {
    return inNode.VisitChildren(inFunction);
}
inline bool VisitChildren(IArrangeable const& inNode, IArrangeable::ConstVisitor inFunction) {
    return inNode.VisitChildren(inFunction);
}

}  // namespace arrange
}  // namespace quorel

#endif
