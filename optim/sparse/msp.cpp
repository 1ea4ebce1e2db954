#include "optim/sparse/msp.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <numeric>

#include "frame/check.h"

static_assert(sizeof(PrmtMsp) == 48 && offsetof(PrmtMsp, patternVersion) == 16 && offsetof(PrmtMsp, value) == 40);

namespace dax {
namespace {

bool holds(const PrmtMsp& matrix, int32_t row, int32_t col) {
  return row >= 0 && row < matrix.rows && col >= 0 && col < matrix.cols;
}

// Makes room for `count` elements at position `at` of column `col`. The caller has checked the capacity.
void openGap(PrmtMsp& matrix, int32_t col, int64_t at, int64_t count) {
  const auto behind = static_cast<size_t>(elementsOf(matrix) - at);
  std::memmove(matrix.row + at + count, matrix.row + at, behind * sizeof(int32_t));
  std::memmove(matrix.value + at + count, matrix.value + at, behind * sizeof(double));
  for (int32_t j = col + 1; j <= matrix.cols; ++j) matrix.start[j] += count;
  ++matrix.patternVersion;
}

bool isAt(const PrmtMsp& matrix, int64_t at, int32_t row, int32_t col) {
  return at < matrix.start[col + 1] && matrix.row[at] == row;
}

// Position of an element; a missing one is inserted with value 0.
int64_t ensureElement(PrmtMsp& matrix, int32_t row, int32_t col) {
  const int64_t at = findElement(matrix, row, col);
  if (isAt(matrix, at, row, col)) return at;
  openGap(matrix, col, at, 1);
  matrix.row[at] = row;
  matrix.value[at] = 0;
  return at;
}

// Number of elements missing from rows row .. row + rows - 1 of a column.
int64_t missingIn(const PrmtMsp& matrix, int32_t row, int32_t rows, int32_t col) {
  return rows - (findElement(matrix, row + rows, col) - findElement(matrix, row, col));
}

// Inserts the missing elements of rows row .. row + rows - 1 into a column; returns the position of the first row.
int64_t ensureRun(PrmtMsp& matrix, int32_t row, int32_t rows, int32_t col) {
  const int64_t first = findElement(matrix, row, col), last = findElement(matrix, row + rows, col);
  const int64_t missing = rows - (last - first);
  if (missing == 0) return first;
  openGap(matrix, col, last, missing);
  if (missing == rows) {
    std::iota(matrix.row + first, matrix.row + first + rows, row);
    std::fill_n(matrix.value + first, rows, 0.0);
    return first;
  }
  // Spread the existing elements, the last one first.
  int64_t from = last - 1;
  for (int32_t i = rows - 1; i >= 0; --i) {
    const bool present = from >= first && matrix.row[from] == row + i;
    matrix.value[first + i] = present ? matrix.value[from--] : 0;
    matrix.row[first + i] = row + i;
  }
  return first;
}

}  // namespace

void clearPattern(PrmtMsp& matrix) {
  std::fill_n(matrix.start, int64_t{matrix.cols} + 1, 0);
  ++matrix.patternVersion;
}

int64_t findElement(const PrmtMsp& matrix, int32_t row, int32_t col) {
  const int32_t* const begin = matrix.row + matrix.start[col];
  const int32_t* const end = matrix.row + matrix.start[col + 1];
  // Fast path: matrices are usually filled in ascending order.
  if (begin == end || end[-1] < row) return end - matrix.row;
  return std::lower_bound(begin, end, row) - matrix.row;
}

}  // namespace dax

using dax::elementsOf;
using dax::holds;
using dax::isSet;

