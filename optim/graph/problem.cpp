#include "optim/graph/problem.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <type_traits>

#include "frame/check.h"
#include "optim/graph/storage.h"

namespace dax {
namespace {

double squaredLength(const double* v, int32_t n) {
  double sum = 0;
  for (int32_t i = 0; i < n; ++i) sum += v[i] * v[i];
  return sum;
}

// The power of two s with s^2 value in [1/2, 2); 1 where there is none.
double scaleFor(double value) {
  if (!(value > 0) || !std::isfinite(value)) return 1;
  int exponent = 0;
  std::frexp(value, &exponent);
  return std::ldexp(1, -(exponent - (exponent & 1)) / 2);
}

template <int32_t value>
using Fixed = std::integral_constant<int32_t, value>;

template <class Count>
void productOf(Count rows, const double* a, Count sizeA, const double* b, Count sizeB, double factor, double* block) {
  std::fill_n(block, sizeA * sizeB, 0.0);
  for (int32_t k = 0; k < rows; ++k) {
    for (int32_t i = 0; i < sizeA; ++i) {
      const double value = factor * a[k * sizeA + i];
      for (int32_t j = 0; j < sizeB; ++j) block[i * sizeB + j] += value * b[k * sizeB + j];
    }
  }
}

// block = factor a^T b, of rows x sizeA and rows x sizeB, row by row. Poses are most of what there is.
void transposedProduct(int32_t rows, const double* a, int32_t sizeA, const double* b, int32_t sizeB, double factor,
                       double* block) {
  if (rows == 6 && sizeA == 6 && sizeB == 6) {
    productOf(Fixed<6>(), a, Fixed<6>(), b, Fixed<6>(), factor, block);
  } else if (rows == 3 && sizeA == 3 && sizeB == 3) {
    productOf(Fixed<3>(), a, Fixed<3>(), b, Fixed<3>(), factor, block);
  } else {
    productOf(rows, a, sizeA, b, sizeB, factor, block);
  }
}

// J <- (I - a n n^T) J with n = r / |r|: then weight J^T J is the second derivative of Huber's kernel along n, too, and not only
// across, which is all that weights alone make of it (Triggs, McLauchlan, Hartley and Fitzgibbon 2000). Where many residuals
// are large, convergence is fast instead of slow. Along n the kernel is straight; 1/64 of the weight is left. The other
// kernels are not convex: steps with their curvature fail more often than they gain.
void bend(const EdgeView& view, const Robust& kernel, Linear& linear) {
  if (view.edge->kernel != PRGO_KERNEL_HUBER || kernel.rest == 0) return;
  constexpr double kStraight = 1 - 1.0 / 8;
  const double share = kStraight / squaredLength(linear.r, view.rows);
  for (int k = 0; k < kEdgeEnds; ++k) {
    const int32_t size = view.sizes[k];
    for (int32_t c = 0; c < size; ++c) {
      double along = 0;
      for (int32_t i = 0; i < view.rows; ++i) along += linear.r[i] * linear.j[k][i * size + c];
      for (int32_t i = 0; i < view.rows; ++i) linear.j[k][i * size + c] -= share * along * linear.r[i];
    }
  }
}

}  // namespace

GraphProblem::GraphProblem(Arena& arena, const Layout& layout, const PrgoGraph& graph, const PrgoCfg& cfg,
                           int32_t parameters)
    : layout_(layout),
      graph_(graph),
      cfg_(cfg),
      states_(arena.take<State>(unsignedOf(graph.vertexCount))),
      x_(arena.take<double>(unsignedOf(parameters))),
      scale_(arena.take<double>(unsignedOf(parameters))) {}

void GraphProblem::start() {
  for (int32_t v = 0; v < graph_.vertexCount; ++v) {
    const PrgoVertex& vertex = graph_.vertices[v];
    states_[v] = stateOf(vertex.type, vertex.size, vertex.estimate);
    if (layout_.position[v] >= 0) std::copy_n(vertex.estimate, vertex.size, x_ + layout_.column[layout_.position[v]]);
  }
  const int32_t n = layout_.parameters();
  std::fill_n(scale_, n, 0.0);
  for (int32_t e = 0; e < layout_.edges; ++e) {
    const EdgeView view = viewAt(e);
    Linear linear;
    edgeLinear(view, linear);
    const double weight = robust(view.edge->kernel, view.edge->kernelWidth, squaredLength(linear.r, view.rows)).weight;
    int32_t columns[kEdgeEnds];
    columnsOf(e, columns);
    for (int k = 0; k < kEdgeEnds; ++k) {
      if (columns[k] < 0) continue;
      for (int32_t i = 0; i < view.rows * view.sizes[k]; ++i) {
        scale_[columns[k] + i % view.sizes[k]] += weight * (linear.j[k][i] * linear.j[k][i]);
      }
    }
  }
  for (int32_t j = 0; j < n; ++j) scale_[j] = scaleFor(scale_[j]);
  // A number that is held has a scale of 0: no derivative, and no step.
  for (int32_t p = 0; p < layout_.free; ++p) {
    const uint8_t held = layout_.held[layout_.vertexAt[p]];
    if (held >= kHeldNumber) scale_[layout_.column[p] + held - kHeldNumber] = 0;
  }
  trace_.energy = energyHere();
}

double GraphProblem::energyHere() const {
  double total = 0;
  for (int32_t e = 0; e < layout_.edges; ++e) total += edgeEnergy(viewAt(e));
  return total;
}

void GraphProblem::store(PrgoGraph& graph) const {
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    PrgoVertex& vertex = graph.vertices[v];
    vertex.isHeld = layout_.held[v] == kHeld;
    const int32_t p = layout_.position[v];
    if (p >= 0) std::copy_n(x_ + layout_.column[p], vertex.size, vertex.estimate);
  }
}

