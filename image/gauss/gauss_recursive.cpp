#include "daxi/gauss_recursive.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "frame/rows.h"
#include "frame/slices.h"
#include "image/border/bordered_image.h"

static_assert(sizeof(DaxiGaussRecursiveCfg) == 24);

namespace dax {
namespace {

constexpr int32_t kLanes = 8, kOrder = 4;
constexpr uint32_t kMaxRecursiveTiles = 8;

// One sample of so many lines, which are filtered together.
using Sample = double[kLanes];

// forward: y(i) = sum n(k) x(i - k), k from 0 to 3, - sum d(k) y(i - k); backward: y(i) = sum m(k) x(i + k) - sum d(k)
// y(i + k), k from 1 to 4. The result is the sum of both.
struct Recursion {
  double n[kOrder], m[kOrder + 1], d[kOrder + 1];
  double forwardGain, backwardGain;
};

// Deriche's sum of two damped oscillations that is nearest to a Gaussian.
double nearGaussian(double t) {
  const auto damped = [t](double a, double b, double frequency, double decay) {
    const SinCos turn = elementary::sinCos(frequency * t);
    return (a * turn.cosine + b * turn.sine) * elementary::exp(-decay * t);
  };
  return damped(1.680, 3.735, 0.6318, 1.783) + damped(-0.6803, -0.2598, 1.997, 1.723);
}

// The poles give d, the values at 0..3 pixels n; m makes the backward part begin at 1.
Recursion recursionOf(double sigma) {
  Recursion r = {};
  const double p = elementary::exp(-1.783 / sigma), q = elementary::exp(-1.723 / sigma);
  const double u = 2 * p * elementary::cos(0.6318 / sigma), v = 2 * q * elementary::cos(1.997 / sigma);
  const double d[kOrder + 1] = {1, -(u + v), p * p + u * v + q * q, -(u * (q * q) + v * (p * p)), p * p * (q * q)};
  std::copy_n(d, kOrder + 1, r.d);
  double poles = 0, forward = 0, backward = 0;
  for (int k = 0; k < kOrder; ++k) {
    for (int j = 0; j <= k; ++j) r.n[k] += d[j] * nearGaussian((k - j) / sigma);
    forward += r.n[k];
  }
  for (int k = 0; k <= kOrder; ++k) poles += d[k];
  for (int k = 1; k <= kOrder; ++k) {
    r.m[k] = (k < kOrder ? r.n[k] : 0) - d[k] * r.n[0];
    backward += r.m[k];
  }
  const double gain = (forward + backward) / poles;
  for (double& n : r.n) n /= gain;
  for (double& m : r.m) m /= gain;
  r.forwardGain = forward / poles / gain;
  r.backwardGain = backward / poles / gain;
  return r;
}

// x and y have kOrder samples of room at both ends. Lines begin and end as if they went on with their last value.
void filterLines(const Recursion& r, Sample* x, Sample* y, int64_t count) {
  Sample back[kOrder];
  for (int k = 1; k <= kOrder; ++k) {
    for (int l = 0; l < kLanes; ++l) {
      x[-k][l] = x[0][l], x[count - 1 + k][l] = x[count - 1][l];
      y[-k][l] = r.forwardGain * x[0][l];
      back[k - 1][l] = r.backwardGain * x[count - 1][l];
    }
  }
  for (int64_t i = 0; i < count; ++i) {
    for (int l = 0; l < kLanes; ++l) {
      y[i][l] = ((r.n[0] * x[i][l] + r.n[1] * x[i - 1][l]) + (r.n[2] * x[i - 2][l] + r.n[3] * x[i - 3][l])) -
                ((r.d[1] * y[i - 1][l] + r.d[2] * y[i - 2][l]) + (r.d[3] * y[i - 3][l] + r.d[4] * y[i - 4][l]));
    }
  }
  // The backward result at i lies at back[i % 4], in place of that at i + 4.
  for (int64_t i = count - 1; i >= 0; --i) {
    const auto ahead = [&](int64_t k) { return back[(i + k) % kOrder]; };
    double *const b1 = ahead(1), *const b2 = ahead(2), *const b3 = ahead(3), *const b4 = ahead(4);
    for (int l = 0; l < kLanes; ++l) {
      b4[l] = ((r.m[1] * x[i + 1][l] + r.m[2] * x[i + 2][l]) + (r.m[3] * x[i + 3][l] + r.m[4] * x[i + 4][l])) -
              ((r.d[1] * b1[l] + r.d[2] * b2[l]) + (r.d[3] * b3[l] + r.d[4] * b4[l]));
      y[i][l] += b4[l];
    }
  }
}

int32_t warmUp(const DaxiGaussRecursiveCfg& cfg) {
  return static_cast<int32_t>(std::ceil(8 * cfg.sigma));
}

// The image between the passes; for each tile the samples of its lines and their results.
struct RecursiveBuffer {
  RecursiveBuffer(DaxiSize size, const DaxiGaussRecursiveCfg& cfg)
      : samples(static_cast<uint64_t>(std::max(size.width, size.height)) + 2 * static_cast<uint64_t>(warmUp(cfg)) +
                2 * kOrder),
        between(layout.add<float>(pixelsOf(size))),
        lines(layout.add<Sample>(2 * samples * kMaxRecursiveTiles)) {}
  BufferLayout layout;
  uint64_t samples;
  BufferPiece<float> between;
  BufferPiece<Sample> lines;
};

template <class T>
T smoothPixel(double value) {
  if constexpr (std::is_integral_v<T>) {
    return roundTo<T>(value);
  } else {
    return static_cast<T>(value);
  }
}

template <class T>
class RecursiveGauss {
 public:
  RecursiveGauss(const BorderedImage<T>& image, const DaxiGaussRecursiveCfg& cfg, void* buffer)
      : image_(image),
        recursion_(recursionOf(cfg.sigma)),
        warmUp_(warmUp(cfg)),
        at_(image.size, cfg),
        buffer_(buffer) {}

