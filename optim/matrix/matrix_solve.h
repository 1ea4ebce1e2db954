// Equations and least squares of the caller's matrices.
#pragma once

#include "dax/status.h"
#include "optim/factor/view.h"

namespace dax {

template <class T>
DaxStatus matrixSolve(MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> x, void* buffer);
template <class T>
DaxStatus matrixInverse(MatrixIn<T> a, MatrixView<T> inverse, void* buffer);
template <class T>
DaxStatus matrixDet(MatrixIn<T> a, T* mantissa, int32_t* exponent, void* buffer);
template <class T>
DaxStatus matrixRcond(MatrixIn<T> a, T* rcond, void* buffer);
template <class T>
DaxStatus matrixLeastSquares(MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> x, void* buffer);

template <class T>
DaxStatus matrixWeightedLS(MatrixIn<T> a, const T* weights, MatrixIn<T> b, MatrixView<T> x, void* buffer);
template <class T>
DaxStatus matrixConstrainedLS(MatrixIn<T> a, const T* b, MatrixIn<T> c, const T* d, T* x, void* buffer);
template <class T>
DaxStatus matrixMinNorm(MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> x, int32_t* rank, void* buffer);
template <class T>
DaxStatus matrixPInv(MatrixIn<T> a, MatrixView<T> inverse, int32_t* rank, void* buffer);
template <class T>
DaxStatus matrixHomogeneous(MatrixIn<T> a, T* x, T* residual, T* gap, void* buffer);
template <class T>
DaxStatus matrixNullSpace(MatrixIn<T> a, MatrixView<T> basis, int32_t* dimension, T* gap, void* buffer);
template <class T>
DaxStatus matrixTotalLS(MatrixIn<T> a, const T* b, T* x, T* residual, void* buffer);

}  // namespace dax
