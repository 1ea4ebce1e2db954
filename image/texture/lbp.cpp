#include "daxi/lbp.h"

#include "frame/memory/work_buffer.h"
#include "frame/op2d.h"
#include "frame/slices.h"
#include "image/texture/lbp_rows.h"

static_assert(sizeof(DaxiLbpCfg) == 32);

namespace dax {
namespace {

constexpr int32_t kMaxBits = 16;
constexpr uint32_t kMaxLbpSlices = 64;

template <class T, class Codes, class Take>
void runLbpRows(LbpRows<T>& rows, int32_t first, int32_t end, Codes codes, Take take) {
  for (int32_t y = first; y < end; ++y) {
    rows.run(y, codes, [&](int64_t x, const auto* strip, int32_t count) { take(y, x, strip, count); });
  }
}

// Calls take(y, x, codes, count) for the strips of some rows.
template <class T, class Take>
void forEachLbpStrip(const BorderedImage<T>& image, const DaxiLbpCfg& cfg, const LbpPattern& pattern, int32_t first,
                     int32_t end, Take take) {
  LbpRows<T> rows(image, pattern);
  const bool isTurned = cfg.codes == DAXI_LBP_ROTATION;
  if (cfg.codes == DAXI_LBP_UNIFORM) {
    runLbpRows(rows, first, end, LbpChanges(cfg.points), take);
  } else if (cfg.points <= 8) {
    runLbpRows(rows, first, end, LbpBits<uint8_t>(cfg.points, isTurned), take);
  } else {
    runLbpRows(rows, first, end, LbpBits<uint16_t>(cfg.points, isTurned), take);
  }
}

template <class T>
BorderedImage<T> lbpImage(const T* src, int32_t srcStep, DaxiSize size, const DaxiLbpCfg& cfg) {
  return {src, srcStep, size, cfg.border, borderPixel<T>(cfg.value)};
}

template <class T, class D>
DaxStatus lbp(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
              const DaxiLbpCfg* cfg) {
  DAX_REQUIRE(src && dst && cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkLbp(*cfg, 8 * sizeof(D)));
  const LbpPattern pattern(*cfg);
  const BorderedImage<T> image = lbpImage(src, srcStep, size, *cfg);
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    forEachLbpStrip(image, *cfg, pattern, first, end, [&](int32_t y, int64_t x, const auto* codes, int32_t count) {
      D* const to = rowAt(dst, dstStep, y) + x;
      for (int32_t i = 0; i < count; ++i) to[i] = static_cast<D>(codes[i]);
    });
  });
}

// --- Histograms ---

// Counts of one band of rows. Bytes are counted in four tables in turn, so that equal codes do not wait for each other.
class LbpCounter {
 public:
  LbpCounter(uint64_t* counts, int32_t codeCount) : counts_(counts), codeCount_(codeCount) {
    std::fill_n(counts, codeCount, uint64_t{0});
  }

  void add(const uint8_t* codes, int32_t count) {
    if (added_ > UINT32_MAX - kLbpStrip) fold();
    added_ += static_cast<uint32_t>(count);
    int32_t i = 0;
    for (; i + 4 <= count; i += 4) {
      ++parts_[0][codes[i]], ++parts_[1][codes[i + 1]];
      ++parts_[2][codes[i + 2]], ++parts_[3][codes[i + 3]];
    }
    for (; i < count; ++i) ++parts_[0][codes[i]];
  }
  void add(const uint16_t* codes, int32_t count) {
    for (int32_t i = 0; i < count; ++i) ++counts_[codes[i]];
  }

  void fold() {
    for (auto& part : parts_) {
      for (int32_t code = 0; code < std::min(codeCount_, 256); ++code) counts_[code] += part[code];
      std::fill_n(part, 256, 0u);
    }
    added_ = 0;
  }

 private:
  uint64_t* counts_;
  int32_t codeCount_;
  uint32_t added_ = 0;
  uint32_t parts_[4][256] = {};
};

struct LbpHistogramBuffer {
  LbpHistogramBuffer(const DaxiLbpCfg& cfg, uint32_t threads)
      : length(static_cast<uint64_t>(lbpCodeCount(cfg))),
        tiles(std::clamp<uint32_t>(threads, 1, kMaxLbpSlices)),
        counts(layout.add<uint64_t>(length * tiles)) {}
  uint64_t length;
  uint32_t tiles;
  BufferLayout layout;
  BufferPiece<uint64_t> counts;
};

DaxStatus checkLbpHistogram(int32_t srcStep, DaxiSize size, const DaxiLbpCfg* cfg) {
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
  return checkLbp(*cfg, kMaxBits);
}

