#include "prgo/marginals.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "optim/graph/storage.h"
#include "optim/graph/work.h"
#include "optim/sparse/cholesky_analysis.h"
#include "optim/sparse/msp.h"
#include "optim/sparse/selected_inverse.h"

namespace dax {
namespace {

constexpr double kSmallestPivot = 1e-12;  // of its diagonal element
constexpr int32_t kBlock = kMaxSize * kMaxSize;

// The normal matrix, its right-hand side, and where columns of the factor are.
struct Equations {
  Equations(Arena& arena, int32_t n, int64_t elements)
      : h(takeMatrix(arena, n, n, elements)),
        rhs(arena.take<double>(unsignedOf(n))),
        place(arena.take<int32_t>(unsignedOf(n))) {}
  PrmtMsp h;
  double* rhs;
  int32_t* place;  // in the factor, of each column of h
};

// A configuration that nothing of is used.
constexpr PrgoCfg kNoCfg{};

int32_t checkMarginals(const PrgoGraph* graph, const int64_t* ids, int32_t count) {
  DAX_REQUIRE(count >= 1, PRGO_STS_BAD_PARAM);
  for (int32_t k = 0; k < count; ++k) DAX_REQUIRE(findVertex(*graph, ids[k]) >= 0, PRGO_STS_BAD_PARAM);
  return PRGO_STS_OK;
}

// Rows below the panel s of a factor.
int64_t rowsBelow(const PrmCholesky& f, int32_t s) {
  return f.firstRow[s + 1] - f.firstRow[s] - (f.firstColumn[s + 1] - f.firstColumn[s]);
}

int64_t scratchOf(const PrmCholesky& f) {
  int64_t columns = 0, below = 0;
  for (int32_t s = 0; s < f.panels; ++s) {
    columns = std::max<int64_t>(columns, f.firstColumn[s + 1] - f.firstColumn[s]);
    below = std::max(below, rowsBelow(f, s));
  }
  return selectedScratch(columns, below);
}

// Factors h; the diagonal of the factor tells how much of each diagonal element was left.
int32_t factorise(PrmCholesky& factor, Equations& e) {
  const PrmtMsp& h = e.h;
  for (int32_t j = 0; j < h.cols; ++j) DAX_REQUIRE(std::isfinite(h.value[h.start[j]]), PRGO_STS_NOT_FINITE);
  DAX_REQUIRE(PRM_Cholesky_Process_64f(&factor, h.value, elementsOf(h), 0, e.rhs) == 1, PRGO_STS_SINGULAR);
  for (int32_t j = 0; j < h.cols; ++j) {
    const double pivot = factor.values[factor.diagonal[j]];
    DAX_REQUIRE(pivot * pivot >= kSmallestPivot * h.value[h.start[j]], PRGO_STS_SINGULAR);
  }
  return PRGO_STS_OK;
}

// The block of the inverse at the columns of a vertex, which lie side by side in one panel.
void readBlock(const PrmCholesky& f, const int32_t* place, const double* scale, int32_t size, double* to) {
  const auto s =
      static_cast<int32_t>(std::upper_bound(f.firstColumn, f.firstColumn + f.panels, place[0]) - f.firstColumn) - 1;
  const int64_t ld = f.firstRow[s + 1] - f.firstRow[s];
  for (int32_t i = 0; i < size; ++i) {
    for (int32_t j = 0; j < size; ++j) {
      const int32_t row = std::max(place[i], place[j]) - f.firstColumn[s];
      const int32_t column = std::min(place[i], place[j]) - f.firstColumn[s];
      to[i * size + j] = f.values[f.at[s] + row + column * ld] * scale[i] * scale[j];
    }
  }
}

int32_t marginals(const PrgoGraph& graph, const int64_t* ids, int32_t count, double* covariances, void* buffer,
                  uint64_t bytes) {
  Arena arena(buffer, bytes);
  Work work(arena, graph);
  DAX_REQUIRE(arena.fits(), PRGO_STS_BUFFER_TOO_SMALL);
  Layout& layout = work.layout;
  layout.build(arena, graph, Solver::normal);
  const int32_t n = layout.parameters();
  GraphProblem problem(arena, layout, graph, kNoCfg, n);
  Equations e(arena, n, n > 0 ? layout.normalElements() : 0);
  PrmCholesky factor = {};
  if (n > 0) {
    DAX_REQUIRE(arena.fits(), PRGO_STS_BUFFER_TOO_SMALL);
    problem.start();
    clearPattern(e.h);
    std::fill_n(e.rhs, n, 0.0);
    problem.weighted(&e.h, e.rhs);
    std::fill_n(e.rhs, n, 0.0);
    DAX_REQUIRE(analyse(arena, e.h, factor), PRGO_STS_BUFFER_TOO_SMALL);
    double* const scratch = arena.take<double>(unsignedOf(scratchOf(factor)));
    DAX_REQUIRE(arena.fits(), PRGO_STS_BUFFER_TOO_SMALL);
    PRMT_REQUIRE_OK(factorise(factor, e));
    invertSelected(factor, scratch);
    for (int32_t j = 0; j < n; ++j) e.place[factor.original[j]] = j;
  }
  std::fill_n(covariances, int64_t{kBlock} * count, 0.0);
  for (int32_t k = 0; k < count; ++k) {
    const int32_t v = findVertex(graph, ids[k]), p = layout.position[v];
    if (p < 0) continue;
    const int32_t at = layout.column[p];
    readBlock(factor, e.place + at, problem.scale() + at, graph.vertices[v].size, covariances + int64_t{kBlock} * k);
  }
  return PRGO_STS_OK;
}

}  // namespace
}  // namespace dax

int32_t PRGO_CORE_MarginalsBufferSize(const PrgoGraph* graph, uint64_t* bytes) {
  DAX_REQUIRE(dax::isSet(graph) && bytes, PRGO_STS_NULL_POINTER);
  dax::Arena scratch(graph->scratch, graph->scratchBytes), counted(nullptr, 0);
  dax::Work work(scratch, *graph);
  DAX_REQUIRE(scratch.fits(), PRGO_STS_NULL_POINTER);
  work.layout.build(scratch, *graph, dax::Solver::normal);
  const int32_t n = work.layout.parameters();
  const int64_t elements = n > 0 ? work.layout.normalElements() : 0;
  const dax::Work copy(counted, *graph);
  const dax::GraphProblem problem(counted, copy.layout, *graph, dax::kNoCfg, n);
  const dax::Equations equations(counted, n, elements);
  if (n > 0) {
    dax::PanelBounds bounds;
    DAX_REQUIRE(dax::measureBlocks(counted, scratch, work.layout.blocks, work.layout.column, dax::unsignedOf(elements),
                                   &bounds),
                PRGO_STS_NULL_POINTER);
    counted.take<double>(dax::unsignedOf(dax::selectedScratch(bounds.columns, bounds.below)));
  }
  return dax::storeNeed(counted, bytes);
}

int32_t PRGO_CORE_Marginals(const PrgoGraph* graph, const int64_t* ids, int32_t count, double* covariances,
                            void* buffer, uint64_t* bytes) {
  DAX_REQUIRE(dax::isSet(graph) && ids && covariances && buffer && bytes, PRGO_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkMarginals(graph, ids, count));
  const int32_t status = dax::marginals(*graph, ids, count, covariances, buffer, *bytes);
  if (status == PRGO_STS_BUFFER_TOO_SMALL) PRGO_CORE_MarginalsBufferSize(graph, bytes);
  return status;
}
