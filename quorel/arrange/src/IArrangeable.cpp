#include <quorel/arrange/IArrangeable.h>

#include <quorel/arrange/ArrangementSet.h>
#include <quorel/arrange/Hierarchy.h>

namespace quorel {
namespace arrange {

namespace {

// A host callback that keeps invalidating the tree while it is arranged gets
// this many passes in all, so that one Arrange always ends.
constexpr int kMaxArrangePasses = 5;

bool InvalidateNode(IArrangeable& ioNode) {
    ioNode.Invalidate();
    return true;
}

}  // namespace

IArrangeable::IArrangeable(IArrangeable* inParent)
    : mArrangementsValid(false), mArrangementEnabled(true), mBounds(), mParent(inParent) {}

IArrangeable::~IArrangeable() = default;

bool IArrangeable::VisitChildren(ConstVisitor) const { return true; }

bool IArrangeable::VisitChildren(Visitor) { return true; }

void IArrangeable::RebuildSelf() {}

IArrangeable& IArrangeable::Root() {
    IArrangeable* node = this;
    while (node->mParent) {
        node = node->mParent;
    }
    return *node;
}

IArrangeable const& IArrangeable::Root() const { return const_cast<IArrangeable*>(this)->Root(); }

void IArrangeable::RebuildIfInvalid() {
    if (!mArrangementsValid) {
        RebuildSelf();
        mArrangementsValid = true;
    }
}

geom::PointT<float> IArrangeable::Arrange(geom::RectT<float> const& inRect) {
    if (mParent) {
        return Root().ArrangeAsRoot(inRect);
    }
    return ArrangeAsRoot(inRect);
}

geom::PointT<float> IArrangeable::ArrangeAsRoot(geom::RectT<float> const& inRect) {
    // A copy: inRect may be mBounds itself, and a host callback may arrange again.
    geom::RectT<float> const rect = inRect;
    if (!(rect.width > 0) || !(rect.height > 0) || !mArrangementEnabled) {
        return geom::PointT<float>();
    }
    mBounds = rect;
    geom::PointT<float> size;
    for (int pass = 0; pass < kMaxArrangePasses; ++pass) {
        RebuildIfInvalid();
        size = ArrangementsSelf().Arrange(rect);
        if (mArrangementsValid) {
            break;
        }
    }
    return size;
}

void IArrangeable::Rearrange() {
    IArrangeable& root = Root();
    root.ArrangeAsRoot(root.mBounds);
}

geom::PointT<float> IArrangeable::BestSize() { return Arrangements().BestSize(); }

impl::ArrangementSet& IArrangeable::Arrangements() {
    RebuildIfInvalid();
    return ArrangementsSelf();
}

void IArrangeable::EnableArrangement(bool inEnable) {
    IArrangeable& root = Root();
    bool const switchedOn = inEnable && !root.mArrangementEnabled;
    root.mArrangementEnabled = inEnable;
    if (switchedOn) {
        root.Rearrange();
    }
}

bool IArrangeable::ArrangementEnabled() const { return Root().mArrangementEnabled; }

void IArrangeable::Invalidate() {
    // Arranging is suspended while the path is marked, so that nested calls
    // (the climb to the parent) cost nothing; only the outermost call, the one
    // that found arranging enabled, rearranges the root at the end.
    IArrangeable& root = Root();
    bool const outermost = root.mArrangementEnabled;
    root.mArrangementEnabled = false;
    auto const resume = [&root, outermost] {
        if (outermost) {
            root.mArrangementEnabled = true;
            root.Rearrange();
        }
    };
    try {
        if (mArrangementsValid && mParent) {
            mParent->Invalidate();
        }
    } catch (...) {
        resume();
        throw;
    }
    mArrangementsValid = false;
    resume();
}

void IArrangeable::InvalidateAll() {
    if (!ArrangementEnabled()) {
        return;
    }
    arrange::VisitChildren(*this, hierarchy::Impl::PostorderTransversal<bool (*)(IArrangeable&)>(&InvalidateNode));
    Invalidate();
}

}  // namespace arrange
}  // namespace quorel
