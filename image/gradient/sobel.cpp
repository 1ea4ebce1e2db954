#include "image/gradient/sobel.h"

#include "frame/rows.h"
#include "frame/vector4.h"

namespace dax {
namespace {

// gradient(at) computes one result, or four, from the pixels at(dx, dy) around it.
template <class Gradient>
void filterRows(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size, Gradient gradient) {
  for (int32_t y = 0; y < size.height; ++y) {
    const float *const above = rowAt(src, srcStep, y), *const centre = above + srcStep, *const below = centre + srcStep;
    float* const to = rowAt(dst, dstStep, y);
    int32_t x = 0;
    for (; x + 4 <= size.width; x += 4) {
      store4(to + x, gradient([&](int32_t dx, int32_t dy) {
               return load4((dy < 0 ? above : dy == 0 ? centre : below) + x + 1 + dx);
             }));
    }
    for (; x < size.width; ++x) {
      to[x] = gradient([&](int32_t dx, int32_t dy) { return (dy < 0 ? above : dy == 0 ? centre : below)[x + 1 + dx]; });
    }
  }
}

}  // namespace
}  // namespace dax

void _DAXI_FilterSobelHori_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  dax::filterRows(src, srcStep, dst, dstStep, size, [](auto at) {
    return (at(1, -1) - at(-1, -1)) + 2 * (at(1, 0) - at(-1, 0)) + (at(1, 1) - at(-1, 1));
  });
}

void _DAXI_FilterSobelVert_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  dax::filterRows(src, srcStep, dst, dstStep, size, [](auto at) {
    return (at(-1, 1) - at(-1, -1)) + 2 * (at(0, 1) - at(0, -1)) + (at(1, 1) - at(1, -1));
  });
}