int32_t GraphProblem::weightless(int32_t* first) {
  expand(x_);
  int32_t count = 0;
  *first = -1;
  for (int32_t e = 0; e < layout_.edges; ++e) {
    const EdgeView view = viewAt(e);
    double r[kMaxSize];
    edgeResidual(view, r);
    if (robust(view.edge->kernel, view.edge->kernelWidth, squaredLength(r, view.rows)).weight > 0) continue;
    if (count++ == 0) *first = e;
  }
  return count;
}

void GraphProblem::expand(const double* x) {
  for (int32_t p = 0; p < layout_.free; ++p) {
    const int32_t v = layout_.vertexAt[p];
    states_[v] = stateOf(graph_.vertices[v].type, graph_.vertices[v].size, x + layout_.column[p]);
  }
}

EdgeView GraphProblem::viewAt(int32_t edge) const {
  EdgeView view = viewOf(graph_, edge);
  for (int k = 0; k < kEdgeEnds; ++k) {
    if (view.sizes[k] > 0) view.ends[k] = states_ + endOf(graph_, edge, k);
  }
  return view;
}

// The first parameter of each vertex of an edge, -1 where it has none.
void GraphProblem::columnsOf(int32_t edge, int32_t* columns) const {
  for (int k = 0; k < kEdgeEnds; ++k) {
    const int32_t vertex = endOf(graph_, edge, k), p = vertex < 0 ? -1 : layout_.position[vertex];
    columns[k] = p < 0 ? -1 : layout_.column[p];
  }
}

Robust GraphProblem::linearAt(const EdgeView& view, const int32_t* columns, Linear& linear) const {
  edgeLinear(view, linear);
  for (int k = 0; k < kEdgeEnds; ++k) {
    if (columns[k] < 0) continue;
    const double* const scale = scale_ + columns[k];
    for (int32_t i = 0; i < view.rows; ++i) {
      for (int32_t c = 0; c < view.sizes[k]; ++c) linear.j[k][i * view.sizes[k] + c] *= scale[c];
    }
  }
  return robust(view.edge->kernel, view.edge->kernelWidth, squaredLength(linear.r, view.rows));
}

// Notes an energy that the solver is told: that of the start, then one for each step.
int32_t GraphProblem::evaluated(double energy) {
  if (trace_.evaluations++ == 0) {
    trace_.energy = energy;
    return PRGO_STS_OK;
  }
  const double before = trace_.energy;
  trace_.change = energy - before;
  const bool isAccepted = trace_.change < DBL_EPSILON;
  if (isAccepted) trace_.energy = energy, trace_.acceptedStep = trace_.step, ++trace_.accepted;
  const int32_t iteration = trace_.iterations++;
  return cfg_.progress ? cfg_.progress(iteration, before, energy, isAccepted, cfg_.user) : PRGO_STS_OK;
}

