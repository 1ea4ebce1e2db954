#include "daxi/thin.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/morphology/framed_plane.h"

namespace dax {
namespace {

// --- Neighbourhoods as numbers of eight bits: p2, north, to p9, northwest, clockwise ---

constexpr uint8_t kFirstPass = 1, kSecondPass = 2;

constexpr bool isThinned(uint32_t p, uint8_t pass) {
  const auto at = [p](uint32_t number) { return (p >> (number - 2)) & 1; };
  const auto either = [&](uint32_t a, uint32_t b) { return at(a) | at(b); };
  uint32_t changes = 0;
  for (uint32_t i = 2; i < 10; i += 2) changes += at(i) ? 0 : either(i + 1, i == 8 ? 2 : i + 2);
  const uint32_t one = either(9, 2) + either(3, 4) + either(5, 6) + either(7, 8);
  const uint32_t other = either(2, 3) + either(4, 5) + either(6, 7) + either(8, 9);
  const uint32_t n = std::min(one, other);
  const uint32_t spared =
      pass == kFirstPass ? (either(2, 3) | (1 - at(5))) & at(4) : (either(6, 7) | (1 - at(9))) & at(8);
  return changes == 1 && n >= 2 && n <= 3 && spared == 0;
}

constexpr auto kThinned = [] {
  std::array<uint8_t, 256> passes{};
  for (uint32_t p = 0; p < 256; ++p) {
    for (const uint8_t pass : {kFirstPass, kSecondPass})
      passes[p] = static_cast<uint8_t>(passes[p] | (isThinned(p, pass) ? pass : 0));
  }
  return passes;
}();

// --- Masks in a frame ---

constexpr uint8_t kSet = 4;  // beside the passes that are to look at the pixel

struct MaskPlane {
  MaskPlane(DaxiSize size, uint8_t* plane) : grid(size), around(clockwise(grid.stride)), pixels(plane) {}

  static std::array<uint32_t, 8> clockwise(uint32_t s) { return {0 - s, 1 - s, 1, s + 1, s, s - 1, 0u - 1, 0 - s - 1}; }

  void read(const uint8_t* src, int32_t srcStep) const {
    grid.forFrame([&](uint32_t p) { pixels[p] = 0; });
    grid.forEach([&](int32_t x, int32_t y, uint32_t p) { pixels[p] = rowAt(src, srcStep, y)[x] ? kSet : 0; });
  }
  void write(uint8_t* dst, int32_t dstStep) const {
    grid.forEach([&](int32_t x, int32_t y, uint32_t p) { rowAt(dst, dstStep, y)[x] = isSet(p) ? 255 : 0; });
  }
  bool isSet(uint32_t p) const { return (pixels[p] & kSet) != 0; }
  uint32_t neighbourhood(uint32_t p) const {
    uint32_t bits = 0;
    for (uint32_t i = 0; i < 8; ++i) bits |= (isSet(p + around[i]) ? 1u : 0u) << i;
    return bits;
  }

  FramedGrid grid;
  std::array<uint32_t, 8> around;
  uint8_t* pixels;
};

struct ThinBuffer {
  explicit ThinBuffer(DaxiSize size)
      : pixels(layout.add<uint8_t>(FramedGrid(size).cells())),
        first(layout.add<uint32_t>(pixelsOf(size))),
        second(layout.add<uint32_t>(pixelsOf(size))),
        cleared(layout.add<uint32_t>(pixelsOf(size))) {}
  BufferLayout layout;
  BufferPiece<uint8_t> pixels;
  BufferPiece<uint32_t> first, second, cleared;
};

// --- Thinning ---

// The pixels that a pass is to look at: those whose neighbours have changed since it did so last.
struct PassList {
  uint8_t pass;
  uint32_t* pixels;
  uint32_t count = 0;

