#include "daxi/clip_equalize.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/border/border_index.h"
#include "image/convert/quotient.h"

static_assert(sizeof(DaxiClipEqualizeCfg) == 24 && offsetof(DaxiClipEqualizeCfg, bins) == 16);

namespace dax {
namespace {

constexpr int32_t kMaxTiles = 64;

int32_t tileSide(int32_t side, int32_t tiles) {
  return static_cast<int32_t>((int64_t{side} + tiles - 1) / tiles);
}

// The number of tiles has been checked later than the size; one that is wrong has no tiles to measure.
bool tilesFit(DaxiSize size, const DaxiClipEqualizeCfg& cfg) {
  if (!atLeast(size, 1)) return false;
  if (cfg.tilesX < 1 || cfg.tilesY < 1) return true;
  return int64_t{tileSide(size.width, cfg.tilesX)} * tileSide(size.height, cfg.tilesY) <= INT32_MAX;
}

template <class T>
DaxStatus checkClipEqualizeCfg(DaxiSize size, const DaxiClipEqualizeCfg& cfg) {
  constexpr int32_t kMaxBins = int32_t{std::numeric_limits<T>::max()} + 1;
  DAX_REQUIRE(cfg.tilesX >= 1 && cfg.tilesX <= std::min(kMaxTiles, size.width), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.tilesY >= 1 && cfg.tilesY <= std::min(kMaxTiles, size.height), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.clip >= 1 && std::isfinite(cfg.clip), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.bins >= 2 && cfg.bins <= kMaxBins && std::has_single_bit(static_cast<uint32_t>(cfg.bins)),
              DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// The map of each tile, for each bin; made where its histogram was.
struct ClipEqualizeBuffer {
  explicit ClipEqualizeBuffer(const DaxiClipEqualizeCfg& cfg)
      : maps(layout.add<uint32_t>(static_cast<uint64_t>(cfg.tilesX * cfg.tilesY) * static_cast<uint64_t>(cfg.bins))) {}
  BufferLayout layout;
  BufferPiece<uint32_t> maps;
};

// Where a pixel lies between the centres of two tiles, which are the same one beyond the outer centres. Weights are halves of
// pixels, of 2 * tile in all.
struct Between {
  int32_t first, second;
  int64_t weight;  // of the second

  Between(int32_t x, int32_t tile, int32_t tiles) {
    const int64_t place = 2 * int64_t{x} + 1 - tile, period = 2 * int64_t{tile};
    const int64_t i = place < 0 ? -1 : place / period;
    first = static_cast<int32_t>(std::max<int64_t>(i, 0));
    second = static_cast<int32_t>(std::min<int64_t>(i + 1, tiles - 1));
    weight = place - i * period;
  }
};

template <class T>
class ClipEqualizer {
 public:
  ClipEqualizer(const T* src, int32_t srcStep, DaxiSize size, const DaxiClipEqualizeCfg& cfg, void* buffer)
      : src_(src),
        srcStep_(srcStep),
        size_(size),
        cfg_(cfg),
        tile_{tileSide(size.width, cfg.tilesX), tileSide(size.height, cfg.tilesY)},
        area_(pixelsOf(tile_)),
        shift_(std::countr_zero(static_cast<uint32_t>(kMax + 1) / static_cast<uint32_t>(cfg.bins))),
        maps_(ClipEqualizeBuffer(cfg).maps.in(buffer)) {}

  int32_t tiles() const { return cfg_.tilesX * cfg_.tilesY; }

  void makeMap(int32_t tile) const {
    uint32_t* const bins = mapOf(tile % cfg_.tilesX, tile / cfg_.tilesX);
    count(tile % cfg_.tilesX, tile / cfg_.tilesX, bins);
    clip(bins);
    uint64_t sum = 0;
    for (int32_t i = 0; i < cfg_.bins; ++i) {
      sum += bins[i];
      bins[i] = static_cast<uint32_t>(roundedQuotient(sum * kMax, area_));
    }
  }

  void equalizeRow(int32_t y, T* dst) const {
    const T* const row = rowAt(src_, srcStep_, y);
    const Between down(y, tile_.height, cfg_.tilesY);
    // Columns between the same two centres have the same four maps.
    for (int32_t x = 0; x < size_.width;) {
      const Between across(x, tile_.width, cfg_.tilesX);
      const int64_t left = (2 * int64_t{tile_.width} - across.weight + 1) / 2;
      const auto end = static_cast<int32_t>(std::min<int64_t>(size_.width, x + left));
      interpolate(row, dst, x, end, across, down);
      x = end;
    }
  }

 private:
  static constexpr uint64_t kMax = std::numeric_limits<T>::max();

  uint32_t* mapOf(int32_t x, int32_t y) const {
    return maps_ + (static_cast<ptrdiff_t>(y) * cfg_.tilesX + x) * cfg_.bins;
  }

  // The histogram of a tile of the extended image.
  void count(int32_t tileX, int32_t tileY, uint32_t* bins) const {
    std::fill_n(bins, cfg_.bins, 0);
    const int64_t firstX = int64_t{tileX} * tile_.width, firstY = int64_t{tileY} * tile_.height;
    const int64_t inside = std::clamp<int64_t>(size_.width - firstX, 0, tile_.width);
    for (int64_t y = firstY; y < firstY + tile_.height; ++y) {
      const T* const row =
          rowAt(src_, srcStep_, static_cast<int32_t>(borderIndex(y, size_.height, DAXI_BORDER_MIRROR)));
      for (int64_t x = firstX; x < firstX + inside; ++x) ++bins[row[x] >> shift_];
      for (int64_t x = firstX + inside; x < firstX + tile_.width; ++x) {
        ++bins[row[borderIndex(x, size_.width, DAXI_BORDER_MIRROR)] >> shift_];
      }
    }
  }

  // Cuts counts off and gives the excess back.
  void clip(uint32_t* bins) const {
    const double limit = std::floor(cfg_.clip * static_cast<double>(area_) / cfg_.bins);
    const auto most = static_cast<uint32_t>(std::clamp(limit, 1.0, static_cast<double>(area_)));
    uint64_t excess = 0;
    for (int32_t i = 0; i < cfg_.bins; ++i) {
      if (bins[i] > most) excess += bins[i] - most, bins[i] = most;
    }
    const auto count = static_cast<uint64_t>(cfg_.bins), rest = excess % count;
    for (int32_t i = 0; i < cfg_.bins; ++i) bins[i] += static_cast<uint32_t>(excess / count);
    for (uint64_t i = 0; i < rest; ++i) ++bins[i * (count / rest)];
  }

  // The quotient in double precision is a half only where the exact one is: numerators are below 2^50, divisors below 2^34.
  void interpolate(const T* src, T* dst, int32_t first, int32_t end, const Between& across, const Between& down) const {
    const uint32_t* const map00 = mapOf(across.first, down.first);
    const uint32_t* const map01 = mapOf(across.second, down.first);
    const uint32_t* const map10 = mapOf(across.first, down.second);
    const uint32_t* const map11 = mapOf(across.second, down.second);
    const int64_t w = 2 * int64_t{tile_.width}, lower = down.weight, upper = 2 * int64_t{tile_.height} - lower;
    const double all = 4 * static_cast<double>(area_);
    int64_t right = across.weight;
    for (int32_t x = first; x < end; ++x, right += 2) {
      const int32_t bin = src[x] >> shift_;
      const int64_t a = map00[bin] * upper + map10[bin] * lower, b = map01[bin] * upper + map11[bin] * lower;
      dst[x] = static_cast<T>(std::rint(static_cast<double>(a * (w - right) + b * right) / all));
    }
  }

  const T* src_;
  int32_t srcStep_;
  DaxiSize size_;
  const DaxiClipEqualizeCfg& cfg_;
  DaxiSize tile_;
  uint64_t area_;
  int shift_;
  uint32_t* maps_;
};

template <class T>
DaxStatus clipEqualizeBufferSize(DaxiSize size, const DaxiClipEqualizeCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(tilesFit(size, *cfg), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkClipEqualizeCfg<T>(size, *cfg));
  return ClipEqualizeBuffer(*cfg).layout.store(bytes);
}

template <class T>
DaxStatus clipEqualize(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep,
                       DaxiSize size, const DaxiClipEqualizeCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(tilesFit(size, *cfg), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkClipEqualizeCfg<T>(size, *cfg));
  const ClipEqualizer<T> equalizer(src, srcStep, size, *cfg, buffer);
  const auto makeMaps = [&](int32_t first, int32_t end, uint32_t) -> DaxStatus {
    for (int32_t tile = first; tile < end; ++tile) equalizer.makeMap(tile);
    return DAX_STS_OK;
  };
  const auto equalizeRows = [&](int32_t first, int32_t end, uint32_t) -> DaxStatus {
    for (int32_t y = first; y < end; ++y) equalizer.equalizeRow(y, rowAt(dst, dstStep, y));
    return DAX_STS_OK;
  };
  if (!hasPool(pool, threads)) {
    makeMaps(0, equalizer.tiles(), 0);
    return equalizeRows(0, size.height, 0);
  }
  DAX_REQUIRE_OK(runTiles(pool, threads, equalizer.tiles(), 1, makeMaps));
  return runTiles(pool, threads, size.height, 1, equalizeRows);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ClipEqualizeDefaultCfg(DaxiClipEqualizeCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {8, 8, 2, 256, 0};
  return DAX_STS_OK;
}

#define DAX_CLIP_EQUALIZE(SUFFIX, T)                                                                                 \
  DaxStatus DAXI_ClipEqualizeBufferSize_##SUFFIX(DaxiSize size, const DaxiClipEqualizeCfg* cfg, uint64_t* bytes) {   \
    return dax::clipEqualizeBufferSize<T>(size, cfg, bytes);                                                         \
  }                                                                                                                  \
  DaxStatus DAXI_ClipEqualize_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,  \
                                             const DaxiClipEqualizeCfg* cfg, void* buffer) {                         \
    return dax::clipEqualize(nullptr, 1, src, srcStep, dst, dstStep, size, cfg, buffer);                             \
  }                                                                                                                  \
  DaxStatus DAXI_ClipEqualize_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, \
                                                int32_t dstStep, DaxiSize size, const DaxiClipEqualizeCfg* cfg,      \
                                                void* buffer) {                                                      \
    return dax::clipEqualize(pool, threads, src, srcStep, dst, dstStep, size, cfg, buffer);                          \
  }
DAX_CLIP_EQUALIZE(8u, uint8_t)
DAX_CLIP_EQUALIZE(16u, uint16_t)
#undef DAX_CLIP_EQUALIZE
