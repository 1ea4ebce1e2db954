// The heads of BMP files, of all versions since OS/2.
#pragma once

#include "image/file/image_file.h"

namespace dax {

enum BmpCompression : uint32_t { kBmpPlain = 0, kBmpRuns8 = 1, kBmpRuns4 = 2, kBmpMasks = 3, kBmpAlphaMasks = 6 };

// A channel within a pixel of 16 or 32 bits; max 0: there is none.
struct BmpMask {
  int32_t shift;
  uint32_t max;

  uint8_t of(uint32_t pixel) const { return stretchedTo8(pixel >> shift & max, max); }
};

struct BmpColour {
  uint8_t red, green, blue;
};

struct BmpHead {
  int32_t bits;
  uint32_t compression;
  uint64_t pixels;  // where they begin
  bool topDown;
  uint32_t colours;
  BmpColour palette[256];
  BmpMask masks[4];  // red, green, blue, alpha
  DaxiImageRecord image;

  bool isRuns() const { return compression == kBmpRuns8 || compression == kBmpRuns4; }
  // Rows are filled up to multiples of 4 bytes.
  uint64_t rowBytes() const { return (static_cast<uint64_t>(image.width) * static_cast<uint64_t>(bits) + 31) / 32 * 4; }
};

DaxStatus readBmpHead(ByteSource& source, BmpHead& head);

}  // namespace dax
