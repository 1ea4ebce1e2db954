// Polar images.
#pragma once

#include "daxi/polar.h"
#include "image/warp/sampling.h"

namespace dax {

DaxStatus checkPolarCfg(const DaxiPolarCfg& cfg);
bool isFullCircle(const DaxiPolarCfg& cfg);

// From the rows and columns of a polar image to the picture.
class PolarWalk {
 public:
  PolarWalk(const DaxiPolarCfg& cfg, DaxiSize size);
  void enter(int32_t x, int32_t count);
  void row(int32_t y, Positions& at) const;

 private:
  double radiusOf(int32_t y) const;

  DaxiPolarCfg cfg_;
  DaxiSize size_;
  double logRatio_;
  int32_t count_ = 0;
  double sines_[kChunk], cosines_[kChunk];
};

// From the picture to the polar image.
class PolarBackWalk {
 public:
  PolarBackWalk(const DaxiPolarCfg& cfg, DaxiSize size);

  void enter(int32_t x, int32_t count) {
    x_ = x;
    count_ = count;
  }

  void row(int32_t y, Positions& at) const;

 private:
  double columnOf(double dx, double dy) const;
  double rowOf(double dx, double dy) const;

  DaxiPolarCfg cfg_;
  DaxiSize size_;
  bool isFull_;
  double logRatio_;
  int32_t x_ = 0, count_ = 0;
};

template <class T, int kChannels>
DaxStatus polar(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep,
                DaxiSize dstSize, const DaxiRect& dstRect, const DaxiPolarCfg* cfg) {
  DAX_REQUIRE_OK(checkWarpImages<kChannels>(src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg));
  DAX_REQUIRE_OK(checkPolarCfg(*cfg));
  return sampleRect<kChannels>(on, sampledImage(src, srcStep, srcSize, *cfg), cfg->interpolation, dst, dstStep, dstRect,
                               PolarWalk(*cfg, dstSize));
}

template <class T, int kChannels>
DaxStatus polarBack(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep,
                    DaxiSize dstSize, const DaxiRect& dstRect, const DaxiPolarCfg* cfg) {
  DAX_REQUIRE_OK(checkWarpImages<kChannels>(src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg));
  DAX_REQUIRE_OK(checkPolarCfg(*cfg));
  SampledImage<T> image = sampledImage(src, srcStep, srcSize, *cfg);
  if (isFullCircle(*cfg)) image.borderX = DAXI_BORDER_CIRCULAR;
  return sampleRect<kChannels>(on, image, cfg->interpolation, dst, dstStep, dstRect, PolarBackWalk(*cfg, srcSize));
}

}  // namespace dax
