// The text of one calculation and the decisions of the calculator on it.
//
// The calculator reads an expression by splitting it: a text either is a
// number, or it splits at one operator into a left and a right operand, each
// of which is a text again.  ExpressionText makes one such decision for an
// operand (a span of the calculation's text) in logarithmic time, so that long
// expressions take no more than n log n; Calculate (Calculator.cpp) walks the
// operands.
//
// The decision for a text, in this order:
//  1. Fewer than 2 units: a number.
//  2. Enclosing parentheses: while the text has 2 units or more and begins
//     with "(" and ends with ")", both go; but if the depth of parentheses in
//     what is left falls below 0 anywhere, the text keeps them all.
//  3. At depth 0, a "*", "/", "e", "E" or "^" at the start or behind one of
//     "+", "-", "*", "/", "e", "E", "^" is removed.
//  4. The operator that splits is the last at depth 0 of the first kind found
//     in the order "e"/"E", "+"/"-" (whichever comes last), "*", "/", "^"
//     (removed units don't count).  Without one, the text is a number.
//  5. Its index p counts the units of the text as it was before step 3; with n
//     units left after it, the left operand is the first min(p, n) units and
//     the right operand those from min(p + 1, n) on.
#ifndef QUOREL_UTILITY_SRC_EXPRESSIONTEXT_H
#define QUOREL_UTILITY_SRC_EXPRESSIONTEXT_H

#include <quorel/utility/UnicodeString.h>

#include "ExpressionIndex.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quorel {
namespace utility {
namespace calculator {

/// What an operator does with its operands.
enum class Operator : std::uint8_t {
    kScale,     ///< "e", "E": left times 10 to the power of right
    kAdd,       ///< "+"
    kSubtract,  ///< "-"
    kMultiply,  ///< "*"
    kDivide,    ///< "/"
    kPower      ///< "^"
};

/// The decision for one operand.
struct Step {
    bool mIsNumber;       ///< true: read the live units of mLeft as a number
    Operator mOperator;   ///< otherwise: apply this to the values of mLeft and mRight
    Span mLeft;
    Span mRight;
};

class ExpressionText {
public:
    /// inUnits holds only "0"-"9", "(", ")", "+", "-", "*", "/", ".", ",",
    /// "^", "e" and "E".
    explicit ExpressionText(std::string inUnits);

    /// The whole text.
    Span Whole() const { return {0, static_cast<std::uint32_t>(mUnits.size())}; }

    /// Decides how inSpan is read.  Removes units from the text (step 3), so
    /// each span is to be analysed once, and the spans it returns are
    /// disjoint parts of inSpan.
    Step Analyze(Span inSpan);

    /// The live units of inSpan.
    UTF16String LiveText(Span inSpan) const;

private:
    struct Found {
        bool mFound;
        Operator mOperator;
        std::uint32_t mPosition;
    };

    Span StripEnclosingParentheses(Span inSpan) const;
    void RemoveStrandedOperators(Span inSpan);
    Found FindSplittingOperator(Span inSpan);
    void Kill(std::uint32_t inPosition);

    std::string mUnits;
    LiveUnits mLive;
    DepthProfile mDepth;
    std::vector<DepthOrderedPositions> mByKind;  // indexed by Operator
    DepthOrderedPositions mStranded;             // units that step 3 removes unless first
    std::vector<std::uint32_t> mKindIndex;       // index of each position in its mByKind list
    std::vector<std::uint32_t> mStrandedIndex;   // index in mStranded, or kNone
    std::vector<std::uint32_t> mRemoved;         // what the latest step 3 removed, ascending
};

}  // namespace calculator
}  // namespace utility
}  // namespace quorel

#endif
