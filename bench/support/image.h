// Images to measure on. They are made with integers from a fixed seed: the same on every machine.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "bench/support/amount.h"
#include "dax/types.h"

namespace bench {

constexpr DaxiSize kUsualSize{1920, 1080};
inline const DaxiSize kSize = scaled(kUsualSize);

constexpr size_t pixelCount(DaxiSize size) {
  return static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
}

// Rows without padding. Copies share the pixels.
template <class T>
struct Image {
  explicit Image(DaxiSize imageSize) : size(imageSize), pixels(std::make_shared<std::vector<T>>(pixelCount(size))) {}

  T* data() const { return pixels->data(); }
  size_t bytes() const { return pixels->size() * sizeof(T); }

  DaxiSize size;
  std::shared_ptr<std::vector<T>> pixels;
};

// Grey values 0..255, evenly distributed and independent.
template <class T>
Image<T> noise(DaxiSize size = kSize);

// Noise, set from grey value 128 on: hundreds of thousands of runs, the worst case of labelling.
Image<uint8_t> rawNoiseMask(DaxiSize size = kSize);

// Noise blurred by a Gaussian of 7 pixels, set above its Otsu level: hundreds of blobs with smooth outlines.
Image<uint8_t> smoothBlobMask(DaxiSize size = kSize);

uint64_t digest(const void* data, size_t bytes);

template <class T>
uint64_t digest(const Image<T>& image) {
  return digest(image.data(), image.bytes());
}

}  // namespace bench
