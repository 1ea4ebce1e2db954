#include "image/warp/sampling.h"

#include <cstring>
#include <type_traits>

#include "frame/dispatch.h"
#include "image/border/border_index.h"
#include "image/warp/sampling_neon.h"
#include "image/warp/sampling_portable.h"

namespace dax {
namespace {

// The first of the pixels of an axis around a position, kTaps of them; one is the nearest.
template <int kTaps>
int32_t firstTap(int64_t position) {
  constexpr int64_t kShift = kTaps == 1 ? kOnePixel / 2 : 0;
  constexpr int32_t kBefore = kTaps > 2 ? kTaps / 2 - 1 : 0;
  return static_cast<int32_t>(static_cast<uint64_t>(position + kShift) >> 32) - kBefore;
}

// --- Inside ---

// The pixels of an image at which footprints inside begin. None in images beyond 2^31 elements, where offsets do not fit: their
// pixels are taken one at a time.
template <int kTaps>
struct FirstPixels {
  FirstPixels(DaxiSize size, int32_t step) : columns(along(size.width)), rows(along(size.height)) {
    if (int64_t{step} * size.height > INT32_MAX) columns = rows = 0;
  }
  static uint32_t along(int32_t side) { return static_cast<uint32_t>(std::max(0, side - kTaps + 1)); }

  bool contain(int64_t px, int64_t py) const {
    return static_cast<uint32_t>(firstTap<kTaps>(px)) < columns && static_cast<uint32_t>(firstTap<kTaps>(py)) < rows;
  }

  // Where the footprints of positions begin; whether all of them lie inside.
  [[gnu::noinline]] bool locate(const Positions& at, int32_t count, int32_t step, int32_t channels,
                                int32_t* offsets) const {
    uint32_t maxX = 0, maxY = 0;
    for (int32_t i = 0; i < count; ++i) {
      const auto x = static_cast<uint32_t>(firstTap<kTaps>(at.x[i])),
                 y = static_cast<uint32_t>(firstTap<kTaps>(at.y[i]));
      maxX = std::max(maxX, x);
      maxY = std::max(maxY, y);
      offsets[i] = static_cast<int32_t>(y * static_cast<uint32_t>(step) + x * static_cast<uint32_t>(channels));
    }
    return maxX < columns && maxY < rows;
  }

  uint32_t columns, rows;
};

// Some of the positions of a chunk, whose footprints lie inside.
struct InsideRun {
  const int64_t *x, *y;
  const int32_t* offsets;
  int32_t count;
};

template <class T, int kChannels>
void nearestInside(const SampledImage<T>& image, const InsideRun& run, T* dst) {
#pragma GCC unroll 4
  for (int32_t i = 0; i < run.count; ++i, dst += kChannels) {
    const T* const pixel = image.data + run.offsets[i];
    for (int c = 0; c < kChannels; ++c) dst[c] = pixel[c];
  }
}

template <class T>
void interpolate(const SampledImage<T>& image, const Neighbours<T>& around, const InsideRun& run, T* dst) {
  if (image.usesLanes) return neon::linearRun(around, run.x, run.y, run.count, dst);
  portable::linearRun(around, run.x, run.y, run.count, dst);
}

// Brings what lies around the positions together, kCount elements of either row, so that the arithmetic runs in vectors.
template <int kCount, class T>
void gather(const SampledImage<T>& image, const InsideRun& run, T* above, T* below) {
  const T *const data = image.data, *const next = data + image.step;
#pragma GCC unroll 4
  for (int32_t i = 0; i < run.count; ++i) {
    std::memcpy(above + kCount * i, data + run.offsets[i], kCount * sizeof(T));
    std::memcpy(below + kCount * i, next + run.offsets[i], kCount * sizeof(T));
  }
}

// Puts the channels of runs together.
template <class T, int kChannels>
void interleave(const T (&channels)[kChannels][kChunk], int32_t count, T* dst) {
  for (int32_t i = 0; i < count; ++i) {
    for (int c = 0; c < kChannels; ++c) dst[kChannels * i + c] = channels[c][i];
  }
}

template <class T, int kChannels>
void linearInside(const SampledImage<T>& image, const InsideRun& run, T* dst) {
  Neighbours<T> around;
  if constexpr (kChannels == 1) {
    gather<2>(image, run, around.above, around.below);
    interpolate(image, around, run, dst);
  } else {
    constexpr int kPair = 2 * kChannels;
    T above[kPair * kChunk], below[kPair * kChunk], results[kChannels][kChunk];
    gather<kPair>(image, run, above, below);
    for (int c = 0; c < kChannels; ++c) {
      for (int32_t i = 0; i < 2 * run.count; ++i) {
        around.above[i] = above[kChannels * i + c];
        around.below[i] = below[kChannels * i + c];
      }
      interpolate(image, around, run, results[c]);
    }
    interleave(results, run.count, dst);
  }
}

// A channel of footprints, side by side.
template <class T, int kChannels, int kTaps>
struct Channel {
  static constexpr int kArea = kTaps * kTaps;

