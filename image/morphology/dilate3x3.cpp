#include "daxi/dilate3x3.h"

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"

namespace dax {
namespace {

// Plain loops, which compilers vectorise.

uint8_t dilatedPixel(uint8_t before, uint8_t pixel, uint8_t after) {
  return pixel != 0 || (before != 0 && after == 0) ? 255 : 0;
}

void dilateRow(const uint8_t* src, uint8_t* __restrict dst, int32_t width) {
  if (width == 1) {
    dst[0] = dilatedPixel(0, src[0], 0);
    return;
  }
  dst[0] = dilatedPixel(0, src[0], src[1]);
  for (int32_t x = 1; x < width - 1; ++x) dst[x] = dilatedPixel(src[x - 1], src[x], src[x + 1]);
  dst[width - 1] = dilatedPixel(src[width - 2], src[width - 1], 0);
}

// The column pass of one row; null rows lie outside the image. Returns whether it changes what dst holds.
bool dilateAcross(const uint8_t* above, const uint8_t* centre, const uint8_t* below, uint8_t* __restrict dst,
                  int32_t width) {
  uint8_t difference = 0;
  const auto store = [&](int32_t x, uint8_t pixel) {
    difference = static_cast<uint8_t>(difference | (pixel ^ dst[x]));
    dst[x] = pixel;
  };
  if (!above) {
    for (int32_t x = 0; x < width; ++x) store(x, centre[x]);
  } else if (!below) {
    for (int32_t x = 0; x < width; ++x) store(x, dilatedPixel(above[x], centre[x], 0));
  } else {
    for (int32_t x = 0; x < width; ++x) store(x, dilatedPixel(above[x], centre[x], below[x]));
  }
  return difference != 0;
}

struct DilateBuffer {
  explicit DilateBuffer(DaxiSize size) : pixels(layout.add<uint8_t>(pixelsOf(size))) {}
  BufferLayout layout;
  BufferPiece<uint8_t> pixels;
};

bool dilateOnce(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, uint8_t* rows) {
  const auto row = [&](int32_t y) { return y >= 0 && y < size.height ? rowAt(rows, size.width, y) : nullptr; };
  for (int32_t y = 0; y < size.height; ++y) dilateRow(rowAt(src, srcStep, y), row(y), size.width);
  bool changed = false;
  for (int32_t y = 0; y < size.height; ++y) {
    changed |= dilateAcross(row(y - 1), row(y), row(y + 1), rowAt(dst, dstStep, y), size.width);
  }
  return changed;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_Dilate3x3BufferSize_8u(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1), DAX_STS_BAD_PARAM);
  return dax::DilateBuffer(size).layout.store(bytes);
}

DaxStatus DAXI_Dilate3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                int32_t iterations, void* buffer) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  DAX_REQUIRE(iterations >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  uint8_t* const rows = dax::DilateBuffer(size).pixels.in(buffer);
  dax::dilateOnce(src, srcStep, dst, dstStep, size, rows);
  for (int32_t i = 1; i < iterations; ++i) {
    if (!dax::dilateOnce(dst, dstStep, dst, dstStep, size, rows)) break;
  }
  return DAX_STS_OK;
}
