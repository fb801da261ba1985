#include "ExpressionIndex.h"

#include <algorithm>
#include <numeric>

namespace quorel {
namespace utility {
namespace calculator {

namespace {

std::uint32_t LowestBit(std::uint32_t inValue) { return inValue & (0u - inValue); }

// Union-find root with path halving; a root is its own parent.
std::uint32_t Root(std::vector<std::uint32_t>& ioParents, std::uint32_t inSlot) {
    while (ioParents[inSlot] != inSlot) {
        ioParents[inSlot] = ioParents[ioParents[inSlot]];
        inSlot = ioParents[inSlot];
    }
    return inSlot;
}

}  // namespace

// LiveUnits

LiveUnits::LiveUnits(std::uint32_t inSize) : mTree(inSize + 1, 0), mAlive(inSize, 1), mHighestStep(1) {
    for (std::uint32_t i = 1; i <= inSize; ++i) {
        mTree[i] += 1;
        std::uint32_t const parent = i + LowestBit(i);
        if (parent <= inSize) {
            mTree[parent] += mTree[i];
        }
    }
    while (mHighestStep <= inSize / 2) {
        mHighestStep *= 2;
    }
}

void LiveUnits::Kill(std::uint32_t inPosition) {
    mAlive[inPosition] = 0;
    for (std::size_t i = inPosition + 1; i < mTree.size(); i += LowestBit(static_cast<std::uint32_t>(i))) {
        mTree[i] -= 1;
    }
}

std::uint32_t LiveUnits::Before(std::uint32_t inPosition) const {
    std::uint32_t sum = 0;
    for (std::uint32_t i = inPosition; i > 0; i -= LowestBit(i)) {
        sum += mTree[i];
    }
    return sum;
}

std::uint32_t LiveUnits::Select(std::uint32_t inRank) const {
    std::uint32_t position = 0;
    for (std::uint32_t step = mHighestStep; step != 0; step >>= 1) {
        if (position + step < mTree.size() && mTree[position + step] < inRank) {
            position += step;
            inRank -= mTree[position];
        }
    }
    return position;
}

std::uint32_t LiveUnits::PositionOf(Span inSpan, std::uint32_t inIndex) const {
    if (inIndex >= Count(inSpan)) {
        return inSpan.mEnd;
    }
    return Select(Before(inSpan.mBegin) + inIndex + 1);
}

// DepthProfile

DepthProfile::DepthProfile(std::string const& inUnits)
    : mDepth(inUnits.size() + 1, 0), mLeaves(static_cast<std::uint32_t>(inUnits.size() + 1)) {
    for (std::size_t i = 0; i < inUnits.size(); ++i) {
        mDepth[i + 1] = mDepth[i] + (inUnits[i] == '(') - (inUnits[i] == ')');
    }
    mMinimumTree.resize(2 * static_cast<std::size_t>(mLeaves));
    std::copy(mDepth.begin(), mDepth.end(), mMinimumTree.begin() + mLeaves);
    for (std::uint32_t node = mLeaves - 1; node > 0; --node) {
        mMinimumTree[node] = std::min(mMinimumTree[2 * node], mMinimumTree[2 * node + 1]);
    }
}

std::int32_t DepthProfile::Minimum(std::uint32_t inFirst, std::uint32_t inLast) const {
    std::int32_t result = mDepth[inFirst];
    for (std::size_t low = inFirst + mLeaves, high = inLast + mLeaves + 1; low < high; low /= 2, high /= 2) {
        if (low % 2 == 1) {
            result = std::min(result, mMinimumTree[low++]);
        }
        if (high % 2 == 1) {
            result = std::min(result, mMinimumTree[--high]);
        }
    }
    return result;
}

// DepthOrderedPositions

DepthOrderedPositions::DepthOrderedPositions(std::vector<std::uint32_t> inPositions, DepthProfile const& inDepth)
    : mPositions(std::move(inPositions)) {
    std::stable_sort(mPositions.begin(), mPositions.end(), [&](std::uint32_t inA, std::uint32_t inB) {
        return inDepth.At(inA) < inDepth.At(inB);
    });
    mDepths.reserve(mPositions.size());
    for (std::uint32_t position : mPositions) {
        mDepths.push_back(inDepth.At(position));
    }
    mPrevious.resize(mPositions.size() + 1);
    std::iota(mPrevious.begin(), mPrevious.end(), 0u);
    mNext = mPrevious;
}

void DepthOrderedPositions::Index(std::vector<std::uint32_t>& ioIndexOf) const {
    for (std::uint32_t i = 0; i < mPositions.size(); ++i) {
        ioIndexOf[mPositions[i]] = i;
    }
}

std::uint32_t DepthOrderedPositions::LowerBound(std::int32_t inDepth, std::uint32_t inPosition) const {
    std::uint32_t low = 0;
    std::uint32_t high = static_cast<std::uint32_t>(mPositions.size());
    while (low < high) {
        std::uint32_t const middle = low + (high - low) / 2;
        bool const below = mDepths[middle] < inDepth || (mDepths[middle] == inDepth && mPositions[middle] < inPosition);
        if (below) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

std::uint32_t DepthOrderedPositions::LiveAtOrBefore(std::uint32_t inIndex) {
    if (inIndex == kNone) {
        return kNone;
    }
    std::uint32_t const slot = Root(mPrevious, inIndex + 1);
    return slot == 0 ? kNone : slot - 1;
}

std::uint32_t DepthOrderedPositions::LiveAtOrAfter(std::uint32_t inIndex) { return Root(mNext, inIndex); }

std::uint32_t DepthOrderedPositions::LastAt(std::int32_t inDepth, Span inSpan) {
    std::uint32_t const index = LiveAtOrBefore(LowerBound(inDepth, inSpan.mEnd) - 1);
    if (index == kNone || mDepths[index] != inDepth || mPositions[index] < inSpan.mBegin) {
        return kNone;
    }
    return mPositions[index];
}

std::uint32_t DepthOrderedPositions::FirstAt(std::int32_t inDepth, std::uint32_t inFrom, std::uint32_t inEnd) {
    std::uint32_t const index = LiveAtOrAfter(LowerBound(inDepth, inFrom));
    if (index == mPositions.size() || mDepths[index] != inDepth || mPositions[index] >= inEnd) {
        return kNone;
    }
    return mPositions[index];
}

void DepthOrderedPositions::Remove(std::uint32_t inIndex) {
    mPrevious[inIndex + 1] = inIndex;
    mNext[inIndex] = inIndex + 1;
}

}  // namespace calculator
}  // namespace utility
}  // namespace quorel
