// Components of a graph that measurements leave free to move as a whole.
#pragma once

#include "frame/memory/arena.h"
#include "prgo/graph.h"

namespace dax {

struct Gauge {
  int32_t components, held, loose;
  int64_t firstHeld;  // lowest id of the vertices held, -1 without one
};

// Marks in held[vertex] those that must be held: in each component without fixed vertices and priors the pose of lowest id, or
// the vertex of lowest id where no pose is free. Works in memory borrowed from the arena, which fits.
Gauge findGauge(Arena& arena, const PrgoGraph& graph, uint8_t* held);

// Counts in a measuring arena what findGauge() borrows.
void measureGauge(Arena& arena, int32_t vertices);

}  // namespace dax
