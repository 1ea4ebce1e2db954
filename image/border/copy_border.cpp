#include "daxi/copy_border.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/pixel_types.h"
#include "frame/rows.h"
#include "image/border/copy_border.h"
#include "image/border/copy_border_neon.h"

namespace dax {
namespace {

// Only reversed runs have a twin; copies and fills are the C library's.
template <class T>
using ReverseRun = void (*)(T* dst, const T* src, ptrdiff_t n);

// Copies every source row into place and lets fillSides(srcRow, dstPixel) write the border left and right of it, where
// dstPixel is the row's first source pixel in the destination.
template <class T, class FillSides>
void copyRows(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g, FillSides fillSides) {
  for (int32_t y = 0; y < g.src.height; ++y) {
    const T* const srcRow = rowAt(src, srcStep, y);
    T* const dstPixel = rowAt(dst, dstStep, g.top + y) + g.left;
    portable::copyRun(dstPixel, srcRow, g.src.width);
    fillSides(srcRow, dstPixel);
  }
}

// Copies whole finished rows of the destination into the border above and below. sourceRow(distance, last) names the
// source row for the row `distance` outside the first (last = false) or the last source row.
template <class T, class SourceRow>
void copyBorderRows(T* dst, int32_t dstStep, const BorderGeometry& g, SourceRow sourceRow) {
  const auto copyRow = [&](int32_t to, int32_t from) {
    portable::copyRun(rowAt(dst, dstStep, to), rowAt(dst, dstStep, g.top + from), g.dst.width);
  };
  for (int32_t i = 0; i < g.top; ++i) copyRow(g.top - 1 - i, sourceRow(i, false));
  for (int32_t i = 0; i < g.bottom(); ++i) copyRow(g.top + g.src.height + i, sourceRow(i, true));
}

// Lays blocks leftwards from `edge`: block[0] is the pixel nearest to the edge of the image. `length` pixels per block.
template <class T>
void foldLeft(T* edge, int32_t border, const T* block, int32_t length, bool alternates, ReverseRun<T> reverseRun) {
  bool reversed = alternates;
  for (int32_t done = 0; done < border; reversed = alternates && !reversed) {
    const int32_t n = std::min(length, border - done);
    done += n;
    if (reversed) {
      reverseRun(edge - done, block, n);
    } else {
      portable::copyRun(edge - done, block + length - n, n);
    }
  }
}

// Lays blocks rightwards from `edge`.
template <class T>
void foldRight(T* edge, int32_t border, const T* block, int32_t length, bool alternates, ReverseRun<T> reverseRun) {
  bool reversed = alternates;
  for (int32_t done = 0; done < border; reversed = alternates && !reversed) {
    const int32_t n = std::min(length, border - done);
    if (reversed) {
      reverseRun(edge + done, block + length - n, n);
    } else {
      portable::copyRun(edge + done, block, n);
    }
    done += n;
  }
}

// Source index of the pixel or row `distance` outside an edge of an image of `count` pixels or rows.
int32_t foldIndex(int32_t distance, bool last, int32_t count, FoldRule rule) {
  const int32_t length = count - rule.skip;
  const int32_t block = distance / length;
  const int32_t offset = distance % length;
  const bool reversed = rule.alternates && block % 2 == 0;
  const int32_t fromEdge = reversed ? offset : length - 1 - offset;
  return last ? length - 1 - fromEdge : rule.skip + fromEdge;
}

template <class T>
void copyConstBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g, T value) {
  const auto fillRows = [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) portable::fillRun(rowAt(dst, dstStep, y), value, g.dst.width);
  };
  fillRows(0, g.top);
  copyRows(src, srcStep, dst, dstStep, g, [&](const T*, T* pixel) {
    portable::fillRun(pixel - g.left, value, g.left);
    portable::fillRun(pixel + g.src.width, value, g.right());
  });
  fillRows(g.top + g.src.height, g.dst.height);
}

template <class T>
void copyReplicateBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g) {
  copyRows(src, srcStep, dst, dstStep, g, [&](const T* row, T* pixel) {
    portable::fillRun(pixel - g.left, row[0], g.left);
    portable::fillRun(pixel + g.src.width, row[g.src.width - 1], g.right());
  });
  copyBorderRows(dst, dstStep, g, [&](int32_t, bool last) { return last ? g.src.height - 1 : 0; });
}

}  // namespace

template <class T>
void copyFoldBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g, FoldRule rule,
                    int32_t isa) {
  const ReverseRun<T> reverseRun = usesNeon(isa) ? neon::reverseRun<T> : portable::reverseRun<T>;
  const int32_t length = g.src.width - rule.skip;
  copyRows(src, srcStep, dst, dstStep, g, [&](const T* row, T* pixel) {
    foldLeft(pixel, g.left, row + rule.skip, length, rule.alternates, reverseRun);
    foldRight(pixel + g.src.width, g.right(), row, length, rule.alternates, reverseRun);
  });
  copyBorderRows(dst, dstStep, g, [&](int32_t i, bool last) { return foldIndex(i, last, g.src.height, rule); });
}

