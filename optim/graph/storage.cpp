#include "optim/graph/storage.h"

#include <bit>

namespace dax {
namespace {

// First place of an id: the upper bits of its product with 2^64 / golden ratio.
uint64_t placeOf(int64_t id, uint64_t size) {
  return static_cast<uint64_t>(id) * 0x9E3779B97F4A7C15u >> (64 - std::countr_zero(size));
}

}  // namespace

uint64_t tableSize(int32_t vertexCapacity) {
  return std::bit_ceil(2 * unsignedOf(vertexCapacity));
}

int32_t* slotOf(const PrgoGraph& graph, int64_t id) {
  const uint64_t size = tableSize(graph.vertexCapacity);
  for (uint64_t at = placeOf(id, size);; at = (at + 1) & (size - 1)) {
    int32_t& slot = graph.table[at];
    if (slot == 0 || graph.vertices[slot - 1].id == id) return &slot;
  }
}

int32_t findVertex(const PrgoGraph& graph, int64_t id) {
  return *slotOf(graph, id) - 1;
}

EdgeView viewOf(const PrgoGraph& graph, int32_t edge) {
  const PrgoEdge& given = graph.edges[edge];
  EdgeView view{&given, graph.roots + int64_t{kRootSize} * edge, 0, {}, {}, {}};
  for (int k = 0; k < kEdgeEnds; ++k) {
    const int32_t end = endOf(graph, edge, k);
    if (end < 0) continue;
    view.types[k] = graph.vertices[end].type;
    view.sizes[k] = graph.vertices[end].size;
  }
  view.rows = residualSize(given.type, graph.vertices[endOf(graph, edge, 0)]);
  return view;
}

}  // namespace dax
