#include "image/statistics/projection.h"

#include <type_traits>

#include "image/statistics/sum.h"

namespace dax {
namespace {

// Columns that are summed at once, and rows after which 32 bits of integers are full.
constexpr int32_t kStrip = 512, kBand = 32767;

template <class T>
void addStrip(Plane<const T> src, int32_t firstX, int32_t width, int32_t height, double* sums) {
  using Sum = std::conditional_t<std::is_floating_point_v<T>, double, int32_t>;
  Sum strip[kStrip];
  for (int32_t first = 0, end; first < height; first = end) {
    end = first + std::min(kBand, height - first);
    std::fill_n(strip, width, Sum{0});
    for (int32_t y = first; y < end; ++y) {
      const T* const row = rowAt(src.data, src.step, y) + firstX;
      for (int32_t x = 0; x < width; ++x) strip[x] += row[x];
    }
    for (int32_t x = 0; x < width; ++x) sums[firstX + x] += strip[x];
  }
}

DaxStatus checkProjection(const void* src, int32_t srcStep, DaxiSize size, const double* sums) {
  DAX_REQUIRE(sums, DAX_STS_NULL_POINTER);
  return checkImage(src, srcStep, size);
}

double positiveNan(double value) {
  return std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value;
}

}  // namespace

template <class T>
DaxStatus projectRows(const T* src, int32_t srcStep, const uint8_t*, int32_t, DaxiSize size, double* sums) {
  DAX_REQUIRE_OK(checkProjection(src, srcStep, size, sums));
  for (int32_t y = 0; y < size.height; ++y) {
    Sums<PixelValue, T> sum;
    forEachRunOfRow<1>(
        size.width, [&](const T* run, int32_t count) { sum.addValues(count, run); }, nullptr, rowAt(src, srcStep, y));
    sums[y] = sum.total();
  }
  return DAX_STS_OK;
}

template <class T>
DaxStatus projectColumns(const T* src, int32_t srcStep, const uint8_t*, int32_t, DaxiSize size, double* sums) {
  DAX_REQUIRE_OK(checkProjection(src, srcStep, size, sums));
  std::fill_n(sums, size.width, 0.0);
  for (int32_t x = 0; x < size.width; x += std::min(kStrip, size.width - x)) {
    addStrip(Plane{src, srcStep}, x, std::min(kStrip, size.width - x), size.height, sums);
  }
  for (int32_t x = 0; x < size.width; ++x) sums[x] = positiveNan(sums[x]);
  return DAX_STS_OK;
}

#define DAX_PROJECTION_TYPE(T)                                                                   \
  template DaxStatus projectRows(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, double*); \
  template DaxStatus projectColumns(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, double*);
DAX_PROJECTION_TYPE(uint8_t)
DAX_PROJECTION_TYPE(uint16_t)
DAX_PROJECTION_TYPE(int16_t)
DAX_PROJECTION_TYPE(float)
#undef DAX_PROJECTION_TYPE

}  // namespace dax
