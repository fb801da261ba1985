#include <quorel/arrange/AbstractArrangeableGroup.h>

#include <quorel/arrange/Hierarchy.h>

namespace quorel {
namespace arrange {
namespace impl {

AbstractArrangeableGroup::AbstractArrangeableGroup(IArrangeable* inParent) : IArrangeable(inParent) {}

AbstractArrangeableGroup::~AbstractArrangeableGroup() = default;

float AbstractArrangeableGroup::HorizontalSpacing() const { return 0; }

float AbstractArrangeableGroup::VerticalSpacing() const { return 0; }

AlignmentHorizontal AbstractArrangeableGroup::HorizontalAlignment() const { return kAlignmentHorizontal_Left; }

AlignmentVertical AbstractArrangeableGroup::VerticalAlignment() const { return kAlignmentVertical_Top; }

ISeparator* AbstractArrangeableGroup::BuildSeparator() { return 0; }

void AbstractArrangeableGroup::ClearSeparators() {}

float AbstractArrangeableGroup::LeftMargin() const { return 0; }

float AbstractArrangeableGroup::RightMargin() const { return 0; }

float AbstractArrangeableGroup::TopMargin() const { return 0; }

float AbstractArrangeableGroup::BottomMargin() const { return 0; }

void AbstractArrangeableGroup::Position(geom::PointT<float> const&) {}

void AbstractArrangeableGroup::SetDimensions(geom::PointT<float> const&) {}

void AbstractArrangeableGroup::SetChildren(std::vector<IArrangeable*> const& inChildren) { mChildren = inChildren; }

void AbstractArrangeableGroup::BuildSeparators() {
    ClearSeparators();
    // The host has just been asked to remove the old separators: none is kept.
    mSeparators.clear();
    if (mChildren.empty()) {
        return;
    }
    mSeparators.resize(mChildren.size() - 1);
    for (ISeparator*& separator : mSeparators) {
        separator = BuildSeparator();
    }
}

ArrangementSet& AbstractArrangeableGroup::ArrangementsSelf() { return mArrangements; }

void AbstractArrangeableGroup::RebuildSelf() {
    mArrangements.Clear();
    CollectChildren();
    if (mChildren.empty()) {
        return;
    }
    if (mSeparators.size() != mChildren.size() - 1) {
        BuildSeparators();
    }
    ArrangementList combination;
    combination.reserve(mChildren.size());
    AddCombinations(0, combination);
    // Only the survivors of the thinning pay for their best sizes.
    mArrangements.PrepareAll();
}

void AbstractArrangeableGroup::CollectChildren() {
    std::vector<IArrangeable*> children;
    arrange::VisitChildren(*this, IArrangeable::Visitor(hierarchy::Impl::ChildrenToVector<IArrangeable*>(children)));
    for (IArrangeable* child : children) {
        if (child) {
            child->SetParent(this);
        }
    }
    mChildren.swap(children);
}

// Walks the children from inChild on, extending ioCombination with each of a
// child's arrangements in turn; every complete combination is offered to the
// group kind.  The vector is restored on return, so the recursion shares it.
void AbstractArrangeableGroup::AddCombinations(std::size_t inChild, ArrangementList& ioCombination) {
    if (inChild == mChildren.size()) {
        AddArrangements(mArrangements, ioCombination, mSeparators);
        return;
    }
    IArrangeable* const child = mChildren[inChild];
    if (!child) {
        return;
    }
    ArrangementSet& childArrangements = child->Arrangements();
    if (childArrangements.IsEmpty()) {
        AddCombinations(inChild + 1, ioCombination);
        return;
    }
    for (std::size_t i = 0; i < childArrangements.Size(); ++i) {
        ioCombination.push_back(childArrangements.At(i));
        AddCombinations(inChild + 1, ioCombination);
        ioCombination.pop_back();
    }
}

}  // namespace impl
}  // namespace arrange
}  // namespace quorel
