// How the solvers grow with the problem: pose graphs and bundles of increasing size, time of one iteration and memory.
// Prints the tables of docs/performance.md.
#include <chrono>
#include <cstdio>
#include <vector>

#include "examples/optim/bundle.h"
#include "examples/optim/pose_graph.h"
#include "support/operation.h"

namespace {

double milliseconds() {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct Cost {
  double milliseconds;
  double megabytes;
};

// Least time of three calls; the buffer grows before.
template <class Solve>
Cost measure(const Solve& solve) {
  std::vector<uint8_t> buffer(1 << 16);
  double best = 1e300;
  for (int round = 0; round < 4;) {
    uint64_t bytes = buffer.size();
    const double begin = milliseconds();
    const int32_t status = solve(buffer.data(), &bytes);
    if (status == PRMT_STS_BUFFER_TOO_SMALL) {
      buffer.resize(bytes);
      continue;
    }
    bench::require(static_cast<uint32_t>(status));
    best = round++ == 0 ? best : std::min(best, milliseconds() - begin);
  }
  return {best, static_cast<double>(buffer.size()) / 1e6};
}

constexpr int kIterations = 4;

void growPoseGraphs() {
  std::printf(
      "| poses | edges | parameters | ms / iteration | us / pose | MB |\n| ---: | ---: | ---: | ---: | ---: | ---: "
      "|\n");
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
  std::printf("\n| cameras | points | observations | ms / iteration | us / observation | MB |\n");
  std::printf("| ---: | ---: | ---: | ---: | ---: | ---: |\n");
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
    std::printf("| %d | %d | %zu | %.2f | %.3f | %.1f |\n", cameras, points, bundle.link.size(), each,
                1e3 * each / double(bundle.link.size()), cost.megabytes);
  }
}

}  // namespace

int main() {
  growPoseGraphs();
  growBundles();
  return 0;
}