#define DAX_FOLD_WORKER(SUFFIX, T) \
  template void copyFoldBorder<T>(const T*, int32_t, T*, int32_t, const BorderGeometry&, FoldRule, int32_t);
DAX_PIXEL_TYPES(DAX_FOLD_WORKER)
#undef DAX_FOLD_WORKER

namespace {

// `left` is unsigned in the interface and read as signed, so values from 2^31 are negative.
DaxStatus check(const void* src, int32_t srcStep, const void* dst, int32_t dstStep, const BorderGeometry& g,
                int32_t minSide) {
  DAX_REQUIRE_OK(checkImage(src, srcStep, g.src));
  DAX_REQUIRE_OK(checkImage(dst, dstStep, g.dst));
  DAX_REQUIRE(g.top >= 0 && g.left >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(int64_t{g.left} + g.src.width <= g.dst.width, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(int64_t{g.top} + g.src.height <= g.dst.height, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(atLeast(g.src, minSide), DAX_STS_BAD_SIZE);
  return DAX_STS_OK;
}

BorderGeometry geometry(DaxiSize src, DaxiSize dst, int32_t top, uint32_t left) {
  return {src, dst, top, static_cast<int32_t>(left)};
}

template <class T>
DaxStatus constBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g, T value) {
  DAX_REQUIRE_OK(check(src, srcStep, dst, dstStep, g, 1));
  copyConstBorder(src, srcStep, dst, dstStep, g, value);
  return DAX_STS_OK;
}

template <class T>
DaxStatus replicateBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g) {
  DAX_REQUIRE_OK(check(src, srcStep, dst, dstStep, g, 1));
  copyReplicateBorder(src, srcStep, dst, dstStep, g);
  return DAX_STS_OK;
}

template <class T>
DaxStatus foldBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g, FoldRule rule) {
  DAX_REQUIRE_OK(check(src, srcStep, dst, dstStep, g, 1 + rule.skip));
  copyFoldBorder(src, srcStep, dst, dstStep, g, rule, currentIsa());
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_BORDER_ARGUMENTS(T) \
  const T *src, int32_t srcStep, DaxiSize srcSize, T *dst, int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left
#define DAX_BORDER_CALL src, srcStep, dst, dstStep, dax::geometry(srcSize, dstSize, top, left)

#define DAX_BORDERS(SUFFIX, T)                                                 \
  DaxStatus DAXI_CopyReplicateBorder_##SUFFIX##_C1R(DAX_BORDER_ARGUMENTS(T)) { \
    return dax::replicateBorder(DAX_BORDER_CALL);                              \
  }                                                                            \
  DaxStatus DAXI_CopyMirrorBorder_##SUFFIX##_C1R(DAX_BORDER_ARGUMENTS(T)) {    \
    return dax::foldBorder(DAX_BORDER_CALL, dax::kMirrorFold);                 \
  }                                                                            \
  DaxStatus DAXI_CopySymmetricBorder_##SUFFIX##_C1R(DAX_BORDER_ARGUMENTS(T)) { \
    return dax::foldBorder(DAX_BORDER_CALL, dax::kSymmetricFold);              \
  }                                                                            \
  DaxStatus DAXI_CopyCircularBorder_##SUFFIX##_C1R(DAX_BORDER_ARGUMENTS(T)) {  \
    return dax::foldBorder(DAX_BORDER_CALL, dax::kCircularFold);               \
  }
DAX_PIXEL_TYPES(DAX_BORDERS)
#undef DAX_BORDERS

#define DAX_CONST_BORDER(SUFFIX, T)                                                 \
  DaxStatus DAXI_CopyConstBorder_##SUFFIX##_C1R(DAX_BORDER_ARGUMENTS(T), T value) { \
    return dax::constBorder(DAX_BORDER_CALL, value);                                \
  }
DAX_SCALAR_PIXEL_TYPES(DAX_CONST_BORDER)
#undef DAX_CONST_BORDER

DaxStatus DAXI_CopyConstBorder_32fc_C1R(DAX_BORDER_ARGUMENTS(DaxComplex32f), float re, float im) {
  return dax::constBorder(DAX_BORDER_CALL, DaxComplex32f{re, im});
}

DaxStatus DAXI_CopyConstBorder_64fc_C1R(DAX_BORDER_ARGUMENTS(DaxComplex64f), double re, double im) {
  return dax::constBorder(DAX_BORDER_CALL, DaxComplex64f{re, im});
}
#undef DAX_BORDER_CALL
#undef DAX_BORDER_ARGUMENTS
