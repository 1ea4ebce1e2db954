#include "daxi/canny.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "frame/check.h"
#include "frame/rows.h"
#include "image/gauss/gauss.h"
#include "image/gradient/gradient.h"
#include "image/gradient/gradient_strips.h"

static_assert(sizeof(DaxiCannyCfg) == 32);

namespace dax {
namespace {

// Values of the destination until the end: edges by their own strength, and those that are joined with them.
enum : uint8_t { kNoEdge = 0, kWeak = 1, kJoined = 254, kStrong = 255 };

struct Place {
  uint16_t x, y;
};

DaxiGaussCfg smoothing(const DaxiCannyCfg& cfg) {
  return {cfg.sigma, {0, 0}, DAXI_BORDER_REPLICATE, 0, 0};
}

// The smoothed image; per tile three rows of magnitudes, with a 0 at both ends, and of gradients; a stack of pixels.
struct CannyBuffer {
  CannyBuffer(DaxiSize size, const DaxiCannyCfg& cfg)
      : magnitudeLength(static_cast<uint64_t>(size.width) + 2), gradientLength(static_cast<uint64_t>(size.width)) {
    if (cfg.sigma != 0) {
      gauss = layout.addSlices(GaussRowsBuffer<uint8_t>(size, smoothing(cfg)).layout.total(), 1);
      smooth = layout.add<uint8_t>(pixelsOf(size));
    }
    magnitudes = layout.add<int32_t>(3 * magnitudeLength * tilesOf(size));
    gradients = layout.add<int16_t>(uint64_t{2} * 3 * gradientLength * tilesOf(size));
    stack = layout.add<Place>(pixelsOf(size));
  }
  BufferLayout layout;
  uint64_t magnitudeLength, gradientLength;
  BufferPiece<uint8_t> gauss{}, smooth{};
  BufferPiece<int32_t> magnitudes{};
  BufferPiece<int16_t> gradients{};
  BufferPiece<Place> stack{};
};

// The largest magnitude, or its square, that a threshold does not let through.
int32_t threshold(double level, int32_t norm) {
  const double compared = std::floor(norm == DAXI_CANNY_L2 ? level * level : level);
  return static_cast<int32_t>(std::min<double>(compared, std::numeric_limits<int32_t>::max()));
}

// Rows of gradients and magnitudes of one tile, which come in ascending order.
class CannyRows {
 public:
  CannyRows(const BorderedImage<uint8_t>& image, const DaxiCannyCfg& cfg, const CannyBuffer& at, void* buffer,
            uint32_t tile)
      : image_(image), cfg_(cfg), low_(threshold(cfg.low, cfg.norm)), high_(threshold(cfg.high, cfg.norm)) {
    int32_t* const magnitudes = at.magnitudes.in(buffer) + 3 * at.magnitudeLength * tile;
    int16_t* const gradients = at.gradients.in(buffer) + uint64_t{6} * at.gradientLength * tile;
    for (uint64_t k = 0; k < 3; ++k) {
      rows_[k] = {magnitudes + k * at.magnitudeLength + 1, gradients + 2 * k * at.gradientLength,
                  gradients + (2 * k + 1) * at.gradientLength};
      rows_[k].m[-1] = rows_[k].m[image.size.width] = 0;
    }
  }

  void take(int32_t y) const {
    if (y < 0 || y >= image_.size.height) {
      std::fill_n(row(y).m, image_.size.width, 0);
    } else if (cfg_.aperture == 3) {
      takeGradients<SobelKernel::k3>(y);
    } else {
      takeGradients<SobelKernel::k5>(y);
    }
  }

