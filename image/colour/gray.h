// Grey from colour and back: one worker for each way.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"

namespace dax {

// Where red, green and blue stand in a pixel.
struct RgbOrder {
  static constexpr int kRed = 0, kBlue = 2;
};
struct BgrOrder {
  static constexpr int kRed = 2, kBlue = 0;
};

template <class Order, class T>
DaxStatus grayByStandard(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t standard);

template <class T>
DaxStatus grayByWeights(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const double* weights);

template <class T>
DaxStatus grayToColour(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size);

// One row of BT.601.
template <class T>
void grayRow601(const T* rgb, T* gray, int32_t count, int32_t isa);

}  // namespace dax
