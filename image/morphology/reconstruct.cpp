#include "image/morphology/reconstruct.h"

#include <cmath>

#include "frame/rows.h"
#include "image/morphology/reconstruction.h"

namespace dax {
namespace {

DaxStatus checkReconstruction(DaxiSize size, int32_t step, int32_t connectivity) {
  DAX_REQUIRE(fitsFrame(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, step), DAX_STS_BAD_STEP);
  return isConnectivity(connectivity) ? DAX_STS_OK : DAX_STS_PARAM_VALUE;
}

template <class T>
bool isHeightDifference(T h) {
  if constexpr (std::is_unsigned_v<T>) return true;
  return h >= 0 && h <= std::numeric_limits<T>::max();
}

// dst = store(x, y, height) of the reconstruction.
template <bool isErosion, class T, class Limit, class Marker, class Store>
void reconstructInto(T* dst, int32_t dstStep, DaxiSize size, int32_t connectivity, void* buffer, Limit limit,
                     Marker marker, Store store) {
  using Heights = Height<T, isErosion>;
  Reconstruction<T, isErosion> reconstruction(size, connectivity, buffer);
  reconstruction.run([&](int32_t x, int32_t y) { return Heights::of(limit(x, y)); },
                     [&](int32_t x, int32_t y) { return Heights::of(marker(x, y)); });
  reconstruction.forEach([&](int32_t x, int32_t y, typename Heights::Bits bits) {
    rowAt(dst, dstStep, y)[x] = store(x, y, Heights::pixel(bits));
  });
}

template <class T>
auto pixelsFrom(const T* src, int32_t step) {
  return [src, step](int32_t x, int32_t y) { return rowAt(src, step, y)[x]; };
}

const auto storeItself = [](int32_t, int32_t, auto value) { return value; };

// The image at the edge, nothing inside.
template <bool isErosion, class T>
auto edgeFrom(const T* src, int32_t step, DaxiSize size) {
  return [=](int32_t x, int32_t y) {
    const bool isEdge = x == 0 || y == 0 || x == size.width - 1 || y == size.height - 1;
    return isEdge ? rowAt(src, step, y)[x] : Height<T, isErosion>::pixel(0);
  };
}

template <bool isPlus, class T>
T moved(T value, T h) {
  if constexpr (std::is_floating_point_v<T>) {
    return isPlus ? value + h : value - h;
  } else {
    const int32_t sum = isPlus ? value + h : value - h;
    return static_cast<T>(std::clamp<int32_t>(sum, 0, std::numeric_limits<T>::max()));
  }
}

}  // namespace

template <class T>
DaxStatus reconstructionBufferSize(DaxiSize size, int32_t connectivity, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(fitsFrame(size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isConnectivity(connectivity), DAX_STS_PARAM_VALUE);
  return ReconstructionBuffer<typename Height<T>::Bits>(size).layout.store(bytes);
}

template <bool isErosion, class T>
DaxStatus reconstruct(const T* marker, int32_t markerStep, const T* mask, int32_t maskStep, T* dst, int32_t dstStep,
                      DaxiSize size, int32_t connectivity, void* buffer) {
  DAX_REQUIRE(marker && mask && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkReconstruction(size, std::min({markerStep, maskStep, dstStep}), connectivity));
  reconstructInto<isErosion>(dst, dstStep, size, connectivity, buffer, pixelsFrom(mask, maskStep),
                             pixelsFrom(marker, markerStep), storeItself);
  return DAX_STS_OK;
}

template <class T>
DaxStatus fillHoles(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                    void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkReconstruction(size, std::min(srcStep, dstStep), connectivity));
  reconstructInto<true>(dst, dstStep, size, 12 - connectivity, buffer, pixelsFrom(src, srcStep),
                        edgeFrom<true>(src, srcStep, size), storeItself);
  return DAX_STS_OK;
}

template <class T>
DaxStatus clearBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                      void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkReconstruction(size, std::min(srcStep, dstStep), connectivity));
  const auto pixels = pixelsFrom(src, srcStep);
  reconstructInto<false>(dst, dstStep, size, connectivity, buffer, pixels, edgeFrom<false>(src, srcStep, size),
                         [&](int32_t x, int32_t y, T value) {
                           const T own = pixels(x, y);
                           return own == value ? T{0} : static_cast<T>(own - value);
                         });
  return DAX_STS_OK;
}

