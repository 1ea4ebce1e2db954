#include "prgo/graph.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "optim/graph/information.h"
#include "optim/graph/layout.h"
#include "optim/graph/robust_kernel.h"
#include "optim/graph/storage.h"
#include "optim/sparse/msp.h"

namespace dax {
namespace {

constexpr int32_t kMaxCount = 100000000;

void takeGraph(Arena& arena, int32_t vertices, int32_t edges, PrgoGraph& graph) {
  const uint64_t v = unsignedOf(vertices), e = unsignedOf(edges);
  graph = {vertices, edges, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0};
  graph.vertices = arena.take<PrgoVertex>(v);
  graph.edges = arena.take<PrgoEdge>(e);
  graph.table = arena.take<int32_t>(tableSize(vertices));
  graph.ends = arena.take<int32_t>(kEdgeEnds * e);
  graph.roots = arena.take<double>(kRootSize * e);
  Arena scratch(nullptr, 0);
  measureLayout(scratch, vertices, edges);
  graph.scratchBytes = scratch.needed();
  graph.scratch = arena.take<char>(graph.scratchBytes);
}

int32_t checkCapacities(int32_t vertices, int32_t edges) {
  DAX_REQUIRE(vertices >= 1 && vertices <= kMaxCount, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(edges >= 0 && edges <= kMaxCount, PRGO_STS_BAD_PARAM);
  return PRGO_STS_OK;
}

bool areFinite(const double* values, int32_t count) {
  return std::all_of(values, values + count, [](double v) { return std::isfinite(v); });
}

// The vertices of an edge: both there, different, and of types that go with it.
int32_t checkEnds(const PrgoGraph& graph, const PrgoEdge& edge, int32_t* ends) {
  const int32_t count = endsOf(edge.type);
  DAX_REQUIRE(count > 0, PRGO_STS_BAD_PARAM);
  ends[0] = findVertex(graph, edge.vertices[0]);
  ends[1] = count > 1 ? findVertex(graph, edge.vertices[1]) : -1;
  DAX_REQUIRE(ends[0] >= 0 && (count == 1 || ends[1] >= 0), PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(ends[0] != ends[1], PRGO_STS_BAD_PARAM);
  const PrgoVertex* const second = count > 1 ? &graph.vertices[ends[1]] : nullptr;
  DAX_REQUIRE(goesWith(edge.type, graph.vertices[ends[0]], second), PRGO_STS_BAD_PARAM);
  return PRGO_STS_OK;
}

}  // namespace
}  // namespace dax

int32_t PRGO_GRAPH_BufferSize(int32_t vertexCapacity, int32_t edgeCapacity, uint64_t* bytes) {
  DAX_REQUIRE(bytes, PRGO_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkCapacities(vertexCapacity, edgeCapacity));
  dax::Arena arena(nullptr, 0);
  PrgoGraph graph;
  dax::takeGraph(arena, vertexCapacity, edgeCapacity, graph);
  return dax::storeNeed(arena, bytes);
}

int32_t PRGO_GRAPH_Init(PrgoGraph* graph, int32_t vertexCapacity, int32_t edgeCapacity, void* buffer) {
  DAX_REQUIRE(graph && buffer, PRGO_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkCapacities(vertexCapacity, edgeCapacity));
  dax::Arena arena(buffer, INT64_MAX);
  dax::takeGraph(arena, vertexCapacity, edgeCapacity, *graph);
  std::fill_n(graph->table, dax::tableSize(vertexCapacity), 0);
  return PRGO_STS_OK;
}

int32_t PRGO_GRAPH_AddVertex(PrgoGraph* graph, const PrgoVertex* vertex) {
  DAX_REQUIRE(dax::isSet(graph) && vertex, PRGO_STS_NULL_POINTER);
  const int32_t size = dax::vertexSize(vertex->type, vertex->size);
  DAX_REQUIRE(size > 0 && vertex->isFixed <= 1, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(dax::findVertex(*graph, vertex->id) < 0, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(dax::areFinite(vertex->estimate, size), PRGO_STS_NOT_FINITE);
  DAX_REQUIRE(graph->vertexCount < graph->vertexCapacity, PRGO_STS_FULL);
  PrgoVertex& added = graph->vertices[graph->vertexCount];
  added = {vertex->id, vertex->type, size, vertex->isFixed, 0, {}};
  std::copy_n(vertex->estimate, size, added.estimate);
  dax::normaliseEstimate(added.type, added.estimate);
  *dax::slotOf(*graph, vertex->id) = ++graph->vertexCount;
  return PRGO_STS_OK;
}

int32_t PRGO_GRAPH_AddEdge(PrgoGraph* graph, const PrgoEdge* edge) {
  DAX_REQUIRE(dax::isSet(graph) && edge, PRGO_STS_NULL_POINTER);
  int32_t ends[dax::kEdgeEnds];
  PRMT_REQUIRE_OK(dax::checkEnds(*graph, *edge, ends));
  DAX_REQUIRE(edge->kernel >= 0 && edge->kernel < dax::kKernels, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(!(edge->kernelWidth < 0), PRGO_STS_BAD_PARAM);
  const int32_t size = dax::residualSize(edge->type, graph->vertices[ends[0]]), triangle = size * (size + 1) / 2;
  const int32_t measured = dax::measuredSize(edge->type, graph->vertices[ends[0]]);
  DAX_REQUIRE(std::isfinite(edge->kernelWidth), PRGO_STS_NOT_FINITE);
  DAX_REQUIRE(dax::areFinite(edge->measurement, measured) && dax::areFinite(edge->information, triangle),
              PRGO_STS_NOT_FINITE);
  double root[dax::kRootSize];
  DAX_REQUIRE(dax::informationRoot(edge->information, size, root), PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(graph->edgeCount < graph->edgeCapacity, PRGO_STS_FULL);
  const int32_t index = graph->edgeCount++;
  PrgoEdge& added = graph->edges[index];
  added = {
      {edge->vertices[0], ends[1] < 0 ? edge->vertices[0] : edge->vertices[1]}, edge->type, edge->kernel, 0, {}, {}};
  added.kernelWidth = edge->kernelWidth > 0 ? edge->kernelWidth : dax::kKernelWidths[edge->kernel];
  std::copy_n(edge->measurement, measured, added.measurement);
  std::copy_n(edge->information, triangle, added.information);
  std::copy_n(ends, dax::kEdgeEnds, graph->ends + dax::kEdgeEnds * int64_t{index});
  std::copy_n(root, size * size, graph->roots + int64_t{dax::kRootSize} * index);
  return PRGO_STS_OK;
}

int32_t PRGO_GRAPH_Fix(PrgoGraph* graph, int64_t id, int32_t isFixed) {
  DAX_REQUIRE(dax::isSet(graph), PRGO_STS_NULL_POINTER);
  DAX_REQUIRE(isFixed == 0 || isFixed == 1, PRGO_STS_BAD_PARAM);
  const int32_t index = dax::findVertex(*graph, id);
  DAX_REQUIRE(index >= 0, PRGO_STS_BAD_PARAM);
  graph->vertices[index].isFixed = static_cast<uint8_t>(isFixed);
  return PRGO_STS_OK;
}

int32_t PRGO_GRAPH_Estimate(const PrgoGraph* graph, int64_t id, double* estimate) {
  DAX_REQUIRE(dax::isSet(graph) && estimate, PRGO_STS_NULL_POINTER);
  const int32_t index = dax::findVertex(*graph, id);
  DAX_REQUIRE(index >= 0, PRGO_STS_BAD_PARAM);
  std::copy_n(graph->vertices[index].estimate, graph->vertices[index].size, estimate);
  return PRGO_STS_OK;
}

int32_t PRGO_GRAPH_SetEstimate(PrgoGraph* graph, int64_t id, const double* estimate) {
  DAX_REQUIRE(dax::isSet(graph) && estimate, PRGO_STS_NULL_POINTER);
  const int32_t index = dax::findVertex(*graph, id);
  DAX_REQUIRE(index >= 0, PRGO_STS_BAD_PARAM);
  PrgoVertex& vertex = graph->vertices[index];
  DAX_REQUIRE(dax::areFinite(estimate, vertex.size), PRGO_STS_NOT_FINITE);
  std::copy_n(estimate, vertex.size, vertex.estimate);
  dax::normaliseEstimate(vertex.type, vertex.estimate);
  return PRGO_STS_OK;
}

int32_t PRGO_GRAPH_Energy(const PrgoGraph* graph, double* energy) {
  DAX_REQUIRE(dax::isSet(graph) && energy, PRGO_STS_NULL_POINTER);
  double sum = 0;
  for (int32_t e = 0; e < graph->edgeCount; ++e) {
    dax::EdgeView view = dax::viewOf(*graph, e);
    dax::State states[dax::kEdgeEnds];
    for (int k = 0; k < dax::endsOf(view.edge->type); ++k) {
      const PrgoVertex& vertex = graph->vertices[dax::endOf(*graph, e, k)];
      states[k] = dax::stateOf(vertex.type, vertex.size, vertex.estimate);
      view.ends[k] = &states[k];
    }
    sum += dax::edgeEnergy(view);
  }
  DAX_REQUIRE(std::isfinite(sum), PRGO_STS_NOT_FINITE);
  *energy = sum;
  return PRGO_STS_OK;
}
