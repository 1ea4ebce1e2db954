// Grey reconstruction by dilation, downhill: levels from the highest on (after Robinson and Whelan, Efficient
// morphological reconstruction: a downhill filter, Pattern Recognition Letters 25, 2004). A pixel rises once: to the
// level that comes by, and is passed on at once, or to its limit, and is passed on when the sweep gets there. So there is
// no queue that grows, whatever the image.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "frame/memory/work_buffer.h"
#include "image/morphology/framed_plane.h"
#include "image/morphology/radix_order.h"

namespace dax {

template <class Bits>
struct ReconstructionBuffer {
  explicit ReconstructionBuffer(DaxiSize size)
      : cells(FramedGrid(size).cells()),
        limits(layout.add<Bits>(cells)),
        values(layout.add<Bits>(cells)),
        states(layout.add<uint8_t>(cells)),
        byLimit(layout.add<uint32_t>(pixelsOf(size))),
        byValue(layout.add<uint32_t>(pixelsOf(size))),
        other(layout.add<uint32_t>(pixelsOf(size))) {}
  uint64_t cells;
  BufferLayout layout;
  BufferPiece<Bits> limits, values;
  BufferPiece<uint8_t> states;
  BufferPiece<uint32_t> byLimit, byValue, other;
};

// Heights are those of Height<T, isErosion>: a reconstruction by erosion is one by dilation of the reverse order.
template <class T, bool isErosion>
class Reconstruction {
 public:
  using Heights = Height<T, isErosion>;
  using Bits = typename Heights::Bits;

  Reconstruction(DaxiSize size, int32_t connectivity, void* buffer)
      : grid_(size), neighbours_(grid_.neighbours(connectivity)), at_(size), buffer_(buffer) {}

  // limit(x, y) and marker(x, y) are heights; the marker is clamped to the limit.
  template <class Limit, class Marker>
  void run(Limit limit, Marker marker) {
    grid_.forFrame([&](uint32_t p) { limits_[p] = values_[p] = 0; });
    grid_.forEach([&](int32_t x, int32_t y, uint32_t p) {
      limits_[p] = limit(x, y);
      values_[p] = std::min<Bits>(limits_[p], marker(x, y));
    });
    std::memset(states_, untouched, at_.cells);
    sweep();
  }

  // store(x, y, height).
  template <class Store>
  void forEach(Store store) const {
    grid_.forEach([&](int32_t x, int32_t y, uint32_t p) { store(x, y, values_[p]); });
  }

 private:
  enum State : uint8_t { untouched, raised, passedOn };

  // Numbers of those pixels that may pass their value on.
  template <class May>
  uint32_t* sorted(uint32_t* pixels, const Bits* keys, May may, uint32_t& count) {
    count = 0;
    grid_.forEach([&](int32_t, int32_t, uint32_t p) {
      pixels[count] = p;
      count += may(p) ? 1u : 0u;
    });
    uint32_t* const other = at_.other.in(buffer_);
    uint32_t* const result = sortByKey(keys, pixels, other, count);
    if (result != pixels) std::copy_n(result, count, pixels);
    return pixels;
  }

  bool raisesNeighbour(uint32_t p) const {
    return std::any_of(neighbours_.begin(), neighbours_.end(), [&](uint32_t offset) {
      const uint32_t q = p + offset;
      return values_[q] < std::min(values_[p], limits_[q]);
    });
  }

  void sweep() {
    uint32_t limitCount, valueCount;
    const uint32_t* const byValue = sorted(
        at_.byValue.in(buffer_), values_, [&](uint32_t p) { return values_[p] < limits_[p] && raisesNeighbour(p); },
        valueCount);
    const uint32_t* const byLimit = sorted(
        at_.byLimit.in(buffer_), limits_, [](uint32_t) { return true; }, limitCount);
    while (limitCount > 0 || valueCount > 0) {
      if (valueCount > 0 && states_[byValue[valueCount - 1]] != untouched) {
        --valueCount;
      } else if (valueCount > 0 &&
                 (limitCount == 0 || values_[byValue[valueCount - 1]] > limits_[byLimit[limitCount - 1]])) {
        passOn(byValue[--valueCount]);
      } else {
        const uint32_t p = byLimit[--limitCount];
        if (values_[p] == limits_[p] && states_[p] != passedOn) passOn(p);
      }
    }
  }

  void passOn(uint32_t from) {
    const Bits level = values_[from];
    uint32_t* const stack = at_.other.in(buffer_);
    uint32_t depth = 0;
    stack[depth++] = from;
    states_[from] = passedOn;
    while (depth > 0) {
      const uint32_t p = stack[--depth];
      for (const uint32_t offset : neighbours_) {
        const uint32_t q = p + offset;
        const Bits value = std::min(level, limits_[q]);
        if (values_[q] >= value) continue;
        values_[q] = value;
        states_[q] = raised;
        if (value < level) continue;
        states_[q] = passedOn;
        stack[depth++] = q;
      }
    }
  }

  FramedGrid grid_;
  Neighbours neighbours_;
  ReconstructionBuffer<Bits> at_;
  void* buffer_;
  Bits* limits_ = at_.limits.in(buffer_);
  Bits* values_ = at_.values.in(buffer_);
  uint8_t* states_ = at_.states.in(buffer_);
};

}  // namespace dax
