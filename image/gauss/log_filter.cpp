#include "daxi/log_filter.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/rows.h"
#include "image/border/bordered_image.h"
#include "image/gauss/gauss.h"
#include "image/gauss/gauss_taps.h"

namespace dax {
namespace {

// Weights of pairs of pixels at distance 0..radius: of the Gaussian, and of its second derivative.
struct LogTaps {
  int32_t radius;
  float smooth[kMaxGaussRadius + 1];
  float derive[kMaxGaussRadius + 1];
};

void makeLogTaps(double sigma, int32_t side, LogTaps& taps) {
  double pairs[kMaxGaussRadius + 1] = {}, derived[kMaxGaussRadius + 1] = {};
  taps.radius = gaussRadius(sigma, side);
  gaussPairs(sigma, taps.radius, pairs);
  const double square = sigma * sigma;
  double sum = 0;
  for (int32_t i = taps.radius; i >= 0; --i) {
    derived[i] = (int64_t{i} * i - square) / (square * square) * pairs[i];
    sum += derived[i];
  }
  const double mean = sum / (2 * taps.radius + 1);
  for (int32_t i = 0; i <= taps.radius; ++i) {
    taps.smooth[i] = static_cast<float>(pairs[i] / 2);
    taps.derive[i] = static_cast<float>((derived[i] - mean * (i == 0 ? 1 : 2)) / 2);
  }
}

// Taps of both passes; a row of a constant border; for each tile two rows between the passes.
template <class T>
struct LogBuffer {
  LogBuffer(DaxiSize size, const DaxiGaussCfg& cfg)
      : radiusX(gaussRadius(cfg.sigma, cfg.size.width)),
        rowLength(static_cast<uint64_t>(size.width) + 2 * static_cast<uint64_t>(radiusX)),
        taps(layout.add<LogTaps>(2)),
        constantRow(layout.add<T>(cfg.border == DAXI_BORDER_CONSTANT ? static_cast<uint64_t>(size.width) : 0)),
        rows(layout.add<float>(2 * rowLength * tilesOf(size))) {}
  BufferLayout layout;
  int32_t radiusX;
  uint64_t rowLength;
  BufferPiece<LogTaps> taps;
  BufferPiece<T> constantRow;
  BufferPiece<float> rows;
};

constexpr int32_t kLogStrip = 256;

// Both column sums of `count` pixels; rows(k) are those above and below at distance k.
template <class Rows>
void sumColumns(const LogTaps& taps, Rows rows, int64_t x, int32_t count, float* __restrict smooth,
                float* __restrict derived) {
  for (int32_t k = 0; k <= taps.radius; ++k) {
    const auto [above, below] = rows(k);
    const float g = taps.smooth[k], l = taps.derive[k];
    for (int32_t i = 0; i < count; ++i) {
      const float pair = static_cast<float>(above[x + i]) + static_cast<float>(below[x + i]);
      smooth[i] = k == 0 ? g * pair : smooth[i] + g * pair;
      derived[i] = k == 0 ? l * pair : derived[i] + l * pair;
    }
  }
}

void sumRow(const LogTaps& taps, const float* smooth, const float* derived, int32_t count, float* __restrict to) {
  std::fill_n(to, count, 0.0f);
  for (int32_t k = 0; k <= taps.radius; ++k) {
    const float g = taps.smooth[k], l = taps.derive[k];
    for (int32_t i = 0; i < count; ++i) {
      to[i] += l * (smooth[i - k] + smooth[i + k]) + g * (derived[i - k] + derived[i + k]);
    }
  }
}

template <class T>
class LogRows {
 public:
  LogRows(const T* src, int32_t srcStep, DaxiSize size, const DaxiGaussCfg& cfg, void* buffer)
      : at_(size, cfg),
        buffer_(buffer),
        taps_(at_.taps.in(buffer)),
        image_{src, srcStep, size, cfg.border, borderPixel<T>(cfg.value)} {
    makeLogTaps(cfg.sigma, cfg.size.width, taps_[0]);
    makeLogTaps(cfg.sigma, cfg.size.height, taps_[1]);
    if (cfg.border != DAXI_BORDER_CONSTANT) return;
    const T* const row = std::fill_n(at_.constantRow.in(buffer), size.width, image_.value) - size.width;
    sumColumns(
        taps_[1], [row](int32_t) { return std::pair(row, row); }, 0, 1, &constants_[0], &constants_[1]);
  }

  void run(int32_t y, uint32_t tile, float* to) const {
    const int64_t width = image_.size.width;
    const int32_t reach = taps_[0].radius, around = image_.isInMemory() ? reach : 0;
    float* const smooth = at_.rows.in(buffer_) + 2 * at_.rowLength * tile + at_.radiusX;
    float* const derived = smooth + at_.rowLength;
    const T* const constantRow = at_.constantRow.in(buffer_);
    const auto rows = [&](int32_t k) {
      return std::pair(image_.row(int64_t{y} - k, constantRow), image_.row(int64_t{y} + k, constantRow));
    };
    forStrips(-around, width + around,
              [&](int64_t x, int32_t count) { sumColumns(taps_[1], rows, x, count, smooth + x, derived + x); });
    extendRow(smooth, width, reach, reach, image_.border, constants_[0]);
    extendRow(derived, width, reach, reach, image_.border, constants_[1]);
    forStrips(0, width, [&](int64_t x, int32_t count) { sumRow(taps_[0], smooth + x, derived + x, count, to + x); });
  }

 private:
  template <class Strip>
  static void forStrips(int64_t begin, int64_t end, Strip strip) {
    for (int64_t x = begin; x < end; x += kLogStrip)
      strip(x, static_cast<int32_t>(std::min<int64_t>(kLogStrip, end - x)));
  }

  LogBuffer<T> at_;
  void* buffer_;
  LogTaps* taps_;
  BorderedImage<T> image_;
  float constants_[2] = {};
};

template <class T>
DaxStatus logBufferSize(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkGauss(*cfg));
  return LogBuffer<T>(size, *cfg).layout.store(bytes);
}

template <class T>
DaxStatus filterLog(PoolThreads on, const T* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                    const DaxiGaussCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkGauss(*cfg));
  const LogRows<T> rows(src, srcStep, size, *cfg, buffer);
  return runRowTiles(on, size, [&](int32_t first, int32_t end, uint32_t tile) {
    for (int32_t y = first; y < end; ++y) rows.run(y, tile, rowAt(dst, dstStep, y));
  });
}

}  // namespace
}  // namespace dax

#define DAX_LOG(SUFFIX, T)                                                                                      \
  DaxStatus DAXI_LoGBufferSize_##SUFFIX(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes) {              \
    return dax::logBufferSize<T>(size, cfg, bytes);                                                             \
  }                                                                                                             \
  DaxStatus DAXI_LoG_##SUFFIX##_C1R(const T* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,  \
                                    const DaxiGaussCfg* cfg, void* buffer) {                                    \
    return dax::filterLog<T>({}, src, srcStep, dst, dstStep, size, cfg, buffer);                                \
  }                                                                                                             \
  DaxStatus DAXI_LoG_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, float* dst, \
                                       int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg, void* buffer) { \
    return dax::filterLog<T>({pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);                   \
  }
DAX_LOG(8u32f, uint8_t)
DAX_LOG(16u32f, uint16_t)
DAX_LOG(32f, float)
#undef DAX_LOG
