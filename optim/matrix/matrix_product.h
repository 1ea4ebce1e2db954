// Products of the caller's matrices.
#pragma once

#include "dax/status.h"
#include "frame/tiles.h"
#include "optim/factor/view.h"

namespace dax {

template <class T>
DaxStatus matrixMul(PoolThreads on, MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> c);
template <class T>
DaxStatus matrixMulAtB(PoolThreads on, MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> c);
template <class T>
DaxStatus matrixMulABt(PoolThreads on, MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> c);
template <class T>
DaxStatus matrixGram(PoolThreads on, MatrixIn<T> a, MatrixView<T> c);

}  // namespace dax
