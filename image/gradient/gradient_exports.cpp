#include "daxi/gradient.h"
#include "image/gradient/gradient.h"

#define DAX_FORWARD_1(NAME, T, D, ...)                                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, int32_t aperture, \
                 int32_t border, double value) {                                                          \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, aperture, border, value);    \
  }
#define DAX_FORWARD_2(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, \
                 int32_t aperture, int32_t border, double value) {                                                    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, aperture, border, value);   \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t aperture, \
                 int32_t border, double value) {                                                          \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, aperture, border, value);    \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t aperture, int32_t border, double value) {                                                    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, aperture, border, value);   \
  }
#define DAX_FORWARD_5(NAME, T, D, ...)                                                                      \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, int32_t neighbours, \
                 int32_t border, double value) {                                                            \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, neighbours, border, value);    \
  }
#define DAX_FORWARD_6(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, \
                 int32_t neighbours, int32_t border, double value) {                                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, neighbours, border, value); \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                         \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t neighbours, \
                 int32_t border, double value) {                                                            \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, neighbours, border, value);    \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t neighbours, int32_t border, double value) {                                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, neighbours, border, value); \
  }

DAX_FORWARD_1(DAXI_SobelX_8u16s_C1R, uint8_t, int16_t, dax::gradient<dax::SobelKernel, dax::Axis::x, uint8_t, int16_t>)
DAX_FORWARD_2(DAXI_SobelX_8u16s_C1R_MT, uint8_t, int16_t,
              dax::gradient<dax::SobelKernel, dax::Axis::x, uint8_t, int16_t>)
DAX_FORWARD_1(DAXI_SobelX_16u32f_C1R, uint16_t, float, dax::gradient<dax::SobelKernel, dax::Axis::x, uint16_t, float>)
DAX_FORWARD_2(DAXI_SobelX_16u32f_C1R_MT, uint16_t, float,
              dax::gradient<dax::SobelKernel, dax::Axis::x, uint16_t, float>)
DAX_FORWARD_3(DAXI_SobelX_32f_C1R, float, dax::gradient<dax::SobelKernel, dax::Axis::x, float, float>)
DAX_FORWARD_4(DAXI_SobelX_32f_C1R_MT, float, dax::gradient<dax::SobelKernel, dax::Axis::x, float, float>)
DAX_FORWARD_1(DAXI_SobelY_8u16s_C1R, uint8_t, int16_t, dax::gradient<dax::SobelKernel, dax::Axis::y, uint8_t, int16_t>)
DAX_FORWARD_2(DAXI_SobelY_8u16s_C1R_MT, uint8_t, int16_t,
              dax::gradient<dax::SobelKernel, dax::Axis::y, uint8_t, int16_t>)
DAX_FORWARD_1(DAXI_SobelY_16u32f_C1R, uint16_t, float, dax::gradient<dax::SobelKernel, dax::Axis::y, uint16_t, float>)
DAX_FORWARD_2(DAXI_SobelY_16u32f_C1R_MT, uint16_t, float,
              dax::gradient<dax::SobelKernel, dax::Axis::y, uint16_t, float>)
DAX_FORWARD_3(DAXI_SobelY_32f_C1R, float, dax::gradient<dax::SobelKernel, dax::Axis::y, float, float>)
DAX_FORWARD_4(DAXI_SobelY_32f_C1R_MT, float, dax::gradient<dax::SobelKernel, dax::Axis::y, float, float>)
DAX_FORWARD_1(DAXI_PrewittX_8u16s_C1R, uint8_t, int16_t,
              dax::gradient<dax::PrewittKernel, dax::Axis::x, uint8_t, int16_t>)
DAX_FORWARD_2(DAXI_PrewittX_8u16s_C1R_MT, uint8_t, int16_t,
              dax::gradient<dax::PrewittKernel, dax::Axis::x, uint8_t, int16_t>)
DAX_FORWARD_1(DAXI_PrewittX_16u32f_C1R, uint16_t, float,
              dax::gradient<dax::PrewittKernel, dax::Axis::x, uint16_t, float>)
DAX_FORWARD_2(DAXI_PrewittX_16u32f_C1R_MT, uint16_t, float,
              dax::gradient<dax::PrewittKernel, dax::Axis::x, uint16_t, float>)
