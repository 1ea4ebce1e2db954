// Graphs of relative poses beside a peer: time of a whole solve, and the energy that is reached. Usage: graph_growth FILE.g2o...
// The files of docs/how-to/graphs.md are those of dax graph make: sphere --poses 2500, manhattan --poses 3500, torus --poses
// 5000.
#include <prmt.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/optim/graph/graph_peer.h"
#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"

namespace {

constexpr double kTolerance = 1e-12;
constexpr int kRounds = 3;

using Motion = std::array<double, 16>;

Motion motionOf(const double* estimate, bool isSpatial) {
  const double w[6] = {0, 0, 0, isSpatial ? estimate[3] : 0, isSpatial ? estimate[4] : 0, estimate[isSpatial ? 5 : 2]};
  Motion motion;
  PRMT_SE3_Exp_f64(w, motion.data());
  motion[3] = estimate[0], motion[7] = estimate[1], motion[11] = isSpatial ? estimate[2] : 0;
  return motion;
}

void store(const Motion& m, bool isSpatial, double* estimate) {
  const double rotation[9] = {m[0], m[1], m[2], m[4], m[5], m[6], m[8], m[9], m[10]};
  double w[3];
  PRMT_SO3_Log_f64(rotation, w);
  estimate[0] = m[3], estimate[1] = m[7], estimate[2] = isSpatial ? m[11] : w[2];
  if (isSpatial) std::copy_n(w, 3, estimate + 3);
}

// Both solvers start where the measurements chained along the shortest ways from the first vertex lead, in edges.
void startFromTree(PrgoGraph& graph) {
  std::unordered_map<int64_t, std::vector<std::pair<int64_t, Motion>>> ways;
  std::unordered_map<int64_t, Motion> at;
  const bool isSpatial = graph.vertices[0].type == PRGO_VERTEX_SE3;
  for (int32_t e = 0; e < graph.edgeCount; ++e) {
    const PrgoEdge& edge = graph.edges[e];
    const Motion there = motionOf(edge.measurement, isSpatial);
    Motion back;
    PRMT_SE3_Inverse_f64(there.data(), back.data());
    ways[edge.vertices[0]].emplace_back(edge.vertices[1], there);
    ways[edge.vertices[1]].emplace_back(edge.vertices[0], back);
  }
  std::vector<int64_t> queue = {graph.vertices[0].id};
  at[queue[0]] = motionOf(graph.vertices[0].estimate, isSpatial);
  for (size_t k = 0; k < queue.size(); ++k) {
    const int64_t from = queue[k];
    const Motion here = at[from];
    for (const auto& [to, way] : ways[from]) {
      if (at.count(to) > 0) continue;
      double estimate[6];
      PRMT_SE3_Compose_f64(here.data(), way.data(), at[to].data());
      store(at[to], isSpatial, estimate);
      PRGO_GRAPH_SetEstimate(&graph, to, estimate);
      queue.push_back(to);
    }
  }
}

struct Loaded {
  explicit Loaded(const std::string& text) {
    PrgoTextInfo info;
    PRGO_GRAPH_CountText(text.data(), text.size(), &info);
    uint64_t bytes = 0;
    PRGO_GRAPH_BufferSize(info.vertices, info.edges, &bytes);
    memory.resize(bytes);
    PRGO_GRAPH_Init(&graph, info.vertices, info.edges, memory.data());
    bench::require(static_cast<uint32_t>(PRGO_GRAPH_ReadText(&graph, text.data(), text.size(), &info)));
    PRGO_GRAPH_Fix(&graph, graph.vertices[0].id, 1);
    startFromTree(graph);
  }
  std::vector<char> memory;
  PrgoGraph graph;
};

struct Solved {
  double milliseconds, megabytes;
  PrgoResult result;
};

// With the query and the memory, as a caller has it.
Solved solve(const std::string& text, int32_t solverType) {
  Loaded loaded(text);
  PrgoCfg cfg;
  PRGO_CORE_DefaultCfg(&cfg);
  cfg.solverType = solverType;
  cfg.energyTolerance = kTolerance;
  cfg.maxIterations = 200;
  Solved solved{0, 0, {}};
  solved.milliseconds = bench::cpuMilliseconds([&] {
    uint64_t bytes = 0;
    PRGO_CORE_BufferSize(&loaded.graph, &cfg, &bytes);
    std::vector<char> buffer(bytes);
    bench::require(
        static_cast<uint32_t>(PRGO_CORE_optimize(&loaded.graph, &cfg, &solved.result, buffer.data(), &bytes)));
    solved.megabytes = static_cast<double>(bytes) / 1e6;
  });
  return solved;
}

}  // namespace

int main(int argc, char** argv) {
  bench::printHead({"graph", "poses", "edges", "energy", "energy / peer's - 1", "iterations", "peer's", "ms", "peer's",
                    "ratio", "MB"},
                   1);
  for (int k = 1; k < argc; ++k) {
    std::ifstream file(argv[k], std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const Loaded start(text);
    double ours = INFINITY, peer = INFINITY;
    Solved solved{};
    bench::PeerRun run{};
    for (int round = 0; round < kRounds; ++round) {
      solved = solve(text, 3);
      run = bench::solveByPeer(start.graph, kTolerance);
      ours = std::min(ours, solved.milliseconds), peer = std::min(peer, run.milliseconds);
    }
    const std::string path = argv[k], name = path.substr(path.rfind('/') + 1);
    std::printf("| %s | %d | %d | %.9g | %.1e | %d | %d | %.0f | %.0f | %.2f | %.0f |\n",
                name.substr(0, name.rfind('.')).c_str(), start.graph.vertexCount, start.graph.edgeCount,
                solved.result.finalEnergy, solved.result.finalEnergy / run.energy - 1, solved.result.iterations,
                run.iterations, ours, peer, ours / peer, solved.megabytes);
  }
  return 0;
}
