#include "optim/sparse/cholesky_analysis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "optim/dense/dense.h"
#include "optim/sparse/msp.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

struct Pattern {
  const char* name;
  int32_t n;
  std::function<bool(int32_t i, int32_t j)> has;  // i > j
  int64_t maxFill;                                // elements of the factor that the ordering may need
};

bool sameBlock(int32_t i, int32_t j, int32_t size) {
  return i / size == j / size;
}

std::vector<Pattern> patterns() {
  static Random random(5);
  static std::vector<bool> dice(300 * 300);
  for (size_t i = 0; i < dice.size(); ++i) dice[i] = random.below(40) == 0;
  return {
      {"one", 1, [](int32_t, int32_t) { return false; }, 1},
      {"diagonal", 50, [](int32_t, int32_t) { return false; }, 50},
      {"dense", 37, [](int32_t, int32_t) { return true; }, 37 * 37},
      // An arrow that points the wrong way fills everything in its own order.
      {"arrow", 200, [](int32_t, int32_t j) { return j == 0; }, 650},
      {"chain", 300, [](int32_t i, int32_t j) { return i - j == 1; }, 5100},
      {"loop of blocks of 6", 600, [](int32_t i, int32_t j) { return i / 6 - j / 6 <= 1 || i / 6 - j / 6 == 99; },
       14400},
      {"grid", 400, [](int32_t i, int32_t j) { return i - j == 20 || (i - j == 1 && i % 20 != 0); }, 9600},
      {"random", 300, [](int32_t i, int32_t j) { return bool{dice[static_cast<size_t>(i * 300 + j)]}; }, 26200},
      // Cameras first, then points that each see a few of them.
      {"cameras and points", 12 * 6 + 150 * 3,
       [](int32_t i, int32_t j) {
         if (i < 72) return sameBlock(i, j, 6);
         if (j >= 72) return sameBlock(i - 72, j - 72, 3);
         return ((i - 72) / 3 + j / 6) % 4 == 0 || ((i - 72) / 3 * 7 + j / 6) % 5 == 0;
       },
       20400},
      {"two parts", 90, [](int32_t i, int32_t j) { return i / 45 == j / 45 && (i * 31 + j * 17) % 7 == 0; }, 1100},
  };
}

// A positive definite matrix of the pattern, its lower part and some elements above, which must not count.
struct Sparse {
  explicit Sparse(const Pattern& pattern)
      : n(pattern.n),
        memory(static_cast<size_t>(n) * static_cast<size_t>(n) * 12 + static_cast<size_t>(n) * 8 + 1000),
        dense(static_cast<size_t>(n) * static_cast<size_t>(n)) {
    EXPECT_EQ(PRMT_MSP_Init_f64(&msp, n, n, int64_t{n} * n, memory.data()), 0);
    Random random(static_cast<uint64_t>(n));
    std::vector<double> diagonal(static_cast<size_t>(n), 1);
    for (int32_t j = 0; j < n; ++j) {
      for (int32_t i = j + 1; i < n; ++i) {
        if (!pattern.has(i, j)) continue;
        const double value = (random.below(2001) - 1000) / 1000.0;
        at(i, j) = at(j, i) = value;
        diagonal[static_cast<size_t>(i)] += std::fabs(value), diagonal[static_cast<size_t>(j)] += std::fabs(value);
      }
    }
    for (int32_t j = 0; j < n; ++j) {
      at(j, j) = diagonal[static_cast<size_t>(j)];
      for (int32_t i = 0; i < n; ++i) {
        if (i < j ? random.below(50) == 0 : at(i, j) != 0) PRMT_MSP_AddEle_tpl_f64(&msp, i, j, i < j ? 1e9 : at(i, j));
      }
    }
  }
  double& at(int32_t i, int32_t j) {
    return dense[static_cast<size_t>(i) * static_cast<size_t>(n) + static_cast<size_t>(j)];
  }
  int32_t n;
  std::vector<uint8_t> memory;
  std::vector<double> dense;
  PrmtMsp msp;
};