DAX_FORWARD_3(DAXI_PrewittX_32f_C1R, float, dax::gradient<dax::PrewittKernel, dax::Axis::x, float, float>)
DAX_FORWARD_4(DAXI_PrewittX_32f_C1R_MT, float, dax::gradient<dax::PrewittKernel, dax::Axis::x, float, float>)
DAX_FORWARD_1(DAXI_PrewittY_8u16s_C1R, uint8_t, int16_t,
              dax::gradient<dax::PrewittKernel, dax::Axis::y, uint8_t, int16_t>)
DAX_FORWARD_2(DAXI_PrewittY_8u16s_C1R_MT, uint8_t, int16_t,
              dax::gradient<dax::PrewittKernel, dax::Axis::y, uint8_t, int16_t>)
DAX_FORWARD_1(DAXI_PrewittY_16u32f_C1R, uint16_t, float,
              dax::gradient<dax::PrewittKernel, dax::Axis::y, uint16_t, float>)
DAX_FORWARD_2(DAXI_PrewittY_16u32f_C1R_MT, uint16_t, float,
              dax::gradient<dax::PrewittKernel, dax::Axis::y, uint16_t, float>)
DAX_FORWARD_3(DAXI_PrewittY_32f_C1R, float, dax::gradient<dax::PrewittKernel, dax::Axis::y, float, float>)
DAX_FORWARD_4(DAXI_PrewittY_32f_C1R_MT, float, dax::gradient<dax::PrewittKernel, dax::Axis::y, float, float>)
DAX_FORWARD_1(DAXI_ScharrX_8u16s_C1R, uint8_t, int16_t,
              dax::gradient<dax::ScharrKernel, dax::Axis::x, uint8_t, int16_t>)
DAX_FORWARD_2(DAXI_ScharrX_8u16s_C1R_MT, uint8_t, int16_t,
              dax::gradient<dax::ScharrKernel, dax::Axis::x, uint8_t, int16_t>)
DAX_FORWARD_1(DAXI_ScharrX_16u32f_C1R, uint16_t, float, dax::gradient<dax::ScharrKernel, dax::Axis::x, uint16_t, float>)
DAX_FORWARD_2(DAXI_ScharrX_16u32f_C1R_MT, uint16_t, float,
              dax::gradient<dax::ScharrKernel, dax::Axis::x, uint16_t, float>)
DAX_FORWARD_3(DAXI_ScharrX_32f_C1R, float, dax::gradient<dax::ScharrKernel, dax::Axis::x, float, float>)
DAX_FORWARD_4(DAXI_ScharrX_32f_C1R_MT, float, dax::gradient<dax::ScharrKernel, dax::Axis::x, float, float>)
DAX_FORWARD_1(DAXI_ScharrY_8u16s_C1R, uint8_t, int16_t,
              dax::gradient<dax::ScharrKernel, dax::Axis::y, uint8_t, int16_t>)
DAX_FORWARD_2(DAXI_ScharrY_8u16s_C1R_MT, uint8_t, int16_t,
              dax::gradient<dax::ScharrKernel, dax::Axis::y, uint8_t, int16_t>)
DAX_FORWARD_1(DAXI_ScharrY_16u32f_C1R, uint16_t, float, dax::gradient<dax::ScharrKernel, dax::Axis::y, uint16_t, float>)
DAX_FORWARD_2(DAXI_ScharrY_16u32f_C1R_MT, uint16_t, float,
              dax::gradient<dax::ScharrKernel, dax::Axis::y, uint16_t, float>)
DAX_FORWARD_3(DAXI_ScharrY_32f_C1R, float, dax::gradient<dax::ScharrKernel, dax::Axis::y, float, float>)
DAX_FORWARD_4(DAXI_ScharrY_32f_C1R_MT, float, dax::gradient<dax::ScharrKernel, dax::Axis::y, float, float>)
DAX_FORWARD_5(DAXI_Laplace_8u16s_C1R, uint8_t, int16_t, dax::laplace<uint8_t, int16_t>)
DAX_FORWARD_6(DAXI_Laplace_8u16s_C1R_MT, uint8_t, int16_t, dax::laplace<uint8_t, int16_t>)
DAX_FORWARD_5(DAXI_Laplace_16u32f_C1R, uint16_t, float, dax::laplace<uint16_t, float>)
DAX_FORWARD_6(DAXI_Laplace_16u32f_C1R_MT, uint16_t, float, dax::laplace<uint16_t, float>)
DAX_FORWARD_7(DAXI_Laplace_32f_C1R, float, dax::laplace<float, float>)
DAX_FORWARD_8(DAXI_Laplace_32f_C1R_MT, float, dax::laplace<float, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
#undef DAX_FORWARD_7
#undef DAX_FORWARD_8
