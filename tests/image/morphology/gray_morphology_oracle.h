// Minima and maxima over windows by looking at each pixel of the window.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>

#include "daxi/gray_morphology.h"
#include "tests/support/filter_scene.h"

namespace dax::oracle {

// pixel(x, y) is asked for positions inside w x h, in memory for any. `smaller`: the minimum of an erosion, else a
// dilation.
template <class T, class Pixel>
T grayExtreme(const Pixel& pixel, int64_t x, int64_t y, DaxiSize size, const DaxiGrayMorphologyCfg& cfg, bool smaller) {
  std::optional<T> best;
  const auto take = [&](T v) {
    if (!best || (smaller ? std::strong_order(v, *best) < 0 : std::strong_order(v, *best) > 0)) best = v;
  };
  const int64_t n = cfg.iterations, turn = smaller ? 1 : -1;
  for (int64_t j = -n * cfg.anchorY; j <= n * (cfg.window.height - 1 - cfg.anchorY); ++j) {
    for (int64_t i = -n * cfg.anchorX; i <= n * (cfg.window.width - 1 - cfg.anchorX); ++i) {
      const int64_t u = x + turn * i, v = y + turn * j;
      if (cfg.border == DAXI_BORDER_IN_MEMORY) {
        take(pixel(u, v));
        continue;
      }
      const auto column = test::walkInside(u, size.width, cfg.border);
      const auto row = test::walkInside(v, size.height, cfg.border);
      if (column && row) {
        take(pixel(*column, *row));
      } else if (cfg.border == DAXI_BORDER_CONSTANT) {
        take(static_cast<T>(cfg.value));
      }
    }
  }
  return *best;
}

}  // namespace dax::oracle
