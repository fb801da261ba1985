// An arithmetic expression calculator for hosts.
#ifndef QUOREL_UTILITY_CALCULATOR_H
#define QUOREL_UTILITY_CALCULATOR_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace utility {

/// Evaluates an arithmetic expression and never reports an error: what can't
/// be read counts as 0.
///
/// The text may hold numbers in the user's notation (NumberText.h: the user's
/// separators, full-width digits and punctuation) and the operators below,
/// with parentheses.  Every other character, white space included, is
/// deleted first.  An operator splits its text into a left and a right
/// operand, each evaluated in the same way; an empty operand is 0.  From the
/// loosest binding to the tightest, with the last occurrence outside
/// parentheses splitting first (so chains are left-associative):
///   "e" or "E"  left times 10 to the power of right
///   "+", "-"    sum, difference (the last of either)
///   "*"         product
///   "/"         quotient; left itself when right is exactly 0
///   "^"         left to the power of right
/// A "*", "/", "e", "E" or "^" at the start of a text or behind another
/// operator is dropped.  So "1+2*3" is 7, "2^3^2" is 64, "-3" is -3, "2**3" is
/// 6, "1e3+2" is 100000 and "2 + 3 apples" is 5 ("2+3e").
///
/// Long input is fine: the cost grows as n log n with the length of the text,
/// and the evaluation uses no recursion.
QRL_EXPORT double Calculate(UTF16String inText);

}  // namespace utility
}  // namespace quorel

#endif
