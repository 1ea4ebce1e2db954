// Which data an iteration of sample consensus draws.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/numeric/pcg32.h"

namespace dax {

// `count` different indices below `pool`, all subsets alike: Floyd's algorithm (Bentley and Floyd, Programming pearls: a
// sample of brilliance, Communications of the ACM 30, 1987). count is small.
inline void drawSubset(Pcg32& random, int32_t pool, int32_t count, int32_t* subset) {
  for (int32_t i = 0; i < count; ++i) {
    const int32_t last = pool - count + i;
    const auto drawn = static_cast<int32_t>(random.below(static_cast<uint32_t>(last) + 1));
    const bool isTaken = std::find(subset, subset + i, drawn) != subset + i;
    subset[i] = isTaken ? last : drawn;
  }
}

// What the sample of an iteration is drawn from: the first `size` data, of which the last one is always in it, or not.
struct SacPool {
  int32_t size;
  bool hasLast;

  void draw(Pcg32 random, int32_t sampleSize, int32_t* sample) const {
    const int32_t fixed = hasLast ? 1 : 0;
    drawSubset(random, size - fixed, sampleSize - fixed, sample);
    if (hasLast) sample[sampleSize - 1] = size - 1;
  }
};

// The pools of PROSAC (Chum and Matas, Matching with PROSAC - progressive sample consensus, CVPR 2005). A pool of the n best data
// serves for as many samples as `rounds` / 2 uniform ones would have within it, and for one at least; where that would not
// reach all data within `rounds`, for fewer.
class ProgressivePools {
 public:
  ProgressivePools(int32_t n, int32_t sampleSize, int32_t rounds)
      : sampleSize_(sampleSize), size_(sampleSize), least_(std::min(1.0, 0.5 * rounds / n)), expected_(0.5 * rounds) {
    for (int32_t i = 0; i < sampleSize; ++i) expected_ *= static_cast<double>(sampleSize - i) / (n - i);
  }

  // Of the next iteration; never more than `limit` data.
  SacPool next(int32_t limit) {
    ++iteration_;
    while (iteration_ > end_ && size_ < limit) grow();
    const bool isGrowing = iteration_ <= end_ && size_ > sampleSize_ && size_ <= limit;
    return {std::min(size_, limit), isGrowing};
  }

 private:
  void grow() {
    const double following = expected_ * (size_ + 1) / (size_ + 1 - sampleSize_);
    end_ += std::max(least_, following - expected_);
    expected_ = following;
    ++size_;
  }

  int32_t sampleSize_;
  int32_t size_;
  double least_;     // iterations of a pool
  double expected_;  // samples within the pool, of as many uniform ones
  double end_ = 1;   // the iteration up to which this pool serves
  int64_t iteration_ = 0;
};

}  // namespace dax