int32_t GraphProblem::energy(const double* x, int32_t, int32_t, void* user, double* sum) {
  GraphProblem& problem = *static_cast<GraphProblem*>(user);
  problem.expand(x);
  *sum = problem.energyHere();
  return problem.evaluated(*sum);
}

int32_t GraphProblem::residuals(const double* x, int32_t, int32_t m, void* user, double* r) {
  GraphProblem& problem = *static_cast<GraphProblem*>(user);
  problem.expand(x);
  for (int32_t e = 0; e < problem.layout_.edges; ++e) {
    const EdgeView view = problem.viewAt(e);
    double* const to = r + problem.layout_.row[e];
    edgeResidual(view, to);
    if (view.edge->kernel == PRGO_KERNEL_NONE) continue;
    const Robust kernel = robust(view.edge->kernel, view.edge->kernelWidth, squaredLength(to, view.rows));
    const double root = std::sqrt(kernel.weight);
    for (int32_t i = 0; i < view.rows; ++i) to[i] *= root;
    to[view.rows] = std::sqrt(kernel.rest);
  }
  return problem.evaluated(0.5 * squaredLength(r, m));
}

int32_t GraphProblem::update(double* x, const double* step, int32_t n, void* user) {
  GraphProblem& problem = *static_cast<GraphProblem*>(user);
  const Layout& layout = problem.layout_;
  for (int32_t p = 0; p < layout.free; ++p) {
    const PrgoVertex& vertex = problem.graph_.vertices[layout.vertexAt[p]];
    double scaled[kMaxSize];
    const int32_t at = layout.column[p];
    for (int32_t c = 0; c < vertex.size; ++c) scaled[c] = problem.scale_[at + c] * step[at + c];
    moveEstimate(vertex.type, vertex.size, x + at, scaled);
  }
  problem.trace_.step = std::sqrt(squaredLength(step, n));
  return PRGO_STS_OK;
}

// --- Normal equations ---

int32_t GraphProblem::normal(const double* x, int32_t n, double lambda, void* user, PrmtMsp* h, double* b) {
  GraphProblem& problem = *static_cast<GraphProblem*>(user);
  if (h->start[n] == 0) problem.layout_.setNormalPattern(*h);
  problem.expand(x);
  for (int32_t e = 0; e < problem.layout_.edges; ++e) problem.addNormal(e, *h, b);
  // A number that is held has no derivatives.
  for (int32_t j = 0; j < n; ++j) h->value[h->start[j]] += problem.scale_[j] == 0 ? 1 : lambda;
  return PRGO_STS_OK;
}

void GraphProblem::weighted(PrmtMsp* h, double* b) {
  isBent_ = false;
  normal(x_, layout_.parameters(), 0, this, h, b);
  isBent_ = true;
}

void GraphProblem::addNormal(int32_t edge, PrmtMsp& h, double* b) const {
  int32_t columns[kEdgeEnds];
  columnsOf(edge, columns);
  if (columns[0] < 0 && columns[1] < 0) return;
  const EdgeView view = viewAt(edge);
  Linear linear;
  const Robust kernel = linearAt(view, columns, linear);
  const double weight = kernel.weight;
  double block[kMaxSize * kMaxSize];
  for (int k = 0; k < kEdgeEnds; ++k) {
    if (columns[k] < 0) continue;
    transposedProduct(view.rows, linear.j[k], view.sizes[k], linear.r, 1, weight, block);
    for (int32_t c = 0; c < view.sizes[k]; ++c) b[columns[k] + c] -= block[c];
  }
  if (isBent_) bend(view, kernel, linear);
  for (int k = 0; k < kEdgeEnds; ++k) {
    if (columns[k] < 0) continue;
    const int32_t size = view.sizes[k];
    transposedProduct(view.rows, linear.j[k], size, linear.j[k], size, weight, block);
    for (int32_t c = 0; c < size; ++c) {
      double* const to = h.value + h.start[columns[k] + c];
      for (int32_t r = c; r < size; ++r) to[r - c] += block[c * size + r];
    }
  }
  if (columns[0] < 0 || columns[1] < 0) return;
  const int low = columns[0] < columns[1] ? 0 : 1, high = 1 - low;
  const int32_t width = view.sizes[low], height = view.sizes[high];
  transposedProduct(view.rows, linear.j[low], width, linear.j[high], height, weight, block);
  for (int32_t c = 0; c < width; ++c) {
    double* const to = h.value + h.start[columns[low] + c] + (width - c) + layout_.pairAt[edge];
    for (int32_t r = 0; r < height; ++r) to[r] += block[c * height + r];
  }
}

