#include "daxi/thin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Mask = TestImage<uint8_t>;

// p[2], north, to p[9], northwest, clockwise; outside is clear.
std::array<int32_t, 10> neighboursOf(const Mask& mask, int32_t x, int32_t y) {
  constexpr int32_t kX[] = {0, 1, 1, 1, 0, -1, -1, -1}, kY[] = {-1, -1, 0, 1, 1, 1, 0, -1};
  std::array<int32_t, 10> p{};
  for (size_t i = 0; i < 8; ++i) {
    const int32_t u = x + kX[i], v = y + kY[i];
    const bool isInside = u >= 0 && v >= 0 && u < mask.size().width && v < mask.size().height;
    p[i + 2] = isInside && mask.at(u, v) != 0;
  }
  return p;
}

bool isCleared(const Mask& mask, int32_t x, int32_t y, bool isFirst) {
  const std::array<int32_t, 10> p = neighboursOf(mask, x, y);
  int32_t c = 0;
  for (const size_t i : {2, 4, 6, 8}) c += p[i] ? 0 : p[i + 1] | p[i == 8 ? 2 : i + 2];
  const int32_t n1 = (p[9] | p[2]) + (p[3] | p[4]) + (p[5] | p[6]) + (p[7] | p[8]);
  const int32_t n2 = (p[2] | p[3]) + (p[4] | p[5]) + (p[6] | p[7]) + (p[8] | p[9]);
  const int32_t n = std::min(n1, n2);
  const int32_t m = isFirst ? (p[2] | p[3] | !p[5]) & p[4] : (p[6] | p[7] | !p[9]) & p[8];
  return c == 1 && n >= 2 && n <= 3 && m == 0;
}

void thinSlowly(Mask& mask, int32_t maxIterations) {
  bool changed = true;
  for (int32_t i = 0; changed && (maxIterations == 0 || i < maxIterations); ++i) {
    changed = false;
    for (const bool isFirst : {true, false}) {
      Mask before(mask.size());
      before.fill([&](int32_t x, int32_t y) { return mask.at(x, y) ? 255 : 0; });
      mask.fill([&](int32_t x, int32_t y) {
        const bool clears = before.at(x, y) && isCleared(before, x, y, isFirst);
        changed |= clears;
        return clears ? 0 : before.at(x, y);
      });
    }
  }
}

template <class Function>
void run(Function function, DaxStatus (*query)(DaxiSize, uint64_t*), const Mask& src, Mask& dst, int32_t number) {
  uint64_t bytes = 0;
  ASSERT_EQ(query(src.size(), &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  ASSERT_EQ(function(src.data(), src.step(), dst.data(), dst.step(), src.size(), number, buffer.data()), DAX_STS_OK);
}

// Noise, blobs, and what touches the edges.
TEST(Thin, DecidesOnAllPixelsBeforeItClears) {
  Random random(9);
  for (int32_t round = 0; round < 60; ++round) {
    Mask src({1 + random.below(50), 1 + random.below(30)}, round % 3);
    const Image smooth = hills(src.size(), static_cast<uint64_t>(round));
    const int32_t density = random.below(4);
    src.fill([&](int32_t x, int32_t y) {
      return round % 2 ? (smooth.at(x, y) > 100 ? 1 + random.below(255) : 0) : random.below(4) <= density ? 255 : 0;
    });
    const int32_t maxIterations = round % 4;
    Mask expected(src.size()), dst(src.size(), 1);
    expected.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
    thinSlowly(expected, maxIterations);
    run(DAXI_Thin_8u_C1R, DAXI_ThinBufferSize_8u, src, dst, maxIterations);
    ASSERT_TRUE(samePixels(dst, expected)) << round;
    run(DAXI_Thin_8u_C1R, DAXI_ThinBufferSize_8u, src, src, maxIterations);
    ASSERT_TRUE(samePixels(src, expected)) << round << " in place";
  }
}

int32_t degree(const Mask& mask, int32_t x, int32_t y) {
  int32_t count = 0;
  for (const int32_t each : neighboursOf(mask, x, y)) count += each;
  return count;
}

// Walks from every end, remembering where it has been.
void pruneSlowly(Mask& mask, int32_t maxLength) {
  Mask before(mask.size());
  before.fill([&](int32_t x, int32_t y) { return mask.at(x, y) ? 255 : 0; });
  mask.fill([&](int32_t x, int32_t y) { return before.at(x, y); });
  for (int32_t y = 0; y < mask.size().height; ++y) {
    for (int32_t x = 0; x < mask.size().width; ++x) {
      if (!before.at(x, y) || degree(before, x, y) != 1) continue;
      std::vector<std::pair<int32_t, int32_t>> branch = {{x, y}};
      for (;;) {
        const int32_t u = branch.back().first, v = branch.back().second;
        std::pair<int32_t, int32_t> next = {-1, -1};
        for (int32_t j = std::max(v - 1, 0); j <= std::min(v + 1, mask.size().height - 1); ++j) {
          for (int32_t i = std::max(u - 1, 0); i <= std::min(u + 1, mask.size().width - 1); ++i) {
            const bool isNew = std::find(branch.begin(), branch.end(), std::pair(i, j)) == branch.end();
            if (before.at(i, j) && isNew) next = {i, j};
          }
        }
        const int32_t beside = degree(before, next.first, next.second);
        if (beside == 1) break;
        if (beside > 2) {
          if (static_cast<int32_t>(branch.size()) > maxLength) break;
          for (const auto& place : branch) mask.at(place.first, place.second) = 0;
          break;
        }
        branch.push_back(next);
      }
    }
  }
}

TEST(PruneBranches, UpToALengthAndOnlyWhereTheyMeetOthers) {
  Random random(1);
  for (int32_t round = 0; round < 60; ++round) {
    Mask src({1 + random.below(60), 1 + random.below(40)}, round % 3), dst(src.size(), 1);
    src.fill([&](int32_t, int32_t) { return random.below(round % 2 ? 3 : 8) ? 0 : 255; });
    if (round % 3 == 0) {  // a comb with teeth of all lengths, and a line of its own
      src.fill([](int32_t x, int32_t y) { return y == 3 || (x % 3 == 1 && y > 3 && y < 5 + x / 3) || x == 99; });
    }
    Mask expected(src.size());
    expected.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
    const int32_t maxLength = random.below(9);
    pruneSlowly(expected, maxLength);
    run(DAXI_PruneBranches_8u_C1R, DAXI_PruneBranchesBufferSize_8u, src, dst, maxLength);
    ASSERT_TRUE(samePixels(dst, expected)) << round;
  }
}

}  // namespace
}  // namespace dax::test
