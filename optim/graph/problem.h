// A graph as a problem of the solvers: energy, residuals and their derivatives at given parameters.
//
// The solvers see parameters that are scaled by powers of two: derivatives by them are those by the steps times the scale, and a
// step is multiplied by it before it is applied.
#pragma once

#include "optim/graph/edge_model.h"
#include "optim/graph/layout.h"
#include "optim/graph/robust_kernel.h"
#include "prgo/optimise.h"
#include "prmt/lm.h"

namespace dax {

// What a solver did, as the callbacks see it.
struct Trace {
  int32_t evaluations = 0;  // of this run
  int32_t iterations = 0, accepted = 0;
  double energy = 0;  // of the last accepted point
  double change = 0;  // by the last step
  double step = 0, acceptedStep = 0;
};

class GraphProblem {
 public:
  // Arrays for so many vertices and parameters.
  GraphProblem(Arena& arena, const Layout& layout, const PrgoGraph& graph, const PrgoCfg& cfg, int32_t parameters);

  // Takes the estimates of the graph, from the derivatives there the scale, and the energy.
  void start();

  double* x() { return x_; }
  Trace& trace() { return trace_; }
  void store(PrgoGraph& graph) const;
  // Edges whose kernel gives them weight 0 at x.
  int32_t weightless(int32_t* first);

  const double* scale() const { return scale_; }
  // The normal equations at the estimates, with the weights of kernels alone.
  void weighted(PrmtMsp* h, double* b);

  // Callbacks of the solvers; `user` is the problem.
  static int32_t energy(const double* x, int32_t n, int32_t m, void* user, double* sum);
  static int32_t residuals(const double* x, int32_t n, int32_t m, void* user, double* r);
  static int32_t update(double* x, const double* step, int32_t n, void* user);
  static int32_t normal(const double* x, int32_t n, double lambda, void* user, PrmtMsp* h, double* b);
  static int32_t jacobian(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* to);
  static int32_t blocks(const double* x, int32_t n, int32_t m, void* user, PrmtHblk* h);

 private:
  void expand(const double* x);
  double energyHere() const;
  EdgeView viewAt(int32_t edge) const;
  // The linear part of an edge with scaled columns; returns its kernel there.
  Robust linearAt(const EdgeView& view, const int32_t* columns, Linear& linear) const;
  void columnsOf(int32_t edge, int32_t* columns) const;
  int32_t evaluated(double energy);
  void addNormal(int32_t edge, PrmtMsp& h, double* b) const;
  void addBlocks(int32_t edge, PrmtHblk& h) const;

  const Layout& layout_;
  const PrgoGraph& graph_;
  const PrgoCfg& cfg_;
  State* states_;  // of each vertex
  double* x_;
  double* scale_;
  Trace trace_;
  bool isBent_ = true;  // whether kernels bend the normal equations
};

}  // namespace dax
