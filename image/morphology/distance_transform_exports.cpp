#include "daxi/distance_transform.h"
#include "image/morphology/distance_transform.h"

#define DAX_FORWARD_1(NAME, T, D, ...)                             \
  DaxStatus NAME(DaxiSize size, int32_t metric, uint64_t* bytes) { \
    return __VA_ARGS__(size, metric, bytes);                       \
  }
#define DAX_FORWARD_2(NAME, T, D, ...)                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, int32_t metric, \
                 void* buffer) {                                                                        \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, metric, buffer);           \
  }
#define DAX_FORWARD_3(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, \
                 int32_t metric, void* buffer) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, metric, buffer);            \
  }

DAX_FORWARD_1(DAXI_DistanceTransformBufferSize_8u32s, uint8_t, int32_t, dax::distanceBufferSize)
DAX_FORWARD_1(DAXI_DistanceTransformBufferSize_8u32f, uint8_t, float, dax::distanceBufferSize)
DAX_FORWARD_2(DAXI_DistanceTransform_8u32s_C1R, uint8_t, int32_t, dax::distanceTransform<int32_t>)
DAX_FORWARD_3(DAXI_DistanceTransform_8u32s_C1R_MT, uint8_t, int32_t, dax::distanceTransform<int32_t>)
DAX_FORWARD_2(DAXI_DistanceTransform_8u32f_C1R, uint8_t, float, dax::distanceTransform<float>)
DAX_FORWARD_3(DAXI_DistanceTransform_8u32f_C1R_MT, uint8_t, float, dax::distanceTransform<float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