int32_t PRMT_MSP_BufSize_f64(int32_t rows, int32_t cols, int64_t capacity, uint64_t* bytes) {
  DAX_REQUIRE(bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(rows >= 1 && cols >= 1 && capacity >= 0, PRMT_STS_BAD_PARAM);
  dax::Arena measure(nullptr, 0);
  dax::takeMatrix(measure, rows, cols, capacity);
  return dax::storeNeed(measure, bytes);
}

int32_t PRMT_MSP_Init_f64(PrmtMsp* matrix, int32_t rows, int32_t cols, int64_t capacity, void* buffer) {
  DAX_REQUIRE(matrix && buffer, PRMT_STS_NULL_POINTER);
  uint64_t bytes = 0;
  PRMT_REQUIRE_OK(PRMT_MSP_BufSize_f64(rows, cols, capacity, &bytes));
  dax::Arena arena(buffer, bytes);
  *matrix = dax::takeMatrix(arena, rows, cols, capacity);
  dax::clearPattern(*matrix);
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_SetPattern_f64(PrmtMsp* matrix, int64_t count, const int32_t* row, const int32_t* col) {
  DAX_REQUIRE(isSet(matrix) && row && col, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 0, PRMT_STS_BAD_PARAM);
  for (int64_t k = 0; k < count; ++k) DAX_REQUIRE(holds(*matrix, row[k], col[k]), PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(count <= matrix->capacity, PRMT_STS_FULL);

  dax::clearPattern(*matrix);
  int64_t* const start = matrix->start;
  // Counting sort by column. start[j] advances to the end of column j; the pass that removes duplicates resets it.
  for (int64_t k = 0; k < count; ++k) ++start[col[k] + 1];
  for (int32_t j = 0; j < matrix->cols; ++j) start[j + 1] += start[j];
  for (int64_t k = 0; k < count; ++k) matrix->row[start[col[k]]++] = row[k];
  int64_t from = 0, kept = 0;
  for (int32_t j = 0; j < matrix->cols; ++j) {
    const int64_t end = start[j];
    std::sort(matrix->row + from, matrix->row + end);
    start[j] = kept;
    for (int64_t p = from; p < end; ++p) {
      if (p == from || matrix->row[p] != matrix->row[p - 1]) matrix->row[kept++] = matrix->row[p];
    }
    from = end;
  }
  start[matrix->cols] = kept;
  std::fill_n(matrix->value, kept, 0.0);
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_SetZero_tpl_f64(PrmtMsp* matrix) {
  DAX_REQUIRE(isSet(matrix), PRMT_STS_NULL_POINTER);
  std::fill_n(matrix->value, elementsOf(*matrix), 0.0);
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_SetDiag_tpl_f64(PrmtMsp* matrix, double value) {
  DAX_REQUIRE(isSet(matrix), PRMT_STS_NULL_POINTER);
  const int32_t diagonal = std::min(matrix->rows, matrix->cols);
  int64_t missing = 0;
  for (int32_t j = 0; j < diagonal; ++j) missing += dax::missingIn(*matrix, j, 1, j);
  DAX_REQUIRE(missing <= matrix->capacity - elementsOf(*matrix), PRMT_STS_FULL);
  for (int32_t j = 0; j < diagonal; ++j) matrix->value[dax::ensureElement(*matrix, j, j)] = value;
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_AddEle_tpl_f64(PrmtMsp* matrix, int32_t row, int32_t col, double value) {
  DAX_REQUIRE(isSet(matrix), PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(holds(*matrix, row, col), PRMT_STS_BAD_PARAM);
  int64_t at = dax::findElement(*matrix, row, col);
  if (!dax::isAt(*matrix, at, row, col)) {
    DAX_REQUIRE(elementsOf(*matrix) < matrix->capacity, PRMT_STS_FULL);
    at = dax::ensureElement(*matrix, row, col);
  }
  matrix->value[at] += value;
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_AddBlk_tpl_f64(PrmtMsp* matrix, int32_t row, int32_t col, const double* block, int32_t blockRows,
                                int32_t blockCols, int32_t step) {
  DAX_REQUIRE(isSet(matrix) && block, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(holds(*matrix, row, col) && blockRows >= 1 && blockCols >= 1, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(blockRows <= matrix->rows - row && blockCols <= matrix->cols - col, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(step >= blockCols, PRMT_STS_BAD_PARAM);
  int64_t missing = 0;
  for (int32_t j = 0; j < blockCols; ++j) missing += dax::missingIn(*matrix, row, blockRows, col + j);
  DAX_REQUIRE(missing <= matrix->capacity - elementsOf(*matrix), PRMT_STS_FULL);
  for (int32_t j = 0; j < blockCols; ++j) {
    double* const value = matrix->value + dax::ensureRun(*matrix, row, blockRows, col + j);
    for (int32_t i = 0; i < blockRows; ++i) value[i] += block[ptrdiff_t{i} * step + j];
  }
  return PRMT_STS_OK;
}

int32_t PRMT_MSP_MspToMat_f64(const PrmtMsp* matrix, double* dense, int32_t step) {
  DAX_REQUIRE(isSet(matrix) && dense, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(step >= matrix->cols, PRMT_STS_BAD_PARAM);
  for (int32_t i = 0; i < matrix->rows; ++i) std::fill_n(dense + ptrdiff_t{i} * step, matrix->cols, 0.0);
  for (int32_t j = 0; j < matrix->cols; ++j) {
    for (int64_t p = matrix->start[j]; p < matrix->start[j + 1]; ++p) {
      dense[ptrdiff_t{matrix->row[p]} * step + j] = matrix->value[p];
    }
  }
  return PRMT_STS_OK;
}
