#include "image/warp/sampling.h"

#include <cstring>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/numeric/round.h"
#include "image/border/border_index.h"
#include "image/warp/kernel_weights.h"
#include "image/warp/sampling_neon.h"

namespace dax {
namespace {

// The pixels of an axis around a position: kTaps of them; one is the nearest.
template <int kTaps>
struct Footprint {
  static constexpr int64_t kShift = kTaps == 1 ? kOnePixel / 2 : 0;
  static constexpr int64_t kBefore = kTaps > 2 ? kTaps / 2 - 1 : 0;

  static int64_t first(int64_t position) { return ((position + kShift) >> 32) - kBefore; }

  // The positions whose pixels all lie inside.
  static constexpr int64_t kLow = kBefore * kOnePixel - kShift;
  static int64_t high(int32_t side) { return (side - kTaps / 2) * kOnePixel - kShift - 1; }

  template <class T>
  static void weigh(int64_t position, double cubicA, double (&weights)[kTaps]) {
    constexpr int kBits = kFractionBits<T>;
    const auto units = static_cast<int64_t>(static_cast<uint32_t>(position) >> (32 - kBits));
    const double fraction = static_cast<double>(units) / (int64_t{1} << kBits);
    if constexpr (kTaps == 1) {
      weights[0] = 1;
    } else if constexpr (kTaps == 2) {
      linearWeights(fraction, weights);
    } else if constexpr (kTaps == 4) {
      cubicWeights(fraction, cubicA, weights);
    } else {
      lanczos3Weights(fraction, weights);
    }
  }
};

// A pixel of weight 0 does not count, whatever it is.
template <class T>
double withPixel(double sum, double weight, T pixel) {
  if constexpr (std::is_integral_v<T>) return sum + weight * pixel;
  return weight == 0 ? sum : sum + weight * pixel;
}

template <class T>
T pixelOf(double sum) {
  if constexpr (std::is_integral_v<T>) return roundTo<T>(sum);
  return static_cast<T>(sum);
}

// The sum of pixel(i, j) over the taps, along x first.
template <class T, int kTaps, class Pixel>
T weighted(const double (&wx)[kTaps], const double (&wy)[kTaps], const Pixel& pixel) {
  double sum = 0;
  for (int j = 0; j < kTaps; ++j) {
    double row = 0;
    for (int i = 0; i < kTaps; ++i) row = withPixel<T>(row, wx[i], pixel(i, j));
    sum = wy[j] == 0 ? sum : sum + wy[j] * row;
  }
  return pixelOf<T>(sum);
}

// A run of pixels in passes: what lies around the positions is brought together, so that the arithmetic runs in vectors.
template <class T, int kChannels>
void linearInside(const SampledImage<T>& image, const int64_t* px, const int64_t* py, int32_t count, T* dst) {
  Neighbours<T> around[kChannels];
  const T* const data = image.data;
  const int64_t step = image.step;
  for (int32_t i = 0; i < count; ++i) {
    const T* const pixel = data + (py[i] >> 32) * step + (px[i] >> 32) * kChannels;
    if constexpr (kChannels == 1) {
      std::memcpy(around[0].above + 2 * i, pixel, 2 * sizeof(T));
      std::memcpy(around[0].below + 2 * i, pixel + step, 2 * sizeof(T));
    } else {
      for (int c = 0; c < kChannels; ++c) {
        around[c].above[2 * i] = pixel[c], around[c].above[2 * i + 1] = pixel[kChannels + c];
        around[c].below[2 * i] = pixel[step + c], around[c].below[2 * i + 1] = pixel[step + kChannels + c];
      }
    }
  }
  const bool usesLanes = image.usesLanes;
  const auto interpolate = [usesLanes, px, py, count](const Neighbours<T>& neighbours, T* to) {
    if (usesLanes) return neon::linearRun<T>(neighbours, px, py, count, to);
    portable::linearRun<T>(neighbours, px, py, count, to);
  };
  if constexpr (kChannels == 1) return interpolate(around[0], dst);
  T results[kChannels][kChunk];
  for (int c = 0; c < kChannels; ++c) interpolate(around[c], results[c]);
  for (int32_t i = 0; i < count; ++i) {
    for (int c = 0; c < kChannels; ++c) dst[kChannels * i + c] = results[c][i];
  }
}

template <class T, int kChannels, int kTaps>
void sampleInside(const SampledImage<T>& image, int64_t px, int64_t py, T* dst) {
  using Axis = Footprint<kTaps>;
  const T* const first = image.data + Axis::first(py) * image.step + Axis::first(px) * kChannels;
  if constexpr (kTaps == 1) {
    for (int c = 0; c < kChannels; ++c) dst[c] = first[c];
  } else {
    double wx[kTaps], wy[kTaps];
    Axis::template weigh<T>(px, image.cubicA, wx);
    Axis::template weigh<T>(py, image.cubicA, wy);
    for (int c = 0; c < kChannels; ++c) {
      const auto pixel = [&](int i, int j) { return first[ptrdiff_t{j} * image.step + i * kChannels + c]; };
      dst[c] = weighted<T>(wx, wy, pixel);
    }
  }
}

// The columns or rows that stand for the taps of an axis; -1 where the constant does.
template <int kTaps>
void findTaps(int64_t position, int32_t side, int32_t border, int64_t (&taps)[kTaps]) {
  const int64_t first = Footprint<kTaps>::first(position);
  for (int k = 0; k < kTaps; ++k) {
    const int64_t tap = first + k;
    const bool isInside = tap >= 0 && tap < side;
    taps[k] = isInside ? tap : border == DAXI_BORDER_CONSTANT ? -1 : borderIndex(tap, side, border);
  }
}

// Whether the constant stands for all taps of an axis.
template <int kTaps>
bool isBeyond(int64_t position, int32_t side, int32_t border) {
  const int64_t first = Footprint<kTaps>::first(position);
  return border == DAXI_BORDER_CONSTANT && (first <= -kTaps || first >= side);
}

// Whether a pixel of that side covers the position.
bool isCovered(int64_t position, int32_t side) {
  return position >= -kOnePixel / 2 && position < side * kOnePixel - kOnePixel / 2;
}

template <class T, int kChannels, int kTaps>
void sampleAnywhere(const SampledImage<T>& image, int64_t px, int64_t py, T* dst) {
  if (image.leaves && !(isCovered(px, image.size.width) && isCovered(py, image.size.height))) return;
  const bool isFar = isBeyond<kTaps>(px, image.size.width, image.borderX) ||
                     isBeyond<kTaps>(py, image.size.height, image.borderY) || px == kNowhere || py == kNowhere;
  if (isFar) {
    std::fill_n(dst, kChannels, image.value);
    return;
  }
  int64_t columns[kTaps], rows[kTaps];
  findTaps(px, image.size.width, image.borderX, columns);
  findTaps(py, image.size.height, image.borderY, rows);
  double wx[kTaps], wy[kTaps];
  Footprint<kTaps>::template weigh<T>(px, image.cubicA, wx);
  Footprint<kTaps>::template weigh<T>(py, image.cubicA, wy);
  for (int c = 0; c < kChannels; ++c) {
    const auto pixel = [&](int i, int j) {
      const bool isConstant = columns[i] < 0 || rows[j] < 0;
      return isConstant ? image.value : image.data[rows[j] * image.step + columns[i] * kChannels + c];
    };
    dst[c] = weighted<T>(wx, wy, pixel);
  }
}

template <class T, int kChannels, int kTaps>
void sampleChunk(const SampledImage<T>& given, const Positions& at, int32_t count, T* dst) {
  using Axis = Footprint<kTaps>;
  const SampledImage<T> image = given;  // stores of bytes cannot change the copy
  const int64_t highX = Axis::high(image.size.width), highY = Axis::high(image.size.height);
  // Negative where a pixel of the footprint lies outside.
  const auto room = [&](int32_t i) {
    return (at.x[i] - Axis::kLow) | (highX - at.x[i]) | (at.y[i] - Axis::kLow) | (highY - at.y[i]);
  };
  const auto insideFrom = [&](int32_t first, int32_t end) {
    if constexpr (kTaps == 2) {
      linearInside<T, kChannels>(image, at.x + first, at.y + first, end - first, dst + ptrdiff_t{first} * kChannels);
    } else {
      for (int32_t i = first; i < end; ++i) {
        sampleInside<T, kChannels, kTaps>(image, at.x[i], at.y[i], dst + ptrdiff_t{i} * kChannels);
      }
    }
  };
  // Most chunks lie wholly inside, which one pass over the positions tells.
  int64_t all = 0;
  for (int32_t i = 0; i < count; ++i) all |= room(i);
  if (all >= 0) return insideFrom(0, count);
  for (int32_t i = 0; i < count;) {
    const int32_t first = i;
    while (i < count && room(i) >= 0) ++i;
    if (i > first) insideFrom(first, i);
    for (; i < count && room(i) < 0; ++i) {
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
