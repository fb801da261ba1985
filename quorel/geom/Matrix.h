// A 3 by 3 matrix for two-dimensional affine transforms.
#ifndef QUOREL_GEOM_MATRIX_H
#define QUOREL_GEOM_MATRIX_H

#include <quorel/utility/Export.h>

namespace quorel {
namespace geom {

/// Nine values in row-major order: element (row r, column c) is entry 3r + c.
///
/// Row-vector convention: a point is the row (x, y, 1) multiplied from the
/// left.  The upper left 2 by 2 block holds scale, rotation and shear, entries
/// (2, 0) and (2, 1) the translation, and the third column is (0, 0, 1) for an
/// affine transform.
///
/// Instantiated (and exported) for float and double only.  A flat value: copy
/// it by assignment.
template <class T>
class QRL_EXPORT MatrixT {
public:
    /// true: the identity.  false: the nine values stay uninitialised.
    explicit MatrixT(bool inInitialize = false);
    MatrixT(MatrixT const& inOther);
    MatrixT& operator=(MatrixT const& inOther) = default;

    /// All nine entries 0.
    void SetZero();
    /// Entries (0,0), (1,1), (2,2) 1, the others 0.
    void SetIdentity();

    /// The first entry of row inRow, so that m[r][c] is element (r, c).  The
    /// row is not checked: it must be 0, 1 or 2.
    T* operator[](int inRow) { return mValues + 3 * inRow; }
    T const* operator[](int inRow) const { return mValues + 3 * inRow; }

    /// Inverts in place as an affine transform, in closed form: the upper left
    /// block and the translation are replaced, the third column is left as it
    /// is (no correction for a third column other than (0, 0, 1)).
    ///
    /// The matrix is singular when the absolute determinant of the upper left
    /// block is not above 1e-9 (a double limit, not scaled by the entries) or is
    /// not a number.  A singular matrix becomes all zeros and the result is
    /// false; with inThrowOnFailure the error "matrix cannot be inverted"
    /// (module 107, number 0) goes to config::ThrowError first.
    ///
    /// MatrixT<float> rounds every intermediate value to float.
    bool Invert(bool inThrowOnFailure);

private:
    T mValues[9];
};

extern template class MatrixT<float>;
extern template class MatrixT<double>;

}  // namespace geom
}  // namespace quorel

#endif
