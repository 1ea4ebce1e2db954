#include "optim/matrix/matrix_product.h"
#include "optim/factor/product.h"

namespace dax {
namespace {

constexpr int32_t kSmall = 8, kShallow = 32;

// Of small products the packing takes longer than the sums. kStride is that of a row of b, 0 for any.
template <int kStride, class T>
void multiplySmall(const Operand<T>& a, const Operand<T>& b, MatrixView<T> c, int32_t k) {
  const ptrdiff_t stride = kStride > 0 ? kStride : b.outer;
  for (int32_t i = 0; i < c.rows; ++i) {
    double sums[kSmall] = {};
    for (int32_t p = 0; p < k; ++p) {
      const double factor = *a.at(i, p);
      const T* const row = b.at(0, p);
      for (int32_t j = 0; j < c.cols; ++j) sums[j] += double{row[j * stride]} * factor;
    }
    for (int32_t j = 0; j < c.cols; ++j) c.row(i)[j] = static_cast<T>(sums[j]);
  }
}

template <class T>
DaxStatus multiplyOn(PoolThreads on, const Operand<T>& a, const Operand<T>& b, MatrixView<T> c, int32_t k) {
  if (c.rows <= kSmall && c.cols <= kSmall && k <= kShallow && !hasPool(on.pool, on.threads)) {
    b.outer == 1 ? multiplySmall<1>(a, b, c, k) : multiplySmall<0>(a, b, c, k);
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
