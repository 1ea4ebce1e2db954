// Borders by index: which pixel of a line stands for one outside it.
#pragma once

#include <algorithm>
#include <cstdint>

#include "daxi/border.h"

namespace dax {

// Whether a border gives every index a pixel of the image.
inline bool hasBorderIndex(int32_t border) {
  return border >= DAXI_BORDER_REPLICATE && border <= DAXI_BORDER_CIRCULAR;
}

// The index in 0..n - 1 that stands for i, any distance outside; n >= 1, and a line of one pixel is mirrored onto itself.
inline int64_t borderIndex(int64_t i, int64_t n, int32_t border) {
  if (i >= 0 && i < n) return i;
  if (border == DAXI_BORDER_REPLICATE) return std::clamp<int64_t>(i, 0, n - 1);
  if (border == DAXI_BORDER_MIRROR && n == 1) return 0;
  const int64_t period = border == DAXI_BORDER_CIRCULAR ? n : border == DAXI_BORDER_MIRROR ? 2 * n - 2 : 2 * n;
  const int64_t phase = (i % period + period) % period;
  if (phase < n) return phase;
  return border == DAXI_BORDER_MIRROR ? period - phase : period - 1 - phase;
}

}  // namespace dax
