// Rows of colours from a Bayer pattern, any instruction set.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>

#include "image/border/border_index.h"
#include "image/camera/bayer.h"
#include "image/colour/gray.h"

namespace dax::portable {

template <class T>
struct BayerOps {
  static int32_t average(int32_t a, int32_t b) { return (a + b + 1) >> 1; }
  static int32_t average(int32_t a, int32_t b, int32_t c, int32_t d) { return (a + b + c + d + 2) >> 2; }
  static int32_t same(int32_t a) { return a; }
  static int32_t sixteenth(int32_t sum) {
    return std::clamp<int32_t>((sum + 8) >> 4, 0, std::numeric_limits<T>::max());
  }
};

// Five rows, of which the middle one is computed.
template <class T>
using BayerRows = const T* const (&)[5];

template <class T>
struct BayerWindow {
  BayerRows<T> rows;
  ptrdiff_t x;
  int32_t at(int dy, int dx) const { return rows[2 + dy][x + dx]; }
};

template <class T>
struct MirroredBayerWindow {
  BayerRows<T> rows;
  ptrdiff_t x;
  int32_t width;
  int32_t at(int dy, int dx) const { return rows[2 + dy][borderIndex(x + dx, width, DAXI_BORDER_MIRROR)]; }
};

template <class T>
void storeBayer(const BayerPixel<int32_t>& from, int32_t own, T* to) {
  to[own] = static_cast<T>(from.own), to[1] = static_cast<T>(from.green), to[2 - own] = static_cast<T>(from.other);
}

// Columns first..end - 1 of a row of `width`; dst is where the first one goes.
template <class Method, class T>
void bayerRow(BayerRows<T> rows, BayerRow row, int32_t width, int32_t first, int32_t end, T* dst) {
  T* const origin = dst - 3 * ptrdiff_t{first};
  for (ptrdiff_t x = first - ((first ^ row.column) & 1); x < end; x += 2) {
    const bool inside = x >= Method::kReach && x + 1 + Method::kReach < width;
    const auto pair = inside ? Method::template pair<BayerOps<T>>(BayerWindow<T>{rows, x})
                             : Method::template pair<BayerOps<T>>(MirroredBayerWindow<T>{rows, x, width});
    if (x >= first) storeBayer(pair.left, row.own, origin + 3 * x);
    if (x + 1 < end) storeBayer(pair.right, row.own, origin + 3 * x + 3);
  }
}

}  // namespace dax::portable

namespace dax {

template <class T>
using BayerRowKernel = void (*)(portable::BayerRows<T>, BayerRow, int32_t, int32_t, int32_t, T*);

// Grey by way of as many colours as fit a small array.
template <class T>
void grayOfColours(BayerRowKernel<T> colours, portable::BayerRows<T> rows, BayerRow row, int32_t width, int32_t first,
                   int32_t end, T* dst, int32_t isa) {
  constexpr int32_t kPart = 512;
  T rgb[3 * kPart];
  for (int32_t x = first, count; x < end; x += count) {
    count = std::min(kPart, end - x);
    colours(rows, row, width, x, x + count, rgb);
    grayRow601(rgb, dst + (x - first), count, isa);
  }
}

namespace portable {

template <class Method, class T>
void bayerGrayRow(BayerRows<T> rows, BayerRow row, int32_t width, int32_t first, int32_t end, T* dst) {
  grayOfColours<T>(bayerRow<Method, T>, rows, row, width, first, end, dst, DAX_ISA_PORTABLE);
}

}  // namespace portable
}  // namespace dax
