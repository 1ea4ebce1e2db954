// Pixels between pixels: what all geometric operations on images have in common. An operation tells where the pixels of
// its result lie in the source (a walk); the rest is here.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "daxi/border.h"
#include "daxi/interpolation.h"
#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/border/border_pixel.h"

namespace dax {

// Positions are whole numbers of 2^-32 pixels, at most 2^30 pixels from the origin. What lies nowhere is further off;
// its distance from any position still fits 64 bits.
constexpr int64_t kOnePixel = int64_t{1} << 32;
constexpr int64_t kNowhere = -(int64_t{3} << 61);

// In the same units; nowhere for NaN and what is more than 2^30 pixels away. Bits are compared and masked, which compilers put
// into vectors.
template <class Real>
double scaledPosition(Real pixels) {
  using Bits = std::conditional_t<sizeof(Real) == 4, int32_t, int64_t>;
  const auto bits = std::bit_cast<Bits>(pixels);
  constexpr auto kFar = std::bit_cast<Bits>(Real{0x1p30}), kFarther = std::bit_cast<Bits>(Real{-0x1.8p30});
  const auto isFar = static_cast<Bits>(-Bits{(bits & std::numeric_limits<Bits>::max()) > kFar});
  return std::bit_cast<Real>((bits & ~isFar) | (kFarther & isFar)) * Real{0x1p32};
}

// Consecutive pixels of a row.
constexpr int32_t kChunk = 128;
struct Positions {
  int64_t x[kChunk];
  int64_t y[kChunk];
};

// The fixed positions of a chunk, at(i) -> {x, y} of pixel i. In two passes, since few machines have vectors for the second
// one.
template <class Real>
struct RealPosition {
  Real x, y;
};
template <class At>
void fixPositions(int32_t count, const At& at, Positions& to) {
  double x[kChunk], y[kChunk];
  for (int32_t i = 0; i < count; ++i) {
    const auto position = at(i);
    x[i] = scaledPosition(position.x);
    y[i] = scaledPosition(position.y);
  }
  for (int32_t i = 0; i < count; ++i) {
    to.x[i] = static_cast<int64_t>(x[i]);
    to.y[i] = static_cast<int64_t>(y[i]);
  }
}

template <class T>
struct SampledImage {
  const T* data;
  int32_t step;
  DaxiSize size;
  int32_t borderX;
  int32_t borderY;
  bool leaves;  // pixels that lie outside as they are
  T value;      // of a constant border, and of what lies nowhere
  double cubicA;
  bool usesLanes = usesNeon(currentIsa());
};

// Cfg: a configuration with interpolation, border, value and cubicA.
template <class T, class Cfg>
SampledImage<T> sampledImage(const T* src, int32_t srcStep, DaxiSize size, const Cfg& cfg) {
  const bool leaves = cfg.border == DAXI_BORDER_LEAVE;
  const int32_t border = leaves ? DAXI_BORDER_REPLICATE : cfg.border;
  return {src, srcStep, size, border, border, leaves, borderPixel<T>(cfg.value), cfg.cubicA};
}

// Writes the pixels that lie at the first `count` positions.
template <class T>
using Sampler = void (*)(const SampledImage<T>& image, const Positions& at, int32_t count, T* dst);

template <class T, int kChannels>
Sampler<T> samplerFor(int32_t interpolation);

// --- Checks ---

inline bool areWarpSides(DaxiSize size) {
  constexpr int32_t kMaxWarpSide = 1 << 20;
  return atLeast(size, 1) && atMost(size, kMaxWarpSide);
}

inline bool isPartOf(const DaxiRect& rect, DaxiSize size) {
  return rect.x >= 0 && rect.y >= 0 && rect.width >= 1 && rect.height >= 1 && rect.width <= size.width &&
         rect.height <= size.height && rect.x <= size.width - rect.width && rect.y <= size.height - rect.height;
}

// Pointers, sizes and steps.
template <int kChannels>
DaxStatus checkWarpImages(const void* src, int32_t srcStep, DaxiSize srcSize, const void* dst, int32_t dstStep,
                          DaxiSize dstSize, const DaxiRect& dstRect, const void* cfg) {
  DAX_REQUIRE(src && dst && cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areWarpSides(srcSize) && areWarpSides(dstSize), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(isPartOf(dstRect, dstSize), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(srcSize.width, srcStep, kChannels), DAX_STS_BAD_STEP);
  DAX_REQUIRE(rowFits(dstRect.width, dstStep, kChannels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

template <class Cfg>
DaxStatus checkSampling(const Cfg& cfg) {
  DAX_REQUIRE(cfg.interpolation >= DAXI_INTERPOLATION_NEAREST && cfg.interpolation <= DAXI_INTERPOLATION_LANCZOS3,
              DAX_STS_BAD_PARAM);
  DAX_REQUIRE(
      (cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_CONSTANT) || cfg.border == DAXI_BORDER_LEAVE,
      DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.value) && std::isfinite(cfg.cubicA), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// --- Worker ---

// Computes the rectangle of a result. A walk enters some columns, at most kChunk, and then tells where their pixels lie, row
// by row. Tiles of 128 x 64 pixels keep what turned images read in the caches.
template <int kChannels, class T, class Walk>
DaxStatus sampleRect(PoolThreads on, const SampledImage<T>& image, int32_t interpolation, T* dst, int32_t dstStep,
                     const DaxiRect& rect, const Walk& walk) {
  constexpr int32_t kTileRows = 64;
  const Sampler<T> sample = samplerFor<T, kChannels>(interpolation);
  return runRows(on, rect.height, [&](int32_t first, int32_t end) {
    Walk own = walk;
    Positions at;
    for (int32_t tile = first; tile < end; tile += std::min(kTileRows, end - tile)) {
      for (int32_t x = 0; x < rect.width; x += kChunk) {
        const int32_t count = std::min(kChunk, rect.width - x);
        own.enter(rect.x + x, count);
        for (int32_t y = tile; y < std::min(tile + kTileRows, end); ++y) {
          own.row(rect.y + y, at);
          sample(image, at, count, rowAt(dst, dstStep, y) + ptrdiff_t{x} * kChannels);
        }
      }
    }
  });
}

}  // namespace dax
