#include "optim/sparse/schur.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/dense/dense.h"
#include "optim/sparse/msp.h"

namespace dax {
namespace {

int64_t linksOf(const PrmtHblkShape& shape) {
  return shape.countB > 0 ? shape.linkStart[shape.countB] : 0;
}

int64_t sideOf(const PrmtHblkShape& shape) {
  return int64_t{shape.sizeA} * shape.countA;
}

}  // namespace

PrmtHblk takeBlocks(Arena& arena, const PrmtHblkShape& shape) {
  const int64_t side = sideOf(shape), countB = shape.countB;
  PrmtHblk h{shape, nullptr, nullptr, nullptr, nullptr, nullptr};
  h.a = arena.take<double>(unsignedOf(side) * unsignedOf(side));
  h.b = arena.take<double>(unsignedOf(countB * shape.sizeB * shape.sizeB));
  h.w = arena.take<double>(unsignedOf(linksOf(shape) * shape.sizeA * shape.sizeB));
  h.rhsA = arena.take<double>(unsignedOf(side));
  h.rhsB = arena.take<double>(unsignedOf(countB * shape.sizeB));
  return h;
}

void clearBlocks(const PrmtHblk& h) {
  const PrmtHblkShape& s = h.shape;
  const int64_t side = sideOf(s);
  std::fill_n(h.a, side * side, 0.0);
  std::fill_n(h.b, int64_t{s.countB} * s.sizeB * s.sizeB, 0.0);
  std::fill_n(h.w, linksOf(s) * s.sizeA * s.sizeB, 0.0);
  std::fill_n(h.rhsA, side, 0.0);
  std::fill_n(h.rhsB, int64_t{s.countB} * s.sizeB, 0.0);
}

namespace {

// Rows of the largest Y_j.
int64_t maxHeight(const PrmtHblkShape& shape) {
  int64_t height = 0;
  for (int32_t j = 0; j < shape.countB; ++j) {
    height = std::max(height, int64_t{shape.linkStart[j + 1]} - shape.linkStart[j]);
  }
  return height * shape.sizeA;
}

}  // namespace

SchurSolver::SchurSolver(Arena& arena, const PrmtHblkShape& shape)
    : shape_(shape),
      sideA_(static_cast<int32_t>(sideOf(shape))),
      factorsB_(arena.take<double>(unsignedOf(int64_t{shape.countB} * shape.sizeB * shape.sizeB))),
      scaledW_(arena.take<double>(unsignedOf(linksOf(shape) * shape.sizeA * shape.sizeB))),
      square_(arena.take<double>(unsignedOf(maxHeight(shape)) * unsignedOf(maxHeight(shape)))),
      reduced_(arena, shape) {}

int32_t SchurSolver::solve(const PrmtHblk& h, double lambda, double* step) {
  DAX_REQUIRE(reduced_.adopt(h), PRMT_STS_BUFFER_TOO_SMALL);
  reduced_.load(h, lambda);
  std::copy_n(h.rhsA, sideA_, step);
  if (!eliminate(h, lambda, step)) return PRMT_STS_FAILURE;
  PRMT_REQUIRE_OK(reduced_.solve(step));
  substituteBack(step);
  return PRMT_STS_OK;
}

// Reduces S and the right-hand side by each block of B and stores L_j^-1 b_j in the step.
bool SchurSolver::eliminate(const PrmtHblk& h, double lambda, double* step) {
  const int32_t a = shape_.sizeA, b = shape_.sizeB;
  for (int32_t j = 0; j < shape_.countB; ++j) {
    double* const l = factorsB_ + int64_t{j} * b * b;
    const double* const v = h.b + int64_t{j} * b * b;
    for (int32_t q = 0; q < b; ++q) {
      for (int32_t p = q; p < b; ++p) l[p + q * b] = v[p * b + q] + (p == q ? lambda : 0);
    }
    if (!factorPanel(b, b, l, b)) return false;
    double* const z = step + sideA_ + int64_t{j} * b;
    std::copy_n(h.rhsB + int64_t{j} * b, b, z);
    solveLower(b, l, b, z);

    const int32_t first = shape_.linkStart[j], count = shape_.linkStart[j + 1] - first;
    const int32_t* const links = shape_.linkA + first;
    double* const y = scaledW_ + int64_t{first} * a * b;
    scaleRows(count * a, h.w + int64_t{first} * a * b, l, y);
    reduceRhs(links, count, y, z, step);
    subtractSquare(links, count, y);
  }
  return true;
}

// Y = W L^-T, column by column.
void SchurSolver::scaleRows(int32_t height, const double* w, const double* l, double* y) const {
  const int32_t b = shape_.sizeB;
  for (int32_t q = 0; q < b; ++q) {
    double* const column = y + int64_t{q} * height;
    for (int32_t i = 0; i < height; ++i) column[i] = w[int64_t{i} * b + q];
    for (int32_t p = 0; p < q; ++p) {
      const double factor = l[q + p * b];
      const double* const left = y + int64_t{p} * height;
      for (int32_t i = 0; i < height; ++i) column[i] -= factor * left[i];
    }
    const double inverse = 1 / l[q + q * b];
    for (int32_t i = 0; i < height; ++i) column[i] *= inverse;
  }
}

// The linked blocks of the right-hand side -= Y z.
void SchurSolver::reduceRhs(const int32_t* links, int32_t count, const double* y, const double* z, double* rhs) const {
  const int32_t a = shape_.sizeA, height = count * a;
  for (int32_t k = 0; k < count; ++k) {
    double* const block = rhs + int64_t{links[k]} * a;
    for (int32_t q = 0; q < shape_.sizeB; ++q) {
      const double* const column = y + int64_t{q} * height + int64_t{k} * a;
      for (int32_t i = 0; i < a; ++i) block[i] -= column[i] * z[q];
    }
  }
}

// S -= Y Y^T, where the rows of Y belong to the linked blocks of A.
void SchurSolver::subtractSquare(const int32_t* links, int32_t count, const double* y) {
  const int32_t height = count * shape_.sizeA;
  std::fill_n(square_, int64_t{height} * height, 0.0);
  subtractProduct(height, height, shape_.sizeB, y, height, y, height, square_, height, true);
  reduced_.add(links, count, square_);
}

void SchurSolver::substituteBack(double* step) {
  const int32_t a = shape_.sizeA, b = shape_.sizeB;
  for (int32_t j = 0; j < shape_.countB; ++j) {
    double* const z = step + sideA_ + int64_t{j} * b;
    const int32_t first = shape_.linkStart[j], count = shape_.linkStart[j + 1] - first;
    const double* const y = scaledW_ + int64_t{first} * a * b;
    for (int32_t q = 0; q < b; ++q) {
      const double* column = y + int64_t{q} * count * a;
      double sum = 0;
      for (int32_t k = 0; k < count; ++k) {
        const double* const x = step + int64_t{shape_.linkA[first + k]} * a;
        for (int32_t i = 0; i < a; ++i) sum += *column++ * x[i];
      }
      z[q] -= sum;
    }
    solveLowerTransposed(b, factorsB_ + int64_t{j} * b * b, b, z);
  }
}

}  // namespace dax
