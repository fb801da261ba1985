#include <quorel/geom/Matrix.h>
#include <quorel/geom/PlatformConversion.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace quorel::geom;
using namespace quorel::utility;
using namespace quorel::testing;

namespace {

typedef std::vector<double> Entries;  // nine entries, row-major

// Inverts a copy (made by the copy constructor) of inEntries; an empty inExpected skips the entries.
template <class T>
MatrixT<T> Inverted(Entries const& inEntries, bool inInvertible, Entries const& inExpected = Entries()) {
    MatrixT<T> matrix;
    for (int i = 0; i < 9; ++i) matrix[i / 3][i % 3] = static_cast<T>(inEntries[i]);
    MatrixT<T> copy(matrix);
    EXPECT_EQ(copy.Invert(false), inInvertible) << inEntries[0] << ", " << inEntries[1];
    for (int i = 0; i < 9 && !inExpected.empty(); ++i) EXPECT_EQ(copy[i / 3][i % 3], T(inExpected[i])) << i;
    return copy;
}

void ExpectInverse(Entries const& inEntries, bool inInvertible, Entries const& inExpected = Entries()) {
    Inverted<float>(inEntries, inInvertible, inExpected);
    Inverted<double>(inEntries, inInvertible, inExpected);
}

}  // namespace

TEST(Matrix, InvertsAffineTransformsAndZeroesSingularOnes) {
    ScopedErrorManager manager;
    // (x, y) -> (-4y + 3, 2x + 2); the third column is left as it is.
    ExpectInverse({0, 2, 9, -4, 0, 8, 3, 2, 2}, true, {0, -0.25, 9, 0.5, 0, 8, -1, 0.75, 2});
    // Singular: |det| not above 1e-9, in double, however small the entries and whatever the precision.
    ExpectInverse({1e-5, 0, 0, 0, 1e-5, 0, 3, 4, 1}, false, Entries(9, 0.0));
    ExpectInverse({1e-9, 0, 0, 0, 1, 0, 0, 0, 1}, false, Entries(9, 0.0));
    ExpectInverse({1.000001e-9, 0, 0, 0, 1, 0, 0, 0, 1}, true);
    ExpectInverse({std::numeric_limits<double>::quiet_NaN(), 0, 0, 0, 1, 0, 0, 0, 1}, false, Entries(9, 0.0));
    EXPECT_TRUE(manager->mCalls.empty()) << "no report without inThrowOnFailure";

    // Determinant -28: float rounds the reciprocal before it scales the entries, which gives
    // a different float than the exact quotient 11/28 rounded once.
    MatrixT<float> const single = Inverted<float>({3, 1, 0, 5, 11, 0, 1, 0, 1}, true);
    EXPECT_EQ(single[0][0], -11.0f * (1.0f / -28.0f));
}

TEST(Matrix, SingularMatrixReportsWhenAsked) {
    for (RecordingErrorManager::Reaction reaction : {RecordingErrorManager::kReturn, RecordingErrorManager::kThrow}) {
        ScopedErrorManager manager(reaction);
        MatrixT<double> singular(true);  // the identity, made singular below
        singular[1][1] = 0;
        bool threw = false;
        try { EXPECT_FALSE(singular.Invert(true)); } catch (RecordedError const&) { threw = true; }
        EXPECT_EQ(threw, reaction == RecordingErrorManager::kThrow);
        for (int i = 0; i < 9; ++i) EXPECT_EQ(singular[i / 3][i % 3], 0.0) << i;
        ASSERT_EQ(manager->mCalls.size(), 1u);
        RecordedCall const& c = manager->mCalls[0];
        EXPECT_EQ(c.mMessage, "$$$/qrl/geom/matrix/UI=Matrix cannot be inverted.");
        EXPECT_TRUE(c.mLevel == quorel::config::kErrorLevel_NonFatal && c.mModuleID == 107u && c.mErrorNumber == 0);
    }
}

TEST(PlatformConversion, RoundTripsWithoutNormalising) {
    struct Case { RectT<std::int32_t> mRect; PlatformRect mCorners; } const cases[] = {
        {{10, 20, 30, 40}, {10, 20, 40, 60}}, {{5, 5, -20, -1}, {5, 5, -15, 4}},  // negative sizes stay negative
        {{INT32_MAX, -INT32_MAX, INT32_MAX, INT32_MAX}, {INT32_MAX, -INT32_MAX, -2, 0}},   // wraps in 32 bits
    };
    // WINtoQRL is one-to-one, so both round trips together pin QRLtoWIN(mRect) to mCorners.
    for (Case const& c : cases) EXPECT_TRUE(WINtoQRL(c.mCorners) == c.mRect && WINtoQRL(QRLtoWIN(c.mRect)) == c.mRect);
    PlatformPoint const point = QRLtoWIN(PointT<std::int32_t>(-3, 9));
    EXPECT_TRUE(point.x == -3 && point.y == 9 && WINtoQRL(point) == PointT<std::int32_t>(-3, 9));
}
