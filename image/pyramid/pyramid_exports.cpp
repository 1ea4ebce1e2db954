#include "daxi/pyramid.h"
#include "image/pyramid/pyramid.h"

#define DAX_FORWARD_1(NAME, T, ...)                \
  DaxStatus NAME(DaxiSize size, uint64_t* bytes) { \
    return __VA_ARGS__(size, bytes);               \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                  \
  DaxStatus NAME(DaxiSize size, DaxiSize dstSize, uint64_t* bytes) { \
    return __VA_ARGS__(size, dstSize, bytes);                        \
  }
#define DAX_FORWARD_3(NAME, T, D, ...)             \
  DaxStatus NAME(DaxiSize size, uint64_t* bytes) { \
    return __VA_ARGS__(size, bytes);               \
  }
#define DAX_FORWARD_4(NAME, T, ...)                               \
  DaxStatus NAME(DaxiSize size, int32_t count, uint64_t* bytes) { \
    return __VA_ARGS__(size, count, bytes);                       \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                     \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, void* buffer) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, buffer);                   \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 void* buffer) {                                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, buffer);                    \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize dstSize, \
                 void* buffer) {                                                                          \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, dstSize, buffer);            \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 DaxiSize dstSize, void* buffer) {                                                                    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, dstSize, buffer);           \
  }
#define DAX_FORWARD_9(NAME, T, D, ...)                                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, const T* coarse,  \
                 int32_t coarseStep, void* buffer) {                                                      \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer); \
  }
#define DAX_FORWARD_10(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,  \
                 const T* coarse, int32_t coarseStep, void* buffer) {                                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer); \
  }
#define DAX_FORWARD_11(NAME, T, ...)                                                                      \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T* coarse,  \
                 int32_t coarseStep, void* buffer) {                                                      \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer); \
  }
#define DAX_FORWARD_12(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,  \
                 const T* coarse, int32_t coarseStep, void* buffer) {                                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer); \
  }
#define DAX_FORWARD_13(NAME, T, D, ...)                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, const D* coarse,  \
                 int32_t coarseStep, void* buffer) {                                                      \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer); \
  }
#define DAX_FORWARD_14(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,  \
                 const D* coarse, int32_t coarseStep, void* buffer) {                                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, coarse, coarseStep, buffer); \
  }
#define DAX_FORWARD_15(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, int32_t count, void* model, void* buffer) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, nullptr, 0, size, count, model, buffer);          \
  }
#define DAX_FORWARD_16(NAME, T, ...)                                                                           \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize size, int32_t count,    \
                 void* model, void* buffer) {                                                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, nullptr, 0, size, count, model, buffer); \
  }

