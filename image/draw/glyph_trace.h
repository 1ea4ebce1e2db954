// Glyphs as polylines, in pixels along the baseline and above it.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "image/draw/round_pen.h"
#include "image/font/font.h"

namespace dax {

// The pen's way from `from`, where it is, along the quarter of an ellipse that touches the legs to and from a corner, as a
// conic section of weight sqrt(1/2).
//
// A chord of n pieces leaves a unit circle by at most (1.055 pi / 2 / n)^2 / 8 (equal steps of the parameter differ a little in
// angle), and the ellipse is its image under the matrix of the legs, which stretches by its norm. At most kPenError.
template <class Pen>
void traceCorner(DaxiPoint64f from, DaxiPoint64f corner, DaxiPoint64f to, Pen& pen) {
  constexpr double kPieces = 1.055 * 2.2214414690791831;  // sqrt((1.055 pi / 2)^2 / (8 kPenError))
  static_assert(kPenError == 1.0 / 16);
  const DaxiPoint64f a = {from.x - corner.x, from.y - corner.y}, b = {to.x - corner.x, to.y - corner.y};
  const double aa = a.x * a.x + a.y * a.y, bb = b.x * b.x + b.y * b.y, ab = a.x * b.x + a.y * b.y;
  const double norm = std::sqrt((aa + bb) / 2 + std::sqrt((aa - bb) * (aa - bb) / 4 + ab * ab));
  const auto pieces = static_cast<int32_t>(std::clamp(std::ceil(kPieces * std::sqrt(norm)), 1.0, 1e6));
  for (int32_t k = 1; k < pieces; ++k) {
    const double t = static_cast<double>(k) / pieces, s = 1 - t;
    const double f = s * s, c = 1.4142135623730951 * t * s, g = t * t, sum = f + c + g;
    pen.lineTo({(f * from.x + c * corner.x + g * to.x) / sum, (f * from.y + c * corner.y + g * to.y) / sum});
  }
  pen.lineTo(to);
}

// Calls pen.moveTo and pen.lineTo for the strokes of a glyph, and pen.close where one is back at its start. unit: pixels of a
// unit of the font.
template <class Pen>
void traceGlyph(const Glyph& glyph, double unit, double slant, Pen& pen) {
  const auto place = [&](GlyphPoint p) { return DaxiPoint64f{(p.u() + slant * p.v()) * unit, p.v() * unit}; };
  DaxiPoint64f last{}, first{};
  const uint16_t* const end = kGlyphPoints + (&glyph)[1].first;
  for (const uint16_t* p = kGlyphPoints + glyph.first; p != end; ++p) {
    const GlyphPoint point{*p};
    const DaxiPoint64f here = place(point);
    if (!point.isCorner()) {
      if (point.isMove()) {
        pen.moveTo(here);
        first = here;
      } else {
        pen.lineTo(here);
      }
      last = here;
    } else {
      // A stroke does not end with a corner.
      const GlyphPoint next{p[1]};
      DaxiPoint64f to = place(next);
      if (next.isCorner()) to = {(here.x + to.x) / 2, (here.y + to.y) / 2};
      traceCorner(last, here, to, pen);
      last = to;
      if (!next.isCorner()) ++p;
    }
    const bool isLast = p + 1 == end || GlyphPoint{p[1]}.isMove();
    if (isLast && last.x == first.x && last.y == first.y) pen.close();
  }
}

}  // namespace dax
