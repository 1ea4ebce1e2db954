#include <gtest/gtest.h>

#include <cstring>

#include "optim/graph/edge_model.h"
#include "optim/graph/information.h"
#include "optim/graph/robust_kernel.h"
#include "tests/optim/graph/graph_scenes.h"

namespace dax::test {
namespace {

// --- Edges ---

struct EdgeCase {
  int32_t edge, first, second, rows;
};

// Derivatives beside central differences, for relative angles near 0 and near pi.
TEST(Graph, DerivativesOfEdges) {
  const EdgeCase cases[] = {{PRGO_EDGE_RELATIVE, PRGO_VERTEX_SE2, PRGO_VERTEX_SE2, 3},
                            {PRGO_EDGE_RELATIVE, PRGO_VERTEX_SE3, PRGO_VERTEX_SE3, 6},
                            {PRGO_EDGE_PRIOR, PRGO_VERTEX_SE2, -1, 3},
                            {PRGO_EDGE_PRIOR, PRGO_VERTEX_SE3, -1, 6},
                            {PRGO_EDGE_LANDMARK, PRGO_VERTEX_SE2, PRGO_VERTEX_POINT2, 2},
                            {PRGO_EDGE_LANDMARK, PRGO_VERTEX_SE3, PRGO_VERTEX_POINT3, 3},
                            {PRGO_EDGE_PRIOR, PRGO_VERTEX_POINT3, -1, 3},
                            {PRGO_EDGE_PROJECTION, PRGO_VERTEX_SE3, PRGO_VERTEX_POINT3, 2},
                            {PRGO_EDGE_PLANE, PRGO_VERTEX_SE3, PRGO_VERTEX_SE3, 1}};
  Random random(3);
  for (const EdgeCase& c : cases) {
    for (const double angle : {0.0, 1e-9, 0.8, 3.1}) {
      PrgoEdge edge{{0, 1}, c.edge, 0, 0, {}, {}};
      double root[36];
      for (double& value : root) value = around(random, 1);
      for (double& value : edge.measurement) value = around(random, 1e-3);
      const int32_t types[2] = {c.first, c.second};
      EdgeView view{&edge, root, c.rows, {c.first, c.second}, {}, {}};
      double x[2][6] = {};
      for (int k = 0; k < endsOf(c.edge); ++k) {
        view.sizes[k] = vertexSize(types[k], 0);
        for (int i = 0; i < view.sizes[k]; ++i) x[k][i] = around(random, 1);
      }
      if (c.edge == PRGO_EDGE_PROJECTION) {
        edge.measurement[2] = 1.2, edge.measurement[3] = -0.9;
        for (int i = 3; i < 6; ++i) x[0][i] *= 0.3;
        x[1][2] += 4;
      }
      // The last vertex turned by the angle against the first, or against the measurement.
      const int last = endsOf(c.edge) - 1;
      if (types[last] == PRGO_VERTEX_SE2) x[last][2] = (last == 1 ? x[0][2] : edge.measurement[2]) + angle;
      if (types[last] == PRGO_VERTEX_SE3) {
        const double turn[6] = {0.3, 0, 0.1, angle * 0.6, -angle * 0.8, 0};
        if (last == 1) std::copy_n(x[0], 6, x[1]);
        if (last == 0) std::copy_n(edge.measurement, 6, x[0]);
        moveEstimate(PRGO_VERTEX_SE3, 6, x[last], turn);
      }
      const auto residual = [&](double* r) {
        State states[2];
        for (int k = 0; k <= last; ++k) {
          states[k] = stateOf(types[k], view.sizes[k], x[k]);
          view.ends[k] = &states[k];
        }
        edgeResidual(view, r);
      };
      State states[2];
      for (int k = 0; k <= last; ++k) states[k] = stateOf(types[k], view.sizes[k], x[k]), view.ends[k] = &states[k];
      Linear linear;
      edgeLinear(view, linear);
      for (int k = 0; k <= last; ++k) {
        for (int j = 0; j < view.sizes[k]; ++j) {
          double r[2][6], kept[6];
          std::copy_n(x[k], 6, kept);
          for (const int side : {0, 1}) {
            double step[6] = {};
            step[j] = side == 0 ? -6e-6 : 6e-6;
            moveEstimate(types[k], view.sizes[k], x[k], step);
            residual(r[side]);
            std::copy_n(kept, 6, x[k]);
          }
          for (int i = 0; i < c.rows; ++i) {
            EXPECT_NEAR(linear.j[k][i * view.sizes[k] + j], (r[1][i] - r[0][i]) / 12e-6, 1e-8)
                << c.edge << ' ' << c.first << " angle " << angle << " end " << k << " row " << i << " column " << j;
          }
        }
      }
    }
  }
}

// Values beside the formulas, the weight beside differences of them, and no cancellation for small residuals.
TEST(Graph, Kernels) {
  for (int32_t kernel = 1; kernel < kKernels; ++kernel) {
    const double k = kKernelWidths[kernel];
    const auto formula = [&](double s) {
      const double u = s / (k * k);
      switch (kernel) {
        case PRGO_KERNEL_HUBER:
          return u <= 1 ? s : 2 * k * std::sqrt(s) - k * k;
        case PRGO_KERNEL_CAUCHY:
          return k * k * std::log1p(u);
        case PRGO_KERNEL_TUKEY:
          return u <= 1 ? k * k / 3 * (1 - std::pow(1 - u, 3)) : k * k / 3;
        default:
          return s / (1 + u);
      }
    };
    for (const double u : {1e-3, 0.049, 0.051, 0.3, 0.99, 1.01, 3.0, 1e6}) {
      const double s = u * k * k, h = 1e-5 * s;
      const Robust found = robust(kernel, k, s);
      EXPECT_NEAR(found.rho(s), formula(s), 1e-12 * formula(s)) << kernel << ' ' << u;
      EXPECT_NEAR(found.weight, (formula(s + h) - formula(s - h)) / (2 * h), 1e-7) << kernel << ' ' << u;
      EXPECT_GE(found.rest, 0);
    }
    const double rest = robust(kernel, k, 1e-10 * k * k).rest;
    const double half[] = {0, 0, 0.5e-20, 1e-20, 1e-20};
    EXPECT_NEAR(rest / (k * k), half[kernel], 1e-29) << kernel;
  }
}

TEST(Graph, InformationMatrices) {
  const double upper[6] = {4, 2, 0, 5, 1, 3};
  double root[36], back[9] = {};
  ASSERT_TRUE(informationRoot(upper, 3, root));
  for (int i = 0; i < 27; ++i) back[i / 3] += root[i % 3 * 3 + i / 9] * root[i % 3 * 3 + i / 3 % 3];
  const double whole[9] = {4, 2, 0, 2, 5, 1, 0, 1, 3};
  for (int i = 0; i < 9; ++i) EXPECT_NEAR(back[i], whole[i], 1e-14);
  EXPECT_EQ(rankOfRoot(root, 3), 3);
  const double flat[3] = {1e300, 1e300, 1e300}, turned[3] = {1, 2, 1}, none[3] = {};
  ASSERT_TRUE(informationRoot(flat, 2, root));
  EXPECT_EQ(rankOfRoot(root, 2), 1);
  EXPECT_FALSE(informationRoot(turned, 2, root));
  ASSERT_TRUE(informationRoot(none, 2, root));
  EXPECT_EQ(rankOfRoot(root, 2), 0);
}

// --- Optimisation ---

// Derivative of the energy by a step of each number of each vertex that is free.
double largestGradient(OwnGraph& g) {
  double largest = 0;
  for (int32_t v = 0; v < g.graph.vertexCount; ++v) {
    PrgoVertex& vertex = g.graph.vertices[v];
    if (vertex.isFixed || vertex.isHeld) continue;
    for (int32_t j = 0; j < vertex.size; ++j) {
      const PrgoVertex kept = vertex;
      double energies[2];
      for (const int side : {0, 1}) {
        double step[6] = {};
        step[j] = side == 0 ? -1e-5 : 1e-5;
        moveEstimate(vertex.type, vertex.size, vertex.estimate, step);
        energies[side] = g.energy();
        vertex = kept;
      }
      largest = std::max(largest, std::fabs(energies[1] - energies[0]) / 2e-5);
    }
  }
  return largest;
}

// Every solver finds the same minimum of every kernel, and it is one. Kernels that are not convex start near it.
TEST(Graph, SolversAgree) {
  OwnGraph near(20, 100);
  PrgoResult result;
  addScene(near, PRGO_KERNEL_HUBER);
  ASSERT_EQ(near.optimise(defaultCfg(), result), 0);
  for (int32_t kernel = 0; kernel < kKernels; ++kernel) {
    Numbers estimate;
    double energy = 0;
    for (const int32_t type : {3, 0, 2, 7}) {
      OwnGraph g(20, 100);
      addScene(g, kernel);
      for (int32_t v = 0; kernel > PRGO_KERNEL_HUBER && v < 20; ++v) {
        const PrgoVertex& from = near.graph.vertices[v];
        PRGO_GRAPH_SetEstimate(&g.graph, from.id, from.estimate);
      }
      PrgoCfg cfg = defaultCfg(type);
      // Those that see residuals alone are slow where many of them are large.
      cfg.maxIterations = 2000;
      ASSERT_EQ(g.optimise(cfg, result), 0) << kernel << ' ' << type;
      EXPECT_LT(result.finalEnergy, result.initialEnergy);
      EXPECT_NEAR(g.energy(), result.finalEnergy, 1e-9 * result.finalEnergy);
      EXPECT_EQ(result.firstHeld, 0);
      EXPECT_EQ(result.parameters, 7 * 6 + 12 * 3);
      EXPECT_LT(largestGradient(g), 1e-2) << kernel << ' ' << type;
      const Numbers found(g.graph.vertices[5].estimate, g.graph.vertices[5].estimate + 6);
      if (type == 3) energy = result.finalEnergy, estimate = found;
      EXPECT_NEAR(result.finalEnergy, energy, 1e-7 * energy) << kernel << ' ' << type;
      for (size_t i = 0; i < 6; ++i) EXPECT_NEAR(found[i], estimate[i], 1e-4) << kernel << ' ' << type;
    }
  }
}

TEST(Graph, RingWithoutErrorsCloses) {
  for (const int32_t type : {3, 0, 2, 1}) {
    OwnGraph g(50, 50);
    addRing(g, 50, 0.1);
    PrgoResult result;
    ASSERT_EQ(g.optimise(defaultCfg(type), result), 0);
    EXPECT_LT(result.finalEnergy, 1e-18) << type;
  }
}

// The minimum does not depend on where the graph lies, and nothing on the unit of length.
TEST(Graph, MovedAndScaled) {
  OwnGraph g(20, 100), moved(20, 100);
  addScene(g, PRGO_KERNEL_HUBER);
  addScene(moved, PRGO_KERNEL_HUBER, {30, -20, 5, 0.4, -1.9, 0.8});
  PrgoResult a, b;
  ASSERT_EQ(g.optimise(defaultCfg(), a), 0);
  ASSERT_EQ(moved.optimise(defaultCfg(), b), 0);
  EXPECT_NEAR(a.finalEnergy, b.finalEnergy, 1e-9 * a.finalEnergy);

  OwnGraph metres(50, 50), units(50, 50);
  addRing(metres, 50, 0.1);
  constexpr double kUnit = 1024;
  for (int32_t k = 0; k < 50; ++k) {
    const PrgoVertex& v = metres.graph.vertices[k];
    units.vertex(v.id, v.type, {kUnit * v.estimate[0], kUnit * v.estimate[1], v.estimate[2]});
  }
  for (int32_t k = 0; k < 50; ++k) {
    const PrgoEdge& e = metres.graph.edges[k];
    units.edge(e.type, e.vertices[0], e.vertices[1],
               {kUnit * e.measurement[0], kUnit * e.measurement[1], e.measurement[2]},
               {400 / kUnit / kUnit, 400 / kUnit / kUnit, 2500});
  }
  ASSERT_EQ(metres.optimise(defaultCfg(), a), 0);
  ASSERT_EQ(units.optimise(defaultCfg(), b), 0);
  EXPECT_EQ(a.iterations, b.iterations);
  EXPECT_EQ(metres.graph.vertices[20].estimate[0] * kUnit, units.graph.vertices[20].estimate[0]);
}

// The query is enough, and a byte less is not; the failed call says the same need and changes nothing.
TEST(Graph, MemoryIsKnown) {
  for (const int32_t type : {3, 0, 2, 7}) {
    OwnGraph g(220, 300);
    addScene(g, PRGO_KERNEL_CAUCHY);
    addRing(g, 200, 0.1);
    const PrgoCfg cfg = defaultCfg(type);
    const uint64_t need = g.need(cfg);
    std::vector<double> buffer(need / sizeof(double));
    const PrgoVertex before = g.graph.vertices[7];
    PrgoResult result{};
    uint64_t bytes = 20000;
    EXPECT_EQ(PRGO_CORE_optimize(&g.graph, &cfg, &result, buffer.data(), &bytes), PRGO_STS_BUFFER_TOO_SMALL);
    EXPECT_EQ(bytes, need);
    EXPECT_EQ(std::memcmp(&before, &g.graph.vertices[7], sizeof before), 0);
    ASSERT_EQ(PRGO_CORE_optimize(&g.graph, &cfg, &result, buffer.data(), &bytes), 0);
    EXPECT_EQ(result.components, 2);
    EXPECT_EQ(result.heldVertices, 2);
    // Tight: of the Cholesky variants no more than the bound on panels' updates is unused.
    if (type == 3 || type == 0) {
      OwnGraph again(220, 300);
      addScene(again, PRGO_KERNEL_CAUCHY);
      addRing(again, 200, 0.1);
      bytes = need - need / 8;
      EXPECT_EQ(PRGO_CORE_optimize(&again.graph, &cfg, &result, buffer.data(), &bytes), PRGO_STS_BUFFER_TOO_SMALL);
    }
  }
}

TEST(Graph, GaugeIsHeldOrNot) {
  PrgoResult result;
  const PrgoCfg cfg = defaultCfg();
  OwnGraph g(6, 10);
  for (const int64_t id : {9, 4, 7}) g.vertex(id, PRGO_VERTEX_SE2, {double(id), 0, 0});
  g.vertex(1, PRGO_VERTEX_POINT2, {4, 3});
  g.edge(PRGO_EDGE_RELATIVE, 9, 4, {-5, 0.1, 0}, {1, 1, 1});
  g.edge(PRGO_EDGE_RELATIVE, 4, 7, {3, 0, 0.1}, {1, 1, 1});
  g.edge(PRGO_EDGE_LANDMARK, 7, 1, {-2, 3}, {1, 1});
  ASSERT_EQ(g.optimise(cfg, result), 0);
  EXPECT_EQ(result.firstHeld, 4);  // the pose of lowest id, not the point
  EXPECT_TRUE(g.graph.vertices[1].isHeld);
  ASSERT_EQ(g.edge(PRGO_EDGE_PRIOR, 9, 0, {9, 0, 0}, {1, 0, 0}), 0);
  ASSERT_EQ(g.optimise(cfg, result), 0);
  EXPECT_EQ(result.heldVertices, 0);
  EXPECT_EQ(result.looseComponents, 1);
  ASSERT_EQ(g.edge(PRGO_EDGE_PRIOR, 7, 0, {7, 0, 0}, {1, 1, 1}), 0);
  ASSERT_EQ(g.optimise(cfg, result), 0);
  EXPECT_EQ(result.looseComponents, 0);
  // Fixed: what remains is the energy between fixed vertices and the edges of the only free one.
  for (const int64_t id : {9, 4, 7}) ASSERT_EQ(PRGO_GRAPH_Fix(&g.graph, id, 1), 0);
  ASSERT_EQ(g.optimise(cfg, result), 0);
  EXPECT_EQ(result.parameters, 2);
  EXPECT_GT(result.finalEnergy, 0);
  ASSERT_EQ(PRGO_GRAPH_Fix(&g.graph, 1, 1), 0);
  ASSERT_EQ(g.optimise(cfg, result), 0);
  EXPECT_EQ(result.iterations, 0);
  EXPECT_EQ(result.finalEnergy, g.energy());
}

// Cameras and points from exact pictures, of which the scale is held; points beside planes close the rest.
TEST(Graph, PicturesAndPlanes) {
  for (const int32_t type : {3, 7, 0}) {
    OwnGraph g(40, 200);
    Random random(4);
    std::vector<Numbers> points;
    for (int32_t j = 0; j < 20; ++j) {
      points.push_back({around(random, 2), around(random, 2), 6 + around(random, 1)});
      g.vertex(100 + j, PRGO_VERTEX_POINT3,
               {points.back()[0] + around(random, 0.1), points.back()[1], points.back()[2] + around(random, 0.3)});
    }
    for (int32_t k = 0; k < 5; ++k) {
      const Numbers pose{0.5 * k, 0.1 * k * k, 0, 0.02 * k, -0.05 * k, 0.1};
      Numbers start = pose;
      for (double& value : start) value += k == 0 ? 0 : around(random, 0.02);
      g.vertex(k, PRGO_VERTEX_SE3, start);
      for (size_t j = 0; j < points.size(); ++j) {
        Numbers p = points[j];
        p.resize(6);
        const Numbers seen = combined(pose, p, true);
        ASSERT_EQ(g.edge(PRGO_EDGE_PROJECTION, k, 100 + int64_t(j),
                         {400 * seen[0] / seen[2] + 320, 410 * seen[1] / seen[2] + 240, 400, 410, 320, 240}, {1, 1}),
                  0);
      }
    }
    PrgoResult result;
    ASSERT_EQ(g.optimise(defaultCfg(type), result), 0) << type;
    EXPECT_LT(result.finalEnergy, 1e-14) << type;
    EXPECT_EQ(result.heldScales, 1);
    EXPECT_EQ(result.firstHeld, 0);
  }
  OwnGraph wall(2, 4);
  wall.vertex(0, PRGO_VERTEX_SE3, Numbers(6), true);
  wall.vertex(1, PRGO_VERTEX_SE3, {0.3, -0.2, 0.5, 0.05, 0.1, 0});
  for (const double x : {0.0, 1.0, 2.0}) {
    ASSERT_EQ(wall.edge(PRGO_EDGE_PLANE, 0, 1, {x, x * x, 0, 0, 0, 1, -2}, {1}), 0);
  }
  PrgoResult result;
  ASSERT_EQ(wall.optimise(defaultCfg(), result), 0);
  EXPECT_LT(result.finalEnergy, 1e-20);
  EXPECT_NEAR(wall.graph.vertices[1].estimate[2], 2, 1e-9);  // parallel to the plane z = 2, and in it
}

TEST(Graph, RefusesWhatIsWrong) {
  OwnGraph g(3, 2);
  ASSERT_EQ(g.vertex(1, PRGO_VERTEX_SE2, {0, 0, 1e300}), 0);
  EXPECT_LE(std::fabs(g.graph.vertices[0].estimate[2]), std::numbers::pi);
  EXPECT_EQ(g.vertex(1, PRGO_VERTEX_SE3, Numbers(6)), PRGO_STS_BAD_PARAM);
  ASSERT_EQ(g.vertex(-5, PRGO_VERTEX_SE2, {1, 0, 0}), 0);
  ASSERT_EQ(g.vertex(INT64_MAX, PRGO_VERTEX_POINT3, {1, 0, 0}), 0);
  EXPECT_EQ(g.vertex(8, PRGO_VERTEX_SE2, {1, 0, 0}), PRGO_STS_FULL);
  const Numbers z{1, 0, 0}, ones{1, 1, 1};
  EXPECT_EQ(g.edge(PRGO_EDGE_RELATIVE, 1, 1, z, ones), PRGO_STS_BAD_PARAM);
  EXPECT_EQ(g.edge(PRGO_EDGE_RELATIVE, 1, 2, z, ones), PRGO_STS_BAD_PARAM);
  EXPECT_EQ(g.edge(PRGO_EDGE_RELATIVE, 1, INT64_MAX, z, ones), PRGO_STS_BAD_PARAM);
  EXPECT_EQ(g.edge(PRGO_EDGE_LANDMARK, 1, INT64_MAX, z, ones), PRGO_STS_BAD_PARAM);
  EXPECT_EQ(g.edge(PRGO_EDGE_RELATIVE, 1, -5, z, {1, -1, 1}), PRGO_STS_BAD_PARAM);
  EXPECT_EQ(g.edge(PRGO_EDGE_RELATIVE, 1, -5, {NAN, 0, 0}, ones), PRGO_STS_NOT_FINITE);
  EXPECT_EQ(g.graph.edgeCount, 0);
  ASSERT_EQ(g.edge(PRGO_EDGE_RELATIVE, 1, -5, z, ones), 0);
  double estimate[3] = {1e200, 0, 0};
  ASSERT_EQ(PRGO_GRAPH_SetEstimate(&g.graph, -5, estimate), 0);
  PrgoResult result;
  EXPECT_EQ(g.optimise(defaultCfg(), result), PRGO_STS_NOT_FINITE);
  EXPECT_EQ(PRGO_GRAPH_Estimate(&g.graph, -5, estimate), 0);
  EXPECT_EQ(estimate[0], 1e200);
}

int32_t stopAtThird(int32_t iteration, double, double, int32_t, void* user) {
  ++*static_cast<int32_t*>(user);
  return iteration == 2 ? 77 : 0;
}

TEST(Graph, LimitsAndProgress) {
  OwnGraph g(20, 100);
  addScene(g, PRGO_KERNEL_NONE);
  PrgoCfg cfg = defaultCfg();
  PrgoResult result{};
  int32_t calls = 0;
  cfg.progress = stopAtThird, cfg.user = &calls, cfg.energyTolerance = cfg.stepTolerance = 0;
  const double before = g.energy();
  EXPECT_EQ(g.optimise(cfg, result), 77);
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(g.energy(), before);
  cfg.maxIterations = 2;
  EXPECT_EQ(g.optimise(cfg, result), PRGO_STS_NOT_CONVERGED);
  EXPECT_EQ(result.iterations, 2);
  EXPECT_LT(result.finalEnergy, before);
  EXPECT_NEAR(g.energy(), result.finalEnergy, 1e-12 * before);
}

// Tukey's kernel gives all edges of a bad start weight 0: that is said.
TEST(Graph, WeightlessEdges) {
  OwnGraph g(2, 1);
  g.vertex(0, PRGO_VERTEX_SE2, {0, 0, 0});
  g.vertex(1, PRGO_VERTEX_SE2, {50, 0, 0});
  g.edge(PRGO_EDGE_RELATIVE, 0, 1, {1, 0, 0}, {1, 1, 1}, PRGO_KERNEL_TUKEY);
  PrgoResult result;
  ASSERT_EQ(g.optimise(defaultCfg(), result), 0);
  EXPECT_EQ(result.weightlessEdges, 1);
  EXPECT_EQ(result.firstWeightless, 0);
}

}  // namespace
}  // namespace dax::test
