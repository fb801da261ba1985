// Every way of breaking a sequence of children into lines.
#ifndef QUOREL_ARRANGE_LINEWRAPPING_H
#define QUOREL_ARRANGE_LINEWRAPPING_H

#include <quorel/arrange/ArrangementFactory.h>
#include <quorel/arrange/ArrangementSet.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {
namespace impl {

/// Offers to ioSet every way of cutting inChildren, kept in order, into lines
/// of at least one child: 2^(n-1) arrangements for n children, none for 0.
///
/// Order of the offers: by line count 1 to n; within a count, the first line
/// longest first, then recursively the same for the rest.  For three children
/// the line lengths are 3; 2 + 1; 1 + 2; 1 + 1 + 1.
///
/// A line of one child is that child's arrangement itself; a longer line is
/// made by inMakeLine.  Its separators are taken one by one from the end of
/// (a copy of) the separator pool; the first taken becomes the line's first.
/// The lines are stacked by inMakeStack, outermost, with what remains of the
/// pool between them.  A line is outermost only when it is the single line.
QRL_EXPORT void AddWrappedArrangements(ArrangementSet& ioSet, AbstractArrangeableGroup& inGroup,
                                       ArrangementList const& inChildren, SeparatorList const& inSeparators,
                                       ArrangementFactory inMakeLine, ArrangementFactory inMakeStack);

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
