// Systems in two groups of blocks, and damped normal equations by conjugate gradients, against elimination.
#include "optim/sparse/schur.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "optim/sparse/conjugate_gradients.h"
#include "optim/sparse/msp.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Vector = std::vector<double>;

// Solves a positive definite system of n columns.
Vector eliminate(Vector a, Vector b) {
  const size_t n = b.size();
  for (size_t k = 0; k < n; ++k) {
    for (size_t i = k + 1; i < n; ++i) {
      const double factor = a[i * n + k] / a[k * n + k];
      for (size_t j = k; j < n; ++j) a[i * n + j] -= factor * a[k * n + j];
      b[i] -= factor * b[k];
    }
  }
  for (size_t k = n; k-- > 0;) {
    for (size_t j = k + 1; j < n; ++j) b[k] -= a[k * n + j] * b[j];
    b[k] /= a[k * n + k];
  }
  return b;
}

// Memory of exactly the size that the first, empty arena asks for.
template <class Take>
GuardedBuffer<uint8_t> roomFor(Take take) {
  Arena measure(nullptr, 0);
  take(measure);
  return GuardedBuffer<uint8_t>(measure.needed());
}

TEST(Schur, SolvesBlocks) {
  Random random(4);
  const auto number = [&] { return (random.below(2001) - 1000) / 1000.0; };
  for (const auto& [sizeA, countA, sizeB, countB] :
       {std::array{3, 4, 2, 6}, {1, 1, 1, 1}, {6, 2, 3, 5}, {2, 5, 16, 1}, {7, 1, 1, 9}, {5, 3, 4, 0}}) {
    SCOPED_TRACE(testing::Message() << sizeA << " x " << countA << ", " << sizeB << " x " << countB);
    std::vector<int32_t> starts = {0}, links;
    for (int32_t j = 0; j < countB; ++j) {
      for (int32_t i = 0; i < countA; ++i) {
        if ((i + j) % 3 != 1) links.push_back(i);
      }
      starts.push_back(static_cast<int32_t>(links.size()));
    }
    const PrmtHblkShape shape{sizeA, countA, sizeB, countB, starts.data(), links.data()};
    const auto take = [&](Arena& arena) {
      const PrmtHblk h = takeBlocks(arena, shape);
      return std::pair(h, SchurSolver(arena, shape));
    };
    GuardedBuffer<uint8_t> memory = roomFor(take);
    Arena arena(memory.data(), memory.size());
    auto [h, solver] = take(arena);
    clearBlocks(h);
    const int32_t side = sizeA * countA, n = side + sizeB * countB;
    const auto at = [n](int32_t i, int32_t j) { return static_cast<size_t>(i * n + j); };
    for (const double lambda : {0.0, 2.5}) {
      Vector dense(static_cast<size_t>(n * n)), rhs(static_cast<size_t>(n));
      for (int32_t i = 0; i < side; ++i) {
        for (int32_t j = 0; j <= i; ++j) {
          h.a[i * side + j] = number() + (i == j ? 2 * n : 0);
          dense[at(i, j)] = dense[at(j, i)] = h.a[i * side + j];
        }
        rhs[static_cast<size_t>(i)] = h.rhsA[i] = number();
      }
      for (int32_t b = 0; b < countB; ++b) {
        const int32_t first = side + b * sizeB;
        for (int32_t i = 0; i < sizeB; ++i) {
          for (int32_t j = 0; j <= i; ++j) {
            double& value = h.b[(b * sizeB + i) * sizeB + j];
            value = number() + (i == j ? 2 * n : 0);
            dense[at(first + i, first + j)] = dense[at(first + j, first + i)] = value;
          }
          rhs[static_cast<size_t>(first + i)] = h.rhsB[b * sizeB + i] = number();
        }
        for (int32_t k = starts[static_cast<size_t>(b)]; k < starts[static_cast<size_t>(b + 1)]; ++k) {
          for (int32_t i = 0; i < sizeA; ++i) {
            for (int32_t j = 0; j < sizeB; ++j) {
              const int32_t row = links[static_cast<size_t>(k)] * sizeA + i;
              dense[at(row, first + j)] = dense[at(first + j, row)] = h.w[(k * sizeA + i) * sizeB + j] = number();
            }
          }
        }
      }
      for (int32_t i = 0; i < n; ++i) dense[at(i, i)] += lambda;
      Vector step(rhs.size());
      ASSERT_EQ(solver.solve(h, lambda, step.data()), PRMT_STS_OK);
      const Vector expected = eliminate(dense, rhs);
      for (size_t i = 0; i < step.size(); ++i) ASSERT_NEAR(step[i], expected[i], 1e-12) << i;
    }
    // A reduced system that is not positive definite goes to least squares; one without a solution fails, and so does a
    // block of the second group.
    for (int32_t i = 0; i < side; ++i) h.a[i * side + i] = -3 * n;
    Vector step(static_cast<size_t>(n));
    EXPECT_EQ(solver.solve(h, 0, step.data()), PRMT_STS_OK);
    if (countB == 0) continue;
    h.b[0] = 0;
    EXPECT_EQ(solver.solve(h, 0, step.data()), PRMT_STS_FAILURE);
  }
}

