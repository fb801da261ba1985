// Where a group puts its content when it has more room than it uses.
#ifndef QUOREL_ARRANGE_ALIGNMENT_H
#define QUOREL_ARRANGE_ALIGNMENT_H

#include <cstdint>

namespace quorel {
namespace arrange {

/// Horizontal placement of content in spare width.  Any other value behaves as
/// kAlignmentHorizontal_Left.
enum AlignmentHorizontal : std::int32_t {
    kAlignmentHorizontal_Left = 0,    ///< spare width stays at the right
    kAlignmentHorizontal_Center = 1,  ///< half the spare width goes left of the content
    kAlignmentHorizontal_Right = 2    ///< all spare width goes left of the content
};

/// Vertical placement of content in spare height.  Any other value behaves as
/// kAlignmentVertical_Top.
enum AlignmentVertical : std::int32_t {
    kAlignmentVertical_Top = 0,     ///< spare height stays at the bottom
    kAlignmentVertical_Center = 1,  ///< half the spare height goes above the content
    kAlignmentVertical_Bottom = 2   ///< all spare height goes above the content
};

}  // namespace arrange
}  // namespace quorel

#endif
