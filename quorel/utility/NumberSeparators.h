// The decimal and thousands separators of the user's locale, as the number
// functions of NumberText.h use them.
//
// The separators are read once, on first use, from their source: by default
// the numeric settings of the user's locale (the environment's LC_ALL,
// LC_NUMERIC or LANG), first unit of each symbol.  A source that has no value
// for a separator leaves its default: "." for the decimal separator and ","
// for the thousands separator.  Later changes of the settings are not
// noticed.  Threads that make the first use at the same moment all see the
// same values.
#ifndef QUOREL_UTILITY_NUMBERSEPARATORS_H
#define QUOREL_UTILITY_NUMBERSEPARATORS_H

#include <quorel/utility/Export.h>

namespace quorel {
namespace utility {

/// One UTF-16 unit for each separator.
struct NumberSeparators {
    unsigned short mDecimal = '.';
    unsigned short mThousands = ',';
};

/// Fills in the separators it knows; a unit it leaves alone, or sets to 0,
/// keeps its default.
using NumberSeparatorSource = void (*)(NumberSeparators& ioSeparators);

/// The separators, read from their source at the first call.
QRL_EXPORT NumberSeparators GetNumberSeparators();

/// Replaces the source of the separators (null: the user's locale) and
/// forgets the values read so far, so that the next use reads them again.
/// For hosts that take their number format from elsewhere, and for tests; a
/// start-up operation, not to be called while other threads format numbers.
QRL_EXPORT void SetNumberSeparatorSource(NumberSeparatorSource inSource);

}  // namespace utility
}  // namespace quorel

#endif
