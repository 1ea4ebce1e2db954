// Images of another pixel type: one worker for all pairs of types and numbers of channels.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "daxi/convert.h"
#include "frame/tiles.h"

namespace dax {

// Check and convert, with the instruction set of the processor.
template <class From, class To, int kChannels>
DaxStatus convert(PoolThreads on, const From* src, int32_t srcStep, To* dst, int32_t dstStep, DaxiSize size,
                  const DaxiConvertCfg* cfg);

template <class From, class To, int kChannels>
DaxStatus convertFullRange(PoolThreads on, const From* src, int32_t srcStep, To* dst, int32_t dstStep, DaxiSize size);

// The same of elements without gaps.
template <class From, class To>
void convertElements(const From* src, To* dst, int32_t count, const DaxiConvertCfg& cfg, int32_t isa);

template <class From, class To>
void convertFullRangeElements(const From* src, To* dst, int32_t count, int32_t isa);

}  // namespace dax
