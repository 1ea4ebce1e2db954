// Functions of the caller's matrices.
#pragma once

#include "dax/status.h"
#include "optim/factor/view.h"

namespace dax {

template <class T>
DaxStatus matrixExp(MatrixIn<T> a, MatrixView<T> result, void* buffer);
template <class T>
DaxStatus matrixLog(MatrixIn<T> a, MatrixView<T> result, void* buffer);

}  // namespace dax
