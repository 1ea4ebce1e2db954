// Halves images of bytes linearly, without anti-aliasing: means of two by two pixels, with the rounding of any other factor.
#pragma once

#include <cstdint>

#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/warp/resize_bytes_neon.h"
#include "image/warp/resize_bytes_portable.h"
#include "image/warp/resize_geometry.h"

namespace dax {

template <int kChannels>
class HalvingResizer {
 public:
  struct Buffer {
    explicit Buffer(const ResizeGeometry&) { layout.add<uint8_t>(1); }
    BufferLayout layout;
  };

  static bool fits(const ResizeGeometry& g) { return isHalf(g.x) && isHalf(g.y); }

  HalvingResizer(const ResizedImage<uint8_t>& image, const ResizeGeometry& geometry, void*, int32_t isa)
      : image_(image), g_(geometry), isa_(isa) {}

  void run(int32_t first, int32_t end, uint32_t) const {
    const auto halve = usesNeon(isa_) ? neon::halveRows<kChannels> : portable::halveRows<kChannels>;
    for (int32_t y = first; y < end; ++y) {
      const ptrdiff_t left = ptrdiff_t{2} * g_.rect.x * kChannels;
      const uint8_t* const row = rowAt(image_.src, image_.srcStep, 2 * (g_.rect.y + y)) + left;
      halve(row, row + image_.srcStep, rowAt(image_.dst, image_.dstStep, y), g_.rect.width);
    }
  }

 private:
  static bool isHalf(const ResizeAxis& axis) {
    return axis.interpolation == DAXI_INTERPOLATION_LINEAR && !axis.widens && axis.src == 2 * int64_t{axis.dst} &&
           (axis.factor == 0 || axis.factor == 0.5);
  }

  ResizedImage<uint8_t> image_;
  const ResizeGeometry& g_;
  int32_t isa_;
};

}  // namespace dax
