#include "daxi/convolve.h"

#include <cmath>
#include <limits>

#include "frame/op2d.h"
#include "frame/tiles.h"
#include "image/border/bordered_image.h"

static_assert(sizeof(DaxiConvolveCfg) == 32);

namespace dax {
namespace {

constexpr int32_t kMaxSide = 31, kStrip = 512, kRoom = kStrip + kMaxSide - 1;

// Adds weights[k] * from[k][i] to to[i], tap by tap, or begins with the first; four taps at a time, which spares loads of
// what is added to.
template <class Sum, class From, class Weight>
void addWeighted(const From* const* from, const Weight* weights, int32_t taps, int32_t count, bool isFirst,
                 Sum* __restrict to) {
  const auto product = [](Weight weight, From pixel) { return static_cast<Sum>(weight) * static_cast<Sum>(pixel); };
  int32_t k = 0;
  if (isFirst) {
    const From* const a = from[k++];
    for (int32_t i = 0; i < count; ++i) to[i] = product(weights[0], a[i]);
  }
  for (; k + 4 <= taps; k += 4) {
    const From *const a = from[k], *const b = from[k + 1], *const c = from[k + 2], *const d = from[k + 3];
    const Weight wa = weights[k], wb = weights[k + 1], wc = weights[k + 2], wd = weights[k + 3];
    for (int32_t i = 0; i < count; ++i) {
      to[i] = (((to[i] + product(wa, a[i])) + product(wb, b[i])) + product(wc, c[i])) + product(wd, d[i]);
    }
  }
  for (; k < taps; ++k) {
    const From* const a = from[k];
    for (int32_t i = 0; i < count; ++i) to[i] += product(weights[k], a[i]);
  }
}

// The same for taps along a row.
template <class Sum, class From, class Weight>
void addWeightedRow(const From* row, const Weight* weights, int32_t taps, int32_t count, bool isFirst, Sum* to) {
  const From* from[kMaxSide] = {row};
  for (int32_t k = 1; k < taps; ++k) from[k] = row + k;
  addWeighted(from, weights, taps, count, isFirst, to);
}

// Rounds sums of integers to the nearest multiple of 2^shift, halves to the even one.
template <class Sum, class D>
void storeSums(const Sum* sums, int32_t count, [[maybe_unused]] int32_t shift, D* __restrict to) {
  if constexpr (std::is_floating_point_v<D>) {
    std::copy_n(sums, count, to);
  } else {
    constexpr Sum kLow = std::numeric_limits<D>::min(), kHigh = std::numeric_limits<D>::max();
    const Sum belowHalf = shift > 0 ? (Sum{1} << (shift - 1)) - 1 : 0, odd = shift > 0;
    for (int32_t i = 0; i < count; ++i) {
      const Sum rounded = (sums[i] + belowHalf + ((sums[i] >> shift) & odd)) >> shift;
      to[i] = static_cast<D>(std::clamp(rounded, kLow, kHigh));
    }
  }
}

// A strip of an image's row, with the columns around it that a kernel reaches.
template <class T>
class ReachedStrip {
 public:
  ReachedStrip(const BorderedImage<T>& image, const DaxiConvolveCfg& cfg, int64_t x, int32_t count)
      : image_(image), x_(x - cfg.anchorX), count_(count + cfg.kernel.width - 1) {
    isWhole_ = image.isInMemory() || (x_ >= 0 && x_ + count_ <= image.size.width);
  }

  int32_t count() const { return count_; }
  // Whether rows of the image have all columns. Copies of others hold the value of a constant border, then.
  bool isWhole() const { return isWhole_; }

  // Pixels of a row, which may lie outside; `copy` has room for them.
  const T* row(int64_t y, T* copy) const {
    const T* const row = image_.row(y);
    if (row && isWhole_) return row + x_;
    for (int32_t i = 0; i < count_; ++i) copy[i] = row ? pixel(row, x_ + i) : image_.value;
    return copy;
  }

 private:
  T pixel(const T* row, int64_t x) const {
    if (x >= 0 && x < image_.size.width) return row[x];
    return hasBorderIndex(image_.border) ? row[borderIndex(x, image_.size.width, image_.border)] : image_.value;
  }

  const BorderedImage<T>& image_;
  int64_t x_;
  int32_t count_;
  bool isWhole_;
};

template <class Weight>
struct SeparableKernel {
  const Weight* x;
  const Weight* y;

  // A bound of the sums between the passes, too.
  double gain(DaxiSize size) const { return std::max(sumOf(x, size.width), 1.0) * sumOf(y, size.height); }

  static double sumOf(const Weight* weights, int32_t count) {
    double sum = 0;
    for (int32_t i = 0; i < count; ++i) sum += std::fabs(static_cast<double>(weights[i]));
    return sum;
  }

  template <class Sum, class T>
  void run(const ReachedStrip<T>& strip, const DaxiConvolveCfg& cfg, int32_t y0, int32_t count, Sum* sums) const {
    T copy[kRoom];
    Sum between[kRoom];
    const auto row = [&](int32_t j) { return strip.row(int64_t{y0} - cfg.anchorY + j, copy); };
    if (strip.isWhole()) {
      const T* rows[kMaxSide] = {row(0)};
      for (int32_t j = 1; j < cfg.kernel.height; ++j) rows[j] = row(j);
      addWeighted(rows, y, cfg.kernel.height, strip.count(), true, between);
    } else {
      for (int32_t j = 0; j < cfg.kernel.height; ++j) addWeightedRow(row(j), y + j, 1, strip.count(), j == 0, between);
    }
    addWeightedRow(between, x, cfg.kernel.width, count, true, sums);
  }
};

template <class Weight>
struct FullKernel {
  const Weight* weights;

