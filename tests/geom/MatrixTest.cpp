#include <quorel/geom/Matrix.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using quorel::geom::MatrixT;
using quorel::testing::RecordingErrorManager;
using quorel::testing::ScopedErrorManager;

namespace {

template <class T>
MatrixT<T> FromEntries(T const (&inEntries)[9]) {
    MatrixT<T> matrix;
    for (int i = 0; i < 9; ++i) {
        matrix[i / 3][i % 3] = inEntries[i];
    }
    return matrix;
}

template <class T>
struct NotDeduced {
    typedef T Type;
};

template <class T>
void ExpectEntries(MatrixT<T> const& inMatrix, typename NotDeduced<T>::Type const (&inExpected)[9]) {
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(inMatrix[i / 3][i % 3], inExpected[i]) << "entry " << i;
    }
}

template <class T>
class MatrixTest : public ::testing::Test {};

typedef ::testing::Types<float, double> Precisions;
TYPED_TEST_SUITE(MatrixTest, Precisions);

}  // namespace

TYPED_TEST(MatrixTest, ConstructionAndSetters) {
    MatrixT<TypeParam> identity(true);
    ExpectEntries(identity, {1, 0, 0, 0, 1, 0, 0, 0, 1});

    MatrixT<TypeParam> copy(identity);
    copy[2][0] = 3;
    EXPECT_EQ(copy[2][0], 3);
    EXPECT_EQ(identity[2][0], 0) << "a copy has its own values";

    copy.SetZero();
    ExpectEntries(copy, {0, 0, 0, 0, 0, 0, 0, 0, 0});
    copy[0][1] = 7;
    copy.SetIdentity();
    ExpectEntries(copy, {1, 0, 0, 0, 1, 0, 0, 0, 1});
}

TYPED_TEST(MatrixTest, InvertsAffineTransforms) {
    MatrixT<TypeParam> identity(true);
    EXPECT_TRUE(identity.Invert(false));
    ExpectEntries(identity, {1, 0, 0, 0, 1, 0, 0, 0, 1});

    MatrixT<TypeParam> translation = FromEntries<TypeParam>({1, 0, 0, 0, 1, 0, 5, 7, 1});
    EXPECT_TRUE(translation.Invert(true));
    ExpectEntries(translation, {1, 0, 0, 0, 1, 0, -5, -7, 1});

    MatrixT<TypeParam> scale = FromEntries<TypeParam>({2, 0, 0, 0, 4, 0, 0, 0, 1});
    EXPECT_TRUE(scale.Invert(false));
    ExpectEntries(scale, {0.5, 0, 0, 0, 0.25, 0, 0, 0, 1});

    // A rotation by 90 degrees with a translation: (x, y) -> (-y + 3, x + 2).
    MatrixT<TypeParam> rotation = FromEntries<TypeParam>({0, 1, 0, -1, 0, 0, 3, 2, 1});
    EXPECT_TRUE(rotation.Invert(false));
    ExpectEntries(rotation, {0, -1, 0, 1, 0, 0, -2, 3, 1});
}

TYPED_TEST(MatrixTest, LeavesTheThirdColumnAlone) {
    MatrixT<TypeParam> matrix = FromEntries<TypeParam>({2, 0, 9, 0, 2, 8, 4, 6, 2});
    EXPECT_TRUE(matrix.Invert(false));
    ExpectEntries(matrix, {0.5, 0, 9, 0, 0.5, 8, -2, -3, 2});
}

TYPED_TEST(MatrixTest, SingularMatrixBecomesZeroWithoutReport) {
    ScopedErrorManager manager;
    // Determinant 1e-10: exactly invertible, but below the limit.
    MatrixT<TypeParam> tiny = FromEntries<TypeParam>({TypeParam(1e-5), 0, 0, 0, TypeParam(1e-5), 0, 3, 4, 1});
    EXPECT_FALSE(tiny.Invert(false));
    ExpectEntries(tiny, {0, 0, 0, 0, 0, 0, 0, 0, 0});

    MatrixT<TypeParam> rankOne = FromEntries<TypeParam>({1, 2, 0, 2, 4, 0, 0, 0, 1});
    EXPECT_FALSE(rankOne.Invert(false));
    ExpectEntries(rankOne, {0, 0, 0, 0, 0, 0, 0, 0, 0});

    TypeParam const nan = std::numeric_limits<TypeParam>::quiet_NaN();
    MatrixT<TypeParam> notANumber = FromEntries<TypeParam>({nan, 0, 0, 0, 1, 0, 0, 0, 1});
    EXPECT_FALSE(notANumber.Invert(false));
    EXPECT_TRUE(manager->mCalls.empty());
}

