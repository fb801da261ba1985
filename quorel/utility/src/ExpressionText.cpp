#include "ExpressionText.h"

#include <algorithm>
#include <utility>

namespace quorel {
namespace utility {
namespace calculator {

namespace {

constexpr std::uint32_t kNone = DepthOrderedPositions::kNone;
constexpr int kOperatorKinds = 6;

// The list of an operator unit (its Operator), or -1 for other units.
int KindOf(char inUnit) {
    switch (inUnit) {
        case 'e':
        case 'E':
            return static_cast<int>(Operator::kScale);
        case '+':
            return static_cast<int>(Operator::kAdd);
        case '-':
            return static_cast<int>(Operator::kSubtract);
        case '*':
            return static_cast<int>(Operator::kMultiply);
        case '/':
            return static_cast<int>(Operator::kDivide);
        case '^':
            return static_cast<int>(Operator::kPower);
        default:
            return -1;
    }
}

bool IsOperator(char inUnit) { return KindOf(inUnit) >= 0; }

// Operators that can't stand at the start of a text or behind another operator.
bool IsBinaryOnly(char inUnit) { return IsOperator(inUnit) && inUnit != '+' && inUnit != '-'; }

std::vector<DepthOrderedPositions> ListsByKind(std::string const& inUnits, DepthProfile const& inDepth) {
    std::vector<std::vector<std::uint32_t>> positions(kOperatorKinds);
    for (std::uint32_t i = 0; i < inUnits.size(); ++i) {
        int const kind = KindOf(inUnits[i]);
        if (kind >= 0) {
            positions[static_cast<std::size_t>(kind)].push_back(i);
        }
    }
    std::vector<DepthOrderedPositions> lists;
    lists.reserve(kOperatorKinds);
    for (auto& list : positions) {
        lists.emplace_back(std::move(list), inDepth);
    }
    return lists;
}

// Binary-only operators right behind another operator.
std::vector<std::uint32_t> StrandedPositions(std::string const& inUnits) {
    std::vector<std::uint32_t> positions;
    for (std::uint32_t i = 1; i < inUnits.size(); ++i) {
        if (IsBinaryOnly(inUnits[i]) && IsOperator(inUnits[i - 1])) {
            positions.push_back(i);
        }
    }
    return positions;
}

}  // namespace

ExpressionText::ExpressionText(std::string inUnits)
    : mUnits(std::move(inUnits)),
      mLive(static_cast<std::uint32_t>(mUnits.size())),
      mDepth(mUnits),
      mByKind(ListsByKind(mUnits, mDepth)),
      mStranded(StrandedPositions(mUnits), mDepth),
      mKindIndex(mUnits.size(), kNone),
      mStrandedIndex(mUnits.size(), kNone) {
    for (auto const& list : mByKind) {
        list.Index(mKindIndex);
    }
    mStranded.Index(mStrandedIndex);
}

Step ExpressionText::Analyze(Span inSpan) {
    Step step{true, Operator::kAdd, inSpan, inSpan};
    if (mLive.Count(inSpan) < 2) {
        return step;
    }
    Span const span = StripEnclosingParentheses(inSpan);
    step.mLeft = span;
    RemoveStrandedOperators(span);
    Found const found = FindSplittingOperator(span);
    if (!found.mFound) {
        return step;
    }
    // The operator's index in the text as it was before the removal.
    std::uint32_t const removedBefore = static_cast<std::uint32_t>(
        std::lower_bound(mRemoved.begin(), mRemoved.end(), found.mPosition) - mRemoved.begin());
    std::uint32_t const index = mLive.Count({span.mBegin, found.mPosition}) + removedBefore;
    std::uint32_t const length = mLive.Count(span);
    step.mIsNumber = false;
    step.mOperator = found.mOperator;
    step.mLeft = {span.mBegin, mLive.PositionOf(span, std::min(index, length))};
    step.mRight = {mLive.PositionOf(span, std::min(index + 1, length)), span.mEnd};
    return step;
}

UTF16String ExpressionText::LiveText(Span inSpan) const {
    UTF16String text;
    text.reserve(inSpan.mEnd - inSpan.mBegin);
    for (std::uint32_t i = inSpan.mBegin; i < inSpan.mEnd; ++i) {
        if (mLive.IsAlive(i)) {
            text.push_back(static_cast<unsigned char>(mUnits[i]));
        }
    }
    return text;
}

Span ExpressionText::StripEnclosingParentheses(Span inSpan) const {
    Span stripped = inSpan;
    for (std::uint32_t count = mLive.Count(stripped); count >= 2; count -= 2) {
        std::uint32_t const first = mLive.PositionOf(stripped, 0);
        std::uint32_t const last = mLive.PositionOf(stripped, count - 1);
        if (mUnits[first] != '(' || mUnits[last] != ')') {
            break;
        }
        stripped = {first + 1, last};
    }
    if (stripped.mBegin == inSpan.mBegin && stripped.mEnd == inSpan.mEnd) {
        return inSpan;
    }
    bool const neverBelowZero = stripped.mBegin >= stripped.mEnd ||
                                mDepth.Minimum(stripped.mBegin + 1, stripped.mEnd) >= mDepth.At(stripped.mBegin);
    return neverBelowZero ? stripped : inSpan;
}

// Parentheses are never removed, so the live units between a span's start and
// its first live unit don't change the depth; and a removed unit is always an
// operator, so a unit whose neighbour in the text was removed still has an
// operator before it in the span, or is the span's first.
void ExpressionText::RemoveStrandedOperators(Span inSpan) {
    mRemoved.clear();
    if (mLive.Count(inSpan) == 0) {
        return;
    }
    std::uint32_t const first = mLive.PositionOf(inSpan, 0);
    if (IsBinaryOnly(mUnits[first])) {
        Kill(first);
        mRemoved.push_back(first);
    }
    std::int32_t const depth = mDepth.At(inSpan.mBegin);
    for (std::uint32_t position = mStranded.FirstAt(depth, inSpan.mBegin, inSpan.mEnd); position != kNone;
         position = mStranded.FirstAt(depth, position + 1, inSpan.mEnd)) {
        Kill(position);
        mRemoved.push_back(position);
    }
}

ExpressionText::Found ExpressionText::FindSplittingOperator(Span inSpan) {
    std::int32_t const depth = mDepth.At(inSpan.mBegin);
    auto lastOf = [&](Operator inOperator) {
        return mByKind[static_cast<std::size_t>(inOperator)].LastAt(depth, inSpan);
    };
    std::uint32_t const scale = lastOf(Operator::kScale);
    if (scale != kNone) {
        return {true, Operator::kScale, scale};
    }
    std::uint32_t const plus = lastOf(Operator::kAdd);
    std::uint32_t const minus = lastOf(Operator::kSubtract);
    if (plus != kNone && (minus == kNone || plus > minus)) {
        return {true, Operator::kAdd, plus};
    }
    if (minus != kNone) {
        return {true, Operator::kSubtract, minus};
    }
    for (Operator candidate : {Operator::kMultiply, Operator::kDivide, Operator::kPower}) {
        std::uint32_t const position = lastOf(candidate);
        if (position != kNone) {
            return {true, candidate, position};
        }
    }
    return {false, Operator::kAdd, 0};
}

void ExpressionText::Kill(std::uint32_t inPosition) {
    mLive.Kill(inPosition);
    mByKind[static_cast<std::size_t>(KindOf(mUnits[inPosition]))].Remove(mKindIndex[inPosition]);
    if (mStrandedIndex[inPosition] != kNone) {
        mStranded.Remove(mStrandedIndex[inPosition]);
    }
}

}  // namespace calculator
}  // namespace utility
}  // namespace quorel
