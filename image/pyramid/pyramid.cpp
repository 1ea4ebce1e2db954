#include "image/pyramid/pyramid.h"

#include <algorithm>
#include <limits>
#include <type_traits>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/pyramid/pyramid_neon.h"
#include "image/pyramid/pyramid_portable.h"

static_assert(sizeof(DaxiPyramidLevel) == 24);

namespace dax {
namespace {

constexpr int kMaxChannels = 3;

// --- Checks ---

bool isTwice(int32_t twice, int32_t side) {
  return twice == 2 * int64_t{side} || twice == 2 * int64_t{side} - 1;
}

bool isTwice(DaxiSize twice, DaxiSize size) {
  return isTwice(twice.width, size.width) && isTwice(twice.height, size.height);
}

// --- Rows that slide over a source ---

// For each tile, kRows rows of sums and a row of results.
template <class T, int kRows>
struct PyramidBuffer {
  explicit PyramidBuffer(int32_t width)
      : rowLength(static_cast<uint64_t>(width) * kMaxChannels),
        sums(layout.add<PyramidSum<T>>(rowLength * kRows * kPyramidTiles)),
        results(layout.add<T>(rowLength * kPyramidTiles)) {}
  PyramidSum<T>* rowsOf(void* buffer, uint32_t tile) const { return sums.in(buffer) + rowLength * kRows * tile; }
  T* resultOf(void* buffer, uint32_t tile) const { return results.in(buffer) + rowLength * tile; }
  BufferLayout layout;
  uint64_t rowLength;
  BufferPiece<PyramidSum<T>> sums;
  BufferPiece<T> results;
};

// Keeps the sums of kRows consecutive rows of a source, mirrored at its edges; sumAlongX(row of the source, sums).
template <class T, int kRows, class SumAlongX>
class SlidingSums {
 public:
  SlidingSums(const T* src, int32_t step, int32_t height, PyramidSum<T>* rows, uint64_t length, SumAlongX sumAlongX)
      : src_(src), step_(step), height_(height), rows_(rows), length_(length), sumAlongX_(sumAlongX) {
    std::fill_n(held_, kRows, INT64_MIN);
  }
  // Rows first..first + kRows - 1; first is at least -kRows.
  void moveTo(int64_t first, const PyramidSum<T>* (&rows)[kRows]) {
    for (int k = 0; k < kRows; ++k) {
      const int64_t y = first + k;
      const auto place = static_cast<uint64_t>((y + kRows) % kRows);
      PyramidSum<T>* const row = rows_ + place * length_;
      if (held_[place] != y) {
        const auto from = static_cast<int32_t>(borderIndex(y, height_, DAXI_BORDER_MIRROR));
        sumAlongX_(rowAt(src_, step_, from), row);
        held_[place] = y;
      }
      rows[k] = row;
    }
  }

