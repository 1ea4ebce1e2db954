// The derivative-of-Gaussian filter of calipers.
#pragma once

#include <cstdint>

namespace dax {

constexpr int32_t kMaxKernel = 101;  // of the largest half width, 50

}  // namespace dax

extern "C" {

// Writes the kernel for a half width and a profile of n values into kMaxKernel floats; returns its length K.
int32_t DAXI_CalipEdgeDetect_init_dog_kernel_32f(uint32_t halfWidth, int32_t n, float* kernel);
// Filters n values by a kernel of odd length; `extended` has room for n + length.
void _DAXI_Caliper_filter_32f(const float* in, int32_t n, const float* kernel, int32_t length, float* extended,
                              float* out, int32_t isa);
// Both; returns K.
int32_t _DAXI_Caliper_dog_filter_32f(const float* in, int32_t n, uint32_t halfWidth, float* kernel, float* extended,
                                     float* out, int32_t isa);
}