  // Of the rows y - 1 to y + 1, which have been taken. Selections only, so that the loop becomes vectors.
  void thin(int32_t y, uint8_t* __restrict to) const {
    const Row &above = row(y - 1), &here = row(y), &below = row(y + 1);
    const int32_t *const up = above.m, *const m = here.m, *const down = below.m;
    const int16_t *const gradientX = here.gx, *const gradientY = here.gy;
    const int32_t low = low_, high = high_, width = image_.size.width;
    for (int32_t x = 0; x < width; ++x) {
      const int32_t gx = gradientX[x], gy = gradientY[x], ax = std::abs(gx), ay = std::abs(gy);
      const int32_t upLeft = up[x - 1], upRight = up[x + 1], downLeft = down[x - 1], downRight = down[x + 1];
      const int32_t above1 = up[x], below1 = down[x], left = m[x - 1], right = m[x + 1];
      const bool isFlat = ay * 32768 < 13573 * ax, isSteep = ax * 32768 < 13573 * ay, falls = (gx ^ gy) < 0;
      int32_t first = falls ? upRight : upLeft, second = falls ? downLeft : downRight;
      first = isSteep ? above1 : first, second = isSteep ? below1 : second;
      first = isFlat ? left : first, second = isFlat ? right : second;
      const bool isKept = (m[x] > low) & (m[x] > first) & (m[x] >= second);
      const int32_t strength = m[x] > high ? kStrong : kWeak;
      to[x] = static_cast<uint8_t>(isKept ? strength : kNoEdge);
    }
  }

 private:
  struct Row {
    int32_t* m;
    int16_t* gx;
    int16_t* gy;
  };

  // Of y from -1 on.
  const Row& row(int32_t y) const { return rows_[(y + 1) % 3]; }

  template <auto kTaps>
  void takeGradients(int32_t y) const {
    const Row& to = row(y);
    GradientStrips<GradientColumns<kTaps>, uint8_t, int16_t>(image_, y).run(
        [&](int64_t x, int32_t count, const auto& planes) {
          int16_t* __restrict gx = to.gx + x, * __restrict gy = to.gy + x;
          for (int32_t i = 0; i < count; ++i) {
            gx[i] = kTaps.template derived<int16_t>(kTaps.derive, [&](int32_t dx) { return planes[0][i + dx]; });
            gy[i] = kTaps.template smoothed<int16_t>(kTaps.smooth, [&](int32_t dx) { return planes[1][i + dx]; });
          }
          takeMagnitudes(gx, gy, to.m + x, count);
        });
  }

  void takeMagnitudes(const int16_t* gx, const int16_t* gy, int32_t* __restrict m, int32_t count) const {
    if (cfg_.norm == DAXI_CANNY_L1) {
      for (int32_t i = 0; i < count; ++i) m[i] = std::abs(gx[i]) + std::abs(gy[i]);
    } else {
      for (int32_t i = 0; i < count; ++i) m[i] = gx[i] * gx[i] + gy[i] * gy[i];
    }
  }

  const BorderedImage<uint8_t>& image_;
  const DaxiCannyCfg& cfg_;
  int32_t low_, high_;
  Row rows_[3];
};

// Joins weak edges with strong ones, from one to the next.
class EdgeJoiner {
 public:
  EdgeJoiner(uint8_t* dst, int32_t step, DaxiSize size, Place* stack)
      : dst_(dst), step_(step), size_(size), stack_(stack) {}

  void run() {
    for (int32_t y = 0; y < size_.height; ++y) {
      uint8_t *const row = rowAt(dst_, step_, y), *const end = row + size_.width;
      for (uint8_t* p = row; (p = find(p, end)) != nullptr; ++p) {
        join(static_cast<int32_t>(p - row), y);
        while (count_ > 0) {
          const Place place = stack_[--count_];
          join(place.x, place.y);
        }
      }
    }
  }

 private:
  static uint8_t* find(uint8_t* from, const uint8_t* end) {
    return static_cast<uint8_t*>(std::memchr(from, kStrong, static_cast<size_t>(end - from)));
  }