  double gain(DaxiSize size) const { return SeparableKernel<Weight>::sumOf(weights, size.width * size.height); }

  template <class Sum, class T>
  void run(const ReachedStrip<T>& strip, const DaxiConvolveCfg& cfg, int32_t y0, int32_t count, Sum* sums) const {
    T copy[kRoom];
    for (int32_t j = 0; j < cfg.kernel.height; ++j) {
      const T* const row = strip.row(int64_t{y0} - cfg.anchorY + j, copy);
      addWeightedRow(row, weights + j * cfg.kernel.width, cfg.kernel.width, count, j == 0, sums);
    }
  }
};

// Pixels of the strip that begins at x: few at both ends of a row, so that strips between them reach no border.
int64_t stripAt(int64_t x, int64_t width) {
  constexpr int64_t kEnd = kMaxSide + 1;
  if (x == 0) return std::min(kEnd, width);
  return width - x <= kEnd ? width - x : std::min<int64_t>(kStrip, width - kEnd - x);
}

template <class Sum, class Kernel, class T, class D>
DaxStatus convolveStrips(PoolThreads on, const BorderedImage<T>& image, const Kernel& kernel,
                         const DaxiConvolveCfg& cfg, D* dst, int32_t dstStep) {
  return runRows(on, image.size.height, [&](int32_t first, int32_t end) {
    Sum sums[kStrip]{};
    for (int32_t y = first; y < end; ++y) {
      for (int64_t x = 0, count; x < image.size.width; x += count) {
        count = stripAt(x, image.size.width);
        const auto pixels = static_cast<int32_t>(count);
        kernel.run(ReachedStrip<T>(image, cfg, x, pixels), cfg, y, pixels, sums);
        storeSums(sums, pixels, cfg.shift, rowAt(dst, dstStep, y) + x);
      }
    }
  });
}

DaxStatus checkConvolve(const DaxiConvolveCfg& cfg) {
  const auto isSide = [](int32_t side) { return side >= 1 && side <= kMaxSide; };
  DAX_REQUIRE(isSide(cfg.kernel.width) && isSide(cfg.kernel.height), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.anchorX >= 0 && cfg.anchorX < cfg.kernel.width, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.anchorY >= 0 && cfg.anchorY < cfg.kernel.height, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.shift >= 0 && cfg.shift <= 30, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_IN_MEMORY, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.value), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class Kernel, class T, class D>
DaxStatus convolve(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, Kernel kernel,
                   bool hasKernel, const DaxiConvolveCfg* cfg) {
  DAX_REQUIRE(src && dst && hasKernel && cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkConvolve(*cfg));
  const BorderedImage<T> image = {src, srcStep, size, cfg->border, borderPixel<T>(cfg->value)};
  if constexpr (std::is_floating_point_v<D>) {
    return convolveStrips<float>(on, image, kernel, *cfg, dst, dstStep);
  } else {
    // Sums of 32 bits where they suffice: pixels times weights, and what rounding adds.
    const double largest = kernel.gain(cfg->kernel) * std::numeric_limits<T>::max() + std::ldexp(1, cfg->shift);
    return largest <= std::numeric_limits<int32_t>::max()
               ? convolveStrips<int32_t>(on, image, kernel, *cfg, dst, dstStep)
               : convolveStrips<int64_t>(on, image, kernel, *cfg, dst, dstStep);
  }
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ConvolveDefaultCfg(DaxiConvolveCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {{3, 3}, 1, 1, 0, DAXI_BORDER_REPLICATE, 0};
  return DAX_STS_OK;
}

#define DAX_CONVOLVE(SUFFIX, T, D, W)                                                                                  \
  DaxStatus DAXI_FilterSeparable_##SUFFIX##_C1R(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, \
                                                const W* weightsX, const W* weightsY, const DaxiConvolveCfg* cfg) {    \
    return dax::convolve({}, src, srcStep, dst, dstStep, size, dax::SeparableKernel<W>{weightsX, weightsY},            \
                         weightsX && weightsY, cfg);                                                                   \
  }                                                                                                                    \
  DaxStatus DAXI_FilterSeparable_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,        \
                                                   D* dst, int32_t dstStep, DaxiSize size, const W* weightsX,          \
                                                   const W* weightsY, const DaxiConvolveCfg* cfg) {                    \
    return dax::convolve({pool, threads}, src, srcStep, dst, dstStep, size,                                            \
                         dax::SeparableKernel<W>{weightsX, weightsY}, weightsX && weightsY, cfg);                      \
  }                                                                                                                    \
  DaxStatus DAXI_Filter_##SUFFIX##_C1R(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,          \
                                       const W* weights, const DaxiConvolveCfg* cfg) {                                 \
    return dax::convolve({}, src, srcStep, dst, dstStep, size, dax::FullKernel<W>{weights}, weights != nullptr, cfg);  \
  }                                                                                                                    \
  DaxStatus DAXI_Filter_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst,         \
                                          int32_t dstStep, DaxiSize size, const W* weights,                            \
                                          const DaxiConvolveCfg* cfg) {                                                \
    return dax::convolve({pool, threads}, src, srcStep, dst, dstStep, size, dax::FullKernel<W>{weights},               \
                         weights != nullptr, cfg);                                                                     \
  }
DAX_CONVOLVE(8u, uint8_t, uint8_t, int16_t)
DAX_CONVOLVE(8u16s, uint8_t, int16_t, int16_t)
DAX_CONVOLVE(16u, uint16_t, uint16_t, int16_t)
DAX_CONVOLVE(8u32f, uint8_t, float, float)
DAX_CONVOLVE(16u32f, uint16_t, float, float)
DAX_CONVOLVE(32f, float, float, float)
#undef DAX_CONVOLVE
