// Regions of calipers: which are possible, and where they are sampled.
#pragma once

#include <cstdint>

#include "daxi/caliper.h"

namespace dax {

// A row of samples: the first one and the step from each to the next, in pixels.
struct SampleLine {
  double x;
  double y;
  double dx;
  double dy;
};

enum class CaliperShape { kBox, kRhomboid, kAnnulus };

// Where a region is sampled: rows of columns, along straight lines.
struct CaliperGrid {
  CaliperShape shape;
  bool alongColumns;  // the search direction
  int32_t columns;
  int32_t rows;
  double x;  // centre
  double y;
  double ux;  // direction of columns; for an annulus the one at its middle angle
  double uy;
  double vx;  // direction of rows
  double vy;
  double firstColumn;  // relative to the centre
  double firstRow;
  double radius;  // annulus: mean radius and middle angle
  double angle;

  int32_t length() const { return alongColumns ? columns : rows; }
  SampleLine row(int32_t k) const;
  DaxiPoint32f pointAt(float position) const;
};

// Whether a region is possible in any image, and whether its centre lies in this one.
bool possible(const CaliperBox& box);
bool possible(const CaliperRhomboid& rhomboid);
bool possible(const CaliperAnnulus& annulus);
bool hasCentreIn(DaxiSize size, float x, float y);

// The grid of a possible region.
CaliperGrid gridOf(const CaliperBox& box, uint32_t projection);
CaliperGrid gridOf(const CaliperRhomboid& rhomboid, uint32_t projection);
CaliperGrid gridOf(const CaliperAnnulus& annulus, uint32_t projection);

}  // namespace dax
