// The memory of a graph: vertices, edges, and the tables that find them.
#pragma once

#include "frame/memory/arena.h"
#include "optim/graph/edge_model.h"
#include "prgo/graph.h"

namespace dax {

constexpr int32_t kRootSize = kMaxSize * kMaxSize;  // doubles of an edge's root

inline bool isSet(const PrgoGraph* graph) {
  return graph && graph->vertices && graph->edges && graph->table && graph->ends && graph->roots && graph->scratch;
}

// Places of the table of ids: a power of two, at most half of them taken. A place holds the index of a vertex plus 1, or 0.
uint64_t tableSize(int32_t vertexCapacity);

// The place of an id, or the free one where it belongs.
int32_t* slotOf(const PrgoGraph& graph, int64_t id);

// Index of a vertex, or -1.
int32_t findVertex(const PrgoGraph& graph, int64_t id);

// Index of vertex k of an edge.
inline int32_t endOf(const PrgoGraph& graph, int32_t edge, int k) {
  return graph.ends[kEdgeEnds * int64_t{edge} + k];
}

// An edge but for the states of its vertices.
EdgeView viewOf(const PrgoGraph& graph, int32_t edge);

}  // namespace dax
