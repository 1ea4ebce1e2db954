// Means over the part of a window that lies inside the image, in vectors.
#pragma once

#include <cstdint>
#include <type_traits>

#include "frame/dispatch.h"
#include "image/window/filter_mean_int_portable.h"
#include "image/window/mean_pixel_neon.h"
#include "image/window/window_sums_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class T>
struct MeanIntStore {
  T* dst;
  const float* columnsInside;
  float rowsInside;

  void block(int32_t x, const uint32x4x4_t& sums) const {
    const float32x4x4_t columns = vld4q_f32(columnsInside + x);
    uint32x4x4_t pixels;
    for (int k = 0; k < 4; ++k) {
      const float32x4_t count = vmulq_n_f32(columns.val[k], rowsInside);
      pixels.val[k] = roundedMean<T>(vdivq_f32(floatFromSum<T>(sums.val[k]), count));
    }
    storePixels(dst + x, pixels);
  }
  void pixel(int32_t x, uint32_t sum) const {
    const float count = columnsInside[x] * rowsInside;
    dst[x] = portable::pixelFromMean<T>(portable::floatFromSum<T>(sum) / count);
  }
};

template <class T>
void meanIntColumns(const ClippedMean<T>& mean, void* buffer) {
  using Column = WindowColumn<T>;
  const int32_t width = mean.size.width;
  const WindowReach reach = mean.reachX();
  auto* const columnsInside = static_cast<float*>(buffer);
  for (int32_t x = 0; x < width; ++x) columnsInside[x] = static_cast<float>(countInside(x, reach, width));
  const ExtendedColumns<Column> extended{reinterpret_cast<Column*>(columnsInside + width), width, reach};
  extended.clear();
  forEachWindowRow(mean.rows, mean.reachY(), 0, mean.size.height, extended.columns(), width, moveRow<T>,
                   [&](int32_t y) {
                     const auto rowsInside = static_cast<float>(mean.rowsInside(y));
                     extended.slide(MeanIntStore<T>{mean.dstRow(y), columnsInside, rowsInside});
                   });
}
// Whether the sums fit 32 bits (31 for bytes) and those of columns their type, and whether extended columns and a row
// of counts fit the buffer. Floats, whose sums are 64 bits wide, have no vector kernel.
template <class T>
bool hasVectorMeanInt(const ClippedMean<T>& mean) {
  const int64_t area = int64_t{mean.mask.width} * mean.mask.height;
  if constexpr (std::is_floating_point_v<T>) return false;
  if constexpr (sizeof(T) == 1) return mean.mask.height <= 257 && area <= 1 << 23;
  return mean.size.height >= 2 && area <= 1 << 16;
}

template <class T>
void meanInt(const ClippedMean<T>& mean, void* buffer) {
  if (!hasVectorMeanInt(mean)) return portable::meanInt(mean, buffer);
  if constexpr (std::is_integral_v<T>) meanIntColumns(mean, buffer);
}

}  // namespace dax::neon
#endif
