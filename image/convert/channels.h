// Rows of channels in another order.
#pragma once

#include <cstdint>

namespace dax {

// Channel c of dst is channel order[c] of src, or value for -1. dst may be src where they have as many channels.
template <class T, int kFrom, int kTo>
void swapChannelsRow(const T* src, T* dst, int32_t width, const int32_t* order, T value, int32_t isa);

}  // namespace dax