template <class T>
void countLbpRows(const BorderedImage<T>& image, const DaxiLbpCfg& cfg, const LbpPattern& pattern, int32_t first,
                  int32_t end, uint64_t* counts) {
  LbpCounter counter(counts, lbpCodeCount(cfg));
  forEachLbpStrip(image, cfg, pattern, first, end,
                  [&](int32_t, int64_t, const auto* codes, int32_t count) { counter.add(codes, count); });
  counter.fold();
}

template <class T>
DaxStatus lbpHistogram(const T* src, int32_t srcStep, DaxiSize size, const DaxiLbpCfg* cfg, uint64_t* counts) {
  DAX_REQUIRE(src && cfg && counts, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkLbpHistogram(srcStep, size, cfg));
  countLbpRows(lbpImage(src, srcStep, size, *cfg), *cfg, LbpPattern(*cfg), 0, size.height, counts);
  return DAX_STS_OK;
}

template <class T>
DaxStatus pooledLbpHistogram(PoolThreads on, const T* src, int32_t srcStep, DaxiSize size, const DaxiLbpCfg* cfg,
                             uint64_t* counts, void* buffer) {
  DAX_REQUIRE(src && cfg && counts && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkLbpHistogram(srcStep, size, cfg));
  const LbpHistogramBuffer at(*cfg, on.threads);
  uint64_t* const parts = at.counts.in(buffer);
  std::fill_n(parts, at.length * at.tiles, uint64_t{0});
  const BorderedImage<T> image = lbpImage(src, srcStep, size, *cfg);
  const LbpPattern pattern(*cfg);
  DAX_REQUIRE_OK(runSlices(on, at.tiles, size.height, 1, [&](int32_t first, int32_t end, uint32_t slice) {
    countLbpRows(image, *cfg, pattern, first, end, parts + at.length * slice);
  }));
  for (uint64_t code = 0; code < at.length; ++code) {
    counts[code] = 0;
    for (uint64_t part = 0; part < at.tiles; ++part) counts[code] += parts[at.length * part + code];
  }
  return DAX_STS_OK;
}

DaxStatus lbpHistogramBufferSize(const DaxiLbpCfg* cfg, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkLbp(*cfg, kMaxBits));
  return LbpHistogramBuffer(*cfg, threads).layout.store(bytes);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_LBPDefaultCfg(DaxiLbpCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_LBP_PLAIN, 8, 0, DAXI_BORDER_REPLICATE, 0, 0};
  return DAX_STS_OK;
}

DaxStatus DAXI_LBPCodeCount(const DaxiLbpCfg* cfg, int32_t* codeCount) {
  DAX_REQUIRE(cfg && codeCount, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkLbp(*cfg, dax::kMaxBits));
  *codeCount = dax::lbpCodeCount(*cfg);
  return DAX_STS_OK;
}

#define DAX_LBP(SUFFIX, T, D)                                                                               \
  DaxStatus DAXI_LBP_##SUFFIX##_C1R(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,  \
                                    const DaxiLbpCfg* cfg) {                                                \
    return dax::lbp<T, D>({}, src, srcStep, dst, dstStep, size, cfg);                                       \
  }                                                                                                         \
  DaxStatus DAXI_LBP_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, \
                                       int32_t dstStep, DaxiSize size, const DaxiLbpCfg* cfg) {             \
    return dax::lbp<T, D>({pool, threads}, src, srcStep, dst, dstStep, size, cfg);                          \
  }
DAX_LBP(8u, uint8_t, uint8_t)
DAX_LBP(8u16u, uint8_t, uint16_t)
DAX_LBP(16u8u, uint16_t, uint8_t)
DAX_LBP(16u, uint16_t, uint16_t)
DAX_LBP(32f8u, float, uint8_t)
DAX_LBP(32f16u, float, uint16_t)
#undef DAX_LBP

#define DAX_LBP_HISTOGRAM(SUFFIX, T)                                                                              \
  DaxStatus DAXI_LBPHistogram_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size, const DaxiLbpCfg* cfg, \
                                             uint64_t* counts) {                                                  \
    return dax::lbpHistogram(src, srcStep, size, cfg, counts);                                                    \
  }                                                                                                               \
  DaxStatus DAXI_LBPHistogramBufferSize_##SUFFIX##_MT(const DaxiLbpCfg* cfg, uint32_t threads, uint64_t* bytes) { \
    return dax::lbpHistogramBufferSize(cfg, threads, bytes);                                                      \
  }                                                                                                               \
  DaxStatus DAXI_LBPHistogram_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,      \
                                                DaxiSize size, const DaxiLbpCfg* cfg, uint64_t* counts,           \
                                                void* buffer) {                                                   \
    return dax::pooledLbpHistogram<T>({pool, threads}, src, srcStep, size, cfg, counts, buffer);                  \
  }
DAX_LBP_HISTOGRAM(8u, uint8_t)
DAX_LBP_HISTOGRAM(16u, uint16_t)
DAX_LBP_HISTOGRAM(32f, float)
#undef DAX_LBP_HISTOGRAM
