#include "daxi/erode3x3.h"

#include <cstring>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/rows.h"
#include "frame/work_buffer.h"
#include "image/erode3x3.h"
#include "image/erode3x3_portable.h"
#if DAX_HAVE_NEON
#include "image/erode3x3_neon.h"
#endif

namespace dax {
namespace {

using RunKernel = void (*)(const uint8_t* src, uint8_t* dst, int32_t n, uint8_t before);
using AcrossKernel = bool (*)(const uint8_t* above, const uint8_t* centre, const uint8_t* below, uint8_t* dst,
                              const uint8_t* old, int32_t n);

struct ErodeKernels {
  RunKernel run;
  AcrossKernel masksAcross;         // for rows of 0 and 255
  AcrossKernel masksAcrossCompare;  // the same, and tells whether anything changed
};

ErodeKernels pickKernels([[maybe_unused]] int32_t isa) {
#if DAX_HAVE_NEON
  if (usesNeon(isa)) return {neon::erodeRun, neon::erodeMasksAcross<false>, neon::erodeMasksAcross<true>};
#endif
  return {portable::erodeRun, portable::erodeAcross, portable::erodeAcross};
}

void erodeRow(const uint8_t* src, uint8_t* dst, int32_t width, RunKernel run) {
  if (width == 1) {
    dst[0] = 0;
    return;
  }
  const uint8_t left = src[0];
  const uint8_t first = left != 0 ? src[1] : 0;
  const uint8_t last = src[width - 1] != 0 ? src[width - 2] : 0;
  run(src + 1, dst + 1, width - 2, left);
  dst[0] = first;
  dst[width - 1] = last;
}

// Three rows of the column pass; null where the image ends, on one side at most.
struct RowTriple {
  const uint8_t *above, *centre, *below;
};

// Row of the column pass from rows in which only the first and the last pixel can be other than 0 and 255.
bool erodeAcross(const RowTriple& rows, uint8_t* dst, const uint8_t* old, int32_t width, AcrossKernel masksAcross) {
  const uint8_t *const above = rows.above, *const centre = rows.centre, *const below = rows.below;
  if (!above || !below) return portable::keepWhereSet(centre, above ? above : below, dst, old, width);
  const auto edge = [&](int32_t x) {
    return portable::erodeAcross(above + x, centre + x, below + x, dst + x, old + x, 1);
  };
  bool changed = edge(0);
  if (width > 1) changed |= edge(width - 1);
  if (width > 2) changed |= masksAcross(above + 1, centre + 1, below + 1, dst + 1, old + 1, width - 2);
  return changed;
}

// Both passes in one sweep: the column pass follows the row pass a row behind, whose last three rows are in `ring`.
bool erodeOnce(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, uint8_t* ring,
               RunKernel run, AcrossKernel masksAcross) {
  const auto ringRow = [&](int32_t y) { return ring + ptrdiff_t{y % 3} * size.width; };
  bool changed = false;
  for (int32_t y = 0; y <= size.height; ++y) {
    const bool ends = y == size.height;
    if (!ends) erodeRow(rowAt(src, srcStep, y), ringRow(y), size.width, run);
    if (y == 0) continue;
    const RowTriple rows{y > 1 ? ringRow(y - 2) : nullptr, ringRow(y - 1), ends ? nullptr : ringRow(y)};
    changed |= erodeAcross(rows, rowAt(dst, dstStep, y - 1), rowAt(src, srcStep, y - 1), size.width, masksAcross);
  }
  return changed;
}

void clear(uint8_t* dst, int32_t dstStep, DaxiSize size) {
  for (int32_t y = 0; y < size.height; ++y) std::memset(rowAt(dst, dstStep, y), 0, static_cast<size_t>(size.width));
}

struct ErodeBuffer {
  explicit ErodeBuffer(DaxiSize size)
      : pixels(layout.add<uint8_t>(static_cast<uint64_t>(size.width) * static_cast<uint64_t>(size.height))) {}
  BufferLayout layout;
  BufferPiece<uint8_t> pixels;
};

}  // namespace

void erode3x3(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t iterations,
              void* buffer, int32_t isa) {
  if (size.height == 1) return clear(dst, dstStep, size);
  const ErodeKernels kernels = pickKernels(isa);
  uint8_t* const ring = ErodeBuffer(size).pixels.in(buffer);
  for (int32_t i = 1; i < iterations; ++i) {
    if (!erodeOnce(src, srcStep, dst, dstStep, size, ring, kernels.run, kernels.masksAcrossCompare)) return;
    src = dst;
    srcStep = dstStep;
  }
  erodeOnce(src, srcStep, dst, dstStep, size, ring, kernels.run, kernels.masksAcross);
}

void erodeRows(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  const RunKernel run = pickKernels(isa).run;
  for (int32_t y = 0; y < size.height; ++y) {
    erodeRow(rowAt(src, srcStep, y), rowAt(dst, dstStep, y), size.width, run);
  }
}

void erodeColumns(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  if (size.height == 1) return clear(dst, dstStep, size);
  for (int32_t y = 0; y < size.height; ++y) {
    const uint8_t* const centre = rowAt(src, srcStep, y);
    const RowTriple rows{y > 0 ? centre - srcStep : nullptr, centre, y + 1 < size.height ? centre + srcStep : nullptr};
    erodeAcross(rows, rowAt(dst, dstStep, y), centre, size.width, portable::erodeAcross);
  }
}

}  // namespace dax

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
  dax::erode3x3(src, srcStep, dst, dstStep, size, iterations, buffer, dax::currentIsa());
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
