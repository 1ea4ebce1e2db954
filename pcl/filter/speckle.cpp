#include "pcl/filter/speckle.h"

#include <algorithm>
#include <cstring>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "pcl/filter/speckle_neon.h"
#include "pcl/filter/speckle_regions.h"

namespace dax {
namespace {

// For each pixel 4 bytes for a parent, 8 for start and size of a run, and 1 for the words of a row.
struct SpeckleBuffer {
  explicit SpeckleBuffer(DaxiSize size)
      : pixels(pixelsOf(size)),
        parents(layout.add<uint32_t>(pixels)),
        startsAndSizes(layout.add<uint32_t[2]>(pixels)),
        words(layout.add<uint8_t>(pixels)) {}

  // The words of a row need 24 bytes for each 64 pixels or part of them: never more than pixels rounded up to 128.
  RunTable in(void* buffer) const {
    uint32_t* const starts = *startsAndSizes.in(buffer);
    return {parents.in(buffer), starts, starts + pixels, reinterpret_cast<RowWord*>(words.in(buffer))};
  }

  uint64_t pixels;
  BufferLayout layout;
  BufferPiece<uint32_t> parents;
  BufferPiece<uint32_t[2]> startsAndSizes;
  BufferPiece<uint8_t> words;
};

constexpr int32_t kWord = 64;

template <class T>
SpeckleRegions findRegions(DaxiSize size, const T* src, int32_t maxDiff, T invalid, const RunTable& table,
                           int32_t isa) {
  const Likeness<T> likeness = {static_cast<uint16_t>(std::clamp(maxDiff, 1, UINT16_MAX + 1) - 1), invalid};
  const uint64_t connects = maxDiff >= 1 ? UINT64_MAX : 0;
  std::memset(table.words, 0, static_cast<size_t>((int64_t{size.width} + kWord - 1) / kWord) * sizeof(RowWord));
  SpeckleRegions regions(table);
  const auto pixelBits = usesNeon(isa) ? neon::pixelBits<T> : portable::pixelBits<T>;
  for (int32_t y = 0; y < size.height; ++y) {
    const ptrdiff_t first = ptrdiff_t{y} * size.width;
    const T* const row = src + first;
    const T* const above = y > 0 ? row - size.width : nullptr;
    regions.beginRow();
    for (int32_t x = 0, word = 0; x < size.width; x += std::min(kWord, size.width - x), ++word) {
      PixelBits bits =
          pixelBits(row + x, above ? above + x : nullptr, x > 0, std::min(kWord, size.width - x), likeness);
      bits.likeLeft &= connects;
      bits.likeAbove &= connects;
      regions.addWord(bits, word, static_cast<uint32_t>(first + x));
    }
  }
  regions.finish();
  return regions;
}

// The pixels between two runs are invalid already, so a run is cleared up to the next one or the end of its row.
template <class T>
void clearSpeckles(const SpeckleRegions& regions, DaxiSize size, T* dst, DAX3DPCL_PIXEL start, DAX3DPCL_PIXEL end,
                   uint32_t maxSize, T invalid) {
  const int64_t width = size.width, pixels = width * size.height;
  const int64_t first = start.y * width, last = end.y * width;
  int64_t row = 0;
  for (uint32_t run = 0; run < regions.count() && regions.start(run) < last; ++run) {
    const int64_t begin = regions.start(run);
    while (begin >= row + width) row += width;
    if (begin < first || regions.regionSize(run) > maxSize) continue;
    const int64_t next = run + 1 < regions.count() ? regions.start(run + 1) : pixels;
    const int64_t from = std::max(begin, row + start.x), to = std::min(next, row + end.x);
    for (int64_t i = from; i < to; ++i) dst[i] = invalid;
  }
}

}  // namespace

template <class T>
void filterSpeckles(DaxiSize size, const T* src, T* dst, DAX3DPCL_PIXEL start, DAX3DPCL_PIXEL end, int32_t maxDiff,
                    int32_t maxSize, T invalid, void* buffer, int32_t isa) {
  const SpeckleBuffer layout(size);
  if (src != dst) std::memcpy(dst, src, layout.pixels * sizeof(T));
  if (maxSize < 1 || start.x >= end.x || start.y >= end.y) return;
  const SpeckleRegions regions = findRegions(size, src, maxDiff, invalid, layout.in(buffer), isa);
  clearSpeckles(regions, size, dst, start, end, static_cast<uint32_t>(maxSize), invalid);
}

namespace {

DaxStatus check(DaxiSize size, const void* src, const void* dst, DAX3DPCL_PIXEL start, DAX3DPCL_PIXEL end,
                const void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(start.x >= 0 && end.x <= size.width, DAX_STS_PARAM_VALUE);
  DAX_REQUIRE(start.y >= 0 && end.y <= size.height, DAX_STS_PARAM_VALUE);
  DAX_REQUIRE(int64_t{size.width} * size.height <= INT32_MAX, DAX_STS_BAD_SIZE);
  return DAX_STS_OK;
}

template <class T>
DaxStatus speckle(DaxiSize size, const T* src, T* dst, DAX3DPCL_PIXEL start, DAX3DPCL_PIXEL end, int32_t maxDiff,
                  int32_t maxSize, T invalid, void* buffer) {
  DAX_REQUIRE_OK(check(size, src, dst, start, end, buffer));
  filterSpeckles(size, src, dst, start, end, maxDiff, maxSize, invalid, buffer, currentIsa());
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAX3DPCL_PREP_FILTER_Speckle_BufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_FAILURE);
  DAX_REQUIRE(dax::atLeast(size, 1), DAX_STS_BAD_PARAM);
  return dax::SpeckleBuffer(size).layout.store(bytes);
}

#define DAX_SPECKLE(SUFFIX, T)                                                                                      \
  template void dax::filterSpeckles<T>(DaxiSize, const T*, T*, DAX3DPCL_PIXEL, DAX3DPCL_PIXEL, int32_t, int32_t, T, \
                                       void*, int32_t);                                                             \
  DaxStatus DAX3DPCL_PREP_FILTER_Speckle_##SUFFIX(DaxiSize size, const T* src, T* dst, DAX3DPCL_PIXEL start,        \
                                                  DAX3DPCL_PIXEL end, int32_t maxDiff, int32_t maxSize, T invalid,  \
                                                  void* buffer) {                                                   \
    return dax::speckle(size, src, dst, start, end, maxDiff, maxSize, invalid, buffer);                             \
  }
DAX_SPECKLE(U16, uint16_t)
DAX_SPECKLE(S16, int16_t)
#undef DAX_SPECKLE
