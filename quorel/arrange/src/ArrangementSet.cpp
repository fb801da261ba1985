#include <quorel/arrange/ArrangementSet.h>

#include <algorithm>
#include <cmath>

namespace quorel {
namespace arrange {
namespace impl {

namespace {

// Distance of the best proportions from the golden ratio, computed in double
// and kept as float, so that distances equal as floats count as equal.
float GoldenRatioDistance(IArrangement const& inArrangement) {
    double const ratio =
        static_cast<double>(inArrangement.BestWidth()) / static_cast<double>(inArrangement.BestHeight());
    return static_cast<float>(std::fabs(ratio - kGoldenRatio));
}

float MinimumArea(IArrangement const& inArrangement) {
    return inArrangement.MinWidth() * inArrangement.MinHeight();
}

// Whether inCandidate should replace inBest as the choice for inSize.
bool IsBetterChoice(IArrangement const& inCandidate, IArrangement const& inBest, geom::PointT<float> const& inSize) {
    bool const candidateFits = Fits(inCandidate, inSize);
    bool const bestFits = Fits(inBest, inSize);
    if (candidateFits != bestFits) {
        return candidateFits;
    }
    if (!candidateFits) {
        return inCandidate.ClippedArea(inSize) < inBest.ClippedArea(inSize);
    }
    float const candidateWaste = inCandidate.WastedArea(inSize);
    float const bestWaste = inBest.WastedArea(inSize);
    if (candidateWaste != bestWaste) {
        return candidateWaste < bestWaste;
    }
    float const candidateArea = MinimumArea(inCandidate);
    float const bestArea = MinimumArea(inBest);
    if (candidateArea != bestArea) {
        return candidateArea < bestArea;
    }
    return NearerGoldenRatio(inCandidate, inBest);
}

}  // namespace

bool Outdoes(IArrangement const& inA, IArrangement const& inB) {
    return inA.MinWidth() <= inB.MinWidth() && inA.MinHeight() <= inB.MinHeight();
}

bool Comparable(IArrangement const& inA, IArrangement const& inB) { return Outdoes(inA, inB) || Outdoes(inB, inA); }

bool Fits(IArrangement const& inArrangement, geom::PointT<float> const& inSize) {
    return inArrangement.MinWidth() <= inSize.x && inArrangement.MinHeight() <= inSize.y;
}

bool NearerGoldenRatio(IArrangement const& inA, IArrangement const& inB) {
    return GoldenRatioDistance(inA) < GoldenRatioDistance(inB);
}

void ArrangementSet::AddArrangement(ArrangementPtr const& inArrangement) {
    if (!inArrangement) {
        return;
    }
    IArrangement const& added = *inArrangement;
    auto const first = std::find_if(mArrangements.begin(), mArrangements.end(),
                                    [&added](ArrangementPtr const& inOld) { return Comparable(added, *inOld); });
    if (first != mArrangements.end()) {
        if (!Outdoes(added, **first)) {
            return;
        }
        mArrangements.erase(std::remove_if(first, mArrangements.end(),
                                           [&added](ArrangementPtr const& inOld) { return Outdoes(added, *inOld); }),
                            mArrangements.end());
    }
    mArrangements.push_back(inArrangement);
}

void ArrangementSet::Clear() { mArrangements.clear(); }

void ArrangementSet::PrepareAll() {
    for (ArrangementPtr const& arrangement : mArrangements) {
        arrangement->Prepare();
    }
}

geom::PointT<float> ArrangementSet::BestSize() const {
    if (mArrangements.empty()) {
        return geom::PointT<float>();
    }
    IArrangement const* best = mArrangements.front().get();
    for (ArrangementPtr const& candidate : mArrangements) {
        if (NearerGoldenRatio(*candidate, *best)) {
            best = candidate.get();
        }
    }
    return geom::PointT<float>(best->MinWidth(), best->MinHeight());
}

ArrangementPtr ArrangementSet::Choose(geom::PointT<float> const& inSize) const {
    if (mArrangements.empty()) {
        return ArrangementPtr();
    }
    ArrangementPtr best = mArrangements.front();
    for (auto it = mArrangements.begin() + 1; it != mArrangements.end(); ++it) {
        if (IsBetterChoice(**it, *best, inSize)) {
            best = *it;
        }
    }
    return best;
}

geom::PointT<float> ArrangementSet::Arrange(geom::RectT<float> const& inRect) {
    ArrangementPtr const chosen = Choose(geom::PointT<float>(inRect.width, inRect.height));
    return chosen ? chosen->Arrange(inRect) : geom::PointT<float>();
}

}  // namespace impl
}  // namespace arrange
}  // namespace quorel
