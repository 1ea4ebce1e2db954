#include "optim/sparse/reduced_system.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/dense/dense.h"
#include "optim/sparse/cholesky_analysis.h"
#include "optim/sparse/msp.h"

namespace dax {

ReducedSystem::ReducedSystem(Arena& arena, const PrmtHblkShape& shape)
    : arena_(arena), shape_(shape), side_(shape.sizeA * shape.countA) {
  const uint64_t side = unsignedOf(side_), blocks = unsignedOf(shape.countA);
  rhs_ = arena.take<double>(side);
  solution_ = arena.take<double>(side);
  diagonal_ = arena.take<double>(side);
  pivots_ = arena.take<int32_t>(side);
  if (isSmall()) {
    takeDense();
  } else {
    filled_ = arena.take<uint8_t>(blocks * blocks);
  }
  mark_ = arena.mark();
}

void ReducedSystem::measure() {
  if (isSmall()) return;
  takeDense();
  arena_.release(mark_);
  takeSparse(maxElements());
  measureCholesky(arena_, side_, maxElements(), maxValues());
  const Arena::Scope scope(arena_);
  arena_.borrow<double>(unsignedOf(side_) * unsignedOf(side_));  // of the least squares
}

bool ReducedSystem::adopt(const PrmtHblk& h) {
  if (value_) return true;
  const bool isMore = markBlocks(h);
  if (isLaid_ && !isMore) return true;
  arena_.release(mark_);
  isLaid_ = laySparse();
  if (isLaid_) return true;
  if (!arena_.fits()) return false;
  arena_.release(mark_);
  return takeDense();
}

// Whether a block was found that is not marked yet.
bool ReducedSystem::markBlocks(const PrmtHblk& h) {
  const int32_t count = shape_.countA, a = shape_.sizeA;
  const auto filled = [&](int32_t i, int32_t j) -> uint8_t& { return filled_[i + int64_t{j} * count]; };
  if (!isLaid_) {
    std::fill_n(filled_, int64_t{count} * count, 0);
    for (int32_t j = 0; j < count; ++j) filled(j, j) = 1;
    for (int32_t b = 0; b < shape_.countB; ++b) {
      const int32_t *const begin = shape_.linkA + shape_.linkStart[b], *const end =
                                                                           shape_.linkA + shape_.linkStart[b + 1];
      for (const int32_t* j = begin; j < end; ++j) {
        for (const int32_t* i = j; i < end; ++i) filled(*i, *j) = 1;
      }
    }
  }
  bool isMore = !isLaid_;
  const double* row = h.a;
  for (int32_t r = 0; r < side_; ++r, row += side_) {
    const int32_t i = r / a;
    for (int32_t j = 0; j < i; ++j) {
      bool isEmpty = true;
      for (int32_t c = 0; c < a; ++c) isEmpty &= row[j * a + c] == 0;
      if (isEmpty || filled(i, j)) continue;
      filled(i, j) = 1;
      isMore = true;
    }
  }
  return isMore;
}

bool ReducedSystem::takeDense() {
  const uint64_t elements = unsignedOf(side_) * unsignedOf(side_);
  value_ = arena_.take<double>(elements);
  factor_ = arena_.take<double>(elements);
  return arena_.fits();
}

bool ReducedSystem::takeSparse(uint64_t elements) {
  const uint64_t blockElements = unsignedOf(int64_t{shape_.sizeA} * shape_.sizeA);
  firstBlock_ = arena_.take<int64_t>(unsignedOf(shape_.countA) + 1);
  blockRow_ = arena_.take<int32_t>(elements / blockElements);
  matrix_ = takeMatrix(arena_, side_, side_, static_cast<int64_t>(elements));
  return arena_.fits();
}

bool ReducedSystem::laySparse() {
  const int32_t count = shape_.countA, a = shape_.sizeA;
  const int64_t blocks = std::count(filled_, filled_ + int64_t{count} * count, 1);
  const uint64_t elements = unsignedOf(blocks * a * a);
  if (elements > maxElements() || !takeSparse(elements)) return false;
  int64_t block = 0, element = 0;
  for (int32_t j = 0; j < count; ++j) {
    firstBlock_[j] = block;
    for (int32_t i = j; i < count; ++i) {
      if (filled_[i + int64_t{j} * count]) blockRow_[block++] = i;
    }
    for (int32_t c = 0; c < a; ++c) {
      matrix_.start[j * a + c] = element;
      for (int64_t b = firstBlock_[j]; b < block; ++b) {
        for (int32_t r = 0; r < a; ++r) matrix_.row[element++] = blockRow_[b] * a + r;
      }
    }
  }
  firstBlock_[count] = block;
  matrix_.start[side_] = element;
  return analyse(arena_, matrix_, factorOfSparse_, maxValues());
}

// The blocks of column j; they start at `values` and have a height of `ld` together.
ReducedSystem::Column ReducedSystem::columnOf(int32_t j) const {
  const int32_t a = shape_.sizeA;
  if (value_) return {value_ + int64_t{j} * a * side_, side_, nullptr, nullptr};
  const int64_t first = firstBlock_[j], end = firstBlock_[j + 1];
  return {matrix_.value + matrix_.start[j * a], (end - first) * a, blockRow_ + first, blockRow_ + end};
}

void ReducedSystem::load(const PrmtHblk& h, double lambda) {
  if (value_) return loadDense(h, lambda);
  const int32_t a = shape_.sizeA;
  for (int32_t j = 0; j < shape_.countA; ++j) {
    const Column column = columnOf(j);
    double* to = column.values;
    for (int32_t c = j * a; c < (j + 1) * a; ++c) {
      for (const int32_t* block = column.rows; block < column.rowsEnd; ++block) {
        const double* from = h.a + int64_t{*block} * a * side_ + c;
        for (int32_t r = 0; r < a; ++r, from += side_) *to++ = *from;
      }
      column.values[(c - j * a) * (column.ld + 1)] += lambda;
    }
  }
}

// The lower triangle is transposed from rows to columns.
void ReducedSystem::loadDense(const PrmtHblk& h, double lambda) {
  const int64_t n = side_;
  for (int64_t j = 0; j < n; ++j) {
    for (int64_t i = j; i < n; ++i) value_[i + j * n] = h.a[i * n + j];
    value_[j + j * n] += lambda;
  }
}

void ReducedSystem::add(const int32_t* links, int32_t count, const double* square) {
  const int32_t a = shape_.sizeA, height = count * a;
  for (int32_t k = 0; k < count; ++k) {
    const Column column = columnOf(links[k]);
    const double* const from = square + int64_t{k} * a * height;
    const int32_t* at = column.rows;
    for (int32_t r = k; r < count; ++r) {
      if (column.rows) at = std::lower_bound(at, column.rowsEnd, links[r]);
      double* to = column.values + a * (column.rows ? at - column.rows : links[r]);
      const double* source = from + int64_t{r} * a;
      for (int32_t c = 0; c < a; ++c, to += column.ld, source += height) {
        for (int32_t i = 0; i < a; ++i) to[i] += source[i];
      }
    }
  }
}

int32_t ReducedSystem::solve(double* x) {
  if (shape_.countB > 0) {
    const bool isSolved =
        value_ ? solveDense(x) : PRM_Cholesky_Process_64f(&factorOfSparse_, matrix_.value, elementsOf(matrix_), 0, x);
    if (isSolved) return PRMT_STS_OK;
  }
  return solveBySquares(x);
}

bool ReducedSystem::solveDense(double* x) {
  std::copy_n(value_, int64_t{side_} * side_, factor_);
  if (!factorPanel(side_, side_, factor_, side_)) return false;
  solveLower(side_, factor_, side_, x);
  solveLowerTransposed(side_, factor_, side_, x);
  return true;
}

int32_t ReducedSystem::solveBySquares(double* x) {
  const int64_t n = side_;
  const Arena::Scope scope(arena_);
  double* const full = value_ ? factor_ : arena_.borrow<double>(unsignedOf(n * n));
  DAX_REQUIRE(arena_.fits(), PRMT_STS_BUFFER_TOO_SMALL);
  if (value_) {
    for (int64_t j = 0; j < n; ++j) {
      for (int64_t i = j; i < n; ++i) full[i + j * n] = full[j + i * n] = value_[i + j * n];
    }
  } else {
    std::fill_n(full, n * n, 0.0);
    for (int64_t j = 0; j < n; ++j) {
      for (int64_t p = findElement(matrix_, static_cast<int32_t>(j), static_cast<int32_t>(j)); p < matrix_.start[j + 1];
           ++p) {
        full[matrix_.row[p] + j * n] = full[j + matrix_.row[p] * n] = matrix_.value[p];
      }
    }
  }
  std::copy_n(x, n, rhs_);
  const int32_t isSolved = PRM_EQUA_LSM_Process_64f(full, side_, side_, rhs_, solution_, diagonal_, pivots_);
  DAX_REQUIRE(isSolved == 1, PRMT_STS_FAILURE);
  std::copy_n(solution_, n, x);
  return PRMT_STS_OK;
}

}  // namespace dax
