// Resizes images: rows of the source, resized along x when they are first needed, are added up for each row of the result.
#pragma once

#include <cstdint>

#include "daxi/resize.h"
#include "image/warp/resize_taps.h"

namespace dax {

// What is resized to what; rect is the part that is computed.
struct ResizeGeometry {
  ResizeGeometry(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg& cfg)
      : x{srcSize.width, dstSize.width, cfg.factorX, cfg.antialias != 0},
        y{srcSize.height, dstSize.height, cfg.factorY, cfg.antialias != 0},
        rect(dstRect),
        border(cfg.border) {}
  ResizeAxis x, y;
  DaxiRect rect;
  int32_t border;
};

}  // namespace dax
