#include "daxi/watershed.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/morphology/framed_plane.h"
#include "image/morphology/radix_order.h"

namespace dax {
namespace {

// Lists of pixels, one for each level, from whose ends they leave in the order in which they entered.
template <class T>
constexpr uint64_t kLevels = uint64_t{1} << (8 * sizeof(T));
template <>
constexpr uint64_t kLevels<float> = 0;  // as many as there are values in the image

constexpr uint32_t kNobody = UINT32_MAX;

template <class T>
struct WatershedBuffer {
  explicit WatershedBuffer(DaxiSize size)
      : levels(kLevels<T> ? kLevels<T> : pixelsOf(size)),
        values(layout.add<uint32_t>(FramedGrid(size).cells())),
        labels(layout.add<int32_t>(FramedGrid(size).cells())),
        next(layout.add<uint32_t>(FramedGrid(size).cells())),
        first(layout.add<uint32_t>(levels)),
        last(layout.add<uint32_t>(levels)) {}
  uint64_t levels;
  BufferLayout layout;
  BufferPiece<uint32_t> values;
  BufferPiece<int32_t> labels;
  BufferPiece<uint32_t> next, first, last;
};

template <class T>
bool isNan(T pixel) {
  if constexpr (std::is_floating_point_v<T>) return std::isnan(pixel);
  return false;
}

template <class T>
class Watershed {
 public:
  Watershed(DaxiSize size, int32_t connectivity, void* buffer)
      : grid_(size), neighbours_(grid_.neighbours(connectivity)), at_(size), buffer_(buffer) {}

  void run(const T* src, int32_t srcStep, int32_t* labels, int32_t labelsStep) {
    const auto pixelAt = [=](int32_t x, int32_t y) { return rowAt(src, srcStep, y)[x]; };
    grid_.forFrame([&](uint32_t p) { labels_[p] = -1; });
    grid_.forEach([&](int32_t x, int32_t y, uint32_t p) {
      const T pixel = pixelAt(x, y);
      values_[p] = Height<T>::of(pixel);
      labels_[p] = isNan(pixel) ? -1 : rowAt(labels, labelsStep, y)[x];
    });
    if constexpr (kLevels<T> == 0) rankValues();
    flood();
    grid_.forEach([&](int32_t x, int32_t y, uint32_t p) {
      if (labels_[p] > 0) rowAt(labels, labelsStep, y)[x] = labels_[p];
    });
  }

 private:
  // Replaces values by their ranks among those that occur. The lists are not used yet.
  void rankValues() {
    uint32_t count = 0;
    grid_.forEach([&](int32_t, int32_t, uint32_t p) { first_[count++] = p; });
    const uint32_t* const sorted = sortByKey(values_, first_, last_, count);
    uint32_t rank = 0, before = values_[sorted[0]];
    for (uint32_t i = 0; i < count; ++i) {
      const uint32_t value = values_[sorted[i]];
      if (value != before) ++rank;
      before = value;
      values_[sorted[i]] = rank;
    }
  }

  void enter(uint32_t p, uint32_t level) {
    next_[p] = kNobody;
    if (first_[level] == kNobody) {
      first_[level] = p;
    } else {
      next_[last_[level]] = p;
    }
    last_[level] = p;
  }

  void flood() {
    std::fill_n(first_, at_.levels, kNobody);
    grid_.forEach([&](int32_t, int32_t, uint32_t p) {
      if (labels_[p] > 0) enter(p, values_[p]);
    });
    for (uint32_t level = 0; level < at_.levels; ++level) {
      for (uint32_t p = first_[level]; p != kNobody; p = next_[p]) {
        for (const uint32_t offset : neighbours_) {
          const uint32_t q = p + offset;
          if (labels_[q] != 0) continue;
          labels_[q] = labels_[p];
          enter(q, std::max(values_[q], level));
        }
      }
    }
  }

  FramedGrid grid_;
  Neighbours neighbours_;
  WatershedBuffer<T> at_;
  void* buffer_;
  uint32_t* values_ = at_.values.in(buffer_);
  int32_t* labels_ = at_.labels.in(buffer_);
  uint32_t* next_ = at_.next.in(buffer_);
  uint32_t* first_ = at_.first.in(buffer_);
  uint32_t* last_ = at_.last.in(buffer_);
};

template <class T>
DaxStatus watershedBufferSize(DaxiSize size, int32_t connectivity, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(fitsFrame(size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isConnectivity(connectivity), DAX_STS_PARAM_VALUE);
  return WatershedBuffer<T>(size).layout.store(bytes);
}

template <class T>
DaxStatus runWatershed(const T* src, int32_t srcStep, int32_t* labels, int32_t labelsStep, DaxiSize size,
                       int32_t connectivity, void* buffer) {
  DAX_REQUIRE(src && labels && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(fitsFrame(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, labelsStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE(isConnectivity(connectivity), DAX_STS_PARAM_VALUE);
  Watershed<T>(size, connectivity, buffer).run(src, srcStep, labels, labelsStep);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_WATERSHED(SUFFIX, T)                                                                                 \
  DaxStatus DAXI_WatershedBufferSize_##SUFFIX##32s(DaxiSize size, int32_t connectivity, uint64_t * bytes) {      \
    return dax::watershedBufferSize<T>(size, connectivity, bytes);                                               \
  }                                                                                                              \
  DaxStatus DAXI_Watershed_##SUFFIX##32s_C1R(const T* src, int32_t srcStep, int32_t* labels, int32_t labelsStep, \
                                             DaxiSize size, int32_t connectivity, void* buffer) {                \
    return dax::runWatershed(src, srcStep, labels, labelsStep, size, connectivity, buffer);                      \
  }
DAX_WATERSHED(8u, uint8_t)
DAX_WATERSHED(16u, uint16_t)
DAX_WATERSHED(32f, float)
#undef DAX_WATERSHED
