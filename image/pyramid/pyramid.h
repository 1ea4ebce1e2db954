// Images halved and doubled by the binomial filter of five taps, and pyramids of them.
#pragma once

#include <cstdint>

#include "daxi/pyramid.h"
#include "frame/tiles.h"

namespace dax {

// How many tiles of a pool have rows of their own in the work buffer.
constexpr uint32_t kPyramidTiles = 8;

inline int32_t halfOf(int32_t side) {
  return side / 2 + side % 2;
}
inline DaxiSize halfOf(DaxiSize size) {
  return {halfOf(size.width), halfOf(size.height)};
}

template <class T>
DaxStatus pyrDownBufferSize(DaxiSize size, uint64_t* bytes);
template <class T, int kChannels>
DaxStatus pyrDown(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, void* buffer);

template <class T>
DaxStatus pyrUpBufferSize(DaxiSize size, DaxiSize dstSize, uint64_t* bytes);
template <class T, int kChannels>
DaxStatus pyrUp(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize dstSize,
                void* buffer);

template <class T>
DaxStatus laplacianBufferSize(DaxiSize size, uint64_t* bytes);
template <class T, class D, int kChannels>
DaxStatus laplacianBuild(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                         const T* coarse, int32_t coarseStep, void* buffer);
template <class D, class T, int kChannels>
DaxStatus laplacianCollapse(PoolThreads on, const D* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                            const T* coarse, int32_t coarseStep, void* buffer);

template <class T>
DaxStatus pyramidBufferSize(DaxiSize size, int32_t count, uint64_t* bytes);
template <class T, int kChannels>
DaxStatus pyramidBuild(PoolThreads on, const T* src, int32_t srcStep, const uint8_t*, int32_t, DaxiSize size,
                       int32_t count, void* model, void* buffer);

}  // namespace dax
