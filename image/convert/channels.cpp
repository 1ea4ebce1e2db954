#include "image/convert/channels.h"

#include <algorithm>
#include <array>

#include "daxi/channels.h"
#include "frame/dispatch.h"
#include "frame/op2d.h"
#include "image/convert/channels_neon.h"
#include "image/convert/channels_portable.h"

namespace dax {

template <class T, int kFrom, int kTo>
void swapChannelsRow(const T* src, T* dst, int32_t width, const int32_t* order, T value, int32_t isa) {
  usesNeon(isa) ? neon::swapRow<T, kFrom, kTo>(src, dst, width, order, value)
                : portable::swapRow<T, kFrom, kTo>(src, dst, width, order, value);
}

namespace {

template <int kFrom, int kTo>
DaxStatus checkChannels(int32_t srcStep, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep, kFrom) && rowFits(size.width, dstStep, kTo), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

template <class P>
bool areThere(P* const* planes, int count) {
  return planes && std::all_of(planes, planes + count, [](P* plane) { return plane != nullptr; });
}

// The same row of all planes.
template <class P, size_t kCount>
std::array<P*, kCount> rowsAt(P* const* planes, int32_t step, int32_t y) {
  std::array<P*, kCount> rows;
  for (size_t c = 0; c < kCount; ++c) rows[c] = rowAt(planes[c], step, y);
  return rows;
}

template <int kChannels, class T>
DaxStatus split(const T* src, int32_t srcStep, T* const* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(src && areThere(dst, kChannels), DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK((checkChannels<kChannels, 1>(srcStep, dstStep, size)));
  for (int32_t y = 0; y < size.height; ++y) {
    portable::splitRow<T, kChannels>(rowAt(src, srcStep, y), rowsAt<T, kChannels>(dst, dstStep, y), size.width);
  }
  return DAX_STS_OK;
}

template <int kChannels, class T>
DaxStatus merge(const T* const* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(areThere(src, kChannels) && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK((checkChannels<1, kChannels>(srcStep, dstStep, size)));
  for (int32_t y = 0; y < size.height; ++y) {
    portable::mergeRow<T, kChannels>(rowsAt<const T, kChannels>(src, srcStep, y), rowAt(dst, dstStep, y), size.width);
  }
  return DAX_STS_OK;
}

template <int kFrom, int kTo, class T>
DaxStatus swapChannels(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const int32_t* order,
                       T value) {
  DAX_REQUIRE(src && dst && order, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK((checkChannels<kFrom, kTo>(srcStep, dstStep, size)));
  const bool isOrder =
      std::all_of(order, order + kTo, [](int32_t channel) { return channel >= -1 && channel < kFrom; });
  DAX_REQUIRE(isOrder, DAX_STS_BAD_PARAM);
  const int32_t isa = currentIsa();
  for (int32_t y = 0; y < size.height; ++y) {
    swapChannelsRow<T, kFrom, kTo>(rowAt(src, srcStep, y), rowAt(dst, dstStep, y), size.width, order, value, isa);
  }
  return DAX_STS_OK;
}

template <int kChannels, class T>
DaxStatus pickChannel(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t channel) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK((checkChannels<kChannels, 1>(srcStep, dstStep, size)));
  DAX_REQUIRE(channel >= 0 && channel < kChannels, DAX_STS_BAD_PARAM);
  for (int32_t y = 0; y < size.height; ++y) {
    portable::pickRow<T, kChannels>(rowAt(src, srcStep, y), channel, rowAt(dst, dstStep, y), size.width);
  }
  return DAX_STS_OK;
}

}  // namespace

#define DAX_SWAP_CHANNELS(T, FROM, TO) \
  template void swapChannelsRow<T, FROM, TO>(const T*, T*, int32_t, const int32_t*, T, int32_t);
#define DAX_SWAP_CHANNELS_TYPE(T) \
  DAX_SWAP_CHANNELS(T, 3, 3) DAX_SWAP_CHANNELS(T, 3, 4) DAX_SWAP_CHANNELS(T, 4, 3) DAX_SWAP_CHANNELS(T, 4, 4)
DAX_SWAP_CHANNELS_TYPE(uint8_t)
DAX_SWAP_CHANNELS_TYPE(uint16_t)
DAX_SWAP_CHANNELS_TYPE(int16_t)
DAX_SWAP_CHANNELS_TYPE(float)
#undef DAX_SWAP_CHANNELS_TYPE
#undef DAX_SWAP_CHANNELS

}  // namespace dax

#define DAX_SPLIT_MERGE_PICK(SUFFIX, T, N)                                                                        \
  DaxStatus DAXI_Split_##SUFFIX##_C##N##P##N##R(const T* src, int32_t srcStep, T* const dst[N], int32_t dstStep,  \
                                                DaxiSize size) {                                                  \
    return dax::split<N>(src, srcStep, dst, dstStep, size);                                                       \
  }                                                                                                               \
  DaxStatus DAXI_Merge_##SUFFIX##_P##N##C##N##R(const T* const src[N], int32_t srcStep, T* dst, int32_t dstStep,  \
                                                DaxiSize size) {                                                  \
    return dax::merge<N>(src, srcStep, dst, dstStep, size);                                                       \
  }                                                                                                               \
  DaxStatus DAXI_PickChannel_##SUFFIX##_C##N##C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep,         \
                                                  DaxiSize size, int32_t channel) {                               \
    return dax::pickChannel<N>(src, srcStep, dst, dstStep, size, channel);                                        \
  }                                                                                                               \
  DaxStatus DAXI_SwapChannels_##SUFFIX##_C##N##IR(T* srcDst, int32_t step, DaxiSize size, const int32_t order[N], \
                                                  T value) {                                                      \
    return dax::swapChannels<N, N>(srcDst, step, srcDst, step, size, order, value);                               \
  }
#define DAX_SWAP(SUFFIX, T, LAYOUT, FROM, TO)                                                             \
  DaxStatus DAXI_SwapChannels_##SUFFIX##_##LAYOUT(const T* src, int32_t srcStep, T* dst, int32_t dstStep, \
                                                  DaxiSize size, const int32_t order[TO], T value) {      \
    return dax::swapChannels<FROM, TO>(src, srcStep, dst, dstStep, size, order, value);                   \
  }
#define DAX_CHANNELS(SUFFIX, T)      \
  DAX_SPLIT_MERGE_PICK(SUFFIX, T, 3) \
  DAX_SPLIT_MERGE_PICK(SUFFIX, T, 4) \
  DAX_SWAP(SUFFIX, T, C3R, 3, 3)     \
  DAX_SWAP(SUFFIX, T, C4R, 4, 4)     \
  DAX_SWAP(SUFFIX, T, C3C4R, 3, 4)   \
  DAX_SWAP(SUFFIX, T, C4C3R, 4, 3)
DAX_CHANNELS(8u, uint8_t)
DAX_CHANNELS(16u, uint16_t)
DAX_CHANNELS(16s, int16_t)
DAX_CHANNELS(32f, float)
#undef DAX_CHANNELS
#undef DAX_SWAP
#undef DAX_SPLIT_MERGE_PICK
