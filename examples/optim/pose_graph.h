// A pose graph on SE(3): poses along laps of a loop, with measurements between successive poses and some between laps.
//
// A pose is a motion T = (R t; 0 1), parameters are Log(T). An edge measures Z ~ T_i^-1 T_j; its residuals are
//   v = Rz^T (Ri^T (tj - ti) - tz) / sigma_t,   w = Log(Rz^T Ri^T Rj) / sigma_r.
// Steps act on the right, T <- T Exp(step), so that with p = Ri^T (tj - ti), Q = Ri^T Rj and the inverse right Jacobian
// J of w
//   dv = Rz^T (-dvi + [p] dwi + Q dvj),   dw = J (dwj - Q^T dwi).
#pragma once

#include <prmt.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "random.h"

struct PoseGraph {
  static constexpr double kSigmaT = 0.02, kSigmaR = 0.002;

  struct Edge {
    int i, j;
    double z[16];
  };
  // Residuals and their derivatives by the steps of both poses, row by row.
  struct Linear {
    double e[6], byI[36], byJ[36];
  };

  PoseGraph(int poses, int laps, uint64_t seed = 1) : count(poses), truth(6 * size_t(poses)), start(truth) {
    Random random(seed);
    const int lap = poses / laps;
    for (int k = 0; k < poses; ++k) {
      const double turn = 2 * 3.14159265358979 * k / lap, radius = 20 + 3 * std::sin(3 * turn) + 0.4 * k / lap;
      double motion[16], *const pose = &truth[6 * size_t(k)];
      const double w[6] = {0, 0, 0, 0.1 * std::sin(turn), 0.1 * std::cos(2 * turn), turn + 1.57};
      PRMT_SE3_Exp_f64(w, motion);
      motion[3] = radius * std::cos(turn), motion[7] = radius * std::sin(turn), motion[11] = 2.0 * k / lap;
      PRMT_SE3_Log_f64(motion, pose);
    }
    for (int k = 0; k + 1 < poses; ++k) measure(k, k + 1, random);
    for (int k = 0; k + lap < poses; k += 5) measure(k, k + lap, random);
    // Initial values: the chained measurements, which drift.
    std::copy_n(truth.begin(), 6, start.begin());
    for (int k = 0; k + 1 < poses; ++k) {
      double motion[16];
      PRMT_SE3_Exp_f64(&start[6 * size_t(k)], motion);
      PRMT_SE3_Compose_f64(motion, edges[size_t(k)].z, motion);
      PRMT_SE3_Log_f64(motion, &start[6 * size_t(k) + 6]);
    }
  }

  static void residuals(const Edge& edge, const double* ti, const double* tj, double* e) {
    double relative[16], inverse[16];
    PRMT_SE3_Inverse_f64(ti, inverse);
    PRMT_SE3_Compose_f64(inverse, tj, relative);
    PRMT_SE3_Inverse_f64(edge.z, inverse);
    PRMT_SE3_Compose_f64(inverse, relative, relative);
    const double rotation[9] = {relative[0], relative[1], relative[2], relative[4], relative[5],
                                relative[6], relative[8], relative[9], relative[10]};
    PRMT_SO3_Log_f64(rotation, e + 3);
    for (int k = 0; k < 3; ++k) e[k] = relative[4 * k + 3] / kSigmaT, e[3 + k] /= kSigmaR;
  }

