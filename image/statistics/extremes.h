// Extremes of regions with their places, and pixels within limits: one worker for all pixel types.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "daxi/point.h"

namespace dax {

// A value and a place for each channel; places may be null.
template <class T, int32_t kChannels, bool kMasked>
DaxStatus minMaxOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* min, T* max,
                   DaxiPoint32s* minAt, DaxiPoint32s* maxAt);

// The same with an instruction-set code, of checked arguments.
template <int32_t kChannels, class T>
DaxStatus findMinMax(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* min,
                     T* max, DaxiPoint32s* minAt, DaxiPoint32s* maxAt, int32_t isa);

template <class T, bool kMasked>
DaxStatus countInRangeOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T low,
                         T high, uint64_t* count);

template <class T>
uint64_t countInRange(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T low,
                      T high, int32_t isa);

}  // namespace dax
