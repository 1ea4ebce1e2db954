// Lines one pixel thin, without anti-aliasing: those of Bresenham, from ends that may lie far outside of the image.
//
// From the end that comes first by (y, x): along the longer axis one pixel a step, along the other the nearest pixel, of two
// equally near ones that with the smaller coordinate. So neither the order of the ends nor the image's borders matter.
#pragma once

#include "image/draw/row_coverage.h"

namespace dax {

// Both columns count; first > last for none.
struct Run {
  int64_t first, last;
};

// The pixels of a line in a row between its ends; x0, y0 come first by (y, x).
Run thinRun(const Edge& line, int32_t y);

// The pixel in which a point lies; halves go up, wherever the origin is.
DaxiPoint32s nearestPixel(DaxiPoint64f point);

// One line alone: the pixels of its rows follow from one another.
void drawThinLine(const Canvas& canvas, const Ink& ink, DaxiPoint32s from, DaxiPoint32s to);

// The pixels of all lines in a row, each once.
void paintThinRow(const RowPaint& paint, const RowMemory& memory, int32_t y, int32_t* active, int32_t count);

}  // namespace dax
