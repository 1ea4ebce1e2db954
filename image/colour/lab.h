// XYZ and Lab: one worker for what is linear, one for what is not.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/tiles.h"
#include "image/colour/gray.h"

namespace dax {

struct SrgbToXyz;
struct XyzToSrgb;
struct SrgbToLab;
struct LabToSrgb;

template <class Order, class T>
DaxStatus linearToXyz(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size);

template <class Order, class T>
DaxStatus xyzToLinear(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size);

template <class Conversion, class Order, class T>
DaxStatus convertLab(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size);

}  // namespace dax
