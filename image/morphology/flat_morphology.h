// Erosions and dilations by lines and by masks.
#pragma once

#include <cstdint>

#include "daxi/flat_morphology.h"
#include "frame/tiles.h"

namespace dax {

// A mask that is the window, as exports get it.
struct MaskArgument {
  const uint8_t* pixels;
  int32_t step;
  DaxiSize size;
};

// Pixels are numbers of type T (grey), or set where they are not 0.
enum class PixelSense { grey, binary };

template <class T>
DaxStatus lineBufferSize(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);

template <bool isErosion, class T>
DaxStatus lineExtreme(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      const DaxiFlatLineCfg* cfg, void* buffer);

template <class T>
DaxStatus maskBufferSize(DaxiSize size, const MaskArgument& element, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);

template <PixelSense sense, bool isErosion, class T>
DaxStatus maskExtreme(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      const MaskArgument& element, const DaxiFlatMaskCfg* cfg, void* buffer);

DaxStatus hitOrMissBufferSize(DaxiSize size, const MaskArgument& hit, const MaskArgument& miss,
                              const DaxiFlatMaskCfg* cfg, uint64_t* bytes);

DaxStatus hitOrMiss(PoolThreads on, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                    const MaskArgument& hit, const MaskArgument& miss, const DaxiFlatMaskCfg* cfg, void* buffer);

}  // namespace dax
