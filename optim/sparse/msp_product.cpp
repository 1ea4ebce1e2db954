#include "optim/sparse/msp_product.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/sparse/msp.h"

namespace dax {
namespace {

// Sparse accumulator for one column at a time (Gustavson 1978): values by row and the list of rows present.
struct Collector {
  Collector(Arena& arena, int32_t rows)
      : sum(arena.take<double>(unsignedOf(rows))),
        seen(arena.take<int32_t>(unsignedOf(rows))),
        found(arena.take<int32_t>(unsignedOf(rows))) {
    if (seen) std::fill_n(seen, rows, -1);
  }

  void begin(int32_t resultColumn) {
    column = resultColumn;
    count = 0;
  }

  void add(const PrmtMsp& matrix, int32_t col, double factor) {
    for (int64_t p = matrix.start[col]; p < matrix.start[col + 1]; ++p) {
      const int32_t i = matrix.row[p];
      if (seen[i] != column) {
        seen[i] = column;
        found[count++] = i;
        sum[i] = 0;
      }
      sum[i] += factor * matrix.value[p];
    }
  }

  double* sum;
  int32_t* seen;  // last column that contained this row
  int32_t* found;
  int32_t column = 0;
  int32_t count = 0;
};

// Forms a matrix column by column; collect(collector, j) adds the terms of column j. A first pass counts the elements,
// so that the result is unchanged when its capacity is too small.
template <class Collect>
int32_t formColumns(PrmtMsp& result, void* buffer, const Collect& collect) {
  Arena arena(buffer, UINT64_MAX);
  Collector collector(arena, result.rows);
  int64_t elements = 0;
  for (int32_t j = 0; j < result.cols; ++j) {
    collector.begin(j);
    collect(collector, j);
    elements += collector.count;
  }
  DAX_REQUIRE(elements <= result.capacity, PRMT_STS_FULL);
  clearPattern(result);
  std::fill_n(collector.seen, result.rows, -1);
  int64_t end = 0;
  for (int32_t j = 0; j < result.cols; ++j) {
    collector.begin(j);
    collect(collector, j);
    std::sort(collector.found, collector.found + collector.count);
    for (int32_t k = 0; k < collector.count; ++k, ++end) {
      result.row[end] = collector.found[k];
      result.value[end] = collector.sum[collector.found[k]];
    }
    result.start[j + 1] = end;
  }
  return PRMT_STS_OK;
}

int32_t collectorSize(int32_t rows, uint64_t* bytes) {
  Arena measure(nullptr, 0);
  const Collector collector(measure, rows);
  return storeNeed(measure, bytes);
}

bool sameShape(const PrmtMsp& a, const PrmtMsp& b) {
  return a.rows == b.rows && a.cols == b.cols;
}

}  // namespace

void multiply(const PrmtMsp& matrix, const double* vector, double* result) {
  std::fill_n(result, matrix.rows, 0.0);
  for (int32_t j = 0; j < matrix.cols; ++j) {
    for (int64_t p = matrix.start[j]; p < matrix.start[j + 1]; ++p)
      result[matrix.row[p]] += matrix.value[p] * vector[j];
  }
}

void multiplyTransposed(const PrmtMsp& matrix, const double* vector, double* result) {
  for (int32_t j = 0; j < matrix.cols; ++j) {
    double sum = 0;
    for (int64_t p = matrix.start[j]; p < matrix.start[j + 1]; ++p) sum += matrix.value[p] * vector[matrix.row[p]];
    result[j] = sum;
  }
}

void transpose(const PrmtMsp& matrix, PrmtMsp& transposed) {
  clearPattern(transposed);
  int64_t* const start = transposed.start;
  const int64_t elements = elementsOf(matrix);
  for (int64_t p = 0; p < elements; ++p) ++start[matrix.row[p] + 1];
  for (int32_t i = 0; i < matrix.rows; ++i) start[i + 1] += start[i];
  for (int32_t j = 0; j < matrix.cols; ++j) {
    for (int64_t p = matrix.start[j]; p < matrix.start[j + 1]; ++p) {
      const int64_t at = start[matrix.row[p]]++;
      transposed.row[at] = j;
      transposed.value[at] = matrix.value[p];
    }
  }
  // Each start has advanced to the next column: shift back.
  for (int32_t i = matrix.rows; i > 0; --i) start[i] = start[i - 1];
  start[0] = 0;
}

}  // namespace dax

using dax::isSet;

int32_t PRMT_MSP_Trans_f64(const PrmtMsp* matrix, PrmtMsp* transposed) {
  DAX_REQUIRE(isSet(matrix) && isSet(transposed), PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(matrix->rows == transposed->cols && matrix->cols == transposed->rows, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(dax::elementsOf(*matrix) <= transposed->capacity, PRMT_STS_FULL);
  dax::transpose(*matrix, *transposed);
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_Mul_bufsize_f64(const PrmtMsp* a, const PrmtMsp* b, uint64_t* bytes) {
  DAX_REQUIRE(a && b && bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(a->rows >= 1 && a->cols == b->rows, PRMT_STS_BAD_PARAM);
  return dax::collectorSize(a->rows, bytes);
}

int32_t PRMT_MSP_Mul_f64(const PrmtMsp* a, const PrmtMsp* b, PrmtMsp* product, void* buffer) {
  DAX_REQUIRE(isSet(a) && isSet(b) && isSet(product) && buffer, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(a->cols == b->rows && product->rows == a->rows && product->cols == b->cols, PRMT_STS_BAD_PARAM);
  return dax::formColumns(*product, buffer, [&](dax::Collector& column, int32_t j) {
    for (int64_t p = b->start[j]; p < b->start[j + 1]; ++p) column.add(*a, b->row[p], b->value[p]);
  });
}

int32_t PRMT_MSP_Add_bufsize_f64(const PrmtMsp* a, const PrmtMsp* b, uint64_t* bytes) {
  DAX_REQUIRE(a && b && bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(a->rows >= 1 && dax::sameShape(*a, *b), PRMT_STS_BAD_PARAM);
  return dax::collectorSize(a->rows, bytes);
}

int32_t PRMT_MSP_Add_f64(double alpha, const PrmtMsp* a, double beta, const PrmtMsp* b, PrmtMsp* sum, void* buffer) {
  DAX_REQUIRE(isSet(a) && isSet(b) && isSet(sum) && buffer, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(dax::sameShape(*a, *b) && dax::sameShape(*a, *sum), PRMT_STS_BAD_PARAM);
  return dax::formColumns(*sum, buffer, [&](dax::Collector& column, int32_t j) {
    column.add(*a, j, alpha);
    column.add(*b, j, beta);
  });
}

int32_t PRMT_MSP_MulVec_f64(const PrmtMsp* matrix, const double* vector, double* result) {
  DAX_REQUIRE(isSet(matrix) && vector && result, PRMT_STS_NULL_POINTER);
  dax::multiply(*matrix, vector, result);
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_TransMulVec_f64(const PrmtMsp* matrix, const double* vector, double* result) {
  DAX_REQUIRE(isSet(matrix) && vector && result, PRMT_STS_NULL_POINTER);
  dax::multiplyTransposed(*matrix, vector, result);
  return PRMT_STS_OK;
}
