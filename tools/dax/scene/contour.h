// Outlines of blobs, for drawing.
#pragma once

#include <span>
#include <vector>

#include "daxi/blob_find.h"

namespace dax::tool {

struct Point {
  float x;  // pixel centres are integers
  float y;
};
using Contour = std::vector<Point>;  // a closed polygon

// The outer contour of each domain shown, through the middles of the pixel edges between it and its surroundings.
std::vector<Contour> traceContours(const DaxiDomainList& domains, std::span<const DaxiDomain* const> shown,
                                   int connectivity);

}  // namespace dax::tool
