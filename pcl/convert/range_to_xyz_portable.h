// Pixels to points, any instruction set. Each operation is rounded to float; nothing is fused.
#pragma once

#include <cstdint>

namespace dax {

// x = c * sx + ox, y = r * sy + oy, z = v * sz + oz.
struct GridFormula {
  float sx, sy, sz, ox, oy, oz;
  explicit GridFormula(const float* p) : sx(p[0]), sy(p[1]), sz(p[2]), ox(p[3]), oy(p[4]), oz(p[5]) {}
};

// z = v * a + b, x = ((c - cx) * z) * (1 / fx), y = ((r - cy) * z) * (1 / fy).
struct PinholeFormula {
  float a, b, perFx, perFy, cx, cy;
  explicit PinholeFormula(const float* p) : a(p[0]), b(p[1]), perFx(1 / p[2]), perFy(1 / p[3]), cx(p[4]), cy(p[5]) {}
};

namespace portable {

struct Point {
  float x, y, z;
};

// The points of one row, of either formula.
struct GridRow {
  const GridFormula& f;
  float y;
  GridRow(const GridFormula& formula, int32_t r) : f(formula), y(static_cast<float>(r) * f.sy + f.oy) {}
  Point operator()(int32_t c, float v) const { return {static_cast<float>(c) * f.sx + f.ox, y, v * f.sz + f.oz}; }
};

struct PinholeRow {
  const PinholeFormula& f;
  float dy;
  PinholeRow(const PinholeFormula& formula, int32_t r) : f(formula), dy(static_cast<float>(r) - f.cy) {}
  Point operator()(int32_t c, float v) const {
    const float z = v * f.a + f.b;
    return {((static_cast<float>(c) - f.cx) * z) * f.perFx, (dy * z) * f.perFy, z};
  }
};

// Writes the valid points of columns first..cols - 1 of a row to their places.
template <class T, class Row>
void organizedRow(const Row& row, const T* values, const uint8_t* mask, int32_t first, int32_t cols, float* points) {
  for (int32_t c = first; c < cols; ++c) {
    if (!mask[c]) continue;
    const Point point = row(c, static_cast<float>(values[c]));
    float* const to = points + ptrdiff_t{3} * c;
    to[0] = point.x, to[1] = point.y, to[2] = point.z;
  }
}

// Appends the valid points; returns the end.
template <class T, class Row>
float* packedRow(const Row& row, const T* values, const uint8_t* mask, int32_t first, int32_t cols, float* points) {
  for (int32_t c = first; c < cols; ++c) {
    if (!mask[c]) continue;
    const Point point = row(c, static_cast<float>(values[c]));
    points[0] = point.x, points[1] = point.y, points[2] = point.z;
    points += 3;
  }
  return points;
}

}  // namespace portable
}  // namespace dax
