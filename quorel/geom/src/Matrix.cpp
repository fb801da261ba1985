#include <quorel/geom/Matrix.h>

#include <quorel/config/Errors.h>

#include <cmath>

namespace quorel {
namespace geom {

namespace {

// The absolute determinant of the linear block must be above this for the
// matrix to count as invertible, whatever T is and however large the entries.
constexpr double kSingularityLimit = 1e-9;

}  // namespace

template <class T>
MatrixT<T>::MatrixT(bool inInitialize) {
    if (inInitialize) {
        SetIdentity();
    }
}

template <class T>
MatrixT<T>::MatrixT(MatrixT const& inOther) {
    for (int i = 0; i < 9; ++i) {
        mValues[i] = inOther.mValues[i];
    }
}

template <class T>
void MatrixT<T>::SetZero() {
    for (T& value : mValues) {
        value = T(0);
    }
}

template <class T>
void MatrixT<T>::SetIdentity() {
    SetZero();
    mValues[0] = mValues[4] = mValues[8] = T(1);
}

template <class T>
bool MatrixT<T>::Invert(bool inThrowOnFailure) {
    T a[9];
    for (int i = 0; i < 9; ++i) {
        a[i] = mValues[i];
    }

    // The determinant of the upper left block, with the opposite sign.
    T const negativeDeterminant = a[1] * a[3] - a[0] * a[4];
    if (!(std::fabs(static_cast<double>(negativeDeterminant)) > kSingularityLimit)) {
        SetZero();
        if (inThrowOnFailure) {
            config::ThrowError(config::kErrorLevel_NonFatal, config::kErrorMessage_MatrixNotInvertible,
                               config::kErrorModule_Geom, config::kErrorNumber_MatrixNotInvertible, true);
        }
        return false;
    }

    T const reciprocal = T(1) / negativeDeterminant;
    T const e0 = -a[4] * reciprocal;
    T const e1 = a[1] * reciprocal;
    T const e3 = a[3] * reciprocal;
    T const e4 = -a[0] * reciprocal;
    mValues[0] = e0;
    mValues[1] = e1;
    mValues[3] = e3;
    mValues[4] = e4;
    // The inverse translation: the old one run backwards through the new block.
    mValues[6] = -(e0 * a[6] + e3 * a[7]);
    mValues[7] = -(e1 * a[6] + e4 * a[7]);
    return true;
}

template class MatrixT<float>;
template class MatrixT<double>;

}  // namespace geom
}  // namespace quorel