int32_t GraphProblem::jacobian(const double* x, int32_t n, int32_t, void* user, PrmtMsp* to) {
  GraphProblem& problem = *static_cast<GraphProblem*>(user);
  const Layout& layout = problem.layout_;
  if (to->start[n] == 0) layout.setJacobianPattern(*to);
  problem.expand(x);
  for (int32_t e = 0; e < layout.edges; ++e) {
    int32_t columns[kEdgeEnds];
    problem.columnsOf(e, columns);
    const EdgeView view = problem.viewAt(e);
    Linear linear;
    const double root = std::sqrt(problem.linearAt(view, columns, linear).weight);
    for (int k = 0; k < kEdgeEnds; ++k) {
      if (columns[k] < 0) continue;
      for (int32_t c = 0; c < view.sizes[k]; ++c) {
        double* const column = to->value + to->start[columns[k] + c] + layout.edgeAt[kEdgeEnds * int64_t{e} + k];
        for (int32_t r = 0; r < view.rows; ++r) column[r] = root * linear.j[k][r * view.sizes[k] + c];
      }
    }
  }
  return PRGO_STS_OK;
}

int32_t GraphProblem::blocks(const double* x, int32_t, int32_t, void* user, PrmtHblk* h) {
  GraphProblem& problem = *static_cast<GraphProblem*>(user);
  problem.expand(x);
  for (int32_t e = 0; e < problem.layout_.edges; ++e) problem.addBlocks(e, *h);
  return PRGO_STS_OK;
}

void GraphProblem::addBlocks(int32_t edge, PrmtHblk& h) const {
  int32_t columns[kEdgeEnds];
  columnsOf(edge, columns);
  const EdgeView view = viewAt(edge);
  Linear linear;
  const Robust kernel = linearAt(view, columns, linear);
  const double weight = kernel.weight;
  const int32_t side = layout_.column[layout_.groupA];
  double block[kMaxSize * kMaxSize];
  // Adds the block below or on the diagonal of the first group.
  const auto addToA = [&](int32_t row, int32_t col, int32_t height, int32_t width) {
    for (int32_t r = 0; r < height; ++r) {
      for (int32_t c = 0; c < width; ++c) h.a[int64_t{row + r} * side + col + c] += block[r * width + c];
    }
  };
  for (int k = 0; k < kEdgeEnds; ++k) {
    if (columns[k] < 0) continue;
    const int32_t second = columns[k] - side;
    transposedProduct(view.rows, linear.j[k], view.sizes[k], linear.r, 1, weight, block);
    double* const rhs = second < 0 ? h.rhsA + columns[k] : h.rhsB + second;
    for (int32_t c = 0; c < view.sizes[k]; ++c) rhs[c] -= block[c];
  }
  bend(view, kernel, linear);
  for (int k = 0; k < kEdgeEnds; ++k) {
    if (columns[k] < 0) continue;
    const int32_t size = view.sizes[k], second = columns[k] - side;
    transposedProduct(view.rows, linear.j[k], size, linear.j[k], size, weight, block);
    if (second < 0) {
      addToA(columns[k], columns[k], size, size);
    } else {
      for (int32_t i = 0; i < size * size; ++i) h.b[int64_t{second} * size + i] += block[i];
    }
  }
  if (columns[0] < 0 || columns[1] < 0) return;
  const int low = columns[0] < columns[1] ? 0 : 1, high = 1 - low;
  const int32_t height = view.sizes[high], width = view.sizes[low];
  if (columns[high] < side) {
    transposedProduct(view.rows, linear.j[high], height, linear.j[low], width, weight, block);
    addToA(columns[high], columns[low], height, width);
  } else {
    transposedProduct(view.rows, linear.j[low], width, linear.j[high], height, weight, block);
    double* const w = h.w + int64_t{layout_.pairAt[edge]} * layout_.sizeA * layout_.sizeB;
    for (int32_t i = 0; i < width * height; ++i) w[i] += block[i];
  }
}

}  // namespace dax
