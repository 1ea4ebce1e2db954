// The system S x = a of the first group of blocks after the elimination of the second (schur.h). It is dense, or, when
// few pairs of blocks meet in it, sparse.
#pragma once

#include "frame/memory/arena.h"
#include "optim/sparse/cholesky.h"
#include "prmt/lm_hblk.h"

namespace dax {

class ReducedSystem {
 public:
  ReducedSystem(Arena& arena, const PrmtHblkShape& shape);

  // Makes room for the blocks that the links and A fill. False when the arena is too small.
  bool adopt(const PrmtHblk& h);

  // S <- A + lambda I.
  void load(const PrmtHblk& h, double lambda);

  // Adds to S a symmetric matrix, column-major, of the rows of some blocks; only its lower triangle is read.
  void add(const int32_t* links, int32_t count, const double* square);

  // In place of the right-hand side; PRMT_STS_FAILURE for a singular system, PRMT_STS_BUFFER_TOO_SMALL when the least
  // squares of a sparse system do not fit.
  int32_t solve(double* x);

  // Counts in a measuring arena what any system of this size takes.
  void measure();

 private:
  // Below this number of columns S is dense in any case.
  static constexpr int32_t kMinSparse = 96;

  // Blocks (i, j), i >= j, of S: dense all of them, sparse those of `rows`.
  struct Column {
    double* values;
    int64_t ld;
    const int32_t* rows;
    const int32_t* rowsEnd;
  };

  bool isSmall() const { return side_ < kMinSparse || shape_.countB == 0; }
  // A sparse system has no more elements than this, and its factor no more values: with both it takes about as much
  // memory as a dense one, the least squares included.
  uint64_t maxElements() const { return unsignedOf(int64_t{side_} * side_ / 8); }
  int64_t maxValues() const { return int64_t{side_} * side_ / 4; }

  bool markBlocks(const PrmtHblk& h);
  bool takeDense();
  bool takeSparse(uint64_t elements);
  bool laySparse();
  Column columnOf(int32_t j) const;
  void loadDense(const PrmtHblk& h, double lambda);
  bool solveDense(double* x);
  int32_t solveBySquares(double* x);

  Arena& arena_;
  const PrmtHblkShape& shape_;
  int32_t side_;                   // sizeA countA
  uint8_t* filled_ = nullptr;      // countA x countA by columns: whether block (i, j), i >= j, of S may differ from 0
  uint64_t mark_;                  // of the memory for S
  bool isLaid_ = false;            // as a sparse system
  double* value_ = nullptr;        // dense: S, column by column, on and below the diagonal; else null
  double* factor_ = nullptr;       // dense: its factor
  PrmtMsp matrix_ = {};            // sparse: S by whole blocks
  int64_t* firstBlock_ = nullptr;  // countA + 1: of each column of blocks in `blockRow_`
  int32_t* blockRow_ = nullptr;
  PrmCholesky factorOfSparse_ = {};
  double* rhs_;  // scratch of the least squares
  double* solution_;
  double* diagonal_;
  int32_t* pivots_;
};

}  // namespace dax
