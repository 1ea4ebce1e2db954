#include "image/warp/sampling.h"

#include <type_traits>

#include "frame/numeric/round.h"
#include "image/border/border_index.h"
#include "image/warp/kernel_weights.h"

namespace dax {
namespace {

// How many bits of a position's fraction count.
template <class T>
constexpr int kFractionBits = std::is_integral_v<T> ? 16 : 24;

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

// Linear interpolation of integers, exact until the last rounding, halves to the even one.
template <class T>
T linearOf(const T* above, const T* below, int next, int64_t fx, int64_t fy) {
  using Row = std::conditional_t<sizeof(T) == 1, int32_t, int64_t>;
  constexpr int kBits = kFractionBits<T>;
  const auto along = [&](const T* row) {
    const Row left = row[0], right = row[next];
    return (left << kBits) + (right - left) * static_cast<Row>(fx);
  };
  const int64_t top = along(above), sum = (top << kBits) + (along(below) - top) * fy;
  constexpr int64_t kBelowHalf = (int64_t{1} << (2 * kBits - 1)) - 1;
  return static_cast<T>((sum + kBelowHalf + (sum >> 2 * kBits & 1)) >> 2 * kBits);
}

template <class T, int kChannels, int kTaps>
void sampleInside(const SampledImage<T>& image, int64_t px, int64_t py, T* dst) {
  using Axis = Footprint<kTaps>;
  const T* const first = image.data + Axis::first(py) * image.step + Axis::first(px) * kChannels;
  if constexpr (kTaps == 1) {
    for (int c = 0; c < kChannels; ++c) dst[c] = first[c];
  } else if constexpr (kTaps == 2 && std::is_integral_v<T>) {
    constexpr int kUnused = 32 - kFractionBits<T>;
    const int64_t fx = static_cast<uint32_t>(px) >> kUnused, fy = static_cast<uint32_t>(py) >> kUnused;
    for (int c = 0; c < kChannels; ++c) dst[c] = linearOf(first + c, first + image.step + c, kChannels, fx, fy);
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

// Whether a pixel of that side covers the position.
bool isCovered(int64_t position, int32_t side) {
  return position >= -kOnePixel / 2 && position < side * kOnePixel - kOnePixel / 2;
}

template <class T, int kChannels, int kTaps>
void sampleAnywhere(const SampledImage<T>& image, int64_t px, int64_t py, T* dst) {
  if (image.leaves && !(isCovered(px, image.size.width) && isCovered(py, image.size.height))) return;
  if (px == kNowhere || py == kNowhere) {
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

// Most chunks lie wholly inside, which one pass over the positions tells.
template <class T, int kChannels, int kTaps>
void sampleChunk(const SampledImage<T>& given, const Positions& at, int32_t count, T* dst) {
  using Axis = Footprint<kTaps>;
  const SampledImage<T> image = given;  // stores of bytes cannot change the copy
  const int64_t highX = Axis::high(image.size.width), highY = Axis::high(image.size.height);
  // Negative where the position lies outside.
  const auto room = [&](int64_t x, int64_t y) {
    return (x - Axis::kLow) | (highX - x) | (y - Axis::kLow) | (highY - y);
  };
  int64_t all = 0;
  for (int32_t i = 0; i < count; ++i) all |= room(at.x[i], at.y[i]);
  if (all >= 0) {
    for (int32_t i = 0; i < count; ++i) {
      sampleInside<T, kChannels, kTaps>(image, at.x[i], at.y[i], dst + ptrdiff_t{i} * kChannels);
    }
    return;
  }
  for (int32_t i = 0; i < count; ++i) {
    const auto sample =
        room(at.x[i], at.y[i]) >= 0 ? sampleInside<T, kChannels, kTaps> : sampleAnywhere<T, kChannels, kTaps>;
    sample(image, at.x[i], at.y[i], dst + ptrdiff_t{i} * kChannels);
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
