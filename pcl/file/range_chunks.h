// The chunks of a range file (dax3dpcl/range_file.h).
#pragma once

#include <bit>
#include <cstdint>

// Chunks are written as they are in memory, and files are little-endian.
static_assert(std::endian::native == std::endian::little);

namespace dax {

enum RangeTag : uint32_t {
  kTagType = 1,
  kTagCalib = 2,
  kTagWidth = 0xA5A53D01,
  kTagHeight = 0xA5A53D02,
  kTagMask = 0xA5A53D03,
  kTagScale = 0xA5A53D07,
  kTagOffset = 0xA5A53D08,
  kTagColour = 0xA5A53D0B,
  kTagRange = 0x617D18DB,
};

// Follows each payload.
struct ChunkTrailer {
  uint32_t tag;
  uint32_t size;
};
static_assert(sizeof(ChunkTrailer) == 8);

// The first 16 bytes of a colour payload.
struct ColourHeader {
  uint32_t reserved;
  uint32_t width;
  uint32_t height;
  uint32_t format;
};
static_assert(sizeof(ColourHeader) == 16);

// Colour formats in files.
constexpr uint32_t kFilePlanarColour = 0x2180021;
constexpr uint32_t kFilePackedColour = 0x2180014;

}  // namespace dax