  void add(uint32_t p, uint8_t* plane) {
    if (plane[p] & pass) return;
    plane[p] |= pass;
    pixels[count++] = p;
  }
};

// Clears what the pass decides on, and has the neighbours looked at by both.
bool runPass(const MaskPlane& plane, PassList& list, PassList& other, uint32_t* cleared) {
  uint32_t count = 0;
  for (uint32_t i = 0; i < list.count; ++i) {
    const uint32_t p = list.pixels[i];
    plane.pixels[p] &= static_cast<uint8_t>(~list.pass);
    if (plane.isSet(p) && (kThinned[plane.neighbourhood(p)] & list.pass)) cleared[count++] = p;
  }
  list.count = 0;
  for (uint32_t i = 0; i < count; ++i) plane.pixels[cleared[i]] &= static_cast<uint8_t>(~kSet);
  for (uint32_t i = 0; i < count; ++i) {
    for (const uint32_t offset : plane.around) {
      const uint32_t q = cleared[i] + offset;
      if (!plane.isSet(q)) continue;
      list.add(q, plane.pixels);
      other.add(q, plane.pixels);
    }
  }
  return count > 0;
}

void thin(const MaskPlane& plane, int32_t maxIterations, const ThinBuffer& at, void* buffer) {
  PassList first = {kFirstPass, at.first.in(buffer)}, second = {kSecondPass, at.second.in(buffer)};
  plane.grid.forEach([&](int32_t, int32_t, uint32_t p) {
    if (!plane.isSet(p) || plane.neighbourhood(p) == 255) return;
    first.add(p, plane.pixels);
    second.add(p, plane.pixels);
  });
  uint32_t* const cleared = at.cleared.in(buffer);
  for (int32_t i = 0; maxIterations == 0 || i < maxIterations; ++i) {
    const bool one = runPass(plane, first, second, cleared), other = runPass(plane, second, first, cleared);
    if (!one && !other) break;
  }
}

// --- Branches ---

// The set neighbour of p other than `before`, of one or two.
uint32_t nextOnLine(const MaskPlane& plane, uint32_t p, uint32_t before) {
  for (const uint32_t offset : plane.around) {
    if (plane.isSet(p + offset) && p + offset != before) return p + offset;
  }
  return p;
}

// Marks the branch that starts at an end, unless it is too long or a line of its own.
void markBranch(const MaskPlane& plane, uint32_t end, int32_t maxLength, uint8_t mark) {
  const auto degree = [&](uint32_t p) { return std::popcount(plane.neighbourhood(p)); };
  uint32_t p = end, before = end;
  int32_t length = 0;
  do {
    if (length == maxLength) return;
    before = std::exchange(p, nextOnLine(plane, p, before));
    ++length;
  } while (degree(p) == 2);
  if (degree(p) == 1) return;
  for (uint32_t each = end, last = end; each != p;) {
    plane.pixels[each] |= mark;
    last = std::exchange(each, nextOnLine(plane, each, last));
  }
}

void prune(const MaskPlane& plane, int32_t maxLength) {
  constexpr uint8_t kMark = 8;
  plane.grid.forEach([&](int32_t, int32_t, uint32_t p) {
    if (plane.isSet(p) && std::popcount(plane.neighbourhood(p)) == 1) markBranch(plane, p, maxLength, kMark);
  });
  plane.grid.forEach([&](int32_t, int32_t, uint32_t p) {
    if (plane.pixels[p] & kMark) plane.pixels[p] = 0;
  });
}

struct PruneBuffer {
  explicit PruneBuffer(DaxiSize size) : pixels(layout.add<uint8_t>(FramedGrid(size).cells())) {}
  BufferLayout layout;
  BufferPiece<uint8_t> pixels;
};

// --- Entry points ---

template <class Buffer>
DaxStatus thinBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(fitsFrame(size), DAX_STS_BAD_PARAM);
  return Buffer(size).layout.store(bytes);
}

DaxStatus checkThin(const uint8_t* src, int32_t srcStep, const uint8_t* dst, int32_t dstStep, DaxiSize size,
                    int32_t number, const void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(fitsFrame(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE(number >= 0, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ThinBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return dax::thinBufferSize<dax::ThinBuffer>(size, bytes);
}

DaxStatus DAXI_PruneBranchesBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return dax::thinBufferSize<dax::PruneBuffer>(size, bytes);
}

DaxStatus DAXI_Thin_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                           int32_t maxIterations, void* buffer) {
  DAX_REQUIRE_OK(dax::checkThin(src, srcStep, dst, dstStep, size, maxIterations, buffer));
  const dax::ThinBuffer at(size);
  const dax::MaskPlane plane(size, at.pixels.in(buffer));
  plane.read(src, srcStep);
  dax::thin(plane, maxIterations, at, buffer);
  plane.write(dst, dstStep);
  return DAX_STS_OK;
}

DaxStatus DAXI_PruneBranches_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    int32_t maxLength, void* buffer) {
  DAX_REQUIRE_OK(dax::checkThin(src, srcStep, dst, dstStep, size, maxLength, buffer));
  const dax::MaskPlane plane(size, dax::PruneBuffer(size).pixels.in(buffer));
  plane.read(src, srcStep);
  dax::prune(plane, maxLength);
  plane.write(dst, dstStep);
  return DAX_STS_OK;
}
