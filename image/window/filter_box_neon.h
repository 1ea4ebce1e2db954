// The passes of the box filter in vectors. Along rows the four lanes are four rows, so that each row's sums are added
// in the same order as by the portable twin.
#pragma once

#include <cstdint>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/window/filter_box_portable.h"
#include "image/window/row_lanes_neon.h"
#include "image/window/window_sums.h"
#include "image/window/window_sums_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Twin of portable::boxRow for four rows, not in place: the two running sums that it subtracts are formed side by side,
// so that nothing needs to be stored.
template <class T, class Sum>
void boxFourRows(const T* const (&src)[4], Sum* const (&dst)[4], int32_t width, int32_t radius) {
  using L = Lanes<Sum>;
  const FourRowReader<T, Sum> from{src};
  const FourRowWriter<Sum> to{dst};
  constexpr Sum kNeutral =
      std::is_floating_point_v<Sum> ? Sum(-0.0f) : Sum(0);  // -0 + x is x for every x, 0 + -0 is not
  auto lead = L::all(kNeutral), trail = lead;
  const int32_t right = width - radius;
  int32_t x = 0;
  for (; x < radius; ++x) lead = L::add(lead, from.column(x));
  for (x = 0; x <= radius; ++x) {
    lead = L::add(lead, from.column(x + radius));
    to.column(x, lead);
  }
  for (; x <= right - 4; x += 4) {
    auto columns = from.columns(x + radius);
    const auto leaving = from.columns(x - radius - 1);
    for (int k = 0; k < 4; ++k) {
      lead = L::add(lead, columns.val[k]);
      trail = L::add(trail, leaving.val[k]);
      columns.val[k] = L::subtract(lead, trail);
    }
    to.columns(x, columns);
  }
  for (; x < width; ++x) {
    if (x < right) lead = L::add(lead, from.column(x + radius));
    trail = L::add(trail, from.column(x - radius - 1));
    to.column(x, L::subtract(lead, trail));
  }
}

// Row pass. Four rows at a time cannot be done in place, since their sums need the pixels twice.
template <class T, class Sum>
void boxRows(const BoxImages<T, Sum>& images, Sum* sums) {
  const auto src = [&](int32_t y) { return images.srcRow(y); };
  const auto dst = [&](int32_t y) { return images.dstRow(y); };
  int32_t y = 0;
  if constexpr (!std::is_same_v<T, uint8_t>) {
    const bool inPlace = static_cast<const void*>(images.src) == images.dst;
    for (; !inPlace && y <= images.size.height - 4; y += 4) {
      boxFourRows<T, Sum>({src(y), src(y + 1), src(y + 2), src(y + 3)}, {dst(y), dst(y + 1), dst(y + 2), dst(y + 3)},
                          images.size.width, images.radius);
    }
  }
  portable::boxRows(images, y, sums);
}

// Steps down n columns.
template <class Sum>
void boxStep(const Sum* before, const Sum* enter, Sum* slot, Sum* dst, int32_t n) {
  using L = Lanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = L::loadFour(before + x), result = L::loadFour(slot + x);
    const auto in = L::loadFour(enter + x);
    for (int k = 0; k < 4; ++k) {
      sums.val[k] = L::add(sums.val[k], in.val[k]);
      result.val[k] = L::subtract(sums.val[k], result.val[k]);
    }
    L::storeFour(dst + x, result);
    L::storeFour(slot + x, sums);
  }
  portable::boxStep(before + x, enter + x, slot + x, dst + x, n - x);
}

template <class Sum>
void addTo(Sum* dst, const Sum* before, int32_t n) {
  using L = Lanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = L::loadFour(before + x);
    const auto in = L::loadFour(dst + x);
    for (int k = 0; k < 4; ++k) sums.val[k] = L::add(sums.val[k], in.val[k]);
    L::storeFour(dst + x, sums);
  }
  portable::addTo(dst + x, before + x, n - x);
}

template <class Sum>
void subtractInto(Sum* dst, const Sum* lead, const Sum* trail, int32_t n) {
  using L = Lanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = L::loadFour(lead + x);
    const auto out = L::loadFour(trail + x);
    for (int k = 0; k < 4; ++k) sums.val[k] = L::subtract(sums.val[k], out.val[k]);
    L::storeFour(dst + x, sums);
  }
  portable::subtractInto(dst + x, lead + x, trail + x, n - x);
}

struct BoxStore {
  uint32_t* dst;
  void block(int32_t x, const uint32x4x4_t& sums) const { vst4q_u32(dst + x, sums); }
  void pixel(int32_t x, uint32_t sum) const { dst[x] = sum; }
};

// The highest window whose column sums of 8-bit pixels fit 16 bits: 257 * 255 = 65535.
constexpr int32_t kMaxByteRows = 257;

// Both passes at once. The buffer has room for two bytes per column and per column of the window, which is no wider than
// the image.
inline void boxBytes(const BoxImages<uint8_t, uint32_t>& images, uint32_t* buffer) {
  const WindowReach reach(2 * images.radius + 1);
  const ExtendedColumns<uint16_t> extended{reinterpret_cast<uint16_t*>(buffer), images.size.width, reach};
  extended.clear();
  forEachWindowRow(ClippedRows<uint8_t>{images.src, images.srcStep, images.size.height}, reach, 0, images.size.height,
                   extended.columns(), images.size.width, moveRow<uint8_t>,
                   [&](int32_t y) { extended.slide(BoxStore{images.dstRow(y)}); });
}

// The whole filter.
template <class T, class Sum>
void box(const BoxImages<T, Sum>& images, BoxSums<Sum> room) {
  if constexpr (std::is_same_v<T, uint8_t>) {
    if (2 * images.radius + 1 <= kMaxByteRows) return boxBytes(images, room.first);
  }
  boxRows(images, room.first);
  boxColumns(images.dst, images.dstStep, images.size, images.radius, room,
             {boxStep<Sum>, addTo<Sum>, subtractInto<Sum>});
}

}  // namespace dax::neon
#endif