template <bool isMinima, class T>
DaxStatus hExtrema(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T h, int32_t connectivity,
                   void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkReconstruction(size, std::min(srcStep, dstStep), connectivity));
  DAX_REQUIRE(isHeightDifference(h), DAX_STS_BAD_PARAM);
  const auto pixels = pixelsFrom(src, srcStep);
  reconstructInto<isMinima>(
      dst, dstStep, size, connectivity, buffer, pixels,
      [&](int32_t x, int32_t y) { return moved<isMinima>(pixels(x, y), h); }, storeItself);
  return DAX_STS_OK;
}

// --- Regional extrema ---

namespace {

template <class Bits>
struct RegionalBuffer {
  explicit RegionalBuffer(DaxiSize size)
      : heights(layout.add<Bits>(FramedGrid(size).cells())),
        mayBe(layout.add<uint8_t>(FramedGrid(size).cells())),
        stack(layout.add<uint32_t>(pixelsOf(size))) {}
  BufferLayout layout;
  BufferPiece<Bits> heights;
  BufferPiece<uint8_t> mayBe;
  BufferPiece<uint32_t> stack;
};

// Rules out the region of pixel p, of one height.
template <class Bits>
void ruleOut(uint32_t p, const Neighbours& neighbours, const Bits* heights, uint8_t* mayBe, uint32_t* stack) {
  uint32_t depth = 0;
  stack[depth++] = p;
  mayBe[p] = 0;
  while (depth > 0) {
    const uint32_t from = stack[--depth];
    for (const uint32_t offset : neighbours) {
      const uint32_t q = from + offset;
      if (!mayBe[q] || heights[q] != heights[p]) continue;
      mayBe[q] = 0;
      stack[depth++] = q;
    }
  }
}

}  // namespace

template <class T>
DaxStatus regionalBufferSize(DaxiSize size, int32_t connectivity, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(fitsFrame(size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isConnectivity(connectivity), DAX_STS_PARAM_VALUE);
  return RegionalBuffer<typename Height<T>::Bits>(size).layout.store(bytes);
}

template <bool isMinima, class T>
DaxStatus regionalExtrema(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                          int32_t connectivity, void* buffer) {
  using Heights = Height<T, isMinima>;
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkReconstruction(size, std::min(srcStep, dstStep), connectivity));
  const RegionalBuffer<typename Heights::Bits> at(size);
  auto* const heights = at.heights.in(buffer);
  uint8_t* const mayBe = at.mayBe.in(buffer);
  const FramedGrid grid(size);
  const Neighbours neighbours = grid.neighbours(connectivity);
  grid.forFrame([&](uint32_t p) { heights[p] = 0, mayBe[p] = 0; });
  grid.forEach([&](int32_t x, int32_t y, uint32_t p) {
    heights[p] = Heights::of(rowAt(src, srcStep, y)[x]);
    mayBe[p] = 255;
  });
  grid.forEach([&](int32_t, int32_t, uint32_t p) {
    const auto isLower = [&](uint32_t offset) { return heights[p] < heights[p + offset]; };
    if (mayBe[p] && std::any_of(neighbours.begin(), neighbours.end(), isLower)) {
      ruleOut(p, neighbours, heights, mayBe, at.stack.in(buffer));
    }
  });
  grid.forEach([&](int32_t x, int32_t y, uint32_t p) { rowAt(dst, dstStep, y)[x] = mayBe[p]; });
  return DAX_STS_OK;
}

#define DAX_RECONSTRUCT_BOTH(IS_LOW, T)                                                                           \
  template DaxStatus reconstruct<IS_LOW, T>(const T*, int32_t, const T*, int32_t, T*, int32_t, DaxiSize, int32_t, \
                                            void*);                                                               \
  template DaxStatus hExtrema<IS_LOW, T>(const T*, int32_t, T*, int32_t, DaxiSize, T, int32_t, void*);            \
  template DaxStatus regionalExtrema<IS_LOW, T>(const T*, int32_t, uint8_t*, int32_t, DaxiSize, int32_t, void*);
#define DAX_RECONSTRUCT(T)                                                                     \
  template DaxStatus reconstructionBufferSize<T>(DaxiSize, int32_t, uint64_t*);                \
  template DaxStatus regionalBufferSize<T>(DaxiSize, int32_t, uint64_t*);                      \
  template DaxStatus fillHoles<T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t, void*);   \
  template DaxStatus clearBorder<T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t, void*); \
  DAX_RECONSTRUCT_BOTH(false, T)                                                               \
  DAX_RECONSTRUCT_BOTH(true, T)
DAX_RECONSTRUCT(uint8_t)
DAX_RECONSTRUCT(uint16_t)
DAX_RECONSTRUCT(float)
#undef DAX_RECONSTRUCT
#undef DAX_RECONSTRUCT_BOTH

}  // namespace dax
