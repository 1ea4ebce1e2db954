#include "image/file/bmp_head.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace dax {
namespace {

constexpr uint32_t kCoreBytes = 12, kInfoBytes = 40, kV2Bytes = 52, kV3Bytes = 56, kOs2Bytes = 64, kV4Bytes = 108,
                   kV5Bytes = 124;
constexpr uint32_t kFileHeadBytes = 14;
constexpr uint32_t kBmpJpeg = 4, kBmpPng = 5;

// What the information head says; `text` has all of its bytes up to the masks.
struct BmpInfo {
  uint32_t bytes;
  int64_t width, height;
  int32_t bits;
  uint32_t compression;
  uint32_t colours;
  uint8_t masks[16];  // of the heads that contain them
};

DaxStatus readInfo(ByteSource& source, BmpInfo& info) {
  uint8_t text[kV3Bytes] = {};
  DAX_REQUIRE(source.read(text, 4), DAX_STS_FILE_READ);
  info.bytes = littleEndian(text, 4);
  constexpr uint32_t kKnown[] = {kCoreBytes, kInfoBytes, kV2Bytes, kV3Bytes, kOs2Bytes, kV4Bytes, kV5Bytes};
  DAX_REQUIRE(std::find(std::begin(kKnown), std::end(kKnown), info.bytes) != std::end(kKnown), DAX_STS_DATA_RANGE);
  const uint32_t taken = std::min(info.bytes, kV3Bytes);
  DAX_REQUIRE(source.read(text + 4, taken - 4) && source.seek(kFileHeadBytes + uint64_t{info.bytes}),
              DAX_STS_FILE_READ);
  const bool isCore = info.bytes == kCoreBytes;
  const int32_t side = isCore ? 2 : 4;
  info.width = isCore ? int64_t{littleEndian(text + 4, 2)} : static_cast<int32_t>(littleEndian(text + 4, 4));
  info.height = isCore ? int64_t{littleEndian(text + 6, 2)} : static_cast<int32_t>(littleEndian(text + 8, 4));
  info.bits = static_cast<int32_t>(littleEndian(text + 6 + 2 * side, 2));
  info.compression = littleEndian(text + 16, 4);
  info.colours = littleEndian(text + 32, 4);
  std::copy_n(text + kInfoBytes, sizeof(info.masks), info.masks);
  return DAX_STS_OK;
}

DaxStatus checkPacking(const BmpInfo& info, bool topDown) {
  const uint32_t packing = info.compression;
  DAX_REQUIRE(packing != kBmpJpeg && packing != kBmpPng, DAX_STS_UNSUPPORTED_METHOD);
  const int32_t bits = info.bits;
  const bool whole = bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
  const bool fits = (packing == kBmpPlain && whole) || (packing == kBmpRuns8 && bits == 8 && !topDown) ||
                    (packing == kBmpRuns4 && bits == 4 && !topDown) ||
                    ((packing == kBmpMasks || packing == kBmpAlphaMasks) && (bits == 16 || bits == 32));
  // OS/2 gives two of the codes other meanings.
  DAX_REQUIRE(fits && !(info.bytes == kOs2Bytes && packing >= kBmpMasks), DAX_STS_DATA_RANGE);
  return DAX_STS_OK;
}

// Adjacent bits.
bool takeMask(uint32_t bits, BmpMask& mask) {
  mask.shift = bits == 0 ? 0 : std::countr_zero(bits);
  mask.max = bits >> mask.shift;
  return (mask.max & (mask.max + 1)) == 0;
}

// Behind the information head, or within it.
DaxStatus readMasks(ByteSource& source, const BmpInfo& info, BmpHead& head) {
  uint32_t bits[4] = {0x7C00, 0x03E0, 0x001F, 0};
  if (head.bits == 32) bits[0] = 0xFF0000, bits[1] = 0xFF00, bits[2] = 0xFF;
  if (info.compression != kBmpPlain) {
    uint8_t text[16] = {};
    std::copy_n(info.masks, sizeof(text), text);
    const uint32_t count = info.compression == kBmpAlphaMasks ? 16 : 12;
    if (info.bytes == kInfoBytes) DAX_REQUIRE(source.read(text, count), DAX_STS_FILE_READ);
    for (int32_t i = 0; i < 4; ++i) bits[i] = littleEndian(text + 4 * i, 4);
    if (info.bytes == kV2Bytes) bits[3] = 0;
  }
  uint32_t all = 0;
  for (int32_t i = 0; i < 4; ++i) {
    DAX_REQUIRE(takeMask(bits[i], head.masks[i]) && (all & bits[i]) == 0, DAX_STS_DATA_RANGE);
    DAX_REQUIRE(i == 3 || bits[i] != 0, DAX_STS_DATA_RANGE);
    all |= bits[i];
  }
  DAX_REQUIRE(head.bits == 32 || all <= 0xFFFF, DAX_STS_DATA_RANGE);
  return DAX_STS_OK;
}

// As many colours as there is room for before the pixels. Those that are missing are black.
DaxStatus readPalette(ByteSource& source, const BmpInfo& info, BmpHead& head) {
  const uint32_t possible = uint32_t{1} << head.bits, entryBytes = info.bytes == kCoreBytes ? 3 : 4;
  DAX_REQUIRE(info.colours <= possible || info.bytes == kCoreBytes, DAX_STS_DATA_RANGE);
  head.colours = info.colours == 0 || info.bytes == kCoreBytes ? possible : info.colours;
  DAX_REQUIRE(head.pixels >= source.place(), DAX_STS_DATA_RANGE);
  head.colours = static_cast<uint32_t>(std::min<uint64_t>(head.colours, (head.pixels - source.place()) / entryBytes));
  std::fill(std::begin(head.palette), std::end(head.palette), BmpColour{});
  for (uint32_t i = 0; i < head.colours; ++i) {
    uint8_t entry[4];
    DAX_REQUIRE(source.read(entry, entryBytes), DAX_STS_FILE_READ);
    head.palette[i] = {entry[2], entry[1], entry[0]};
  }
  return DAX_STS_OK;
}

bool isGreyPalette(const BmpHead& head) {
  return std::all_of(head.palette, head.palette + head.colours,
                     [](const BmpColour& c) { return c.red == c.green && c.green == c.blue; });
}

}  // namespace

