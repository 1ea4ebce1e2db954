// Graphs in memory of their own, and scenes with known truth.
#pragma once

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "prgo.h"
#include "prmt.h"
#include "tests/support/test_image.h"

namespace dax::test {

using Numbers = std::vector<double>;

class OwnGraph {
 public:
  OwnGraph(int32_t vertices, int32_t edges) {
    uint64_t bytes = 0;
    PRGO_GRAPH_BufferSize(vertices, edges, &bytes);
    memory_.resize(bytes);
    PRGO_GRAPH_Init(&graph, vertices, edges, memory_.data());
  }
  OwnGraph(const OwnGraph&) = delete;
  OwnGraph& operator=(const OwnGraph&) = delete;

  int32_t vertex(int64_t id, int32_t type, const Numbers& estimate, bool fixed = false) {
    PrgoVertex v{id, type, static_cast<int32_t>(estimate.size()), fixed, 1, {}};
    std::copy(estimate.begin(), estimate.end(), v.estimate);
    return PRGO_GRAPH_AddVertex(&graph, &v);
  }
  // With the diagonal of an information matrix.
  int32_t edge(int32_t type, int64_t from, int64_t to, const Numbers& measured, const Numbers& diagonal,
               int32_t kernel = PRGO_KERNEL_NONE) {
    PrgoEdge e{{from, to}, type, kernel, 0, {}, {}};
    std::copy(measured.begin(), measured.end(), e.measurement);
    int32_t at = 0;
    for (size_t i = 0; i < diagonal.size(); ++i) {
      for (size_t j = i; j < diagonal.size(); ++j, ++at) e.information[at] = i == j ? diagonal[i] : 0;
    }
    return PRGO_GRAPH_AddEdge(&graph, &e);
  }
  double energy() const {
    double sum = -1;
    PRGO_GRAPH_Energy(&graph, &sum);
    return sum;
  }
  uint64_t need(const PrgoCfg& cfg) const {
    uint64_t bytes = 0;
    PRGO_CORE_BufferSize(&graph, &cfg, &bytes);
    return bytes;
  }
  int32_t optimise(const PrgoCfg& cfg, PrgoResult& result) {
    uint64_t bytes = need(cfg);
    std::vector<double> buffer(bytes / sizeof(double));
    return PRGO_CORE_optimize(&graph, &cfg, &result, buffer.data(), &bytes);
  }

  PrgoGraph graph;

 private:
  std::vector<char> memory_;
};

inline PrgoCfg defaultCfg(int32_t solverType = 3) {
  PrgoCfg cfg;
  PRGO_CORE_DefaultCfg(&cfg);
  cfg.solverType = solverType;
  return cfg;
}

inline double around(Random& random, double size) {
  return (random.below(2001) - 1000) * 1e-3 * size;
}

// The estimate (t, w) of X^-1 Y, and of X Y.
inline Numbers combined(const Numbers& x, const Numbers& y, bool invert) {
  double a[16], b[16], rotation[9];
  const auto motion = [&](const Numbers& p, double* m) {
    PRMT_SO3_Exp_f64(p.data() + 3, rotation);
    for (int i = 0; i < 16; ++i) m[i] = i % 4 < 3 && i < 12 ? rotation[i / 4 * 3 + i % 4] : i == 15;
    for (size_t i = 0; i < 3; ++i) m[4 * i + 3] = p[i];
  };
  motion(x, a), motion(y, b);
  if (invert) PRMT_SE3_Inverse_f64(a, a);
  PRMT_SE3_Compose_f64(a, b, a);
  for (int i = 0; i < 9; ++i) rotation[i] = a[i / 3 * 4 + i % 3];
  Numbers result{a[3], a[7], a[11], 0, 0, 0};
  PRMT_SO3_Log_f64(rotation, result.data() + 3);
  return result;
}

// Poses on a ring of radius 10, each measured from the one before, with estimates moved by `noise` away from the truth.
inline void addRing(OwnGraph& g, int32_t poses, double noise) {
  Random random(5);
  const double step = 2 * std::numbers::pi / poses, chord = 20 * std::sin(step / 2);
  const Numbers between{chord * std::cos(step / 2), chord * std::sin(step / 2), step};
  for (int32_t k = 0; k < poses; ++k) {
    const double turn = step * k;
    g.vertex(100 + k, PRGO_VERTEX_SE2,
             {10 * std::sin(turn) + around(random, noise), 10 - 10 * std::cos(turn) + around(random, noise),
              turn + around(random, noise)});
  }
  for (int32_t k = 0; k < poses; ++k) {
    g.edge(PRGO_EDGE_RELATIVE, 100 + k, 100 + (k + 1) % poses, between, {400, 400, 2500});
  }
}

// Poses of space on a helix and points around it; measurements with errors, some of them wild under a robust kernel. `moved`
// is applied to all truth.
inline void addScene(OwnGraph& g, int32_t kernel, const Numbers& moved = Numbers(6)) {
  Random random(9);
  std::vector<Numbers> poses, points;
  for (int32_t k = 0; k < 8; ++k) {
    poses.push_back(
        combined(moved, {3 * std::cos(0.7 * k), 3 * std::sin(0.7 * k), 0.3 * k, 0.1 * k, 0.2, 0.7 * k}, false));
    Numbers start = poses.back();
    for (double& value : start) value += around(random, 0.05);
    g.vertex(k, PRGO_VERTEX_SE3, start);
  }
  for (int32_t k = 0; k < 12; ++k) {
    points.push_back(combined(moved, {around(random, 5), around(random, 5), around(random, 2), 0, 0, 0}, false));
    points.back().resize(3);
    Numbers start = points.back();
    for (double& value : start) value += around(random, 0.2);
    g.vertex(1000 + k, PRGO_VERTEX_POINT3, start);
  }
  const auto noisy = [&](Numbers z) {
    for (double& value : z) value += around(random, 0.006);
    return z;
  };
  for (size_t k = 0; k + 1 < poses.size(); ++k) {
    g.edge(PRGO_EDGE_RELATIVE, int64_t(k), int64_t(k) + 1, noisy(combined(poses[k], poses[k + 1], true)),
           {2500, 2500, 2500, 900, 900, 400}, kernel);
  }
  for (size_t k = 0; k < poses.size(); ++k) {
    for (size_t j = k % 3; j < points.size(); j += 3) {
      Numbers p = points[j];
      p.resize(6);
      Numbers z = noisy(combined(poses[k], p, true));
      z.resize(3);
      if (kernel != PRGO_KERNEL_NONE && (k + j) % 7 == 0) z[0] += 0.4;
      g.edge(PRGO_EDGE_LANDMARK, int64_t(k), 1000 + int64_t(j), z, {2500, 1600, 900}, kernel);
    }
  }
}

}  // namespace dax::test
