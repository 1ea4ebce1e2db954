// Components of a graph that measurements leave free to move as a whole.
#pragma once

#include "frame/memory/arena.h"
#include "prgo/graph.h"

namespace dax {

struct Gauge {
  int32_t components, held, loose;
  int32_t scales;     // components whose scale is held
  int64_t firstHeld;  // lowest id of the vertices held, -1 without one
};

// What held[vertex] says: free; held as a whole; or one number of its step.
enum : uint8_t { kFree = 0, kHeld = 1, kHeldNumber = 2 };  // kHeldNumber + k: number k

// Marks in held[vertex] those that must be held: in each component without fixed vertices and priors the pose of lowest id, or
// the vertex of lowest id where there is no pose. Pictures alone leave the scale free, too: then the largest number of the way from
// the first pose to the pose of second lowest id is held. Works in memory borrowed from the arena, which fits.
Gauge findGauge(Arena& arena, const PrgoGraph& graph, uint8_t* held);

// Counts in a measuring arena what findGauge() borrows.
void measureGauge(Arena& arena, int32_t vertices);

}  // namespace dax