 private:
  const T* src_;
  int32_t step_, height_;
  PyramidSum<T>* rows_;
  uint64_t length_;
  SumAlongX sumAlongX_;
  int64_t held_[kRows];
};

// Runs band(first, end, tile) over rows of the result.
template <class Band>
DaxStatus runBands(PoolThreads on, int32_t rows, const Band& band) {
  if (!hasPool(on.pool, on.threads)) {
    band(0, rows, 0u);
    return DAX_STS_OK;
  }
  const uint32_t tiles = std::min(on.threads, kPyramidTiles);
  return runTiles(on.pool, tiles, rows, 4, [&](int32_t first, int32_t end, uint32_t tile) -> DaxStatus {
    band(first, end, tile);
    return DAX_STS_OK;
  });
}

// --- Down and up ---

template <class T, int kChannels>
DaxStatus halve(PoolThreads on, const T* src, int32_t srcStep, DaxiSize size, T* dst, int32_t dstStep, void* buffer) {
  const DaxiSize half = halfOf(size);
  const PyramidBuffer<T, 5> at(half.width);
  const bool inVectors = usesNeon(currentIsa());
  const auto sumAlongX = [=](const T* row, PyramidSum<T>* sums) {
    inVectors ? neon::halveAlongX<kChannels>(row, size.width, sums, 0, half.width)
              : portable::halveAlongX<kChannels>(row, size.width, sums, 0, half.width);
  };
  return runBands(on, half.height, [&](int32_t first, int32_t end, uint32_t tile) {
    SlidingSums<T, 5, decltype(sumAlongX)> source(src, srcStep, size.height, at.rowsOf(buffer, tile), at.rowLength,
                                                  sumAlongX);
    const PyramidSum<T>* rows[5];
    for (int32_t y = first; y < end; ++y) {
      source.moveTo(2 * int64_t{y} - 2, rows);
      portable::halveAlongY(rows, rowAt(dst, dstStep, y), half.width * kChannels);
    }
  });
}

// Calls use(y, a row of the image in twice its size), which is made where rowFor(y, a row of the work buffer) says.
template <class T, int kChannels, class RowFor, class Use>
DaxStatus doubled(PoolThreads on, const T* src, int32_t srcStep, DaxiSize size, DaxiSize twice, void* buffer,
                  const RowFor& rowFor, const Use& use) {
  const PyramidBuffer<T, 3> at(twice.width);
  const auto sumAlongX = [=](const T* row, PyramidSum<T>* sums) {
    portable::doubleAlongX<kChannels>(row, size.width, sums, twice.width);
  };
  return runBands(on, twice.height, [&](int32_t first, int32_t end, uint32_t tile) {
    SlidingSums<T, 3, decltype(sumAlongX)> source(src, srcStep, size.height, at.rowsOf(buffer, tile), at.rowLength,
                                                  sumAlongX);
    const PyramidSum<T>* rows[3];
    for (int32_t y = first; y < end; ++y) {
      source.moveTo(int64_t{y / 2} - 1, rows);
      T* const row = rowFor(y, at.resultOf(buffer, tile));
      portable::doubleAlongY(rows, y % 2 == 1, row, twice.width * kChannels);
      use(y, row);
    }
  });
}

template <class T, class S, class D, int kChannels>
DaxStatus checkLaplacian(const S* src, int32_t srcStep, const D* dst, int32_t dstStep, DaxiSize size, const T* coarse,
                         int32_t coarseStep, const void* buffer) {
  DAX_REQUIRE(src && dst && coarse && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep), kChannels), DAX_STS_BAD_STEP);
  DAX_REQUIRE(rowFits(halfOf(size.width), coarseStep, kChannels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

// The sum within the limits of T.
template <class T, class D>
T saturatedSum(D difference, T up) {
  if constexpr (std::is_floating_point_v<T>) {
    return difference + up;
  } else {
    const int64_t sum = int64_t{difference} + up;
    return static_cast<T>(std::clamp<int64_t>(sum, 0, std::numeric_limits<T>::max()));
  }
}

// --- Whole pyramids ---

constexpr int32_t kMaxPyramidLevels = 31;

bool isLevelCount(int32_t count) {
  return count >= 1 && count <= kMaxPyramidLevels;
}

// Calls use(k, level) for each; returns what all of them take.
template <class T, class Use>
BufferLayout layOut(DaxiSize size, int32_t channels, int32_t count, const Use& use) {
  BufferLayout layout;
  for (int32_t k = 0; k < count; ++k) {
    size = halfOf(size);
    const auto length = static_cast<uint64_t>(size.width) * static_cast<uint64_t>(channels);
    uint64_t pixels = length;
    const bool fits = !__builtin_mul_overflow(length, static_cast<uint64_t>(size.height), &pixels);
    const BufferPiece<T> piece = layout.add<T>(fits ? pixels : UINT64_MAX);
    use(k, DaxiPyramidLevel{size, static_cast<int32_t>(length), 0, piece.offset});
  }
  return layout;
}

bool stepsFit(DaxiSize size, int32_t channels) {
  return int64_t{halfOf(size.width)} * channels <= INT32_MAX;
}

template <class T, int kChannels>
DaxStatus pyramidModelSize(DaxiSize size, int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && isLevelCount(count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(stepsFit(size, kChannels), DAX_STS_BUFFER_OVERFLOW);
  return layOut<T>(size, kChannels, count, [](int32_t, const DaxiPyramidLevel&) {}).store(bytes);
}

template <class T, int kChannels>
DaxStatus pyramidLevels(DaxiSize size, int32_t count, DaxiPyramidLevel* levels) {
  DAX_REQUIRE(levels, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  uint64_t bytes = 0;
  DAX_REQUIRE_OK((pyramidModelSize<T, kChannels>(size, count, &bytes)));
  layOut<T>(size, kChannels, count, [&](int32_t k, const DaxiPyramidLevel& level) { levels[k] = level; });
  return DAX_STS_OK;
}

}  // namespace

// --- Workers ---

template <class T>
DaxStatus pyrDownBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  return PyramidBuffer<T, 5>(halfOf(size.width)).layout.store(bytes);
}

template <class T, int kChannels>
DaxStatus pyrDown(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep, kChannels) && rowFits(halfOf(size.width), dstStep, kChannels),
              DAX_STS_BAD_STEP);
  return halve<T, kChannels>(on, src, srcStep, size, dst, dstStep, buffer);
}

template <class T>
DaxStatus pyrUpBufferSize(DaxiSize size, DaxiSize dstSize, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && isTwice(dstSize, size), DAX_STS_BAD_PARAM);
  return PyramidBuffer<T, 3>(dstSize.width).layout.store(bytes);
}

template <class T, int kChannels>
DaxStatus pyrUp(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize dstSize,
                void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && isTwice(dstSize, size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep, kChannels) && rowFits(dstSize.width, dstStep, kChannels), DAX_STS_BAD_STEP);
  return doubled<T, kChannels>(
      on, src, srcStep, size, dstSize, buffer, [&](int32_t y, T*) { return rowAt(dst, dstStep, y); },
      [](int32_t, const T*) {});
}

template <class T>
DaxStatus laplacianBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  return PyramidBuffer<T, 3>(size.width).layout.store(bytes);
}

