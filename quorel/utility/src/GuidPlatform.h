// What Guid needs of the platform, behind one small internal interface so that
// each platform supplies its own: a generator of unique values and strict
// conversion to and from the 36-character text form.
#ifndef QUOREL_UTILITY_SRC_GUIDPLATFORM_H
#define QUOREL_UTILITY_SRC_GUIDPLATFORM_H

#include <quorel/utility/Guid.h>

#include <cstddef>

namespace quorel {
namespace utility {
namespace platform {

/// Characters of the text form, without terminator.
constexpr std::size_t kGuidTextLength = 36;

/// Fills outFields with a new unique value; false on failure.
bool GenerateGuid(GuidFields& outFields) noexcept;

/// Parses inLength characters (not nul-terminated) in the text form into
/// outFields; false, with outFields untouched, for anything malformed.
bool ParseGuid(char const* inText, std::size_t inLength, GuidFields& outFields) noexcept;

/// Writes the text form in lower case, nul-terminated; false on failure.
bool FormatGuid(GuidFields const& inFields, char (&outText)[kGuidTextLength + 1]) noexcept;

}  // namespace platform
}  // namespace utility
}  // namespace quorel

#endif
