// Function objects that walk the layout tree through VisitChildren.
#ifndef QUOREL_ARRANGE_HIERARCHY_H
#define QUOREL_ARRANGE_HIERARCHY_H

#include <quorel/arrange/IArrangeable.h>

#include <type_traits>
#include <vector>

namespace quorel {
namespace arrange {
namespace hierarchy {
namespace Impl {

/// Collects the nodes it is called with: P is IArrangeable * or
/// IArrangeable const *.  Always returns true.
template <class P>
class ChildrenToVector {
public:
    typedef typename std::remove_pointer<P>::type Node;

    explicit ChildrenToVector(std::vector<P>& outNodes) : mNodes(&outNodes) {}

    bool operator()(Node& inNode) const {
        mNodes->push_back(&inNode);
        return true;
    }

private:
    std::vector<P>* mNodes;
};

/// Calls a function on every node of a subtree, children before their parent.
///
/// On a node it first walks the node's children with a copy of itself.  If the
/// node's VisitChildren returned false, the node itself is skipped and the
/// result is true; otherwise the result is the function's for the node.
template <class F>
class PostorderTransversal {
public:
    explicit PostorderTransversal(F inFunction) : mFunction(inFunction) {}

    bool operator()(IArrangeable& inNode) {
        if (!arrange::VisitChildren(inNode, IArrangeable::Visitor(*this))) {
            return true;
        }
        return mFunction(inNode);
    }

private:
    F mFunction;
};

}  // namespace Impl
}  // namespace hierarchy
}  // namespace arrange
}  // namespace quorel

#endif
