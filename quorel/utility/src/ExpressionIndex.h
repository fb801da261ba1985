// Index structures over the text of one calculation, so that each step of the
// calculator costs a few logarithmic look-ups instead of a pass over its text.
//
// A calculation splits its text again and again into operands.  Each operand
// is a span of positions in the one filtered text of the calculation; units
// that a step has removed ("*" behind another operator, and the like) are
// marked dead and don't count in any span from then on.  Parentheses are never
// removed, so the depth of parentheses before each position never changes.
#ifndef QUOREL_UTILITY_SRC_EXPRESSIONINDEX_H
#define QUOREL_UTILITY_SRC_EXPRESSIONINDEX_H

#include <cstdint>
#include <string>
#include <vector>

namespace quorel {
namespace utility {
namespace calculator {

/// Positions [mBegin, mEnd) of the text; dead units inside don't count.
struct Span {
    std::uint32_t mBegin;
    std::uint32_t mEnd;
};

/// Which units are still alive, with counting and selection by rank (a
/// Fenwick tree over 0/1 entries).
class LiveUnits {
public:
    explicit LiveUnits(std::uint32_t inSize);

    bool IsAlive(std::uint32_t inPosition) const { return mAlive[inPosition] != 0; }
    /// Marks a live unit dead.
    void Kill(std::uint32_t inPosition);
    /// Live units in [0, inPosition).
    std::uint32_t Before(std::uint32_t inPosition) const;
    /// Live units in the span.
    std::uint32_t Count(Span inSpan) const { return Before(inSpan.mEnd) - Before(inSpan.mBegin); }
    /// The position of the live unit with index inIndex (from 0) in the span,
    /// or the span's end when the span has no more live units.
    std::uint32_t PositionOf(Span inSpan, std::uint32_t inIndex) const;

private:
    // The position of the inRank-th live unit (from 1) of the whole text.
    std::uint32_t Select(std::uint32_t inRank) const;

    std::vector<std::uint32_t> mTree;  // 1-based Fenwick tree
    std::vector<std::uint8_t> mAlive;
    std::uint32_t mHighestStep;
};

/// The depth of parentheses before each position: "(" raises it for the
/// positions behind it, ")" lowers it.  Answers minimum queries over ranges.
class DepthProfile {
public:
    explicit DepthProfile(std::string const& inUnits);

    /// The depth before inPosition (0 to the text's size).
    std::int32_t At(std::uint32_t inPosition) const { return mDepth[inPosition]; }
    /// The least depth at the positions inFirst to inLast, both included.
    std::int32_t Minimum(std::uint32_t inFirst, std::uint32_t inLast) const;

private:
    std::vector<std::int32_t> mDepth;
    std::vector<std::int32_t> mMinimumTree;  // bottom-up segment tree over mDepth
    std::uint32_t mLeaves;
};

/// Positions ordered by (depth, position), for finding the live positions at
/// one depth within a span.  Removal is by position.
class DepthOrderedPositions {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    /// inPositions ascending; inDepth gives the depth of each.
    DepthOrderedPositions(std::vector<std::uint32_t> inPositions, DepthProfile const& inDepth);

    /// The index of each listed position in the order, by position; kNone for
    /// positions that are not listed.  Filled by Index().
    void Index(std::vector<std::uint32_t>& ioIndexOf) const;

    /// The last live position at inDepth within the span, or kNone.
    std::uint32_t LastAt(std::int32_t inDepth, Span inSpan);
    /// The first live position at inDepth that lies at or after inFrom and
    /// before inEnd, or kNone.
    std::uint32_t FirstAt(std::int32_t inDepth, std::uint32_t inFrom, std::uint32_t inEnd);
    /// Takes the entry with the index inIndex out of the order.
    void Remove(std::uint32_t inIndex);

private:
    // The first entry not below (inDepth, inPosition).
    std::uint32_t LowerBound(std::int32_t inDepth, std::uint32_t inPosition) const;
    // The greatest live index not above inIndex, or kNone (inIndex may be kNone).
    std::uint32_t LiveAtOrBefore(std::uint32_t inIndex);
    // The least live index not below inIndex, or the size.
    std::uint32_t LiveAtOrAfter(std::uint32_t inIndex);

    std::vector<std::uint32_t> mPositions;
    std::vector<std::int32_t> mDepths;
    std::vector<std::uint32_t> mPrevious;  // union-find towards lower indices, shifted by 1 (0: none)
    std::vector<std::uint32_t> mNext;      // union-find towards higher indices (size: none)
};

}  // namespace calculator
}  // namespace utility
}  // namespace quorel

#endif
