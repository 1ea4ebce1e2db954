// Resizes images by copying the nearest pixels.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/border/border_index.h"
#include "image/warp/resize_geometry.h"

namespace dax {

template <class T, int kChannels>
class NearestResizer {
 public:
  struct Buffer {
    explicit Buffer(const ResizeGeometry& g) : columns(layout.add<int32_t>(static_cast<uint64_t>(g.rect.width))) {}
    BufferLayout layout;
    BufferPiece<int32_t> columns;  // of the source
  };

  NearestResizer(const ResizedImage<T>& image, const ResizeGeometry& geometry, void* buffer, int32_t)
      : image_(image), g_(geometry), columns_(Buffer(geometry).columns.in(buffer)) {
    std::fill_n(value_, kChannels, borderValue<T>(g_.value));
    for (int32_t x = 0; x < g_.rect.width; ++x) columns_[x] = nearest(g_.x, g_.rect.x + x);
  }

  void run(int32_t first, int32_t end, uint32_t) const {
    for (int32_t y = first; y < end; ++y) {
      T* const dst = rowAt(image_.dst, image_.dstStep, y);
      const int32_t from = nearest(g_.y, g_.rect.y + y);
      if (y > first && from == nearest(g_.y, g_.rect.y + y - 1)) {
        std::copy_n(rowAt(image_.dst, image_.dstStep, y - 1), g_.rect.width * kChannels, dst);
      } else if (from == kOutside) {
        std::fill_n(dst, g_.rect.width * kChannels, value_[0]);
      } else {
        copyRow(rowAt(image_.src, image_.srcStep, from), dst);
      }
    }
  }

 private:
  static constexpr int32_t kOutside = -1;

  // By factors the last ones may lie outside.
  int32_t nearest(const ResizeAxis& axis, int32_t i) const {
    double weight;
    const int32_t at = resizeTaps(axis, i, &weight).first;
    if (at >= axis.src && g_.border == DAXI_BORDER_CONSTANT) return kOutside;
    return static_cast<int32_t>(borderIndex(at, axis.src, g_.border));
  }

  void copyRow(const T* src, T* dst) const {
    for (int32_t x = 0; x < g_.rect.width; ++x, dst += kChannels) {
      const T* const pixel = columns_[x] == kOutside ? value_ : src + ptrdiff_t{columns_[x]} * kChannels;
      for (int c = 0; c < kChannels; ++c) dst[c] = pixel[c];
    }
  }

  ResizedImage<T> image_;
  const ResizeGeometry& g_;
  int32_t* columns_;
  T value_[kChannels];
};

}  // namespace dax
