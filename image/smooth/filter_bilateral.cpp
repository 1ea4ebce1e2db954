#include "daxi/filter_bilateral.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "frame/numeric/round.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/window/windowed_rows.h"

static_assert(sizeof(DaxiFilterBilateralCfg) == 32);

namespace dax {
namespace {

constexpr int32_t kMaxRadius = 15, kMaxTaps = 31 * 31;
constexpr int32_t kBilateralRun = 64;                          // pixels that are computed together
constexpr int32_t kBilateralSteps = 512, kBilateralReach = 8;  // of the table of 32f: steps a sigma, sigmas

DaxStatus checkBilateralCfg(const DaxiFilterBilateralCfg& cfg, DaxiSize size) {
  constexpr double kMax = std::numeric_limits<double>::max();
  DAX_REQUIRE(cfg.radius >= 1 && cfg.radius <= kMaxRadius, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(atMost(size, std::numeric_limits<int32_t>::max() - 2 * cfg.radius), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_CLIP, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.sigmaSpace >= 1e-3 && cfg.sigmaSpace <= kMax, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.sigmaGrey >= 1e-30 && cfg.sigmaGrey <= 1e30, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::fabs(cfg.value) <= kMax, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

float bellOf(double distance, double sigma) {
  const double ratio = distance / sigma;
  return static_cast<float>(exp(-ratio * ratio / 2));
}

// Weights of differences in grey.
template <class T>
struct GreyWeights;

template <>
struct GreyWeights<uint8_t> {
  float table[256];
  explicit GreyWeights(double sigma) {
    for (int32_t d = 0; d < 256; ++d) table[d] = bellOf(d, sigma);
  }
  // Of a run of pixels: differences by vectors, then one look-up each.
  void look(const uint8_t* pixels, const uint8_t* centres, int32_t count, float* __restrict weights) const {
    uint8_t differences[kBilateralRun];
    for (int32_t i = 0; i < count; ++i) {
      const uint8_t high = std::max(pixels[i], centres[i]), low = std::min(pixels[i], centres[i]);
      differences[i] = static_cast<uint8_t>(high - low);
    }
#pragma GCC unroll 8
    for (int32_t i = 0; i < count; ++i) weights[i] = table[differences[i]];
  }
};

template <>
struct GreyWeights<float> {
  float table[kBilateralSteps * kBilateralReach + 1];
  double scale;
  explicit GreyWeights(double sigma) : scale(kBilateralSteps / sigma) {
    for (int32_t i = 0; i <= kBilateralSteps * kBilateralReach; ++i) table[i] = bellOf(i, kBilateralSteps);
  }
  // 0 where a difference is NaN or infinite.
  float at(float v, float centre) const {
    const double place = std::fabs(static_cast<double>(v) - centre) * scale;
    if (!(place < kBilateralSteps * kBilateralReach)) return 0;
    const auto i = static_cast<int32_t>(place);
    return table[i] + static_cast<float>(place - i) * (table[i + 1] - table[i]);
  }
  void look(const float* pixels, const float* centres, int32_t count, float* __restrict weights) const {
    for (int32_t i = 0; i < count; ++i) weights[i] = at(pixels[i], centres[i]);
  }
};

struct BilateralTap {
  int32_t dx, dy;
  float weight;
};

struct BilateralDisc {
  BilateralTap taps[kMaxTaps];
  int32_t count = 0;

  BilateralDisc(int32_t radius, double sigma) {
    for (int32_t dy = -radius; dy <= radius; ++dy) {
      for (int32_t dx = -radius; dx <= radius; ++dx) {
        const int32_t square = dx * dx + dy * dy;
        if (square <= radius * radius) taps[count++] = {dx, dy, bellOf(std::sqrt(static_cast<double>(square)), sigma)};
      }
    }
  }
};

// The weights, a row of the border's value, and the region with all that discs reach around it.
template <class T>
struct BilateralBuffer {
  BilateralBuffer(DaxiSize size, const DaxiFilterBilateralCfg& cfg)
      : step(size.width + 2 * cfg.radius),
        grey(layout.add<GreyWeights<T>>(1)),
        disc(layout.add<BilateralDisc>(1)),
        constant(layout.add<T>(static_cast<uint64_t>(size.width))) {
    const auto rows = static_cast<uint64_t>(size.height) + 2 * static_cast<uint64_t>(cfg.radius);
    extended = layout.add<T>(cfg.border == DAXI_BORDER_IN_MEMORY ? 0 : rows * static_cast<uint64_t>(step));
  }
  BufferLayout layout;
  int32_t step;
  BufferPiece<GreyWeights<T>> grey;
  BufferPiece<BilateralDisc> disc;
  BufferPiece<T> constant, extended;
};

template <class T>
struct BilateralCall {
  PoolThreads on;
  const T* src;
  int32_t srcStep;
  T* dst;
  int32_t dstStep;
  DaxiSize size;
  const DaxiFilterBilateralCfg* cfg;
  void* buffer;
};

// Clipped borders are left as they are.
template <class T>
void extendImage(const BilateralCall<T>& call, const BilateralBuffer<T>& at) {
  const int32_t radius = call.cfg->radius, side = 2 * radius + 1, width = call.size.width;
  const WindowedRegion region(call.size, {side, side}, call.cfg->border);
  const T value = borderPixel<T>(call.cfg->value);
  std::fill_n(at.constant.in(call.buffer), width, value);
  const WindowedRows<T> rows = {call.src, call.srcStep, region, at.constant.in(call.buffer)};
  for (int32_t y = 0; y < call.size.height + 2 * radius; ++y) {
    T* const to = rowAt(at.extended.in(call.buffer), at.step, y);
    const T* const row = rows(int64_t{y} - radius);
    if (!row) continue;
    if (region.border == DAXI_BORDER_CONSTANT) std::fill_n(to, at.step, value);
    std::copy_n(row, width, to + radius);
    region.extend(to);
  }
}

template <class T>
T bilateralPixel(float sum, float weights, T centre) {
  if constexpr (std::is_floating_point_v<T>) {
    return weights > 0 ? sum / weights : centre;
  } else {
    return roundTo<T>(sum / weights);
  }
}

template <class T>
class BilateralRows {
 public:
  BilateralRows(const BilateralCall<T>& call, const BilateralBuffer<T>& at)
      : call_(call),
        grey_(*at.grey.in(call.buffer)),
        disc_(*at.disc.in(call.buffer)),
        isClipped_(call.cfg->border == DAXI_BORDER_CLIP) {
    const bool isInMemory = call.cfg->border == DAXI_BORDER_IN_MEMORY;
    const int32_t radius = call.cfg->radius;
    step_ = isInMemory ? call.srcStep : at.step;
    image_ = isInMemory ? call.src : rowAt(at.extended.in(call.buffer), at.step, radius) + radius;
  }

  void operator()(int32_t y) const {
    for (int32_t x = 0; x < call_.size.width; x += kBilateralRun)
      runAt(x, std::min(kBilateralRun, call_.size.width - x), y);
  }

 private:
  // Tap by tap over a run of pixels, so that each pixel's sums grow in the order of taps.
  void runAt(int32_t x, int32_t count, int32_t y) const {
    float sums[kBilateralRun] = {}, weights[kBilateralRun] = {};
    const T* const centre = rowAt(image_, step_, y) + x;
    for (int32_t k = 0; k < disc_.count; ++k) {
      const BilateralTap tap = disc_.taps[k];
      int32_t first = 0, end = count;
      if (isClipped_) {
        if (y + tap.dy < 0 || y + tap.dy >= call_.size.height) continue;
        first = std::max(0, -x - tap.dx), end = std::min(count, call_.size.width - x - tap.dx);
      }
      const T* const pixels = rowAt(image_, step_, y + tap.dy) + x + tap.dx;
      addTap(centre + first, pixels + first, tap.weight, end - first, sums + first, weights + first);
    }
    T* const dst = rowAt(call_.dst, call_.dstStep, y) + x;
    for (int32_t i = 0; i < count; ++i) dst[i] = bilateralPixel(sums[i], weights[i], centre[i]);
  }

  // A pixel of no weight may be NaN.
  void addTap(const T* centres, const T* pixels, float near, int32_t count, float* __restrict sums,
              float* __restrict weights) const {
    float greys[kBilateralRun];
    grey_.look(pixels, centres, count, greys);
    for (int32_t i = 0; i < count; ++i) {
      const auto pixel = static_cast<float>(pixels[i]);
      const float weight = near * greys[i];
      sums[i] += weight * (std::is_floating_point_v<T> && weight == 0 ? 0 : pixel);
      weights[i] += weight;
    }
  }

  const BilateralCall<T>& call_;
  const GreyWeights<T>& grey_;
  const BilateralDisc& disc_;
  bool isClipped_;
  const T* image_;
  int32_t step_;
};

template <class T>
DaxStatus bilateral(const BilateralCall<T>& call) {
  DAX_REQUIRE(call.src && call.dst && call.cfg && call.buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(call.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(call.size.width <= std::min(call.srcStep, call.dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkBilateralCfg(*call.cfg, call.size));
  const BilateralBuffer<T> at(call.size, *call.cfg);
  std::construct_at(at.grey.in(call.buffer), call.cfg->sigmaGrey);
  std::construct_at(at.disc.in(call.buffer), call.cfg->radius, call.cfg->sigmaSpace);
  if (call.cfg->border != DAXI_BORDER_IN_MEMORY) extendImage(call, at);
  const BilateralRows<T> rows(call, at);
  return runRows(call.on, call.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) rows(y);
  });
}

template <class T>
DaxStatus bilateralBufferSize(DaxiSize size, const DaxiFilterBilateralCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkBilateralCfg(*cfg, size));
  return BilateralBuffer<T>(size, *cfg).layout.store(bytes);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_FilterBilateralDefaultCfg(DaxiFilterBilateralCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {5, DAXI_BORDER_REPLICATE, 3, 25, 0};
  return DAX_STS_OK;
}

#define DAX_BILATERAL(SUFFIX, T)                                                                                       \
  DaxStatus DAXI_FilterBilateralBufferSize_##SUFFIX(DaxiSize size, const DaxiFilterBilateralCfg* cfg,                  \
                                                    uint64_t* bytes) {                                                 \
    return dax::bilateralBufferSize<T>(size, cfg, bytes);                                                              \
  }                                                                                                                    \
  DaxStatus DAXI_FilterBilateral_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                                                const DaxiFilterBilateralCfg* cfg, void* buffer) {                     \
    return dax::bilateral<T>({{}, src, srcStep, dst, dstStep, size, cfg, buffer});                                     \
  }                                                                                                                    \
  DaxStatus DAXI_FilterBilateral_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,        \
                                                   T* dst, int32_t dstStep, DaxiSize size,                             \
                                                   const DaxiFilterBilateralCfg* cfg, void* buffer) {                  \
    return dax::bilateral<T>({{pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer});                        \
  }
DAX_BILATERAL(8u, uint8_t)
DAX_BILATERAL(32f, float)
#undef DAX_BILATERAL
