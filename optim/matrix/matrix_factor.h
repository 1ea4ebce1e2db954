// Factorisations of the caller's matrices. Pointers that a contract allows to be null come as views without data.
#pragma once

#include "dax/status.h"
#include "optim/factor/view.h"

namespace dax {

template <class T>
DaxStatus matrixLU(MatrixIn<T> a, MatrixView<T> lu, int32_t* pivots, void* buffer);
template <class T>
DaxStatus matrixCholesky(MatrixIn<T> a, MatrixView<T> l, void* buffer);
template <class T>
DaxStatus matrixLDLT(MatrixIn<T> a, MatrixView<T> l, T* d, T* e, int32_t* pivots, void* buffer);
template <class T>
DaxStatus matrixQR(MatrixIn<T> a, MatrixView<T> q, MatrixView<T> r, void* buffer);
template <class T>
DaxStatus matrixQRPivot(MatrixIn<T> a, MatrixView<T> q, MatrixView<T> r, int32_t* pivots, int32_t* rank, void* buffer);
template <class T>
DaxStatus matrixSVD(MatrixIn<T> a, MatrixView<T> u, T* s, MatrixView<T> v, int32_t accuracy, void* buffer);
template <class T>
DaxStatus matrixEigSym(MatrixIn<T> a, T* values, MatrixView<T> vectors, void* buffer);

template <class T>
DaxStatus matrixEigSymGen(MatrixIn<T> a, MatrixIn<T> b, T* values, MatrixView<T> vectors, void* buffer);
template <class T>
DaxStatus matrixEigGeneral(MatrixIn<T> a, T* real, T* imaginary, void* buffer);

}  // namespace dax