  Footprints<T> of(const SampledImage<T>& image, const InsideRun& run, int c) {
    for (int32_t i = 0; i < run.count; ++i) {
      offsets[i] = i * kArea;
      const T* pixel = image.data + run.offsets[i] + c;
      for (T* to = taps + offsets[i]; to < taps + offsets[i] + kArea; to += kTaps, pixel += image.step) {
        for (int k = 0; k < kTaps; ++k) to[k] = pixel[k * kChannels];
      }
    }
    return {taps, kTaps, offsets};
  }

  T taps[kChunk * kArea];
  int32_t offsets[kChunk];
};

template <int kTaps, class T>
void interpolate(bool usesLanes, const Footprints<T>& at, int32_t count, const TapWeights<kTaps>& x,
                 const TapWeights<kTaps>& y, T* dst) {
  double sums[kChunk];
  usesLanes ? neon::sumTaps<kTaps>(at, count, x, y, sums) : portable::sumTaps<kTaps>(at, count, x, y, sums);
  usesLanes ? neon::roundSums(sums, count, dst) : portable::roundSums(sums, count, dst);
}

template <class T, int kChannels, int kTaps>
void tapsInside(const SampledImage<T>& image, const InsideRun& run, T* dst) {
  TapWeights<kTaps> x, y;
  weighRun<kTaps>(run.x, run.count, kFractionBits<T>, image.cubicA, x);
  weighRun<kTaps>(run.y, run.count, kFractionBits<T>, image.cubicA, y);
  if constexpr (kChannels == 1) {
    interpolate<kTaps, T>(image.usesLanes, {image.data, image.step, run.offsets}, run.count, x, y, dst);
  } else {
    T results[kChannels][kChunk];
    Channel<T, kChannels, kTaps> channel;
    for (int c = 0; c < kChannels; ++c) {
      interpolate<kTaps>(image.usesLanes, channel.of(image, run, c), run.count, x, y, results[c]);
    }
    interleave(results, run.count, dst);
  }
}

template <class T, int kChannels, int kTaps>
void sampleInside(const SampledImage<T>& image, const InsideRun& run, T* dst) {
  if constexpr (kTaps == 1) {
    nearestInside<T, kChannels>(image, run, dst);
  } else if constexpr (kTaps == 2) {
    linearInside<T, kChannels>(image, run, dst);
  } else {
    tapsInside<T, kChannels, kTaps>(image, run, dst);
  }
}

// --- Anywhere ---

template <class T, int kTaps>
void weigh(int64_t position, double cubicA, double (&weights)[kTaps]) {
  if constexpr (kTaps == 1) {
    weights[0] = 1;
  } else {
    kernelWeights(fractionOf(position, kFractionBits<T>), cubicA, weights);
  }
}

// The columns or rows that stand for the taps of an axis; -1 where the constant does.
template <int kTaps>
void findTaps(int64_t position, int32_t side, int32_t border, int64_t (&taps)[kTaps]) {
  const int64_t first = firstTap<kTaps>(position);
  for (int k = 0; k < kTaps; ++k) {
    const int64_t tap = first + k;
    const bool isInside = tap >= 0 && tap < side;
    taps[k] = isInside ? tap : border == DAXI_BORDER_CONSTANT ? -1 : borderIndex(tap, side, border);
  }
}

// Whether all taps lie beyond the same end of an axis.
template <int kTaps>
bool isBeyond(int64_t position, int32_t side) {
  const int32_t first = firstTap<kTaps>(position);
  return first <= -kTaps || first >= side;
}

// The same for all taps of all positions.
template <int kTaps>
[[gnu::noinline]] bool areBeyond(const int64_t* positions, int32_t count, int32_t side) {
  int32_t minTap = INT32_MAX, maxTap = INT32_MIN;
  for (int32_t i = 0; i < count; ++i) {
    minTap = std::min(minTap, firstTap<kTaps>(positions[i]));
    maxTap = std::max(maxTap, firstTap<kTaps>(positions[i]));
  }
  return maxTap <= -kTaps || minTap >= side;
}

// Whether a pixel of that side covers the position.
bool isCovered(int64_t position, int32_t side) {
  return position >= -kOnePixel / 2 && position < side * kOnePixel - kOnePixel / 2;
}

template <class T, int kChannels, int kTaps>
void sampleAnywhere(const SampledImage<T>& image, int64_t px, int64_t py, T* dst) {
  if (image.leaves && !(isCovered(px, image.size.width) && isCovered(py, image.size.height))) return;
  const bool isFar = (image.borderX == DAXI_BORDER_CONSTANT && isBeyond<kTaps>(px, image.size.width)) ||
                     (image.borderY == DAXI_BORDER_CONSTANT && isBeyond<kTaps>(py, image.size.height)) ||
                     px == kNowhere || py == kNowhere;
  if (isFar) {
    for (int c = 0; c < kChannels; ++c) dst[c] = image.value;
    return;
  }
  int64_t columns[kTaps], rows[kTaps];
  findTaps(px, image.size.width, image.borderX, columns);
  findTaps(py, image.size.height, image.borderY, rows);
  double wx[kTaps], wy[kTaps];
  weigh<T>(px, image.cubicA, wx);
  weigh<T>(py, image.cubicA, wy);
  for (int c = 0; c < kChannels; ++c) {
    const auto pixel = [&](int i, int j) {
      const bool isOutside = columns[i] < 0 || rows[j] < 0;
      return isOutside ? image.value : image.data[rows[j] * image.step + columns[i] * kChannels + c];
    };
    dst[c] = pixelOf<T>(weightedSum<T>(wx, wy, pixel));
  }
}

// Whether no pixel of the image counts for any of the positions, and no border brings one there.
template <class T, int kTaps>
bool areOutside(const SampledImage<T>& image, const Positions& at, int32_t count) {
  const auto along = [&](const int64_t* positions, int32_t side, int32_t border) {
    return (image.leaves || border == DAXI_BORDER_CONSTANT) && areBeyond<kTaps>(positions, count, side);
  };
  return along(at.x, image.size.width, image.borderX) || along(at.y, image.size.height, image.borderY);
}

// --- Chunks ---

template <class T, int kChannels, int kTaps>
void sampleChunk(const SampledImage<T>& given, const Positions& at, int32_t count, T* dst) {
  const SampledImage<T> image = given;  // stores of bytes cannot change the copy
  const FirstPixels<kTaps> inside(image.size, image.step);
  int32_t offsets[kChunk];
  const bool areInside = inside.locate(at, count, image.step, kChannels, offsets);
  const auto insideFrom = [&](int32_t first, int32_t end) {
    sampleInside<T, kChannels, kTaps>(image, {at.x + first, at.y + first, offsets + first, end - first},
                                      dst + ptrdiff_t{first} * kChannels);
  };
  // Most chunks lie wholly inside, others wholly outside.
  if (areInside) return insideFrom(0, count);
  if (areOutside<T, kTaps>(image, at, count)) {
    if (!image.leaves) std::fill_n(dst, ptrdiff_t{count} * kChannels, image.value);
    return;
  }
  for (int32_t i = 0; i < count;) {
    const int32_t first = i;
    while (i < count && inside.contain(at.x[i], at.y[i])) ++i;
    if (i > first) insideFrom(first, i);
    for (; i < count && !inside.contain(at.x[i], at.y[i]); ++i) {
      sampleAnywhere<T, kChannels, kTaps>(image, at.x[i], at.y[i], dst + ptrdiff_t{i} * kChannels);
    }
  }
}

}  // namespace

template <class T, int kChannels>
Sampler<T> samplerFor(int32_t interpolation) {
  switch (interpolation) {
    case DAXI_INTERPOLATION_NEAREST:
      return sampleChunk<T, kChannels, 1>;
    case DAXI_INTERPOLATION_LINEAR:
      return sampleChunk<T, kChannels, 2>;
    case DAXI_INTERPOLATION_CUBIC:
      return sampleChunk<T, kChannels, 4>;
    default:
      return sampleChunk<T, kChannels, 6>;
  }
}

#define DAX_SAMPLERS(T)                          \
  template Sampler<T> samplerFor<T, 1>(int32_t); \
  template Sampler<T> samplerFor<T, 3>(int32_t);
DAX_SAMPLERS(uint8_t)
DAX_SAMPLERS(uint16_t)
DAX_SAMPLERS(int16_t)
DAX_SAMPLERS(float)
#undef DAX_SAMPLERS

}  // namespace dax
