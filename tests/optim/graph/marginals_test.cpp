#include <gtest/gtest.h>

#include "prgo.h"
#include "tests/optim/graph/graph_scenes.h"

namespace dax::test {
namespace {

std::vector<double> marginals(OwnGraph& g, const std::vector<int64_t>& ids, int32_t expected = 0) {
  uint64_t bytes = 0;
  EXPECT_EQ(PRGO_CORE_MarginalsBufferSize(&g.graph, &bytes), 0);
  std::vector<double> buffer(bytes / sizeof(double)), found(36 * ids.size(), -1.0);
  const uint64_t need = bytes;
  const auto count = static_cast<int32_t>(ids.size());
  bytes = need / 3;
  EXPECT_EQ(PRGO_CORE_Marginals(&g.graph, ids.data(), count, found.data(), buffer.data(), &bytes),
            PRGO_STS_BUFFER_TOO_SMALL);
  EXPECT_EQ(bytes, need);
  EXPECT_EQ(found[0], -1);
  EXPECT_EQ(PRGO_CORE_Marginals(&g.graph, ids.data(), count, found.data(), buffer.data(), &bytes), expected);
  return found;
}

// A straight chain of unit steps: along it variances add up, across it those of turns do, too: i + sum of squares.
TEST(Marginals, ChainAddsUp) {
  constexpr int kPoses = 40;
  OwnGraph g(kPoses, kPoses);
  std::vector<int64_t> ids;
  for (int64_t k = 0; k < kPoses; ++k) {
    g.vertex(k, PRGO_VERTEX_SE2, {double(k), 0, 0});
    if (k > 0) g.edge(PRGO_EDGE_RELATIVE, k - 1, k, {1, 0, 0}, {1, 1, 100});
    ids.push_back(k);
  }
  const std::vector<double> found = marginals(g, ids);
  double squares = 0;
  for (int k = 0; k < kPoses; ++k) {
    const double* const block = found.data() + 36 * k;
    EXPECT_NEAR(block[0], k, 1e-9 * kPoses);
    EXPECT_NEAR(block[4], k + squares / 100, 1e-9 * (1 + squares));
    EXPECT_NEAR(block[8], k / 100.0, 1e-9);
    EXPECT_EQ(block[1], block[3]);
    squares += k * k;
  }
}

// Variances by selected inversion predict how the minimum moves when one measurement does: with a weak prior of weight w on
// one number, the minimum moves by covariance * w * offset / (1 + w variance).
TEST(Marginals, PredictTheMinimum) {
  OwnGraph g(20, 101);
  addScene(g, PRGO_KERNEL_NONE);
  PrgoResult result;
  ASSERT_EQ(g.optimise(defaultCfg(), result), 0);
  const std::vector<double> found = marginals(g, {1004, 0});
  for (int i = 36; i < 72; ++i) EXPECT_EQ(found[size_t(i)], 0);  // held
  double before[3], after[3];
  PRGO_GRAPH_Estimate(&g.graph, 1004, before);
  ASSERT_EQ(PRGO_GRAPH_Fix(&g.graph, 0, 1), 0);  // as it was held: the prior would free it
  ASSERT_EQ(g.edge(PRGO_EDGE_PRIOR, 1004, 0, {before[0] + 1, before[1], before[2]}, {10, 0, 0}), 0);
  ASSERT_EQ(g.optimise(defaultCfg(), result), 0);
  PRGO_GRAPH_Estimate(&g.graph, 1004, after);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(after[i] - before[i], 10 * found[i] / (1 + 10 * found[0]), 0.1 * found[0]) << i;
  }
}

TEST(Marginals, SayWhatIsNotDetermined) {
  OwnGraph g(3, 4);
  g.vertex(0, PRGO_VERTEX_SE2, {0, 0, 0});
  g.vertex(1, PRGO_VERTEX_SE2, {1, 0, 0});
  g.edge(PRGO_EDGE_RELATIVE, 0, 1, {1, 0, 0}, {1, 1, 0});
  marginals(g, {1}, PRGO_STS_SINGULAR);
}

}  // namespace
}  // namespace dax::test
