// Rank filters of a band of rows, unchecked, with a choice of kernels.
#pragma once

#include "image/rank/rank_filter.h"

namespace dax {

// Bytes of work memory for windows up to the given one.
template <class T>
uint64_t rankBytes(DaxiSize size, DaxiSize window);

// Computes rows first..end - 1. For uint8_t, uint16_t, int16_t and float.
template <class T>
void rankRows(const RankFilter<T>& filter, int32_t first, int32_t end, void* buffer, int32_t isa);

}  // namespace dax