  // Columns x.. of the source, to the image between.
  void smoothColumns(int32_t x, uint32_t tile) const {
    const int32_t width = image_.size.width, count = std::min(kLanes, width - x);
    const Sample* const smooth = smoothLines(image_.size.height, tile, [&](int64_t y, Sample& sample) {
      const T* const row = image_.row(y);
      for (int32_t l = 0; l < kLanes; ++l) sample[l] = row ? row[x + std::min(l, count - 1)] : image_.value;
    });
    for (int32_t y = 0; y < image_.size.height; ++y) {
      float* const to = rowAt(at_.between.in(buffer_), width, y) + x;
      for (int32_t l = 0; l < count; ++l) to[l] = static_cast<float>(smooth[y][l]);
    }
  }

  // Rows y.. of the image between, to the result.
  void smoothRows(int32_t y, uint32_t tile, T* dst, int32_t dstStep) const {
    const int32_t width = image_.size.width, count = std::min(kLanes, image_.size.height - y);
    const float* rows[kLanes];
    for (int32_t l = 0; l < kLanes; ++l) rows[l] = rowAt(at_.between.in(buffer_), width, y + std::min(l, count - 1));
    const Sample* const smooth = smoothLines(width, tile, [&](int64_t x, Sample& sample) {
      const bool isConstant = image_.border == DAXI_BORDER_CONSTANT && (x < 0 || x >= width);
      const int64_t column = isConstant ? 0 : borderIndex(x, width, image_.border);
      for (int32_t l = 0; l < kLanes; ++l) sample[l] = isConstant ? image_.value : rows[l][column];
    });
    for (int32_t l = 0; l < count; ++l) {
      T* const to = rowAt(dst, dstStep, y + l);
      for (int32_t x = 0; x < width; ++x) to[x] = smoothPixel<T>(smooth[x][l]);
    }
  }

 private:
  // take(i, sample) fills in samples -warmUp..length + warmUp - 1.
  template <class Take>
  const Sample* smoothLines(int32_t length, uint32_t tile, Take take) const {
    Sample* const x = at_.lines.in(buffer_) + 2 * at_.samples * tile + kOrder;
    Sample* const y = x + at_.samples;
    const int64_t count = int64_t{length} + 2 * int64_t{warmUp_};
    for (int64_t i = 0; i < count; ++i) take(i - warmUp_, x[i]);
    filterLines(recursion_, x, y, count);
    return y + warmUp_;
  }

  const BorderedImage<T>& image_;
  Recursion recursion_;
  int32_t warmUp_;
  RecursiveBuffer at_;
  void* buffer_;
};

// Runs body(first line, tile) for every kLanes of `lines` lines.
template <class Body>
DaxStatus runLines(PoolThreads on, int32_t lines, Body body) {
  const auto strips = static_cast<int32_t>((int64_t{lines} + kLanes - 1) / kLanes);
  return runSlices(on, kMaxRecursiveTiles, strips, 1, [&](int32_t first, int32_t end, uint32_t tile) {
    for (int32_t strip = first; strip < end; ++strip) body(strip * kLanes, tile);
  });
}

DaxStatus checkRecursive(const DaxiGaussRecursiveCfg& cfg) {
  DAX_REQUIRE(cfg.sigma >= 2 && cfg.sigma <= 100, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_CONSTANT, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.value), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus recursiveBufferSize(DaxiSize size, const DaxiGaussRecursiveCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkRecursive(*cfg));
  return RecursiveBuffer(size, *cfg).layout.store(bytes);
}

template <class T>
DaxStatus gaussRecursive(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                         const DaxiGaussRecursiveCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkRecursive(*cfg));
  const BorderedImage<T> image = {src, srcStep, size, cfg->border, borderPixel<T>(cfg->value)};
  const RecursiveGauss<T> gauss(image, *cfg, buffer);
  DAX_REQUIRE_OK(runLines(on, size.width, [&](int32_t x, uint32_t tile) { gauss.smoothColumns(x, tile); }));
  return runLines(on, size.height, [&](int32_t y, uint32_t tile) { gauss.smoothRows(y, tile, dst, dstStep); });
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_GaussRecursiveDefaultCfg(DaxiGaussRecursiveCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {10, DAXI_BORDER_REPLICATE, 0, 0};
  return DAX_STS_OK;
}

#define DAX_RECURSIVE(SUFFIX, T)                                                                                      \
  DaxStatus DAXI_FilterGaussRecursiveBufferSize_##SUFFIX(DaxiSize size, const DaxiGaussRecursiveCfg* cfg,             \
                                                         uint64_t* bytes) {                                           \
    return dax::recursiveBufferSize(size, cfg, bytes);                                                                \
  }                                                                                                                   \
  DaxStatus DAXI_FilterGaussRecursive_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep,          \
                                                     DaxiSize size, const DaxiGaussRecursiveCfg* cfg, void* buffer) { \
    return dax::gaussRecursive<T>({}, src, srcStep, dst, dstStep, size, cfg, buffer);                                 \
  }                                                                                                                   \
  DaxStatus DAXI_FilterGaussRecursive_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,  \
                                                        T* dst, int32_t dstStep, DaxiSize size,                       \
                                                        const DaxiGaussRecursiveCfg* cfg, void* buffer) {             \
    return dax::gaussRecursive<T>({pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);                    \
  }
DAX_RECURSIVE(8u, uint8_t)
DAX_RECURSIVE(16u, uint16_t)
DAX_RECURSIVE(32f, float)
#undef DAX_RECURSIVE
