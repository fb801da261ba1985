// Something a host draws between two neighbours of a row or column.
#ifndef QUOREL_ARRANGE_SEPARATOR_H
#define QUOREL_ARRANGE_SEPARATOR_H

#include <quorel/geom/Rect.h>
#include <quorel/utility/Export.h>

#include <vector>

namespace quorel {
namespace arrange {

/// A host's separator.  Groups get them from BuildSeparator and store the
/// pointers; they never own or delete them.
class QRL_EXPORT ISeparator {
public:
    /// Separator orientations: which kind of line the separator lies in.
    enum { kOrientation_Row = 0, kOrientation_Column = 1 };

    virtual ~ISeparator();

    /// Moves the separator into the gap inRect between two neighbours of a row
    /// (orientation 0) or of a column (orientation 1).
    virtual void Place(int inOrientation, geom::RectT<float> const& inRect) = 0;
};

namespace impl {
/// Separators of a group or line: entry i lies between children i and i + 1;
/// null entries place nothing.
typedef std::vector<ISeparator*> SeparatorList;
}  // namespace impl

}  // namespace arrange
}  // namespace quorel

#endif
