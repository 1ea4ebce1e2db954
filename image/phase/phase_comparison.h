// The spectra of two windowed images, and what they tell of the shift from one to the other.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/transform/fourier_plan.h"

namespace dax {

constexpr int32_t kMinPhaseSide = 16, kMaxPhaseSide = 8192;

template <class T>
struct PhaseImage {
  const T* data;
  int32_t step;
  DaxiSize size;
};

// Where a Hann window fades: on all sides, or at the ends of columns only, where rows are closed rings.
enum class PhaseWindow { kSides, kColumns };

// Memory to compare images of at most this size.
struct PhaseLayout {
  PhaseLayout(DaxiSize image, BufferLayout& layout);

  DaxiSize size;  // of the transforms
  BufferPiece<uint8_t> plan, work;
  BufferPiece<float> plane;
  BufferPiece<DaxComplex32f> spectra[2] = {};
  BufferPiece<double> columns, rows;
};

struct PhasePeak {
  int32_t x, y;  // the shift to whole pixels
  double value, second;
};

class PhaseComparison {
 public:
  PhaseComparison(PoolThreads on, const PhaseLayout& at, void* buffer);

  // Once, before all else.
  DaxStatus init() { return dftPlanInit<float>(size_, plan_); }

  // The spectrum of image 0 or 1: less its weighted mean, windowed, divided by its root mean square.
  // 0x10000032: the sums are not finite; 0x10000033: it is flat.
  template <class T>
  DaxStatus load(int which, const PhaseImage<T>& image, PhaseWindow window);

  // Of the whitened correlation, in place of spectrum 0.
  DaxStatus findPeak(PhasePeak* peak);

  // The maximum, near 0, of the continuous correlation, in place of spectrum 0. 0x10000033: there is none.
  DaxStatus refine(double (&shift)[2]);

  // |F| at the frequency (fx, fy), in cycles a pixel, of spectrum 0 or 1; fx >= 0.
  double magnitudeAt(int which, double fx, double fy) const;

 private:
  struct Slopes;
  bool isDoubled(int32_t u) const { return u > 0 && 2 * u != size_.width; }
  DaxStatus whiten(double* count);
  DaxStatus multiply();
  DaxStatus findSlopes(const double (&shift)[2], Slopes* slopes) const;

  PoolThreads on_;
  DaxiSize size_, half_;
  void *plan_, *work_;
  float* plane_;
  DaxComplex32f* spectra_[2];
  double *columns_, *rows_;
};

// Two images of one size.
template <class A, class B = A>
struct PhasePair {
  PhaseImage<A> first;
  PhaseImage<B> second;
};

// A quarter of the pixels, or of the rows of a ring.
inline bool overlapsEnough(DaxiSize size, const PhasePeak& peak, PhaseWindow window) {
  const int64_t height = size.height - std::abs(peak.y);
  const int64_t width = size.width - (window == PhaseWindow::kSides ? std::abs(peak.x) : 0);
  return width > 0 && height > 0 && 4 * width * height >= int64_t{size.width} * size.height;
}

// What both images show of each other at this shift. Rings go on: their second image has its columns twice.
template <class A, class B>
PhasePair<A, B> commonPart(const PhasePair<A, B>& pair, const PhasePeak& peak, PhaseWindow window) {
  const auto [width, height] = pair.first.size;
  const bool isRing = window == PhaseWindow::kColumns;
  const DaxiSize size = {isRing ? width : width - std::abs(peak.x), height - std::abs(peak.y)};
  const auto part = [&size](const auto& image, int32_t x, int32_t y) {
    return std::remove_cvref_t<decltype(image)>{rowAt(image.data, image.step, y) + x, image.step, size};
  };
  const auto from = [](int32_t shift) { return std::max(shift, 0); };
  const int32_t x1 = isRing ? 0 : from(-peak.x), x2 = isRing ? (peak.x + width) % width : from(peak.x);
  return {part(pair.first, x1, from(-peak.y)), part(pair.second, x2, from(peak.y))};
}

// The shift to parts of a pixel from that to whole ones, in the common part, windowed anew.
template <class A, class B>
DaxStatus refineShift(PhaseComparison& by, const PhasePair<A, B>& pair, const PhasePeak& peak, PhaseWindow window,
                      double (&shift)[2]) {
  DAX_REQUIRE(overlapsEnough(pair.first.size, peak, window), DAX_STS_DEGENERATE);
  const PhasePair<A, B> part = commonPart(pair, peak, window);
  DAX_REQUIRE_OK(by.load(0, part.first, window));
  DAX_REQUIRE_OK(by.load(1, part.second, window));
  DAX_REQUIRE_OK(by.refine(shift));
  shift[0] += peak.x, shift[1] += peak.y;
  return DAX_STS_OK;
}

}  // namespace dax