  void join(int32_t x, int32_t y) {
    const int32_t left = std::max(x - 1, 0), right = std::min(x + 1, size_.width - 1);
    for (int32_t v = std::max(y - 1, 0); v <= std::min(y + 1, size_.height - 1); ++v) {
      uint8_t* const row = rowAt(dst_, step_, v);
      for (int32_t u = left; u <= right; ++u) {
        if (row[u] != kWeak) continue;
        row[u] = kJoined;
        stack_[count_++] = {static_cast<uint16_t>(u), static_cast<uint16_t>(v)};
      }
    }
  }

  uint8_t* dst_;
  int32_t step_;
  DaxiSize size_;
  Place* stack_;
  uint64_t count_ = 0;
};

DaxStatus checkCanny(const DaxiCannyCfg& cfg) {
  DAX_REQUIRE(cfg.sigma == 0 || (cfg.sigma >= 0.3 && cfg.sigma <= 100), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.low >= 0 && cfg.low <= std::numeric_limits<double>::max(), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.high >= cfg.low && cfg.high <= std::numeric_limits<double>::max(), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.norm == DAXI_CANNY_L1 || cfg.norm == DAXI_CANNY_L2, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.aperture == 3 || cfg.aperture == 5, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus smoothImage(PoolThreads on, const uint8_t* src, int32_t srcStep, DaxiSize size, const DaxiGaussCfg& cfg,
                      const CannyBuffer& at, void* buffer) {
  const GaussRows<uint8_t> rows(src, srcStep, size, cfg, at.gauss.in(buffer));
  return runRowTiles(on, size, [&](int32_t first, int32_t end, uint32_t tile) {
    for (int32_t y = first; y < end; ++y) rows.run(y, tile, rowAt(at.smooth.in(buffer), size.width, y));
  });
}

constexpr int32_t kMaxCannySide = 65535;

DaxStatus canny(PoolThreads on, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                const DaxiCannyCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && atMost(size, kMaxCannySide), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkCanny(*cfg));
  const CannyBuffer at(size, *cfg);
  BorderedImage<uint8_t> image = {src, srcStep, size, DAXI_BORDER_REPLICATE, 0};
  if (cfg->sigma != 0) {
    DAX_REQUIRE_OK(smoothImage(on, src, srcStep, size, smoothing(*cfg), at, buffer));
    image.src = at.smooth.in(buffer), image.step = size.width;
  }
  DAX_REQUIRE_OK(runRowTiles(on, size, [&](int32_t first, int32_t end, uint32_t tile) {
    const CannyRows rows(image, *cfg, at, buffer, tile);
    rows.take(first - 1), rows.take(first);
    for (int32_t y = first; y < end; ++y) rows.take(y + 1), rows.thin(y, rowAt(dst, dstStep, y));
  }));
  EdgeJoiner(dst, dstStep, size, at.stack.in(buffer)).run();
  for (int32_t y = 0; y < size.height; ++y) {
    uint8_t* const row = rowAt(dst, dstStep, y);
    for (int32_t x = 0; x < size.width; ++x) row[x] = row[x] >= kJoined ? 255 : 0;
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_CannyDefaultCfg(DaxiCannyCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {1, 50, 100, DAXI_CANNY_L1, 3};
  return DAX_STS_OK;
}

DaxStatus DAXI_CannyBufferSize_8u(DaxiSize size, const DaxiCannyCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1) && dax::atMost(size, dax::kMaxCannySide), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(dax::checkCanny(*cfg));
  return dax::CannyBuffer(size, *cfg).layout.store(bytes);
}

DaxStatus DAXI_Canny_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                            const DaxiCannyCfg* cfg, void* buffer) {
  return dax::canny({}, src, srcStep, dst, dstStep, size, cfg, buffer);
}

DaxStatus DAXI_Canny_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                               int32_t dstStep, DaxiSize size, const DaxiCannyCfg* cfg, void* buffer) {
  return dax::canny({pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);
}
