// What calls on a laid out graph share.
#pragma once

#include <algorithm>

#include "optim/graph/problem.h"

namespace dax {

// The memory of a call in front of what the solver takes.
struct Work {
  Work(Arena& arena, const PrgoGraph& graph) : layout(arena, graph.vertexCount, graph.edgeCount) {
    countBuild(arena, graph.vertexCount, graph.edgeCount);
  }
  Layout layout;
};

// Bytes for a call, of which the solver's follow those of the arena that has counted all others.
inline uint64_t bothNeeds(const Arena& counted, uint64_t solver) {
  return std::max(counted.needed(), counted.mark() + solver);
}

}  // namespace dax
