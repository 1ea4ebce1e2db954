// Scaling of the solvers: time of one iteration and memory for pose graphs and bundles of increasing size.
// Prints the tables "graphs", "bundles" and "cameras" of docs/performance.md.
#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "bench/optim/lm/bundle_row.h"
#include "bench/optim/lm/growth_peer.h"
#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"
#include "examples/optim/bundle.h"
#include "examples/optim/pose_graph.h"

namespace {

struct Cost {
  double milliseconds;
  double megabytes;
};

// Shortest time of three calls; the buffer has grown before. `between` runs after each.
template <class Solve, class Between>
Cost measure(const Solve& solve, const Between& between) {
  std::vector<uint8_t> buffer(1 << 16);
  double best = 1e300;
  for (int round = 0; round < 4;) {
    uint64_t bytes = buffer.size();
    int32_t status = 0;
    const double time = bench::cpuMilliseconds([&] { status = solve(buffer.data(), &bytes); });
    if (status == PRMT_STS_BUFFER_TOO_SMALL) {
      buffer.resize(bytes);
      continue;
    }
    bench::require(static_cast<uint32_t>(status));
    if (round++ > 0) best = std::min(best, time);
    between();
  }
  return {best, static_cast<double>(buffer.size()) / 1e6};
}

constexpr int kIterations = 4;

void growPoseGraphs() {
  bench::printHead({"poses", "edges", "parameters", "ms / iteration", "us / pose", "MB"});
  for (const int poses : {500, 2500, 10000, 40000}) {
    PoseGraph graph(poses, poses / 250);
    const PrmtLmHmspFunctions functions{PoseGraph::energy, PoseGraph::normal, PoseGraph::update, graph.elements()};
    const Cost cost = measure(
        [&](void* memory, uint64_t* bytes) {
          std::vector<double> x = graph.startParameters();
          PrmtLmParam param{0, 0, kIterations, 1e-6, 1e-3, 10, 0, 0};
          double energy = 0, norm = 0;
          return PRMT_LM_HMSP_Process_f64(x.data(), graph.parameters(), 6, &functions, &graph, &param, &energy, &norm,
                                          memory, bytes);
        },
        [] {});
    const double each = cost.milliseconds / kIterations;
    std::printf("| %d | %zu | %d | %.2f | %.2f | %.1f |\n", poses, graph.edges.size(), graph.parameters(), each,
                1e3 * each / poses, cost.megabytes);
  }
}

template <class Between>
Cost measureBundle(Bundle& bundle, const Between& between) {
  const PrmtLmHblkFunctions functions{Bundle::energy, Bundle::blocks, Bundle::update, bundle.shape()};
  const auto solve = [&](void* memory, uint64_t* bytes) {
    std::vector<double> x = bundle.start;
    PrmtLmParam param{0, 0, kIterations, 1e-9, 1e-3, 10, 0, 0};
    double rmse = 0, norm = 0;
    return PRMT_LM_HBLK_Process_f64(x.data(), bundle.parameters(), bundle.residualCount(), &functions, &bundle, &param,
                                    &rmse, &norm, memory, bytes);
  };
  return measure(solve, between);
}

void growBundles() {
  bench::printHead({"observations", "cameras", "points", "ms / iteration", "us / observation", "MB"});
  const int sizes[][2] = {{10, 1000}, {20, 3000}, {20, 12000}, {40, 12000}, {80, 12000}};
  for (const auto& [cameras, points] : sizes) {
    Bundle bundle(cameras, points, 0);
    const Cost cost = measureBundle(bundle, [] {});
    const double each = cost.milliseconds / kIterations;
    std::printf("| %zu | %d | %d | %.2f | %.3f | %.1f |\n", bundle.link.size(), cameras, points, each,
                1e3 * each / double(bundle.link.size()), cost.megabytes);
  }
}

// One bundle: the library and the peer's two solvers in turn.
void printBesidePeer(const char* scene, Bundle& bundle) {
  double dense = 1e300, sparse = 1e300;
  const auto runPeer = [&] {
    dense = std::min(dense, bench::peerMilliseconds(bundle, false, kIterations));
    sparse = std::min(sparse, bench::peerMilliseconds(bundle, true, kIterations));
  };
  const Cost cost = measureBundle(bundle, runPeer);
  std::printf("| %s | %d | %zu | %.2f |", scene, bundle.cameras, bundle.link.size(), cost.milliseconds / kIterations);
  for (const double peer : {dense, sparse}) {
    if (peer < 1e300) {
      std::printf(" %.2f | %.2f |", peer / kIterations, cost.milliseconds / peer);
    } else {
      std::printf(" – | – |");
    }
  }
  std::printf(" %.1f |\n", cost.megabytes);
}

void growCameras() {
  bench::printHead({"cameras", "number", "observations", "ms / iteration", "dense Schur ms", "ratio", "sparse Schur ms",
                    "ratio", "MB"},
                   1);
  for (const int cameras : {25, 50, 100, 200, 400}) {
    Bundle row = bench::bundleRow(cameras, 30 * cameras);
    printBesidePeer("in a row", row);
  }
  for (const int cameras : {25, 50, 100, 200, 400}) {
    Bundle ring(cameras, 1000, 0);
    printBesidePeer("on a ring", ring);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (bench::wanted(argc, argv, "graphs")) growPoseGraphs();
  if (bench::wanted(argc, argv, "bundles")) growBundles();
  if (bench::wanted(argc, argv, "cameras")) growCameras();
  return 0;
}