  static void linearise(const Edge& edge, const double* ti, const double* tj, Linear& out) {
    residuals(edge, ti, tj, out.e);
    double q[16], inverse[16], jacobian[9], w[3];
    PRMT_SE3_Inverse_f64(ti, inverse);
    PRMT_SE3_Compose_f64(inverse, tj, q);
    for (int k = 0; k < 3; ++k) w[k] = out.e[3 + k] * kSigmaR;
    PRMT_SO3_LogJacobian_f64(w, jacobian);
    std::fill_n(out.byI, 36, 0.0);
    std::fill_n(out.byJ, 36, 0.0);
    const double p[3] = {q[3], q[7], q[11]};
    const double cross[9] = {0, -p[2], p[1], p[2], 0, -p[0], -p[1], p[0], 0};
    for (int r = 0; r < 3; ++r) {
      for (int c = 0; c < 3; ++c) {
        double turned = 0, moved = 0, back = 0;
        for (int k = 0; k < 3; ++k) {
          turned += edge.z[4 * k + r] * cross[3 * k + c];
          moved += edge.z[4 * k + r] * q[4 * k + c];
          back += jacobian[3 * r + k] * q[4 * c + k];
        }
        out.byI[6 * r + c] = -edge.z[4 * c + r] / kSigmaT;
        out.byI[6 * r + 3 + c] = turned / kSigmaT;
        out.byJ[6 * r + c] = moved / kSigmaT;
        out.byI[6 * (3 + r) + 3 + c] = -back / kSigmaR;
        out.byJ[6 * (3 + r) + 3 + c] = jacobian[3 * r + c] / kSigmaR;
      }
    }
  }

  // For the solver: pose 0 is fixed, the parameters are those of poses 1, 2, ...
  int parameters() const { return 6 * (count - 1); }
  int residualCount() const { return 6 * int(edges.size()); }
  std::vector<double> startParameters() const { return {start.begin() + 6, start.end()}; }

  // Motions of all poses.
  void expand(const double* x) {
    motions.resize(16 * size_t(count));
    PRMT_SE3_Exp_f64(truth.data(), motions.data());
    for (int k = 1; k < count; ++k) PRMT_SE3_Exp_f64(x + 6 * (k - 1), &motions[16 * size_t(k)]);
  }

  static int32_t energy(const double* x, int32_t, int32_t, void* user, double* energy) {
    PoseGraph& graph = *static_cast<PoseGraph*>(user);
    graph.expand(x);
    *energy = 0;
    for (const Edge& edge : graph.edges) {
      double e[6];
      residuals(edge, &graph.motions[16 * size_t(edge.i)], &graph.motions[16 * size_t(edge.j)], e);
      for (const double value : e) *energy += 0.5 * value * value;
    }
    return 0;
  }

  // Residuals and their sparse Jacobian, for the variants that take these.
  static int32_t allResiduals(const double* x, int32_t, int32_t, void* user, double* r) {
    PoseGraph& graph = *static_cast<PoseGraph*>(user);
    graph.expand(x);
    for (const Edge& edge : graph.edges) {
      residuals(edge, &graph.motions[16 * size_t(edge.i)], &graph.motions[16 * size_t(edge.j)], r);
      r += 6;
    }
    return 0;
  }

  static int32_t jacobian(const double* x, int32_t n, int32_t, void* user, PrmtMsp* to) {
    PoseGraph& graph = *static_cast<PoseGraph*>(user);
    graph.expand(x);
    if (to->start[n] == 0) {
      if (const int32_t status = graph.setJacobianPattern(to)) return status;
    }
    Linear linear{};
    int32_t row = 0;
    for (const Edge& edge : graph.edges) {
      linearise(edge, &graph.motions[16 * size_t(edge.i)], &graph.motions[16 * size_t(edge.j)], linear);
      if (edge.i > 0) PRMT_MSP_AddBlk_tpl_f64(to, row, 6 * (edge.i - 1), linear.byI, 6, 6, 6);
      PRMT_MSP_AddBlk_tpl_f64(to, row, 6 * (edge.j - 1), linear.byJ, 6, 6, 6);
      row += 6;
    }
    return 0;
  }

