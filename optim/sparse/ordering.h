// Fill-reducing order of elimination.
#pragma once

#include <cstdint>

#include "frame/memory/arena.h"

namespace dax {

constexpr int32_t kNone = -1;  // no node

// A graph without self-loops; node i has weight[i] columns and the neighbours adjacent[start[i]] .. adjacent[start[i +
// 1] - 1].
struct WeightedGraph {
  int32_t nodes;
  int32_t columns;  // sum of the weights
  const int32_t* weight;
  const int64_t* start;
  const int32_t* adjacent;
};

// Writes the nodes in approximate minimum degree order (Amestoy, Davis and Duff 1996), ties by position. Works in
// memory borrowed from the arena; false when the arena is too small.
bool minimumDegree(Arena& arena, const WeightedGraph& graph, int32_t* order);

// Counts the memory of minimumDegree() in a measuring arena.
void measureMinimumDegree(Arena& arena, int32_t nodes, int32_t columns, uint64_t adjacent);

}  // namespace dax
