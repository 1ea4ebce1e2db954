// Affine and perspective warps.
#pragma once

#include "daxi/warp.h"
#include "image/warp/sampling.h"
#include "image/warp/warp_matrix.h"

namespace dax {

// Positions A x + B y + C and D x + E y + F.
class AffineWalk {
 public:
  AffineWalk(const double* back, DaxiSize dstSize);

  void enter(int32_t x, int32_t count) {
    x_ = x;
    count_ = count;
  }

  void row(int32_t y, Positions& at) const;

 private:
  int64_t fixed_[6] = {};  // in 2^-32 pixels
  double real_[6];
  bool isFixed_;
  int32_t x_ = 0, count_ = 0;
};

class PerspectiveWalk {
 public:
  explicit PerspectiveWalk(const double (&back)[9]) { std::copy_n(back, 9, back_); }

  void enter(int32_t x, int32_t count) {
    x_ = x;
    count_ = count;
  }

  void row(int32_t y, Positions& at) const;

 private:
  double back_[9];
  int32_t x_ = 0, count_ = 0;
};

// The first two rows of the matrix from the destination to the source.
void rotationBack(double angle, DaxiSize srcSize, DaxiSize dstSize, double (&back)[6]);

template <class T, int kChannels>
DaxStatus warpAffine(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep,
                     DaxiSize dstSize, const DaxiRect& dstRect, const DaxiWarpCfg* cfg) {
  DAX_REQUIRE_OK(checkWarpImages<kChannels>(src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg));
  DAX_REQUIRE(isAffine(cfg->m), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkWarpCfg(*cfg));
  WarpMatrices matrices;
  DAX_REQUIRE_OK(orientWarp(*cfg, srcSize, &matrices));
  return sampleRect<kChannels>(on, sampledImage(src, srcStep, srcSize, *cfg), cfg->interpolation, dst, dstStep, dstRect,
                               AffineWalk(matrices.back, dstSize));
}

template <class T, int kChannels>
DaxStatus warpPerspective(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep,
                          DaxiSize dstSize, const DaxiRect& dstRect, const DaxiWarpCfg* cfg) {
  DAX_REQUIRE_OK(checkWarpImages<kChannels>(src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg));
  DAX_REQUIRE_OK(checkWarpCfg(*cfg));
  WarpMatrices matrices;
  DAX_REQUIRE_OK(orientWarp(*cfg, srcSize, &matrices));
  return sampleRect<kChannels>(on, sampledImage(src, srcStep, srcSize, *cfg), cfg->interpolation, dst, dstStep, dstRect,
                               PerspectiveWalk(matrices.back));
}

template <class T, int kChannels>
DaxStatus rotate(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep,
                 DaxiSize dstSize, const DaxiRect& dstRect, const DaxiRotateCfg* cfg) {
  DAX_REQUIRE_OK(checkWarpImages<kChannels>(src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg));
  DAX_REQUIRE(std::isfinite(cfg->angle), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkSampling(*cfg));
  double back[6];
  rotationBack(cfg->angle, srcSize, dstSize, back);
  return sampleRect<kChannels>(on, sampledImage(src, srcStep, srcSize, *cfg), cfg->interpolation, dst, dstStep, dstRect,
                               AffineWalk(back, dstSize));
}

}  // namespace dax