  static int32_t normal(const double* x, int32_t n, double lambda, void* user, PrmtMsp* h, double* b) {
    PoseGraph& graph = *static_cast<PoseGraph*>(user);
    graph.expand(x);
    if (h->start[n] == 0) {
      if (const int32_t status = graph.setPattern(h)) return status;
    }
    Linear linear{};
    for (const Edge& edge : graph.edges) {
      linearise(edge, &graph.motions[16 * size_t(edge.i)], &graph.motions[16 * size_t(edge.j)], linear);
      const int i = 6 * (edge.i - 1), j = 6 * (edge.j - 1);
      addProduct(h, j, j, linear.byJ, linear.byJ);
      addGradient(linear.byJ, linear.e, b + j);
      if (edge.i == 0) continue;
      addProduct(h, i, i, linear.byI, linear.byI);
      addProduct(h, j, i, linear.byJ, linear.byI);
      addGradient(linear.byI, linear.e, b + i);
    }
    for (int32_t j = 0; j < n; ++j) PRMT_MSP_AddEle_tpl_f64(h, j, j, lambda);
    return 0;
  }

  static int32_t update(double* x, const double* step, int32_t n, void*) {
    for (int32_t k = 0; k < n; k += 6) PRMT_SE3_Update_f64(x + k, step + k);
    return 0;
  }

  // Room in the Jacobian, two 6 x 6 blocks for each edge, and in the normal matrix: 6 x 6 blocks on the diagonal, and one for each edge.
  int64_t jacobianElements() const { return 72 * int64_t(edges.size()); }
  int64_t elements() const { return 36 * (int64_t(count) + int64_t(edges.size())); }

  int count;
  std::vector<double> truth, start;
  std::vector<Edge> edges;
  std::vector<double> motions;

 private:
  void measure(int i, int j, Random& random) {
    double ti[16], tj[16], noise[6], error[16];
    PRMT_SE3_Exp_f64(&truth[6 * size_t(i)], ti);
    PRMT_SE3_Exp_f64(&truth[6 * size_t(j)], tj);
    for (int k = 0; k < 6; ++k) noise[k] = random.normal() * (k < 3 ? kSigmaT : kSigmaR);
    Edge edge{i, j, {}};
    PRMT_SE3_Inverse_f64(ti, ti);
    PRMT_SE3_Compose_f64(ti, tj, edge.z);
    PRMT_SE3_Exp_f64(noise, error);
    PRMT_SE3_Compose_f64(edge.z, error, edge.z);
    edges.push_back(edge);
  }

  // The elements of 6 x 6 blocks.
  struct Blocks {
    void add(int row, int col) {
      for (int k = 0; k < 36; ++k) rows.push_back(6 * row + k / 6), cols.push_back(6 * col + k % 6);
    }
    int32_t set(PrmtMsp* pattern) const {
      return PRMT_MSP_SetPattern_f64(pattern, int64_t(rows.size()), rows.data(), cols.data());
    }
    std::vector<int32_t> rows, cols;
  };

  int32_t setPattern(PrmtMsp* h) const {
    Blocks blocks;
    for (int k = 0; k + 1 < count; ++k) blocks.add(k, k);
    for (const Edge& edge : edges) {
      if (edge.i > 0) blocks.add(edge.j - 1, edge.i - 1);
    }
    return blocks.set(h);
  }

  int32_t setJacobianPattern(PrmtMsp* to) const {
    Blocks blocks;
    for (size_t k = 0; k < edges.size(); ++k) {
      if (edges[k].i > 0) blocks.add(int(k), edges[k].i - 1);
      blocks.add(int(k), edges[k].j - 1);
    }
    return blocks.set(to);
  }

  static void addProduct(PrmtMsp* h, int row, int col, const double* a, const double* b) {
    double block[36] = {};
    for (int k = 0; k < 6; ++k) {
      for (int r = 0; r < 6; ++r) {
        for (int c = 0; c < 6; ++c) block[6 * r + c] += a[6 * k + r] * b[6 * k + c];
      }
    }
    PRMT_MSP_AddBlk_tpl_f64(h, row, col, block, 6, 6, 6);
  }
  static void addGradient(const double* a, const double* e, double* b) {
    for (int k = 0; k < 6; ++k) {
      for (int r = 0; r < 6; ++r) b[r] -= a[6 * k + r] * e[k];
    }
  }
};