// The need of an analysis, found as a caller does: by asking for too little.
uint64_t needOf(const PrmtMsp& matrix) {
  uint64_t bytes = 0;
  for (int attempts = 0; attempts < 6; ++attempts) {
    std::vector<uint8_t> memory(bytes);
    Arena arena(memory.data(), bytes);
    PrmCholesky factor{};
    if (analyse(arena, matrix, factor)) return bytes;
    EXPECT_GT(arena.needed(), bytes);
    bytes = arena.needed();
  }
  ADD_FAILURE() << "never enough";
  return bytes;
}

TEST(Cholesky, SolvesEveryPattern) {
  for (const Pattern& pattern : patterns()) {
    SCOPED_TRACE(pattern.name);
    Sparse matrix(pattern);
    GuardedBuffer<uint8_t> memory(needOf(matrix.msp));
    Arena arena(memory.data(), memory.size()), worst(nullptr, 0);
    measureCholesky(worst, matrix.n, static_cast<uint64_t>(elementsOf(matrix.msp)));
    EXPECT_LE(memory.size(), worst.needed());
    PrmCholesky factor{};
    ASSERT_TRUE(analyse(arena, matrix.msp, factor));
    EXPECT_LE(factor.at[factor.panels], pattern.maxFill);
    std::vector<bool> used(static_cast<size_t>(matrix.n));
    for (int32_t i = 0; i < matrix.n; ++i) used[static_cast<size_t>(factor.original[i])] = true;
    EXPECT_EQ(std::count(used.begin(), used.end(), true), matrix.n);

    for (const double shift : {0.0, 3.0}) {
      std::vector<double> truth(static_cast<size_t>(matrix.n)), rhs(truth.size());
      Random random(7);
      for (double& value : truth) value = random.below(201) - 100;
      for (int32_t i = 0; i < matrix.n; ++i) {
        for (int32_t j = 0; j < matrix.n; ++j) {
          rhs[static_cast<size_t>(i)] += (matrix.at(i, j) + (i == j ? shift : 0)) * truth[static_cast<size_t>(j)];
        }
      }
      ASSERT_EQ(PRM_Cholesky_Process_64f(&factor, matrix.msp.value, elementsOf(matrix.msp), shift, rhs.data()), 1);
      for (size_t i = 0; i < truth.size(); ++i) ASSERT_NEAR(rhs[i], truth[i], 1e-9) << i;
    }
  }
}

// The least pivot that is accepted; NaN is not, infinity is.
TEST(Cholesky, Pivots) {
  const double min = 2.220446049250313e-16;
  const struct {
    double value;
    int32_t solved;
  } cases[] = {{1, 1}, {min, 1}, {min * 0.999, 0}, {0, 0}, {-1, 0}, {NAN, 0}, {INFINITY, 1}};
  Sparse matrix({"chain", 9, [](int32_t i, int32_t j) { return i - j == 1; }, 0});
  std::vector<uint8_t> memory(needOf(matrix.msp));
  Arena arena(memory.data(), memory.size());
  PrmCholesky factor{};
  ASSERT_TRUE(analyse(arena, matrix.msp, factor));
  std::fill_n(matrix.msp.value, elementsOf(matrix.msp), 0.0);
  for (int32_t j = 0; j < 9; ++j) matrix.msp.value[findElement(matrix.msp, j, j)] = 1;
  for (const auto& [value, solved] : cases) {
    std::vector<double> rhs(9, 1.0);
    matrix.msp.value[findElement(matrix.msp, 4, 4)] = value;
    EXPECT_EQ(PRM_Cholesky_Process_64f(&factor, matrix.msp.value, elementsOf(matrix.msp), 0, rhs.data()), solved)
        << value;
  }
}

}  // namespace
}  // namespace dax::test
