// Outlines of blobs, for drawing.
#pragma once

#include <span>
#include <vector>

#include "daxi/blob_select.h"

namespace dax::tool {

struct Point {
  float x;  // pixel centres are integers
  float y;
};
using Contour = std::vector<Point>;  // a closed polygon

// The outer contour of each blob, through the middles of the pixel edges between it and its surroundings.
std::vector<Contour> traceContours(const DaxiDomainList& domains, std::span<const BlobInfo> blobs, int connectivity);

}  // namespace dax::tool
