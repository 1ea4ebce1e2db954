// Scaling of the solvers: time of one iteration and memory for pose graphs and bundles of increasing size.
// Prints the tables "graphs" and "bundles" of docs/performance.md.
#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"
#include "examples/optim/bundle.h"
#include "examples/optim/pose_graph.h"

namespace {

struct Cost {
  double milliseconds;
  double megabytes;
};

// Shortest time of three calls; the buffer has grown before.
template <class Solve>
Cost measure(const Solve& solve) {
  std::vector<uint8_t> buffer(1 << 16);
  double best = 1e300;
  for (int round = 0; round < 4;) {
    uint64_t bytes = buffer.size();
    int32_t status = 0;
    const double time = bench::milliseconds([&] { status = solve(buffer.data(), &bytes); });
    if (status == PRMT_STS_BUFFER_TOO_SMALL) {
      buffer.resize(bytes);
      continue;
    }
    bench::require(static_cast<uint32_t>(status));
    if (round++ > 0) best = std::min(best, time);
  }
  return {best, static_cast<double>(buffer.size()) / 1e6};
}

constexpr int kIterations = 4;

void growPoseGraphs() {
  bench::printHead({"poses", "edges", "parameters", "ms / iteration", "us / pose", "MB"});
  for (const int poses : {500, 2500, 10000, 40000}) {
    PoseGraph graph(poses, poses / 250);
    const PrmtLmHmspFunctions functions{PoseGraph::energy, PoseGraph::normal, PoseGraph::update, graph.elements()};
    const Cost cost = measure([&](void* memory, uint64_t* bytes) {
      std::vector<double> x = graph.startParameters();
      PrmtLmParam param{0, 0, kIterations, 1e-6, 1e-3, 10, 0, 0};
      double energy = 0, norm = 0;
      return PRMT_LM_HMSP_Process_f64(x.data(), graph.parameters(), 6, &functions, &graph, &param, &energy, &norm,
                                      memory, bytes);
    });
    const double each = cost.milliseconds / kIterations;
    std::printf("| %d | %zu | %d | %.2f | %.2f | %.1f |\n", poses, graph.edges.size(), graph.parameters(), each,
                1e3 * each / poses, cost.megabytes);
  }
}

void growBundles() {
  bench::printHead({"observations", "cameras", "points", "ms / iteration", "us / observation", "MB"});
  const int sizes[][2] = {{10, 1000}, {20, 3000}, {20, 12000}, {40, 12000}, {80, 12000}};
  for (const auto& [cameras, points] : sizes) {
    Bundle bundle(cameras, points, 0);
    const PrmtLmHblkFunctions functions{Bundle::energy, Bundle::blocks, Bundle::update, bundle.shape()};
    const Cost cost = measure([&](void* memory, uint64_t* bytes) {
      std::vector<double> x = bundle.start;
      PrmtLmParam param{0, 0, kIterations, 1e-9, 1e-3, 10, 0, 0};
      double rmse = 0, norm = 0;
      return PRMT_LM_HBLK_Process_f64(x.data(), bundle.parameters(), bundle.residualCount(), &functions, &bundle,
                                      &param, &rmse, &norm, memory, bytes);
    });
    const double each = cost.milliseconds / kIterations;
    std::printf("| %zu | %d | %d | %.2f | %.3f | %.1f |\n", bundle.link.size(), cameras, points, each,
                1e3 * each / double(bundle.link.size()), cost.megabytes);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (bench::wanted(argc, argv, "graphs")) growPoseGraphs();
  if (bench::wanted(argc, argv, "bundles")) growBundles();
  return 0;
}
