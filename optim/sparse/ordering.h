// Fill-reducing order of elimination.
#pragma once

#include <cstdint>

#include "frame/memory/arena.h"

namespace dax {

constexpr int32_t kNone = -1;  // no node

// A graph without loops; node i has weight[i] columns and the neighbours adjacent[start[i]..start[i + 1]).
struct WeightedGraph {
  int32_t nodes;
  int32_t columns;  // sum of the weights
  const int32_t* weight;
  const int64_t* start;
  const int32_t* adjacent;
};

// Writes the nodes in an order of approximately least degree (Amestoy, Davis and Duff 1996), ties by position. Works in
// memory borrowed from the arena; false when that does not suffice.
bool minimumDegree(Arena& arena, const WeightedGraph& graph, int32_t* order);

// Takes note in a measuring arena of what minimumDegree() needs.
void measureMinimumDegree(Arena& arena, int32_t nodes, int32_t columns, uint64_t adjacent);

}  // namespace dax
