#include "daxi/exp_ln.h"
#include "image/pixel/exp_ln.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, \
                 DaxiSize size) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                           \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size) {                    \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size); \
  }

DAX_FORWARD_1(DAXI_Exp_32f_C1R, float, dax::elementary32f<dax::ExpOp>)
DAX_FORWARD_2(DAXI_Exp_32f_C1R_MT, float, dax::elementary32f<dax::ExpOp>)
DAX_FORWARD_3(DAXI_Exp_32f_C1IR, float, dax::elementary32f<dax::ExpOp>)
DAX_FORWARD_1(DAXI_Ln_32f_C1R, float, dax::elementary32f<dax::LnOp>)
DAX_FORWARD_2(DAXI_Ln_32f_C1R_MT, float, dax::elementary32f<dax::LnOp>)
DAX_FORWARD_3(DAXI_Ln_32f_C1IR, float, dax::elementary32f<dax::LnOp>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
