// Layout engine benchmarks: rebuilding and arranging an AutoLayout group of
// 4, 8 and 12 leaves (its enumeration of line breakings grows as 2^n), a
// dialog-like tree of 200 leaves in nested rows and columns, and repeated
// Arrange at changing sizes as during a live window resize.  Times are in
// microseconds per operation.
#include <quorel/arrange/ArrangementSet.h>
#include <quorel/arrange/AutoLayout.h>
#include <quorel/arrange/Column.h>
#include <quorel/arrange/Row.h>
#include <quorel/arrange/Separator.h>
#include <quorel/arrange/Single.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

using quorel::arrange::IArrangeable;
using quorel::geom::PointT;
using quorel::geom::RectT;

class Leaf : public quorel::arrange::Single {
public:
    Leaf(float inWidth, float inHeight, bool inExpandable) : mWidth(inWidth), mHeight(inHeight), mExpandable(inExpandable) {}

    float BestWidth() const override { return mWidth; }
    float BestHeight() const override { return mHeight; }
    bool HorizontallyExpandable() const override { return mExpandable; }
    float LeftMargin() const override { return 1; }
    float RightMargin() const override { return 1; }
    PointT<float> Place(RectT<float> const& inRect) override {
        mPlaced = inRect;
        return PointT<float>(inRect.width + 2, inRect.height);
    }

private:
    float mWidth;
    float mHeight;
    bool mExpandable;
    RectT<float> mPlaced;
};

class Separator : public quorel::arrange::ISeparator {
public:
    void Place(int, RectT<float> const& inRect) override { mPlaced = inRect; }

private:
    RectT<float> mPlaced;
};

// A group of kind G over children held elsewhere, with spacing, margins and
// (optionally) separators.
template <class G>
class Group : public G {
public:
    explicit Group(bool inSeparators = false) : mWithSeparators(inSeparators) {}

    bool VisitChildren(IArrangeable::ConstVisitor inFunction) const override {
        for (IArrangeable const* child : mChildren) {
            inFunction(*child);
        }
        return true;
    }
    bool VisitChildren(IArrangeable::Visitor inFunction) override {
        for (IArrangeable* child : mChildren) {
            inFunction(*child);
        }
        return true;
    }
    float HorizontalSpacing() const override { return 4; }
    float VerticalSpacing() const override { return 3; }
    float LeftMargin() const override { return 2; }
    float TopMargin() const override { return 2; }
    float RightMargin() const override { return 2; }
    float BottomMargin() const override { return 2; }
    quorel::arrange::ISeparator* BuildSeparator() override {
        if (!mWithSeparators) {
            return nullptr;
        }
        mSeparators.emplace_back(new Separator);
        return mSeparators.back().get();
    }
    void ClearSeparators() override { mSeparators.clear(); }

    std::vector<IArrangeable*> mChildren;

private:
    bool mWithSeparators;
    std::vector<std::unique_ptr<Separator>> mSeparators;
};

// An AutoLayout root over n leaves of varied sizes.
class AutoLayoutTree {
public:
    explicit AutoLayoutTree(int inLeaves) {
        for (int i = 0; i < inLeaves; ++i) {
            mLeaves.emplace_back(new Leaf(20.0f + 7.0f * static_cast<float>(i % 5), 12.0f + 3.0f * static_cast<float>(i % 3), false));
            mRoot.mChildren.push_back(mLeaves.back().get());
        }
    }

    Group<quorel::arrange::AutoLayout> mRoot;

private:
    std::vector<std::unique_ptr<Leaf>> mLeaves;
};

