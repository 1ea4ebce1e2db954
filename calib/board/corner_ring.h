// The grey values on a circle around a chessboard corner: dark, light, dark, light.
#pragma once

#include <cstdint>
#include <numbers>

#include "dax/types.h"
#include "daxi/point.h"
#include "frame/math.h"

namespace dax {

// The two edges that cross in a corner, as unit vectors: a small positive turn from `intoDark` leads into a dark
// square, from `intoLight` into a light one.
struct CornerEdges {
  DaxiPoint32f intoDark;
  DaxiPoint32f intoLight;
};

// The evaluation of a circle.
struct RingView {
  bool corner;     // whether its centre is a corner
  float contrast;  // mean of the light samples minus that of the dark ones
  CornerEdges edges;
};

// Evaluates `count` samples at the angles 2 pi k / count, whose cosines and sines are given. Thresholded at their mean,
// they must change four times; opposite sectors must be similar in width and level, no sector narrower than 25 degrees,
// and the means of dark and light at least `contrast` apart.
RingView viewRing(const float* samples, const DaxiPoint32f* directions, int32_t count, float contrast);

// Unit vectors at the angles 2 pi k / count.
constexpr void ringDirections(DaxiPoint32f* directions, int32_t count) {
  for (int32_t k = 0; k < count; ++k) {
    const SinCos at = sinCosExact(2 * std::numbers::pi * k / count);
    directions[k] = {static_cast<float>(at.cosine), static_cast<float>(at.sine)};
  }
}

// Evaluates 32 bilinear samples on a circle; the edge pixels are repeated outside the image. Centre within +-2^20.
RingView viewCircle(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f centre, float radius,
                    float contrast);

}  // namespace dax

// Measures the edges of a corner on a circle of the given radius or, where that shows no corner, of half of it. Returns
// false and leaves `edges` unchanged where neither does.
extern "C" bool DAXI_Common_around_edge_orit(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f centre,
                                             float radius, float contrast, dax::CornerEdges* edges);
