#include <quorel/arrange/LineWrapping.h>

#include <cstddef>

namespace quorel {
namespace arrange {
namespace impl {

namespace {

// The enumeration of one combination of child arrangements.  Each step works
// on copies of the lines made so far and of the separator pool, so that a
// branch needs no undoing.
class LineWrapper {
public:
    LineWrapper(ArrangementSet& ioSet, AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                ArrangementFactory inMakeLine, ArrangementFactory inMakeStack)
        : mSet(ioSet), mGroup(inGroup), mChildren(inChildren), mMakeLine(inMakeLine), mMakeStack(inMakeStack) {}

    // Offers every cutting of the last inRemaining children into inLinesLeft
    // further lines, the first line longest first.
    void Wrap(ArrangementList const& inLines, std::size_t inRemaining, std::size_t inLinesLeft,
              SeparatorList const& inPool) const {
        std::size_t const start = mChildren.size() - inRemaining;
        for (std::size_t length = inRemaining - inLinesLeft + 1; length >= 1; --length) {
            ArrangementList lines = inLines;
            SeparatorList pool = inPool;
            lines.push_back(MakeLine(start, length, inLinesLeft == 1 && inLines.empty(), pool));
            if (inLinesLeft == 1) {
                mSet.AddArrangement(mMakeStack(mGroup, lines, pool, true));
                return;
            }
            Wrap(lines, inRemaining - length, inLinesLeft - 1, pool);
        }
    }

private:
    // A line of inLength children from inStart.  A longer line takes its
    // separators from the end of ioPool; a single child is its own line.
    ArrangementPtr MakeLine(std::size_t inStart, std::size_t inLength, bool inOutermost, SeparatorList& ioPool) const {
        if (inLength == 1) {
            return mChildren[inStart];
        }
        ArrangementList const children(mChildren.begin() + inStart, mChildren.begin() + inStart + inLength);
        SeparatorList separators;
        for (std::size_t i = 1; i < inLength; ++i) {
            separators.push_back(ioPool.empty() ? 0 : ioPool.back());
            if (!ioPool.empty()) {
                ioPool.pop_back();
            }
        }
        return mMakeLine(mGroup, children, separators, inOutermost);
    }

    ArrangementSet& mSet;
    AbstractArrangeableGroup& mGroup;
    ArrangementList const& mChildren;
    ArrangementFactory mMakeLine;
    ArrangementFactory mMakeStack;
};

}  // namespace

void AddWrappedArrangements(ArrangementSet& ioSet, AbstractArrangeableGroup& inGroup,
                            ArrangementList const& inChildren, SeparatorList const& inSeparators,
                            ArrangementFactory inMakeLine, ArrangementFactory inMakeStack) {
    LineWrapper const wrapper(ioSet, inGroup, inChildren, inMakeLine, inMakeStack);
    for (std::size_t lines = 1; lines <= inChildren.size(); ++lines) {
        wrapper.Wrap(ArrangementList(), inChildren.size(), lines, inSeparators);
    }
}

}  // namespace impl
}  // namespace arrange
}  // namespace quorel
