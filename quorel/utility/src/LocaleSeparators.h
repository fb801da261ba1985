// What the number functions need of the platform: the separators of the
// user's locale, behind one small internal interface so that each platform
// supplies its own.
#ifndef QUOREL_UTILITY_SRC_LOCALESEPARATORS_H
#define QUOREL_UTILITY_SRC_LOCALESEPARATORS_H

#include <quorel/utility/NumberSeparators.h>

namespace quorel {
namespace utility {
namespace platform {

/// Sets each separator that the user's locale defines to the first UTF-16
/// unit of its symbol; leaves the others (and all of them when the locale
/// can't be had).
void ReadUserNumberSeparators(NumberSeparators& ioSeparators) noexcept;

}  // namespace platform
}  // namespace utility
}  // namespace quorel

#endif
