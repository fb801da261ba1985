#include <quorel/arrange/AutoLayout.h>
#include <quorel/arrange/Column.h>
#include <quorel/arrange/Flipping.h>
#include <quorel/arrange/HorizontalWrapping.h>
#include <quorel/arrange/Row.h>
#include <quorel/arrange/VerticalWrapping.h>

namespace quorel {
namespace arrange {

Row::Row(IArrangeable* inParent) : BasicArrangeableGroup(inParent) {}

Row::~Row() = default;

Column::Column(IArrangeable* inParent) : BasicArrangeableGroup(inParent) {}

Column::~Column() = default;

HorizontalWrapping::HorizontalWrapping(IArrangeable* inParent) : WrappingArrangeableGroup(inParent) {}

HorizontalWrapping::~HorizontalWrapping() = default;

VerticalWrapping::VerticalWrapping(IArrangeable* inParent) : WrappingArrangeableGroup(inParent) {}

VerticalWrapping::~VerticalWrapping() = default;

Flipping::Flipping(IArrangeable* inParent) : BinaryArrangeableGroup(inParent) {}

Flipping::~Flipping() = default;

AutoLayout::AutoLayout(IArrangeable* inParent) : BinaryArrangeableGroup(inParent) {}

AutoLayout::~AutoLayout() = default;

}  // namespace arrange
}  // namespace quorel
