// Images read at places that maps tell.
#pragma once

#include "daxi/remap.h"
#include "image/warp/sampling.h"

namespace dax {

class MapWalk {
 public:
  MapWalk(const float* mapX, int32_t mapXStep, const float* mapY, int32_t mapYStep)
      : mapX_(mapX), mapY_(mapY), stepX_(mapXStep), stepY_(mapYStep) {}

  void enter(int32_t x, int32_t count) {
    x_ = x;
    count_ = count;
  }

  void row(int32_t y, Positions& at) const {
    const float *const x = rowAt(mapX_, stepX_, y) + x_, *const rowY = rowAt(mapY_, stepY_, y) + x_;
    fixPositions(
        count_,
        [=](int32_t i) {
          return RealPosition<float>{x[i], rowY[i]};
        },
        at);
  }

 private:
  const float *mapX_, *mapY_;
  int32_t stepX_, stepY_;
  int32_t x_ = 0, count_ = 0;
};

// A prepared position: 2^-12 pixels, or nowhere.
constexpr int kPreparedBits = 12;
constexpr int32_t kPreparedNowhere = INT32_MIN;
struct PreparedPosition {
  int32_t x, y;
};

class PreparedWalk {
 public:
  // False where the model is not one of that size; its checksum is left alone.
  DaxStatus open(const void* model, uint64_t modelBytes, DaxiSize size);

  void enter(int32_t x, int32_t count) {
    x_ = x;
    count_ = count;
  }

  // Any number in a model is a position.
  void row(int32_t y, Positions& at) const {
    const PreparedPosition* const from = map_ + ptrdiff_t{y} * width_ + x_;
    for (int32_t i = 0; i < count_; ++i) {
      at.x[i] = from[i].x == kPreparedNowhere ? kNowhere : from[i].x * (kOnePixel >> kPreparedBits);
      at.y[i] = from[i].y * (kOnePixel >> kPreparedBits);
    }
  }

 private:
  const PreparedPosition* map_ = nullptr;
  int32_t width_ = 0, x_ = 0, count_ = 0;
};

// Sides of sources that prepared positions reach.
inline bool arePreparedSides(DaxiSize size) {
  return atLeast(size, 1) && atMost(size, 1 << 19);
}

template <class T, int kChannels>
DaxStatus remap(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, const float* mapX, int32_t mapXStep,
                const float* mapY, int32_t mapYStep, T* dst, int32_t dstStep, DaxiSize dstSize,
                const DaxiRemapCfg* cfg) {
  const DaxiRect all = {0, 0, dstSize.width, dstSize.height};
  DAX_REQUIRE(mapX && mapY, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkWarpImages<kChannels>(src, srcStep, srcSize, dst, dstStep, dstSize, all, cfg));
  DAX_REQUIRE(rowFits(dstSize.width, mapXStep) && rowFits(dstSize.width, mapYStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkSampling(*cfg));
  return sampleRect<kChannels>(on, sampledImage(src, srcStep, srcSize, *cfg), cfg->interpolation, dst, dstStep, all,
                               MapWalk(mapX, mapXStep, mapY, mapYStep));
}

template <class T, int kChannels>
DaxStatus remapPrepared(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                        uint64_t modelBytes, T* dst, int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg) {
  const DaxiRect all = {0, 0, dstSize.width, dstSize.height};
  DAX_REQUIRE(src && model && dst && cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(arePreparedSides(srcSize), DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(checkWarpImages<kChannels>(src, srcStep, srcSize, dst, dstStep, dstSize, all, cfg));
  PreparedWalk walk;
  DAX_REQUIRE_OK(walk.open(model, modelBytes, dstSize));
  DAX_REQUIRE_OK(checkSampling(*cfg));
  return sampleRect<kChannels>(on, sampledImage(src, srcStep, srcSize, *cfg), cfg->interpolation, dst, dstStep, all,
                               walk);
}

}  // namespace dax
