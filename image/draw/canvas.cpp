#include "image/draw/canvas.h"

#include <cmath>
#include <cstddef>
#include <limits>

#include "frame/rows.h"
#include "image/draw/slim_band.h"

static_assert(sizeof(DaxiStroke) == 56 && offsetof(DaxiStroke, color) == 36);

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

bool isWithin(double v, double low, double high) {
  return v >= low && v <= high;
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

DaxStatus checkCanvas(const Canvas& canvas, const DaxiStroke* stroke, bool others) {
  DAX_REQUIRE(canvas.pixels && stroke && others, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isDrawnSize(canvas.size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(canvas.size.width, canvas.step, canvas.channels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

DaxStatus checkPen(const DaxiStroke& stroke, bool mayFill) {
  constexpr double kThinnest = 0x1p-10;
  DAX_REQUIRE(isWithin(stroke.width, kThinnest, 2147483647) || (stroke.width == 0 && mayFill), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isWithin(stroke.miterLimit, 1, 1000), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isWithin(stroke.alpha, 0, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(stroke.join >= DAXI_JOIN_ROUND && stroke.join <= DAXI_JOIN_BEVEL, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(stroke.cap >= DAXI_CAP_BUTT && stroke.cap <= DAXI_CAP_SQUARE, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(stroke.antialias == 0 || stroke.antialias == 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkStroke(const DaxiStroke& stroke, const Canvas& canvas, bool mayFill) {
  DAX_REQUIRE_OK(checkPen(stroke, mayFill));
  for (int32_t c = 0; c < canvas.channels; ++c) {
    DAX_REQUIRE(stroke.color[c] >= 0 && stroke.color[c] <= canvas.maxValue, DAX_STS_BAD_PARAM);
  }
  return DAX_STS_OK;
}

}  // namespace dax

DaxStatus DAXI_StrokeDefault(DaxiStroke* stroke) {
  DAX_REQUIRE(stroke, DAX_STS_NULL_POINTER);
  *stroke = {1, 4, 1, DAXI_JOIN_ROUND, DAXI_CAP_BUTT, 1, {0, 0, 0}, 0};
  return DAX_STS_OK;
}
