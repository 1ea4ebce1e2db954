// Text by its definition: samples of a 16th pixel that lie within half the width of a stroke, whose curves are ellipses
// by their angles.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "daxi/draw_text.h"
#include "image/font/font.h"
#include "tests/support/test_image.h"

namespace dax::test::oracle {

struct Spot {
  double x, y;
};

using Polyline = std::vector<Spot>;

// The strokes of a glyph in the units of the font.
inline std::vector<Polyline> strokesOf(uint32_t code) {
  std::vector<Polyline> strokes;
  const Glyph& glyph = glyphOf(code);
  for (uint16_t i = glyph.first; i != (&glyph)[1].first; ++i) {
    const GlyphPoint p{kGlyphPoints[i]};
    const Spot here = {static_cast<double>(p.u()), static_cast<double>(p.v())};
    if (p.isMove()) strokes.emplace_back();
    if (!p.isCorner()) {
      strokes.back().push_back(here);
      continue;
    }
    const GlyphPoint next{kGlyphPoints[i + 1]};
    Spot to = {static_cast<double>(next.u()), static_cast<double>(next.v())};
    if (next.isCorner()) to = {(here.x + to.x) / 2, (here.y + to.y) / 2};
    const Spot from = strokes.back().back();
    const Spot centre = {from.x + to.x - here.x, from.y + to.y - here.y};
    for (int k = 1; k <= 40; ++k) {
      const double c = std::cos(M_PI_2 * k / 40), s = std::sin(M_PI_2 * k / 40);
      strokes.back().push_back({centre.x + c * (from.x - centre.x) + s * (to.x - centre.x),
                                centre.y + c * (from.y - centre.y) + s * (to.y - centre.y)});
    }
  }
  return strokes;
}

// Strokes of one line of characters on the picture.
inline std::vector<Polyline> strokesOf(const std::u32string& text, Spot origin, const DaxiTextCfg& cfg) {
  std::vector<Polyline> all;
  const double c = std::cos(cfg.angle), s = std::sin(cfg.angle), unit = cfg.height / 40;
  double u = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (i > 0) u += kerning(glyphOf(text[i - 1]), glyphOf(text[i]));
    for (Polyline stroke : strokesOf(text[i])) {
      for (Spot& p : stroke) {
        const double along = (u + p.x + cfg.slant * p.y) * unit, up = p.y * unit;
        p = {origin.x + along * c + up * s, origin.y + along * s - up * c};
      }
      all.push_back(stroke);
    }
    u += glyphOf(text[i]).advance;
  }
  return all;
}

// How much of every pixel is covered, 0..1.
class Coverage {
 public:
  static constexpr int kSide = 16;  // samples along a pixel

  explicit Coverage(DaxiSize size)
      : size_(size), samples_(static_cast<size_t>(size.width) * static_cast<size_t>(size.height) * kSide * kSide) {}

  void stroke(const Polyline& points, double width) {
    for (size_t i = 1; i < points.size(); ++i) segment(points[i - 1], points[i], width / 2);
  }

  double at(int32_t x, int32_t y) const {
    int32_t inside = 0;
    for (int32_t j = 0; j < kSide; ++j) {
      for (int32_t i = 0; i < kSide; ++i) inside += samples_[index(x * kSide + i, y * kSide + j)];
    }
    return inside / static_cast<double>(kSide * kSide);
  }

 private:
  size_t index(int32_t x, int32_t y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(size_.width * kSide) + static_cast<size_t>(x);
  }

  // Sample i of an axis lies at (i + 0.5) / 16 - 0.5.
  static int32_t sample(double at, int32_t side) {
    return static_cast<int32_t>(std::clamp((at + 0.5) * kSide, 0.0, static_cast<double>(side * kSide)));
  }

  void segment(Spot a, Spot b, double reach) {
    const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
    const int32_t x1 = sample(std::max(a.x, b.x) + reach + 1, size_.width);
    const int32_t y1 = sample(std::max(a.y, b.y) + reach + 1, size_.height);
    for (int32_t y = sample(std::min(a.y, b.y) - reach, size_.height); y < y1; ++y) {
      for (int32_t x = sample(std::min(a.x, b.x) - reach, size_.width); x < x1; ++x) {
        const double px = (x + 0.5) / kSide - 0.5 - a.x, py = (y + 0.5) / kSide - 0.5 - a.y;
        const double t = length > 0 ? std::clamp((px * dx + py * dy) / length, 0.0, 1.0) : 0;
        if (std::hypot(px - t * dx, py - t * dy) <= reach) samples_[index(x, y)] = 1;
      }
    }
  }

  DaxiSize size_;
  std::vector<uint8_t> samples_;
};

}  // namespace dax::test::oracle
