#include "daxi/erode3x3.h"

#include <cstring>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/morphology/erode3x3.h"
#include "image/morphology/erode3x3_neon.h"

namespace dax {
namespace {

using RunKernel = void (*)(const uint8_t* src, uint8_t* dst, int32_t n, uint8_t before);
using SweepKernel = bool (*)(const uint8_t* src, const SweepRows& rows, uint8_t* dst, const uint8_t* old, int32_t n);

struct ErodeKernels {
  RunKernel run;
  SweepKernel sweep;
  SweepKernel sweepAndCompare;
};

ErodeKernels pickKernels(int32_t isa) {
  if (usesNeon(isa)) return {neon::erodeRun, neon::erodeSweep<false>, neon::erodeSweep<true>};
  return {portable::erodeRun, portable::erodeSweep<false>, portable::erodeSweep<true>};
}

uint8_t keptPixel(uint8_t pixel, uint8_t neighbour) {
  return pixel != 0 ? neighbour : 0;
}

void erodeRow(const uint8_t* src, uint8_t* dst, int32_t width, RunKernel run) {
  if (width == 1) {
    dst[0] = 0;
    return;
  }
  const uint8_t left = src[0], first = keptPixel(src[0], src[1]);
  const uint8_t last = keptPixel(src[width - 1], src[width - 2]);
  run(src + 1, dst + 1, width - 2, left);
  dst[0] = first;
  dst[width - 1] = last;
}

// Row pass of one row and column pass of the row above it. Only the first and the last pixel of a row can have values
// other than 0 and 255.
bool erodeSweep(const uint8_t* src, const SweepRows& rows, uint8_t* dst, const uint8_t* old, int32_t width,
                SweepKernel sweep) {
  const auto sweepEdge = [&](int32_t x, uint8_t below) {
    rows.below[x] = below;
    return portable::erodeAcross(rows.above + x, rows.centre + x, rows.below + x, dst + x, old + x, 1);
  };
  if (width == 1) return sweepEdge(0, 0);
  bool changed = sweepEdge(0, keptPixel(src[0], src[1]));
  changed |= sweepEdge(width - 1, keptPixel(src[width - 1], src[width - 2]));
  if (width > 2) changed |= sweep(src + 1, rows.from(1), dst + 1, old + 1, width - 2);
  return changed;
}

// Both passes in one sweep, for at least two rows: the column pass runs one row behind the row pass, whose last three
// rows are in `ring`.
bool erodeOnce(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, uint8_t* ring,
               RunKernel run, SweepKernel sweep) {
  const auto ringRow = [&](int32_t y) { return ring + ptrdiff_t{y % 3} * size.width; };
  const auto srcRow = [&](int32_t y) { return rowAt(src, srcStep, y); };
  const auto dstRow = [&](int32_t y) { return rowAt(dst, dstStep, y); };
  const int32_t last = size.height - 1;

  erodeRow(srcRow(0), ringRow(0), size.width, run);
  erodeRow(srcRow(1), ringRow(1), size.width, run);
  bool changed = portable::keepWhereSet(ringRow(0), ringRow(1), dstRow(0), srcRow(0), size.width);
  for (int32_t y = 1; y < last; ++y) {
    const SweepRows rows{ringRow(y - 1), ringRow(y), ringRow(y + 1)};
    changed |= erodeSweep(srcRow(y + 1), rows, dstRow(y), srcRow(y), size.width, sweep);
  }
  changed |= portable::keepWhereSet(ringRow(last), ringRow(last - 1), dstRow(last), srcRow(last), size.width);
  return changed;
}

void clear(uint8_t* dst, int32_t dstStep, DaxiSize size) {
  for (int32_t y = 0; y < size.height; ++y) std::memset(rowAt(dst, dstStep, y), 0, static_cast<size_t>(size.width));
}

struct ErodeBuffer {
  explicit ErodeBuffer(DaxiSize size) : pixels(layout.add<uint8_t>(pixelsOf(size))) {}
  BufferLayout layout;
  BufferPiece<uint8_t> pixels;
};

}  // namespace

void erodeRows(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  const RunKernel run = pickKernels(isa).run;
  for (int32_t y = 0; y < size.height; ++y) {
    erodeRow(rowAt(src, srcStep, y), rowAt(dst, dstStep, y), size.width, run);
  }
}

void erodeColumns(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  const auto srcRow = [&](int32_t y) { return rowAt(src, srcStep, y); };
  const int32_t last = size.height - 1;
  if (last == 0) return clear(dst, dstStep, size);
  portable::keepWhereSet(srcRow(0), srcRow(1), dst, src, size.width);
  for (int32_t y = 1; y < last; ++y) {
    portable::erodeAcross(srcRow(y - 1), srcRow(y), srcRow(y + 1), rowAt(dst, dstStep, y), srcRow(y), size.width);
  }
  portable::keepWhereSet(srcRow(last), srcRow(last - 1), rowAt(dst, dstStep, last), srcRow(last), size.width);
}

}  // namespace dax

void _DAXI_Erode3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                           int32_t iterations, void* buffer, int32_t isa) {
  if (size.height == 1) return dax::clear(dst, dstStep, size);
  const dax::ErodeKernels kernels = dax::pickKernels(isa);
  uint8_t* const ring = dax::ErodeBuffer(size).pixels.in(buffer);
  for (int32_t i = 1; i < iterations; ++i) {
    if (!dax::erodeOnce(src, srcStep, dst, dstStep, size, ring, kernels.run, kernels.sweepAndCompare)) return;
    src = dst;
    srcStep = dstStep;
  }
  dax::erodeOnce(src, srcStep, dst, dstStep, size, ring, kernels.run, kernels.sweep);
}

DaxStatus DAXI_Erode3x3BufferSize_8u(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1), DAX_STS_BAD_PARAM);
  return dax::ErodeBuffer(size).layout.store(bytes);
}

DaxStatus DAXI_Erode3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t iterations, void* buffer) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  DAX_REQUIRE(iterations >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  _DAXI_Erode3x3_8u_C1R(src, srcStep, dst, dstStep, size, iterations, buffer, dax::currentIsa());
  return DAX_STS_OK;
}

DaxStatus DAXI_ErodeRow3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  dax::erodeRows(src, srcStep, dst, dstStep, size, dax::currentIsa());
  return DAX_STS_OK;
}

DaxStatus DAXI_ErodeCol3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  dax::erodeColumns(src, srcStep, dst, dstStep, size);
  return DAX_STS_OK;
}
