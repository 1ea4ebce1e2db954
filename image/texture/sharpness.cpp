#include "daxi/sharpness.h"

#include <type_traits>

#include "frame/check.h"
#include "frame/rows.h"

namespace dax {
namespace {

__extension__ using WideSum = __int128;

// Differences of integers fit 64 bits with their squares; sums of these over an image may not.
template <class T>
struct FocusedImage {
  using Number = std::conditional_t<std::is_integral_v<T>, int64_t, double>;
  using Sum = std::conditional_t<std::is_integral_v<T>, WideSum, double>;

  const T* src;
  int32_t srcStep;
  DaxiSize size;

  double count() const { return (size.width - 2.0) * (size.height - 2.0); }

  // visit(v) of all pixels but the outermost, in raster order; v(dx, dy) is a neighbour.
  template <class Visit>
  void forEachPixel(Visit visit) const {
    for (int32_t y = 1; y + 1 < size.height; ++y) {
      const T* const row = rowAt(src, srcStep, y);
      const T* const rows[3] = {row - srcStep, row, row + srcStep};
      for (int32_t x = 1; x + 1 < size.width; ++x) {
        visit([&](int32_t dx, int32_t dy) { return Number{rows[dy + 1][x + dx]}; });
      }
    }
  }
};

template <class T>
double tenengrad(const FocusedImage<T>& image) {
  typename FocusedImage<T>::Sum sum = 0;
  image.forEachPixel([&](auto v) {
    const auto gx = (v(1, -1) - v(-1, -1)) + 2 * (v(1, 0) - v(-1, 0)) + (v(1, 1) - v(-1, 1));
    const auto gy = (v(-1, 1) - v(-1, -1)) + 2 * (v(0, 1) - v(0, -1)) + (v(1, 1) - v(1, -1));
    sum += gx * gx + gy * gy;
  });
  return static_cast<double>(sum) / image.count();
}

template <class T>
double brenner(const FocusedImage<T>& image) {
  typename FocusedImage<T>::Sum sum = 0;
  image.forEachPixel([&](auto v) {
    const auto step = v(1, 0) - v(-1, 0);
    sum += step * step;
  });
  return static_cast<double>(sum) / image.count();
}

template <class Neighbours>
auto laplacianOf(const Neighbours& v) {
  return (v(-1, 0) + v(1, 0)) + (v(0, -1) + v(0, 1)) - 4 * v(0, 0);
}

// In two passes, since the difference of a mean of squares and a squared mean cancels.
template <class T>
double laplacianVariance(const FocusedImage<T>& image) {
  typename FocusedImage<T>::Sum sum = 0;
  image.forEachPixel([&](auto v) { sum += laplacianOf(v); });
  const double mean = static_cast<double>(sum) / image.count();
  double squares = 0;
  image.forEachPixel([&](auto v) {
    const double off = static_cast<double>(laplacianOf(v)) - mean;
    squares += off * off;
  });
  return squares / image.count();
}

template <class T>
DaxStatus measureSharpness(double (*measure)(const FocusedImage<T>&), const FocusedImage<T>& image, double* sharpness) {
  DAX_REQUIRE(image.src && sharpness, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(image.size, 3), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(image.size.width, image.srcStep), DAX_STS_BAD_STEP);
  *sharpness = measure(image);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_SHARPNESS_OF(NAME, MEASURE, SUFFIX, T)                                                                   \
  DaxStatus DAXI_Sharpness##NAME##_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size, double* sharpness) { \
    return dax::measureSharpness<T>(dax::MEASURE<T>, {src, srcStep, size}, sharpness);                               \
  }
#define DAX_SHARPNESS(NAME, MEASURE)             \
  DAX_SHARPNESS_OF(NAME, MEASURE, 8u, uint8_t)   \
  DAX_SHARPNESS_OF(NAME, MEASURE, 16u, uint16_t) \
  DAX_SHARPNESS_OF(NAME, MEASURE, 32f, float)
DAX_SHARPNESS(Tenengrad, tenengrad)
DAX_SHARPNESS(LaplacianVariance, laplacianVariance)
DAX_SHARPNESS(Brenner, brenner)
#undef DAX_SHARPNESS
#undef DAX_SHARPNESS_OF
