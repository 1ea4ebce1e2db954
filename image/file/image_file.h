// What the formats of image files share, and what each of them gives.
#pragma once

#include <cstddef>
#include <cstdint>

#include "daxi/image_file.h"
#include "frame/check.h"
#include "image/file/byte_source.h"

namespace dax {

// Bytes of a sample in memory.
inline int32_t sampleBytes(int32_t type) {
  return type == DAXI_SAMPLE_8U ? 1 : type == DAXI_SAMPLE_16U ? 2 : 4;
}

// The samples of a row without gaps.
inline uint64_t rowSamples(const DaxiImageRecord& image) {
  return static_cast<uint64_t>(image.width) * static_cast<uint64_t>(image.channels);
}

inline uint64_t rowBytesOf(const DaxiImageRecord& image) {
  return rowSamples(image) * static_cast<uint64_t>(sampleBytes(image.type));
}

// The caller's rows; Byte is constant for those that are written to a file.
template <class Byte>
struct PixelRows {
  Byte* first;
  ptrdiff_t stride;  // bytes

  Byte* row(int64_t y) const { return first + static_cast<ptrdiff_t>(y) * stride; }
};

// Sides of at least 1 and within the limits; then `bytes` is set.
DaxStatus checkSides(DaxiImageRecord& image, const DaxiImageReadCfg& cfg);

// An upright image of one page.
inline DaxiImageRecord plainRecord(int32_t format, int64_t width, int64_t height, int32_t channels, int32_t type,
                                   int32_t bits, int32_t maxValue) {
  const auto side = [](int64_t value) { return static_cast<int32_t>(value < 0 || value > INT32_MAX ? 0 : value); };
  return {side(width), side(height), channels, type, bits, maxValue, 1, 1, format, 0, 0};
}

// (v * 255 + max / 2) / max.
inline uint8_t stretchedTo8(uint32_t value, uint32_t max) {
  return static_cast<uint8_t>((uint64_t{value} * 255 + max / 2) / max);
}

// A format. `info` reads the head and leaves the source where `read` needs it, which is called next with the record made.
struct ImageFormat {
  int32_t code;
  // By the first bytes of a file, of which there are `count`, at most 8.
  bool (*starts)(const uint8_t* bytes, uint64_t count);
  DaxStatus (*info)(ByteSource& source, const DaxiImageReadCfg& cfg, DaxiImageRecord& image);
  DaxStatus (*read)(ByteSource& source, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image,
                    PixelRows<uint8_t> rows);
  // The length of the file, before anything is written.
  DaxStatus (*size)(const DaxiImageRecord& image, uint64_t* bytes);
  void (*write)(ByteSink& sink, const DaxiImageRecord& image, PixelRows<const uint8_t> rows,
                const DaxiImageWriteCfg& cfg);
};

extern const ImageFormat kBmpFormat, kPnmFormat, kPfmFormat, kRawFormat;

}  // namespace dax
