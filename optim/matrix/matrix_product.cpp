#include "optim/matrix/matrix_product.h"
#include "optim/factor/product.h"

namespace dax {
namespace {

// The factors of small products would not be worth their packing.
template <class T>
void multiplySmall(const Operand<T>& a, const Operand<T>& b, MatrixView<T> c, int32_t k) {
  for (int32_t i = 0; i < c.rows; ++i) {
    for (int32_t j = 0; j < c.cols; ++j) {
      double sum = 0;
      for (int32_t p = 0; p < k; ++p) sum += double{*b.at(j, p)} * double{*a.at(i, p)};
      c.row(i)[j] = static_cast<T>(sum);
    }
  }
}

template <class T>
DaxStatus multiplyOn(PoolThreads on, const Operand<T>& a, const Operand<T>& b, MatrixView<T> c, int32_t k) {
  constexpr int32_t kSmall = 5;
  if (c.rows < kSmall && c.cols < kSmall) {
    multiplySmall(a, b, c, k);
    return DAX_STS_OK;
  }
  return runRows(on, c.rows, [&](int32_t first, int32_t end) { multiplyRows<Keep::all>(a, b, c, k, first, end); });
}

}  // namespace

template <class T>
DaxStatus matrixMul(PoolThreads on, MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> c) {
  return multiplyOn(on, byRows(a.data, a.step), byColumns(b.data, b.step), c, a.cols);
}

template <class T>
DaxStatus matrixMulAtB(PoolThreads on, MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> c) {
  return multiplyOn(on, byColumns(a.data, a.step), byColumns(b.data, b.step), c, a.rows);
}

template <class T>
DaxStatus matrixMulABt(PoolThreads on, MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> c) {
  return multiplyOn(on, byRows(a.data, a.step), byRows(b.data, b.step), c, a.cols);
}

template <class T>
DaxStatus matrixGram(PoolThreads on, MatrixIn<T> a, MatrixView<T> c) {
  const Operand<T> columns = byColumns(a.data, a.step);
  const DaxStatus status = runRows(on, c.rows, [&](int32_t first, int32_t end) {
    multiplyRows<Keep::upper>(columns, columns, c, a.rows, first, end);
  });
  if (status != DAX_STS_OK) return status;
  for (int32_t i = 1; i < c.rows; ++i) {
    for (int32_t j = 0; j < i; ++j) c.row(i)[j] = c.row(j)[i];
  }
  return DAX_STS_OK;
}

#define DAX_PRODUCTS(T)                                                                  \
  template DaxStatus matrixMul(PoolThreads, MatrixIn<T>, MatrixIn<T>, MatrixView<T>);    \
  template DaxStatus matrixMulAtB(PoolThreads, MatrixIn<T>, MatrixIn<T>, MatrixView<T>); \
  template DaxStatus matrixMulABt(PoolThreads, MatrixIn<T>, MatrixIn<T>, MatrixView<T>); \
  template DaxStatus matrixGram(PoolThreads, MatrixIn<T>, MatrixView<T>);
DAX_PRODUCTS(double)
DAX_PRODUCTS(float)
#undef DAX_PRODUCTS

}  // namespace dax
