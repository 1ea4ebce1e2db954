#include <gtest/gtest.h>

#include "tests/optim/graph/graph_scenes.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// The first steps by every solver, with a kernel each.
TEST(Digests, Graphs) {
  Digest digest;
  constexpr int32_t kTypes[] = {3, 0, 2, 7, 3};
  for (int32_t kernel = 0; kernel < 5; ++kernel) {
    OwnGraph g(80, 160);
    addScene(g, kernel, {0.5, -0.25, 2, 0.3, -0.2, 0.1});
    addRing(g, 60, 0.1);
    PrgoCfg cfg = defaultCfg(kTypes[kernel]);
    cfg.maxIterations = 6;
    cfg.energyTolerance = cfg.stepTolerance = 0;
    PrgoResult result;
    EXPECT_EQ(g.optimise(cfg, result), PRGO_STS_NOT_CONVERGED);
    for (int32_t v = 0; v < g.graph.vertexCount; ++v) digest.add(g.graph.vertices[v].estimate, 6 * sizeof(double));
    digest.add(&result.finalEnergy, sizeof(double));
  }
  EXPECT_EQ(digest.value(), 0x74874E5FAB78FEFBu);
}

}  // namespace
}  // namespace dax::test
