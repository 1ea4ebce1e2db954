// Systems of the first group of blocks, dense and sparse, against the whole system.
#include "optim/sparse/reduced_system.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "optim/dense/dense.h"
#include "optim/sparse/schur.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Vector = std::vector<double>;

constexpr int32_t kSizeB = 2;

// Which blocks of A each block of B is linked to.
struct Links {
  Links(int32_t countA, int32_t countB, const std::function<bool(int32_t i, int32_t j)>& has) {
    for (int32_t j = 0; j < countB; ++j) {
      for (int32_t i = 0; i < countA; ++i) {
        if (has(i, j)) linked.push_back(i);
      }
      starts.push_back(static_cast<int32_t>(linked.size()));
    }
  }
  std::vector<int32_t> starts = {0}, linked;
};

// Values, and |M x - b| of the whole matrix M for a solution x.
struct Values {
  explicit Values(const PrmtHblk& blocks) : h(blocks), side(h.shape.sizeA * h.shape.countA) {
    Random random(3);
    const auto number = [&] { return (random.below(2001) - 1000) / 1000.0; };
    const PrmtHblkShape& s = h.shape;
    clearBlocks(h);
    for (int32_t i = 0; i < side; ++i) {
      for (int32_t j = i - i % s.sizeA; j <= i; ++j) a(i, j) = i == j ? 90 : number();
      h.rhsA[i] = number();
    }
    for (int32_t j = 0; j < s.countB * kSizeB; ++j) {
      for (int32_t k = 0; k <= j % kSizeB; ++k) h.b[j * kSizeB + k] = k == j % kSizeB ? 90 : number();
      h.rhsB[j] = number();
    }
    for (int32_t k = 0; k < s.linkStart[s.countB] * s.sizeA * kSizeB; ++k) h.w[k] = number();
  }
  double& a(int32_t i, int32_t j) const { return h.a[int64_t{i} * side + j]; }

  double maxError(double lambda, const Vector& x) const {
    const PrmtHblkShape& s = h.shape;
    Vector rest(x.size());
    for (int32_t i = 0; i < side; ++i) rest[size_t(i)] = lambda * x[size_t(i)] - h.rhsA[i];
    for (size_t i = size_t(side); i < x.size(); ++i) rest[i] = lambda * x[i] - h.rhsB[i - size_t(side)];
    const auto add = [&](int32_t i, int32_t j, double value) {
      rest[size_t(i)] += value * x[size_t(j)];
      if (i != j) rest[size_t(j)] += value * x[size_t(i)];
    };
    for (int32_t i = 0; i < side; ++i) {
      for (int32_t j = 0; j <= i; ++j) add(i, j, a(i, j));
    }
    for (int32_t b = 0; b < s.countB; ++b) {
      const int32_t first = side + b * kSizeB;
      for (int32_t i = 0; i < kSizeB; ++i) {
        for (int32_t j = 0; j <= i; ++j) add(first + i, first + j, h.b[(b * kSizeB + i) * kSizeB + j]);
      }
      for (int32_t k = s.linkStart[b]; k < s.linkStart[b + 1]; ++k) {
        for (int32_t i = 0; i < s.sizeA * kSizeB; ++i) {
          add(s.linkA[k] * s.sizeA + i / kSizeB, first + i % kSizeB, h.w[k * s.sizeA * kSizeB + i]);
        }
      }
    }
    double error = 0;
    for (const double each : rest) error = std::max(error, std::fabs(each));
    return error;
  }

  PrmtHblk h;
  int32_t side;
};

// A solver in guarded memory of a given size.
struct Room {
  Room(const PrmtHblkShape& shape, uint64_t bytes)
      : memory(bytes), arena(memory.data(), bytes), h(takeBlocks(arena, shape)), solver(arena, shape) {}
  GuardedBuffer<uint8_t> memory;
  Arena arena;
  PrmtHblk h;
  SchurSolver solver;
};

uint64_t worstCase(const PrmtHblkShape& shape) {
  Arena arena(nullptr, 0);
  takeBlocks(arena, shape);
  SchurSolver(arena, shape).measure();
  return arena.needed();
}

// Solves in no more memory than the calls ask for one after the other. Returns what they took.
uint64_t solveInSteps(const PrmtHblkShape& shape, const std::function<void(const Values&)>& change = {}) {
  Arena least(nullptr, 0);
  takeBlocks(least, shape);
  const SchurSolver only(least, shape);
  Vector step(size_t(shape.sizeA * shape.countA + kSizeB * shape.countB));
  for (uint64_t bytes = least.needed(), attempts = 0; attempts < 8; ++attempts) {
    Room room(shape, bytes);
    const Values values(room.h);
    if (change) change(values);
    const int32_t status = room.solver.solve(room.h, 0.5, step.data());
    if (status == PRMT_STS_OK) {
      EXPECT_LT(values.maxError(0.5, step), 1e-11);
      return bytes;
    }
    EXPECT_EQ(status, PRMT_STS_BUFFER_TOO_SMALL);
    EXPECT_GT(room.arena.needed(), bytes);
    bytes = room.arena.needed();
  }
  ADD_FAILURE() << "never enough";
  return 0;
}

