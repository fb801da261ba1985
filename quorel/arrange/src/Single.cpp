#include <quorel/arrange/Single.h>

#include "SingleArrangement.h"

namespace quorel {
namespace arrange {

Single::Single(IArrangeable* inParent) : IArrangeable(inParent) {}

Single::~Single() = default;

float Single::MinWidth() const { return BestWidth(); }

float Single::MinHeight() const { return BestHeight(); }

float Single::ExpandedWidth(float inWidth) const { return HorizontallyExpandable() ? inWidth : BestWidth(); }

float Single::ExpandedHeight(float inHeight) const { return VerticallyExpandable() ? inHeight : BestHeight(); }

bool Single::HorizontallyExpandable() const { return false; }

bool Single::VerticallyExpandable() const { return false; }

float Single::LeftMargin() const { return 0; }

float Single::RightMargin() const { return 0; }

float Single::TopMargin() const { return 0; }

float Single::BottomMargin() const { return 0; }

void Single::RebuildSelf() {
    mArrangements.Clear();
    mArrangements.AddArrangement(impl::ArrangementPtr(new impl::SingleArrangement(*this)));
}

impl::ArrangementSet& Single::ArrangementsSelf() { return mArrangements; }

}  // namespace arrange
}  // namespace quorel
