// HSV and HLS and back: one worker for all.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/tiles.h"
#include "image/colour/gray.h"

namespace dax {

template <class Order>
struct ToHsv;
template <class Order>
struct FromHsv;
template <class Order>
struct ToHls;
template <class Order>
struct FromHls;

template <class Conversion, class T>
DaxStatus convertHue(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                     int32_t hue180);

}  // namespace dax
