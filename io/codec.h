// What the codecs share: the bytes they read, the pixels they write, the bytes they make.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>

#include "daxio.h"

namespace dax::io {

using FileBytes = std::span<const uint8_t>;

inline int32_t sampleBytes(int32_t type) {
  return type == DAXI_SAMPLE_8U ? 1 : type == DAXI_SAMPLE_16U ? 2 : 4;
}

inline uint64_t rowSamples(const DaxiImageRecord& image) {
  return static_cast<uint64_t>(image.width) * static_cast<uint64_t>(image.channels);
}

inline uint64_t rowBytes(const DaxiImageRecord& image) {
  return rowSamples(image) * static_cast<uint64_t>(sampleBytes(image.type));
}

void say(DaxioMessage* message, const char* text);

// Compares sides and bytes with the limits, in 64 bits, before a decoder allocates; then sets `bytes`.
DaxStatus checkSides(DaxiImageRecord& image, const DaxiImageReadCfg& cfg);

// 1..8 of an EXIF block, 1 where it says none of these. Nothing outside the block is read.
int32_t orientationOf(FileBytes exif);

// The caller's pixels, as an image of the file lies in them: rows and columns may be turned. Plain data, for codecs that
// leave by longjmp.
struct Canvas {
  uint8_t* origin;        // of the file's first pixel
  ptrdiff_t right, down;  // bytes to the file's next pixel and next row
  int32_t pixelBytes;

  // image: as in the file; orientation 1: as it lies.
  Canvas(const DaxiImageRecord& image, int32_t orientation, void* pixels, int32_t step);

  bool isStraight() const { return right == pixelBytes; }
  uint8_t* at(int64_t x, int64_t y) const { return origin + x * right + y * down; }
  // Whole pixels, or `bytes` of each from the place `offset` within it.
  void put(int64_t x, int64_t y, int64_t count, const uint8_t* samples) const;
  void putPart(int64_t x, int64_t y, int64_t count, const uint8_t* samples, int32_t offset, int32_t bytes) const;
};

// The caller's pixels, to be written.
struct Pixels {
  const uint8_t* first;
  ptrdiff_t stride;

  const uint8_t* row(int64_t y) const { return first + y * stride; }
};

// A file that grows. Plain calls, for codecs in C.
class Growing {
 public:
  Growing() = default;
  ~Growing() { std::free(data_); }
  Growing(const Growing&) = delete;
  Growing& operator=(const Growing&) = delete;

  // At a place within the file or at its end; false without memory.
  bool put(uint64_t place, const void* data, uint64_t bytes);
  bool append(const void* data, uint64_t bytes) { return put(size_, data, bytes); }
  const uint8_t* data() const { return data_; }
  uint8_t* data() { return data_; }
  uint64_t size() const { return size_; }

 private:
  uint8_t* data_ = nullptr;
  uint64_t size_ = 0, room_ = 0;
};

struct Codec {
  int32_t code;
  bool (*starts)(FileBytes file);
  // The record as the file lies, not turned.
  DaxStatus (*info)(FileBytes file, const DaxiImageReadCfg& cfg, DaxiImageRecord& image, DaxioMessage* message);
  DaxStatus (*read)(FileBytes file, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, const Canvas& canvas,
                    DaxioMessage* message);
  DaxStatus (*write)(const DaxiImageRecord& image, const Pixels& pixels, const DaxiImageWriteCfg& cfg, Growing& file,
                     DaxioMessage* message);
};

extern const Codec kPng, kJpeg, kTiff;

}  // namespace dax::io
