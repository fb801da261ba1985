#include <quorel/arrange/DynamicGroup.h>

#include <quorel/arrange/AutoLayout.h>
#include <quorel/arrange/Column.h>
#include <quorel/arrange/Flipping.h>
#include <quorel/arrange/HorizontalWrapping.h>
#include <quorel/arrange/HostedGroup.h>
#include <quorel/arrange/Row.h>
#include <quorel/arrange/VerticalWrapping.h>

namespace quorel {
namespace arrange {

namespace {

typedef boost::shared_ptr<impl::AbstractArrangeableGroup> GroupPtr;

template <class G>
GroupPtr MakeHosted(DynamicGroup& inHost, IArrangeable* inParent) {
    return GroupPtr(new HostedGroup<G, DynamicGroup>(inHost, inParent));
}

// A fresh inner group of the kind inType; null for a value outside the table.
GroupPtr MakeInnerGroup(GroupArrangementType inType, DynamicGroup& inHost, IArrangeable* inParent) {
    switch (inType) {
        case kGroupArrangementType_Row:
            return MakeHosted<Row>(inHost, inParent);
        case kGroupArrangementType_Column:
            return MakeHosted<Column>(inHost, inParent);
        case kGroupArrangementType_Flipping:
            return MakeHosted<Flipping>(inHost, inParent);
        case kGroupArrangementType_HorizontalWrapping:
            return MakeHosted<HorizontalWrapping>(inHost, inParent);
        case kGroupArrangementType_VerticalWrapping:
            return MakeHosted<VerticalWrapping>(inHost, inParent);
        case kGroupArrangementType_AutoLayout:
            return MakeHosted<AutoLayout>(inHost, inParent);
    }
    return GroupPtr();
}

}  // namespace

DynamicGroup::DynamicGroup(IArrangeable* inParent, GroupArrangementType inType) : mType(inType) {
    SetArrangementType(inType, inParent);
}

DynamicGroup::~DynamicGroup() = default;

float DynamicGroup::HorizontalSpacing() const { return 0; }

float DynamicGroup::VerticalSpacing() const { return 0; }

AlignmentHorizontal DynamicGroup::HorizontalAlignment() const { return kAlignmentHorizontal_Left; }

AlignmentVertical DynamicGroup::VerticalAlignment() const { return kAlignmentVertical_Top; }

float DynamicGroup::LeftMargin() const { return 0; }

float DynamicGroup::RightMargin() const { return 0; }

float DynamicGroup::TopMargin() const { return 0; }

float DynamicGroup::BottomMargin() const { return 0; }

ISeparator* DynamicGroup::BuildSeparator() { return 0; }

void DynamicGroup::ClearSeparators() {}

void DynamicGroup::Position(geom::PointT<float> const&) {}

void DynamicGroup::SetDimensions(geom::PointT<float> const&) {}

void DynamicGroup::SetArrangementType(GroupArrangementType inType, IArrangeable* inParent) {
    if (inType != mType || !mGroup) {
        IArrangeable* const parent = !inParent && mGroup ? mGroup->Parent() : inParent;
        // The parent is handed on but stays unused: the group's virtual base is
        // built with none, and the parent's next rebuild sets it.  So the
        // invalidation below cannot reach a parent whose arrangements still
        // refer to the old group.
        GroupPtr const made = MakeInnerGroup(inType, *this, parent);
        if (made) {
            mGroup = made;
        }
    }
    if (inType != mType && mGroup) {
        mGroup->Invalidate();
    }
    mType = inType;
}

void DynamicGroup::Invalidate() {
    if (mGroup) {
        mGroup->Invalidate();
    }
}

void DynamicGroup::InvalidateAll() {
    if (mGroup) {
        mGroup->InvalidateAll();
    }
}

geom::PointT<float> DynamicGroup::BestSize() { return mGroup ? mGroup->BestSize() : geom::PointT<float>(); }

void DynamicGroup::Rearrange() {
    if (mGroup) {
        mGroup->Rearrange();
    }
}

void DynamicGroup::EnableArrangement(bool inEnable) {
    if (mGroup) {
        mGroup->EnableArrangement(inEnable);
    }
}

bool DynamicGroup::ArrangementEnabled() const { return mGroup && mGroup->ArrangementEnabled(); }

IArrangeable* DynamicGroup::Arrangeable() { return mGroup.get(); }

IArrangeable const* DynamicGroup::Arrangeable() const { return mGroup.get(); }

}  // namespace arrange
}  // namespace quorel
