// What is resized to what, for all ways to do it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "daxi/resize.h"
#include "frame/numeric/round.h"
#include "image/warp/resize_taps.h"

namespace dax {

// What is resized to what; rect is the part that is computed.
struct ResizeGeometry {
  ResizeGeometry(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg& cfg)
      : x{srcSize.width, dstSize.width, cfg.factorX, cfg.antialias != 0, cfg.interpolation, cfg.cubicA},
        y{srcSize.height, dstSize.height, cfg.factorY, cfg.antialias != 0, cfg.interpolation, cfg.cubicA},
        rect(dstRect),
        border(cfg.border),
        value(cfg.value) {}

  // Tiles of a pool: each repeats the rows at its upper edge.
  uint32_t tiles() const {
    return static_cast<uint32_t>(std::clamp(rect.height / std::max(1, y.maxTaps()), 1, kMaxResizeTiles));
  }

  static constexpr int32_t kMaxResizeTiles = 8;
  ResizeAxis x, y;
  DaxiRect rect;
  int32_t border;
  double value;
};

template <class T>
struct ResizedImage {
  const T* src;
  int32_t srcStep;
  T* dst;
  int32_t dstStep;
};

template <class T>
T borderValue(double value) {
  if constexpr (std::is_integral_v<T>) {
    return roundTo<T>(value);
  } else {
    constexpr double kMax = std::numeric_limits<T>::max();
    return static_cast<T>(std::clamp(value, -kMax, kMax));
  }
}

}  // namespace dax