TEST(Matrix, SingularityLimitIsTheDoubleValue) {
    // 1e-9 itself is singular, the next double above it is not.
    MatrixT<double> atLimit = FromEntries<double>({1e-9, 0, 0, 0, 1, 0, 0, 0, 1});
    EXPECT_FALSE(atLimit.Invert(false));
    MatrixT<double> above = FromEntries<double>({std::nextafter(1e-9, 1.0), 0, 0, 0, 1, 0, 0, 0, 1});
    EXPECT_TRUE(above.Invert(false));

    // For float, too: the float nearest 1e-9 lies below the limit, the next one above it.
    MatrixT<float> floatBelow = FromEntries<float>({1e-9f, 0, 0, 0, 1, 0, 0, 0, 1});
    EXPECT_FALSE(floatBelow.Invert(false));
    MatrixT<float> floatAbove = FromEntries<float>({std::nextafter(1e-9f, 1.0f), 0, 0, 0, 1, 0, 0, 0, 1});
    EXPECT_TRUE(floatAbove.Invert(false));
}

TEST(Matrix, FloatRoundsEachIntermediate) {
    // Determinant -28: the float reciprocal is rounded before it scales the
    // entries, which gives a different float than the exact quotient 11/28.
    MatrixT<float> single = FromEntries<float>({3, 1, 0, 5, 11, 0, 1, 0, 1});
    MatrixT<double> wide = FromEntries<double>({3, 1, 0, 5, 11, 0, 1, 0, 1});
    ASSERT_TRUE(single.Invert(false));
    ASSERT_TRUE(wide.Invert(false));
    float const reciprocal = 1.0f / -28.0f;
    EXPECT_EQ(single[0][0], -11.0f * reciprocal);
    EXPECT_NE(single[0][0], static_cast<float>(wide[0][0]));
    EXPECT_EQ(single[2][0], -(single[0][0] * 1.0f));
    EXPECT_DOUBLE_EQ(wide[0][0], 11.0 / 28.0);
}

TEST(Matrix, SingularMatrixReportsWhenAsked) {
    ScopedErrorManager manager;
    MatrixT<double> singular = FromEntries<double>({0, 0, 0, 0, 0, 0, 1, 1, 1});
    EXPECT_FALSE(singular.Invert(true));
    ASSERT_EQ(manager->mCalls.size(), 1u);
    quorel::testing::RecordedCall const& call = manager->mCalls.front();
    EXPECT_EQ(call.mLevel, quorel::config::kErrorLevel_NonFatal);
    EXPECT_STREQ(call.mMessage.c_str(), "$$$/qrl/geom/matrix/UI=Matrix cannot be inverted.");
    EXPECT_EQ(call.mModuleID, 107u);
    EXPECT_EQ(call.mErrorNumber, 0);
    EXPECT_TRUE(call.mDeferrable);
    for (quorel::config::ReplacementValue const& value : call.mValues) {
        EXPECT_EQ(value.GetKind(), quorel::config::ReplacementValue::kKind_None);
    }
    ExpectEntries(singular, {0, 0, 0, 0, 0, 0, 0, 0, 0});
}

TEST(Matrix, ThrowingManagerLeavesAZeroMatrix) {
    ScopedErrorManager manager(RecordingErrorManager::kThrow);
    MatrixT<float> singular = FromEntries<float>({1, 1, 0, 1, 1, 0, 5, 5, 1});
    EXPECT_THROW(singular.Invert(true), quorel::testing::RecordedError);
    ExpectEntries(singular, {0, 0, 0, 0, 0, 0, 0, 0, 0});
}