template <class T, class D, int kChannels>
DaxStatus laplacianBuild(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                         const T* coarse, int32_t coarseStep, void* buffer) {
  DAX_REQUIRE_OK((checkLaplacian<T, T, D, kChannels>(src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer)));
  return doubled<T, kChannels>(
      on, coarse, coarseStep, halfOf(size), size, buffer, [](int32_t, T* row) { return row; },
      [&](int32_t y, const T* up) {
        const T* const from = rowAt(src, srcStep, y);
        D* const to = rowAt(dst, dstStep, y);
        for (int32_t i = 0; i < size.width * kChannels; ++i) to[i] = static_cast<D>(from[i] - up[i]);
      });
}

template <class D, class T, int kChannels>
DaxStatus laplacianCollapse(PoolThreads on, const D* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                            const T* coarse, int32_t coarseStep, void* buffer) {
  DAX_REQUIRE_OK((checkLaplacian<T, D, T, kChannels>(src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer)));
  return doubled<T, kChannels>(
      on, coarse, coarseStep, halfOf(size), size, buffer, [](int32_t, T* row) { return row; },
      [&](int32_t y, const T* up) {
        const D* const from = rowAt(src, srcStep, y);
        T* const to = rowAt(dst, dstStep, y);
        for (int32_t i = 0; i < size.width * kChannels; ++i) to[i] = saturatedSum(from[i], up[i]);
      });
}

template <class T>
DaxStatus pyramidBufferSize(DaxiSize size, int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && isLevelCount(count), DAX_STS_BAD_PARAM);
  return pyrDownBufferSize<T>(size, bytes);
}

template <class T, int kChannels>
DaxStatus pyramidBuild(PoolThreads on, const T* src, int32_t srcStep, const uint8_t*, int32_t, DaxiSize size,
                       int32_t count, void* model, void* buffer) {
  DAX_REQUIRE(src && model && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep, kChannels), DAX_STS_BAD_STEP);
  DaxiPyramidLevel levels[kMaxPyramidLevels];
  DAX_REQUIRE_OK((pyramidLevels<T, kChannels>(size, count, levels)));
  for (int32_t k = 0; k < count; ++k) {
    T* const level = BufferPiece<T>{levels[k].offset}.in(model);
    DAX_REQUIRE_OK((halve<T, kChannels>(on, src, srcStep, size, level, levels[k].step, buffer)));
    src = level, srcStep = levels[k].step, size = levels[k].size;
  }
  return DAX_STS_OK;
}

#define DAX_PYRAMID_CHANNELS(T, D, C)                                                                                  \
  template DaxStatus pyrDown<T, C>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, void*);                      \
  template DaxStatus pyrUp<T, C>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, void*);              \
  template DaxStatus laplacianBuild<T, D, C>(PoolThreads, const T*, int32_t, D*, int32_t, DaxiSize, const T*, int32_t, \
                                             void*);                                                                   \
  template DaxStatus laplacianCollapse<D, T, C>(PoolThreads, const D*, int32_t, T*, int32_t, DaxiSize, const T*,       \
                                                int32_t, void*);                                                       \
  template DaxStatus pyramidBuild<T, C>(PoolThreads, const T*, int32_t, const uint8_t*, int32_t, DaxiSize, int32_t,    \
                                        void*, void*);
#define DAX_PYRAMID(T, D)                                                \
  template DaxStatus pyrDownBufferSize<T>(DaxiSize, uint64_t*);          \
  template DaxStatus pyrUpBufferSize<T>(DaxiSize, DaxiSize, uint64_t*);  \
  template DaxStatus laplacianBufferSize<T>(DaxiSize, uint64_t*);        \
  template DaxStatus pyramidBufferSize<T>(DaxiSize, int32_t, uint64_t*); \
  DAX_PYRAMID_CHANNELS(T, D, 1)                                          \
  DAX_PYRAMID_CHANNELS(T, D, 3)
DAX_PYRAMID(uint8_t, int16_t)
DAX_PYRAMID(uint16_t, int32_t)
DAX_PYRAMID(float, float)
#undef DAX_PYRAMID
#undef DAX_PYRAMID_CHANNELS

}  // namespace dax

#define DAX_PYRAMID_LEVELS(LAYOUT, T, C)                                                          \
  DaxStatus DAXI_PyramidLevels_##LAYOUT(DaxiSize size, int32_t count, DaxiPyramidLevel* levels) { \
    return dax::pyramidLevels<T, C>(size, count, levels);                                         \
  }                                                                                               \
  DaxStatus DAXI_PyramidBuildModelSize_##LAYOUT(DaxiSize size, int32_t count, uint64_t* bytes) {  \
    return dax::pyramidModelSize<T, C>(size, count, bytes);                                       \
  }
DAX_PYRAMID_LEVELS(8u_C1R, uint8_t, 1)
DAX_PYRAMID_LEVELS(8u_C3R, uint8_t, 3)
DAX_PYRAMID_LEVELS(16u_C1R, uint16_t, 1)
DAX_PYRAMID_LEVELS(16u_C3R, uint16_t, 3)
DAX_PYRAMID_LEVELS(32f_C1R, float, 1)
DAX_PYRAMID_LEVELS(32f_C3R, float, 3)
#undef DAX_PYRAMID_LEVELS
