// What is done to pixels, for each type and layout.
#include <cmath>
#include <limits>

#include "frame/rows.h"
#include "image/draw/canvas.h"
#include "image/draw/slim_band.h"

namespace dax {
namespace {

// d + rint((color - d) weight); the difference is exact and the sum is within the type.
template <class T>
T blended(T d, float color, float weight) {
  const auto from = static_cast<float>(d);
  return static_cast<T>(static_cast<int32_t>(from + std::rint((color - from) * weight)));
}

template <class T, int kChannels>
void blendRun(const Canvas& canvas, const Ink& ink, int32_t y, int32_t x0, int32_t x1, const float* coverage) {
  T* const row = rowAt(static_cast<T*>(canvas.pixels), canvas.step, y) + ptrdiff_t{x0} * kChannels;
  const int32_t count = x1 - x0;
  for (int32_t c = 0; c < kChannels; ++c) {
    const float color = ink.color[c], alpha = ink.alpha;
    if (coverage) {
      for (int32_t i = 0; i < count; ++i) {
        T& d = row[ptrdiff_t{i} * kChannels + c];
        d = blended(d, color, alpha * coverage[i]);
      }
    } else if (alpha < 1) {
      for (int32_t i = 0; i < count; ++i) {
        T& d = row[ptrdiff_t{i} * kChannels + c];
        d = blended(d, color, alpha);
      }
    } else {
      for (int32_t i = 0; i < count; ++i) row[ptrdiff_t{i} * kChannels + c] = static_cast<T>(color);
    }
  }
}

}  // namespace

template <int kChannels, class T>
Canvas canvasOf(T* pixels, int32_t step, DaxiSize size) {
  return {pixels,
          step,
          size,
          kChannels,
          std::numeric_limits<T>::max(),
          blendRun<T, kChannels>,
          blendSlimBand<T, kChannels>};
}

template Canvas canvasOf<1>(uint8_t*, int32_t, DaxiSize);
template Canvas canvasOf<3>(uint8_t*, int32_t, DaxiSize);
template Canvas canvasOf<1>(uint16_t*, int32_t, DaxiSize);
template Canvas canvasOf<3>(uint16_t*, int32_t, DaxiSize);

}  // namespace dax