TEST(ConjugateGradients, SolveDampedNormalEquations) {
  constexpr int32_t kM = 23, kN = 11;
  Random random(6);
  std::vector<uint8_t> memory(1 << 14);
  PrmtMsp jacobian;
  ASSERT_EQ(PRMT_MSP_Init_f64(&jacobian, kM, kN, kM * kN, memory.data()), 0);
  Vector dense(kM * kN), rhs(kN);
  for (int32_t k = 0; k < 120; ++k) {
    const int32_t i = random.below(kM), j = random.below(kN);
    const double value = (random.below(2001) - 1000) / 500.0;
    PRMT_MSP_AddEle_tpl_f64(&jacobian, i, j, value);
    dense[static_cast<size_t>(i * kN + j)] += value;
  }
  for (double& value : rhs) value = random.below(19) - 9;
  for (const double lambda : {0.1, 7.0}) {
    Vector squares(kN * kN);
    for (size_t j = 0; j < kN; ++j) {
      for (size_t k = 0; k < kN; ++k) {
        for (size_t i = 0; i < kM; ++i) squares[j * kN + k] += dense[i * kN + j] * dense[i * kN + k];
      }
      squares[j * kN + j] += lambda;
    }
    const Vector expected = eliminate(squares, rhs);
    for (const int32_t block : {1, 3, 11, 16}) {
      const auto take = [&](Arena& arena) { return takeCgWork(arena, kN, kM, block); };
      GuardedBuffer<uint8_t> room = roomFor(take);
      Arena arena(room.data(), room.size());
      const PrmtCgWork work = take(arena);
      ASSERT_TRUE(factorBlocks(jacobian, lambda, block, work.blocks));
      const PrmtCgParam exact{1e-14, 200, block, 0, 0}, one{1e-14, 1, block, 0, 0}, loose{0.9, 200, block, 0, 0},
          modelled{0, 200, block, 0, 0.1};
      Vector step(kN, 77), first(kN), rough(kN);
      ASSERT_EQ(PRMT_MSP_SolveLinCG_LM_Process_f64(&jacobian, lambda, rhs.data(), &exact, &work, step.data()), 1);
      for (size_t j = 0; j < kN; ++j) EXPECT_NEAR(step[j], expected[j], 1e-10) << block;
      // One iteration is exact where the preconditioner is the inverse; a tolerance ends the rest early.
      ASSERT_EQ(PRMT_MSP_SolveLinCG_LM_Process_f64(&jacobian, lambda, rhs.data(), &one, &work, first.data()), 1);
      EXPECT_EQ(std::fabs(first[0] - expected[0]) < 1e-10, block >= kN);
      ASSERT_EQ(PRMT_MSP_SolveLinCG_LM_Process_f64(&jacobian, lambda, rhs.data(), &loose, &work, rough.data()), 1);
      EXPECT_EQ(std::fabs(rough[0] - expected[0]) < 1e-10, block >= kN);
      // The model's rule ends between: most of the decrease -g^T d / 2 of the exact step is there.
      ASSERT_EQ(PRMT_MSP_SolveLinCG_LM_Process_f64(&jacobian, lambda, rhs.data(), &modelled, &work, rough.data()), 1);
      EXPECT_EQ(std::fabs(rough[0] - expected[0]) < 1e-10, block >= kN);
      double whole = 0, part = 0;
      for (size_t j = 0; j < kN; ++j) {
        whole += rhs[j] * expected[j] / 2, part += rhs[j] * rough[j];
        for (size_t k = 0; k < kN; ++k) part -= rough[j] * squares[j * kN + k] * rough[k] / 2;
      }
      EXPECT_TRUE(part > 0.8 * whole && part <= whole * (1 + 1e-12)) << part / whole;
    }
  }
  double blocks[16];
  EXPECT_FALSE(factorBlocks(jacobian, -1e9, 1, blocks));
}

}  // namespace
}  // namespace dax::test