// A dialog of 200 leaves: a column of 10 sections, each a column of 4 rows
// of 5 leaves (a fixed label and four fields, two of them expandable), with
// separators between the sections and between the rows.
class DialogTree {
public:
    DialogTree() : mRoot(true) {
        for (int s = 0; s < 10; ++s) {
            mSections.emplace_back(new Group<quorel::arrange::Column>(true));
            for (int r = 0; r < 4; ++r) {
                mRows.emplace_back(new Group<quorel::arrange::Row>());
                for (int l = 0; l < 5; ++l) {
                    bool const label = l == 0;
                    mLeaves.emplace_back(new Leaf(label ? 60.0f : 30.0f + 10.0f * static_cast<float>(l), 18.0f, !label && l % 2 == 1));
                    mRows.back()->mChildren.push_back(mLeaves.back().get());
                }
                mSections.back()->mChildren.push_back(mRows.back().get());
            }
            mRoot.mChildren.push_back(mSections.back().get());
        }
    }

    // Marks every node invalid without rearranging, so that the next
    // Arrangements() rebuilds the whole tree.
    void InvalidateEverything() {
        for (auto const& leaf : mLeaves) {
            leaf->Invalidate();
        }
    }

    std::size_t LeafCount() const { return mLeaves.size(); }

    Group<quorel::arrange::Column> mRoot;

private:
    std::vector<std::unique_ptr<Group<quorel::arrange::Column>>> mSections;
    std::vector<std::unique_ptr<Group<quorel::arrange::Row>>> mRows;
    std::vector<std::unique_ptr<Leaf>> mLeaves;
};

void BM_AutoLayoutRebuild(benchmark::State& ioState) {
    AutoLayoutTree tree(static_cast<int>(ioState.range(0)));
    tree.mRoot.EnableArrangement(false);
    std::size_t survivors = 0;
    for (auto _ : ioState) {
        tree.mRoot.Invalidate();
        survivors = tree.mRoot.Arrangements().Size();
    }
    ioState.counters["offers"] = static_cast<double>(2 * (1 << (ioState.range(0) - 1)));
    ioState.counters["kept"] = static_cast<double>(survivors);
}
BENCHMARK(BM_AutoLayoutRebuild)->Arg(4)->Arg(8)->Arg(12)->Unit(benchmark::kMicrosecond);

void BM_AutoLayoutArrange(benchmark::State& ioState) {
    AutoLayoutTree tree(static_cast<int>(ioState.range(0)));
    tree.mRoot.BestSize();
    float width = 60;
    for (auto _ : ioState) {
        width = width >= 400 ? 60 : width + 1;
        benchmark::DoNotOptimize(tree.mRoot.Arrange(RectT<float>(0, 0, width, 24000 / width)));
    }
}
BENCHMARK(BM_AutoLayoutArrange)->Arg(4)->Arg(8)->Arg(12)->Unit(benchmark::kMicrosecond);

void BM_DialogRebuild(benchmark::State& ioState) {
    DialogTree tree;
    tree.mRoot.EnableArrangement(false);
    for (auto _ : ioState) {
        tree.InvalidateEverything();
        benchmark::DoNotOptimize(tree.mRoot.BestSize());
    }
    ioState.counters["leaves"] = static_cast<double>(tree.LeafCount());
}
BENCHMARK(BM_DialogRebuild)->Unit(benchmark::kMicrosecond);

void BM_DialogArrangeSameSize(benchmark::State& ioState) {
    DialogTree tree;
    RectT<float> const rect(0, 0, 700, 1000);
    for (auto _ : ioState) {
        benchmark::DoNotOptimize(tree.mRoot.Arrange(rect));
    }
}
BENCHMARK(BM_DialogArrangeSameSize)->Unit(benchmark::kMicrosecond);

void BM_DialogLiveResize(benchmark::State& ioState) {
    DialogTree tree;
    float width = 300;
    for (auto _ : ioState) {
        width = width >= 1200 ? 300 : width + 1;
        benchmark::DoNotOptimize(tree.mRoot.Arrange(RectT<float>(0, 0, width, 1300 - width / 2)));
    }
}
BENCHMARK(BM_DialogLiveResize)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
