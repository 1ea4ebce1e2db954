// Filters of spectra.
#pragma once

#include <cstdint>

#include "daxi/spectrum_filter.h"
#include "frame/tiles.h"

namespace dax {

template <class C>
DaxStatus spectrumNotch(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size,
                        int32_t width, const DaxiNotch* notches, int32_t count, void* buffer);
template <class C>
DaxStatus spectrumBand(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size,
                       int32_t width, const DaxiBandCfg* cfg);

}  // namespace dax
