// The grey values on a circle around a chessboard corner: dark, light, dark, light.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "daxi/point.h"
#include "frame/math.h"

namespace dax {

// The two edges that cross in a corner, as lines: going on by a small angle from `intoDark` leads into a dark square,
// from `intoLight` into a light one. Unit vectors.
struct CornerEdges {
  DaxiPoint32f intoDark;
  DaxiPoint32f intoLight;
};

// What a circle shows.
struct RingView {
  bool corner;     // whether it is that of a corner
  float contrast;  // mean of the light samples less that of the dark ones
  CornerEdges edges;
};

// Judges `count` samples at the angles 2 pi k / count, whose cosines and sines are given. They are thresholded at their
// mean; there must be four changes, opposite sectors alike in width and level, no sector narrower than 25 degrees, and the
// means of dark and light at least `contrast` apart.
RingView viewRing(const float* samples, const DaxiPoint32f* directions, int32_t count, float contrast);

// Unit vectors at the angles 2 pi k / count.
constexpr void ringDirections(DaxiPoint32f* directions, int32_t count) {
  for (int32_t k = 0; k < count; ++k) {
    const SinCos at = sinCosExact(2 * std::numbers::pi * k / count);
    directions[k] = {static_cast<float>(at.cosine), static_cast<float>(at.sine)};
  }
}

// 32 samples of an image on a circle, interpolated bilinearly, the edge going on outside. Centre within +-2^20.
RingView viewCircle(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f centre, float radius,
                    float contrast);

}  // namespace dax

// The edges around a corner, measured on a circle of the given radius or, where that shows none, of half of it. Returns
// false where neither shows a corner, and leaves `edges` then.
extern "C" bool DAXI_Common_around_edge_orit(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f centre,
                                             float radius, float contrast, dax::CornerEdges* edges);
