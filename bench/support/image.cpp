#include "bench/support/image.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace bench {
namespace {

constexpr double kSigma = 7;
constexpr int32_t kRadius = 28;

// Weights of a Gaussian, in units of 1/65536. Rounded, they hide the last bits in which exp() may differ.
std::array<uint32_t, kRadius + 1> gaussianWeights() {
  std::array<double, kRadius + 1> values{};
  double sum = 0;
  for (int32_t i = 0; i <= kRadius; ++i) {
    values[i] = std::exp(-i * i / (2 * kSigma * kSigma));
    sum += i == 0 ? values[i] : 2 * values[i];
  }
  std::array<uint32_t, kRadius + 1> weights{};
  for (int32_t i = 0; i <= kRadius; ++i) weights[i] = static_cast<uint32_t>(std::lround(65536 * values[i] / sum));
  return weights;
}

// Blurs along columns and transposes; applied twice it blurs along both. The image goes on periodically.
Image<uint8_t> blurColumnsAndTranspose(const Image<uint8_t>& image) {
  const auto weights = gaussianWeights();
  const int32_t width = image.size.width;
  const int32_t height = image.size.height;
  const auto row = [&](int32_t y) { return image.data() + ptrdiff_t{(y + height) % height} * width; };
  Image<uint8_t> blurred({height, width});
  std::vector<uint32_t> sums(static_cast<size_t>(width));
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) sums[x] = weights[0] * row(y)[x] + 32768;
    for (int32_t i = 1; i <= kRadius; ++i) {
      const uint8_t* above = row(y - i);
      const uint8_t* below = row(y + i);
      for (int32_t x = 0; x < width; ++x) sums[x] += weights[i] * (uint32_t{above[x]} + below[x]);
    }
    for (int32_t x = 0; x < width; ++x) {
      blurred.data()[ptrdiff_t{x} * height + y] = static_cast<uint8_t>(std::min(sums[x] >> 16, 255u));
    }
  }
  return blurred;
}

// The grey value above which pixels form the second class when the variance between the classes is largest.
uint8_t otsuLevel(const Image<uint8_t>& image) {
  std::array<int64_t, 256> histogram{};
  for (const uint8_t value : *image.pixels) ++histogram[value];
  int64_t total = 0;
  for (int64_t i = 0; i < 256; ++i) total += i * histogram[i];

  const auto count = static_cast<double>(image.pixels->size());
  int64_t pixels = 0;
  int64_t sum = 0;
  double best = -1;
  uint8_t level = 0;
  for (int64_t i = 0; i < 256; ++i) {
    pixels += histogram[i];
    sum += i * histogram[i];
    const double below = static_cast<double>(pixels);
    if (pixels == 0 || below == count) continue;
    const double difference = static_cast<double>(sum) / below - static_cast<double>(total - sum) / (count - below);
    const double variance = below * (count - below) * difference * difference;
    if (variance > best) {
      best = variance;
      level = static_cast<uint8_t>(i);
    }
  }
  return level;
}

Image<uint8_t> maskFrom(const Image<uint8_t>& image, int level) {
  Image<uint8_t> mask(image.size);
  std::transform(image.pixels->begin(), image.pixels->end(), mask.pixels->begin(),
                 [level](uint8_t value) { return static_cast<uint8_t>(value >= level ? 255 : 0); });
  return mask;
}

}  // namespace

template <class T>
Image<T> noise(DaxiSize size) {
  Image<T> image(size);
  uint64_t state = 0x9E3779B97F4A7C15u;
  for (T& pixel : *image.pixels) {
    // xorshift64 (G. Marsaglia, Journal of Statistical Software 8(14), 2003); the high bits are the better ones.
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    pixel = static_cast<T>(state >> 56);
  }
  return image;
}

template Image<uint8_t> noise(DaxiSize size);
template Image<uint16_t> noise(DaxiSize size);
template Image<int16_t> noise(DaxiSize size);
template Image<int32_t> noise(DaxiSize size);
template Image<float> noise(DaxiSize size);

Image<uint8_t> rawNoiseMask(DaxiSize size) {
  return maskFrom(noise<uint8_t>(size), 128);
}

Image<uint8_t> smoothBlobMask(DaxiSize size) {
  const Image<uint8_t> blurred = blurColumnsAndTranspose(blurColumnsAndTranspose(noise<uint8_t>(size)));
  return maskFrom(blurred, otsuLevel(blurred) + 1);
}

// FNV-1a.
uint64_t digest(const void* data, size_t bytes) {
  const auto* first = static_cast<const uint8_t*>(data);
  uint64_t hash = 0xCBF29CE484222325u;
  std::for_each(first, first + bytes, [&hash](uint8_t byte) { hash = (hash ^ byte) * 0x100000001B3u; });
  return hash;
}

}  // namespace bench