TEST(ReducedSystem, SolvesWhatIsLinked) {
  Random random(9);
  std::vector<int32_t> pairs(1400);
  for (int32_t& each : pairs) each = random.below(120);
  const struct {
    const char* name;
    int32_t sizeA, countA, countB;
    std::function<bool(int32_t, int32_t)> has;
    bool isSparse;
  } cases[] = {
      {"neighbours", 3, 60, 120, [](int32_t i, int32_t j) { return std::abs(i - j / 2) <= 2; }, true},
      {"neighbours on a ring", 6, 40, 40, [](int32_t i, int32_t j) { return (i - j + 41) % 40 <= 2; }, true},
      {"large blocks", 16, 30, 29, [](int32_t i, int32_t j) { return i == j || i == j + 1; }, true},
      // 2679 and 2940 of 150 x 150 blocks; a sparse system may have an eighth, 2812.
      {"single columns", 1, 150, 149, [](int32_t i, int32_t j) { return i >= j && i <= j + 18; }, true},
      {"too many of them", 1, 150, 149, [](int32_t i, int32_t j) { return i >= j && i <= j + 20; }, false},
      {"no links", 5, 25, 3, [](int32_t, int32_t) { return false; }, true},
      {"groups", 4, 40, 30, [](int32_t i, int32_t j) { return i / 8 == j % 6; }, true},
      {"all", 3, 40, 10, [](int32_t, int32_t) { return true; }, false},
      // Few blocks at first, nearly all after the fill.
      {"at random", 2, 120, 700,
       [&](int32_t i, int32_t j) { return i == pairs[size_t(2 * j)] || i == pairs[size_t(2 * j + 1)]; }, false},
      {"small", 3, 20, 20, [](int32_t i, int32_t j) { return i == j; }, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    const Links links(each.countA, each.countB, each.has);
    const PrmtHblkShape shape{each.sizeA, each.countA, kSizeB, each.countB, links.starts.data(), links.linked.data()};
    const uint64_t worst = worstCase(shape), taken = solveInSteps(shape);
    const uint64_t dense = 16 * unsignedOf(int64_t{each.sizeA} * each.countA) * unsignedOf(each.sizeA * each.countA);
    EXPECT_LE(taken, worst);
    EXPECT_EQ(taken + dense / 3 < worst, each.isSparse) << taken << " of " << worst;
  }
  EXPECT_EQ(worstCase({5, 3, 4, 0, nullptr, nullptr}), worstCase({5, 3, 1, 0, nullptr, nullptr}));  // no second group
}

TEST(ReducedSystem, BlocksThatOnlyAHas) {
  const Links links(40, 39, [](int32_t i, int32_t j) { return i == j || i == j + 1; });
  const PrmtHblkShape shape{3, 40, kSizeB, 39, links.starts.data(), links.linked.data()};
  // A link that only A has, then so many that the system is dense.
  const auto close = [](const Values& v) { v.a(119, 0) = 3; };
  const auto fill = [](const Values& v) {
    for (int32_t i = 0; i < v.side; ++i) {
      for (int32_t j = 0; j + 3 <= i; ++j) v.a(i, j) = 0.01 * ((i * 31 + j) % 7);
    }
  };
  const uint64_t apart = solveInSteps(shape), closed = solveInSteps(shape, close), filled = solveInSteps(shape, fill);
  EXPECT_TRUE(apart <= closed && closed < filled && filled <= worstCase(shape));
  // They may come one after the other, in the worst case's memory, and stay marked.
  Room room(shape, worstCase(shape));
  const Values values(room.h);
  Vector step(120 + 78), again(step.size());
  for (const std::function<void(const Values&)>& change :
       {std::function<void(const Values&)>([](const Values&) {}), std::function<void(const Values&)>(close),
        std::function<void(const Values&)>(fill)}) {
    change(values);
    ASSERT_EQ(room.solver.solve(room.h, 0, step.data()), PRMT_STS_OK);
    EXPECT_LT(values.maxError(0, step), 1e-11);
    ASSERT_EQ(room.solver.solve(room.h, 0, again.data()), PRMT_STS_OK);
    EXPECT_EQ(step, again);
  }
}

TEST(ReducedSystem, IndefiniteOnesGoToLeastSquares) {
  const Links links(50, 49, [](int32_t i, int32_t j) { return i == j || i == j + 1; });
  const PrmtHblkShape shape{2, 50, kSizeB, 49, links.starts.data(), links.linked.data()};
  solveInSteps(shape, [](const Values& v) { v.a(40, 40) = -70; });
  Room room(shape, worstCase(shape));
  const Values values(room.h);
  Vector step(100 + 98);
  for (int32_t i = 0; i < 100; ++i) {
    for (int32_t j = 0; j <= i; ++j) values.a(i, j) = 0;
  }
  std::fill_n(room.h.w, 2 * 49 * 2 * kSizeB, 0.0);
  EXPECT_EQ(room.solver.solve(room.h, 0, step.data()), PRMT_STS_FAILURE);
}

}  // namespace
}  // namespace dax::test