DaxStatus readBmpHead(ByteSource& source, BmpHead& head) {
  uint8_t file[kFileHeadBytes];
  DAX_REQUIRE(source.read(file, sizeof(file)), DAX_STS_FILE_READ);
  head.pixels = littleEndian(file + 10, 4);
  BmpInfo info;
  DAX_REQUIRE_OK(readInfo(source, info));
  if (info.bytes == kCoreBytes) info.compression = kBmpPlain, info.colours = 0;
  head.topDown = info.height < 0;
  DAX_REQUIRE(info.height > INT32_MIN, DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE_OK(checkPacking(info, head.topDown));
  head.bits = info.bits, head.compression = info.compression;
  int32_t channels = 3;
  if (head.bits <= 8) {
    DAX_REQUIRE_OK(readPalette(source, info, head));
    channels = isGreyPalette(head) ? 1 : 3;
  } else if (head.bits != 24) {
    DAX_REQUIRE_OK(readMasks(source, info, head));
    channels = head.masks[3].max != 0 ? 4 : 3;
  }
  DAX_REQUIRE(head.pixels >= source.place(), DAX_STS_DATA_RANGE);
  head.image = plainRecord(DAXI_IMAGE_BMP, info.width, head.topDown ? -info.height : info.height, channels,
                           DAXI_SAMPLE_8U, std::min(head.bits, 8), 255);
  return DAX_STS_OK;
}

}  // namespace dax