DAX_FORWARD_1(DAXI_PyrDownBufferSize_8u, uint8_t, dax::pyrDownBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_PyrDownBufferSize_16u, uint16_t, dax::pyrDownBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_PyrDownBufferSize_32f, float, dax::pyrDownBufferSize<float>)
DAX_FORWARD_2(DAXI_PyrUpBufferSize_8u, uint8_t, dax::pyrUpBufferSize<uint8_t>)
DAX_FORWARD_2(DAXI_PyrUpBufferSize_16u, uint16_t, dax::pyrUpBufferSize<uint16_t>)
DAX_FORWARD_2(DAXI_PyrUpBufferSize_32f, float, dax::pyrUpBufferSize<float>)
DAX_FORWARD_3(DAXI_LaplacianBuildBufferSize_8u16s, uint8_t, int16_t, dax::laplacianBufferSize<uint8_t>)
DAX_FORWARD_3(DAXI_LaplacianBuildBufferSize_16u32s, uint16_t, int32_t, dax::laplacianBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_LaplacianBuildBufferSize_32f, float, dax::laplacianBufferSize<float>)
DAX_FORWARD_3(DAXI_LaplacianCollapseBufferSize_16s8u, int16_t, uint8_t, dax::laplacianBufferSize<uint8_t>)
DAX_FORWARD_3(DAXI_LaplacianCollapseBufferSize_32s16u, int32_t, uint16_t, dax::laplacianBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_LaplacianCollapseBufferSize_32f, float, dax::laplacianBufferSize<float>)
DAX_FORWARD_4(DAXI_PyramidBuildBufferSize_8u, uint8_t, dax::pyramidBufferSize<uint8_t>)
DAX_FORWARD_4(DAXI_PyramidBuildBufferSize_16u, uint16_t, dax::pyramidBufferSize<uint16_t>)
DAX_FORWARD_4(DAXI_PyramidBuildBufferSize_32f, float, dax::pyramidBufferSize<float>)
DAX_FORWARD_5(DAXI_PyrDown_8u_C1R, uint8_t, dax::pyrDown<uint8_t, 1>)
DAX_FORWARD_6(DAXI_PyrDown_8u_C1R_MT, uint8_t, dax::pyrDown<uint8_t, 1>)
DAX_FORWARD_5(DAXI_PyrDown_8u_C3R, uint8_t, dax::pyrDown<uint8_t, 3>)
DAX_FORWARD_6(DAXI_PyrDown_8u_C3R_MT, uint8_t, dax::pyrDown<uint8_t, 3>)
DAX_FORWARD_5(DAXI_PyrDown_16u_C1R, uint16_t, dax::pyrDown<uint16_t, 1>)
DAX_FORWARD_6(DAXI_PyrDown_16u_C1R_MT, uint16_t, dax::pyrDown<uint16_t, 1>)
DAX_FORWARD_5(DAXI_PyrDown_16u_C3R, uint16_t, dax::pyrDown<uint16_t, 3>)
DAX_FORWARD_6(DAXI_PyrDown_16u_C3R_MT, uint16_t, dax::pyrDown<uint16_t, 3>)
DAX_FORWARD_5(DAXI_PyrDown_32f_C1R, float, dax::pyrDown<float, 1>)
DAX_FORWARD_6(DAXI_PyrDown_32f_C1R_MT, float, dax::pyrDown<float, 1>)
DAX_FORWARD_5(DAXI_PyrDown_32f_C3R, float, dax::pyrDown<float, 3>)
DAX_FORWARD_6(DAXI_PyrDown_32f_C3R_MT, float, dax::pyrDown<float, 3>)
DAX_FORWARD_7(DAXI_PyrUp_8u_C1R, uint8_t, dax::pyrUp<uint8_t, 1>)
DAX_FORWARD_8(DAXI_PyrUp_8u_C1R_MT, uint8_t, dax::pyrUp<uint8_t, 1>)
DAX_FORWARD_7(DAXI_PyrUp_8u_C3R, uint8_t, dax::pyrUp<uint8_t, 3>)
DAX_FORWARD_8(DAXI_PyrUp_8u_C3R_MT, uint8_t, dax::pyrUp<uint8_t, 3>)
DAX_FORWARD_7(DAXI_PyrUp_16u_C1R, uint16_t, dax::pyrUp<uint16_t, 1>)
DAX_FORWARD_8(DAXI_PyrUp_16u_C1R_MT, uint16_t, dax::pyrUp<uint16_t, 1>)
DAX_FORWARD_7(DAXI_PyrUp_16u_C3R, uint16_t, dax::pyrUp<uint16_t, 3>)
DAX_FORWARD_8(DAXI_PyrUp_16u_C3R_MT, uint16_t, dax::pyrUp<uint16_t, 3>)
DAX_FORWARD_7(DAXI_PyrUp_32f_C1R, float, dax::pyrUp<float, 1>)
DAX_FORWARD_8(DAXI_PyrUp_32f_C1R_MT, float, dax::pyrUp<float, 1>)
DAX_FORWARD_7(DAXI_PyrUp_32f_C3R, float, dax::pyrUp<float, 3>)
DAX_FORWARD_8(DAXI_PyrUp_32f_C3R_MT, float, dax::pyrUp<float, 3>)
DAX_FORWARD_9(DAXI_LaplacianBuild_8u16s_C1R, uint8_t, int16_t, dax::laplacianBuild<uint8_t, int16_t, 1>)
DAX_FORWARD_10(DAXI_LaplacianBuild_8u16s_C1R_MT, uint8_t, int16_t, dax::laplacianBuild<uint8_t, int16_t, 1>)
DAX_FORWARD_9(DAXI_LaplacianBuild_8u16s_C3R, uint8_t, int16_t, dax::laplacianBuild<uint8_t, int16_t, 3>)
DAX_FORWARD_10(DAXI_LaplacianBuild_8u16s_C3R_MT, uint8_t, int16_t, dax::laplacianBuild<uint8_t, int16_t, 3>)
DAX_FORWARD_9(DAXI_LaplacianBuild_16u32s_C1R, uint16_t, int32_t, dax::laplacianBuild<uint16_t, int32_t, 1>)
DAX_FORWARD_10(DAXI_LaplacianBuild_16u32s_C1R_MT, uint16_t, int32_t, dax::laplacianBuild<uint16_t, int32_t, 1>)
DAX_FORWARD_9(DAXI_LaplacianBuild_16u32s_C3R, uint16_t, int32_t, dax::laplacianBuild<uint16_t, int32_t, 3>)
DAX_FORWARD_10(DAXI_LaplacianBuild_16u32s_C3R_MT, uint16_t, int32_t, dax::laplacianBuild<uint16_t, int32_t, 3>)
DAX_FORWARD_11(DAXI_LaplacianBuild_32f_C1R, float, dax::laplacianBuild<float, float, 1>)
DAX_FORWARD_12(DAXI_LaplacianBuild_32f_C1R_MT, float, dax::laplacianBuild<float, float, 1>)
DAX_FORWARD_11(DAXI_LaplacianBuild_32f_C3R, float, dax::laplacianBuild<float, float, 3>)
DAX_FORWARD_12(DAXI_LaplacianBuild_32f_C3R_MT, float, dax::laplacianBuild<float, float, 3>)
DAX_FORWARD_13(DAXI_LaplacianCollapse_16s8u_C1R, int16_t, uint8_t, dax::laplacianCollapse<int16_t, uint8_t, 1>)
DAX_FORWARD_14(DAXI_LaplacianCollapse_16s8u_C1R_MT, int16_t, uint8_t, dax::laplacianCollapse<int16_t, uint8_t, 1>)
DAX_FORWARD_13(DAXI_LaplacianCollapse_16s8u_C3R, int16_t, uint8_t, dax::laplacianCollapse<int16_t, uint8_t, 3>)
DAX_FORWARD_14(DAXI_LaplacianCollapse_16s8u_C3R_MT, int16_t, uint8_t, dax::laplacianCollapse<int16_t, uint8_t, 3>)
DAX_FORWARD_13(DAXI_LaplacianCollapse_32s16u_C1R, int32_t, uint16_t, dax::laplacianCollapse<int32_t, uint16_t, 1>)
DAX_FORWARD_14(DAXI_LaplacianCollapse_32s16u_C1R_MT, int32_t, uint16_t, dax::laplacianCollapse<int32_t, uint16_t, 1>)
DAX_FORWARD_13(DAXI_LaplacianCollapse_32s16u_C3R, int32_t, uint16_t, dax::laplacianCollapse<int32_t, uint16_t, 3>)
DAX_FORWARD_14(DAXI_LaplacianCollapse_32s16u_C3R_MT, int32_t, uint16_t, dax::laplacianCollapse<int32_t, uint16_t, 3>)
DAX_FORWARD_11(DAXI_LaplacianCollapse_32f_C1R, float, dax::laplacianCollapse<float, float, 1>)
DAX_FORWARD_12(DAXI_LaplacianCollapse_32f_C1R_MT, float, dax::laplacianCollapse<float, float, 1>)
DAX_FORWARD_11(DAXI_LaplacianCollapse_32f_C3R, float, dax::laplacianCollapse<float, float, 3>)
DAX_FORWARD_12(DAXI_LaplacianCollapse_32f_C3R_MT, float, dax::laplacianCollapse<float, float, 3>)
DAX_FORWARD_15(DAXI_PyramidBuild_8u_C1R, uint8_t, dax::pyramidBuild<uint8_t, 1>)
DAX_FORWARD_16(DAXI_PyramidBuild_8u_C1R_MT, uint8_t, dax::pyramidBuild<uint8_t, 1>)
DAX_FORWARD_15(DAXI_PyramidBuild_8u_C3R, uint8_t, dax::pyramidBuild<uint8_t, 3>)
DAX_FORWARD_16(DAXI_PyramidBuild_8u_C3R_MT, uint8_t, dax::pyramidBuild<uint8_t, 3>)
DAX_FORWARD_15(DAXI_PyramidBuild_16u_C1R, uint16_t, dax::pyramidBuild<uint16_t, 1>)
DAX_FORWARD_16(DAXI_PyramidBuild_16u_C1R_MT, uint16_t, dax::pyramidBuild<uint16_t, 1>)
DAX_FORWARD_15(DAXI_PyramidBuild_16u_C3R, uint16_t, dax::pyramidBuild<uint16_t, 3>)
DAX_FORWARD_16(DAXI_PyramidBuild_16u_C3R_MT, uint16_t, dax::pyramidBuild<uint16_t, 3>)
DAX_FORWARD_15(DAXI_PyramidBuild_32f_C1R, float, dax::pyramidBuild<float, 1>)
DAX_FORWARD_16(DAXI_PyramidBuild_32f_C1R_MT, float, dax::pyramidBuild<float, 1>)
DAX_FORWARD_15(DAXI_PyramidBuild_32f_C3R, float, dax::pyramidBuild<float, 3>)
DAX_FORWARD_16(DAXI_PyramidBuild_32f_C3R_MT, float, dax::pyramidBuild<float, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
#undef DAX_FORWARD_7
#undef DAX_FORWARD_8
#undef DAX_FORWARD_9
#undef DAX_FORWARD_10
#undef DAX_FORWARD_11
#undef DAX_FORWARD_12
#undef DAX_FORWARD_13
#undef DAX_FORWARD_14
#undef DAX_FORWARD_15
#undef DAX_FORWARD_16
