#include "daxi/colour_matrix.h"
#include "image/colour/colour_matrix.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                                \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const double matrix[12]) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, matrix);                              \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const double matrix[12]) {                                                                           \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, matrix);                    \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                   \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, const double matrix[12]) {   \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, matrix); \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                              \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const double gains[3]) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, gains);                             \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const double gains[3]) {                                                                             \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, gains);                     \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                  \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, const double gains[3]) {    \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, gains); \
  }

DAX_FORWARD_1(DAXI_ColourMatrix_8u_C3R, uint8_t, dax::colourMatrix<uint8_t>)
DAX_FORWARD_2(DAXI_ColourMatrix_8u_C3R_MT, uint8_t, dax::colourMatrix<uint8_t>)
DAX_FORWARD_3(DAXI_ColourMatrix_8u_C3IR, uint8_t, dax::colourMatrix<uint8_t>)
DAX_FORWARD_1(DAXI_ColourMatrix_16u_C3R, uint16_t, dax::colourMatrix<uint16_t>)
DAX_FORWARD_2(DAXI_ColourMatrix_16u_C3R_MT, uint16_t, dax::colourMatrix<uint16_t>)
DAX_FORWARD_3(DAXI_ColourMatrix_16u_C3IR, uint16_t, dax::colourMatrix<uint16_t>)
DAX_FORWARD_1(DAXI_ColourMatrix_32f_C3R, float, dax::colourMatrix<float>)
DAX_FORWARD_2(DAXI_ColourMatrix_32f_C3R_MT, float, dax::colourMatrix<float>)
DAX_FORWARD_3(DAXI_ColourMatrix_32f_C3IR, float, dax::colourMatrix<float>)
DAX_FORWARD_4(DAXI_WhiteBalance_8u_C3R, uint8_t, dax::whiteBalance<uint8_t>)
DAX_FORWARD_5(DAXI_WhiteBalance_8u_C3R_MT, uint8_t, dax::whiteBalance<uint8_t>)
DAX_FORWARD_6(DAXI_WhiteBalance_8u_C3IR, uint8_t, dax::whiteBalance<uint8_t>)
DAX_FORWARD_4(DAXI_WhiteBalance_16u_C3R, uint16_t, dax::whiteBalance<uint16_t>)
DAX_FORWARD_5(DAXI_WhiteBalance_16u_C3R_MT, uint16_t, dax::whiteBalance<uint16_t>)
DAX_FORWARD_6(DAXI_WhiteBalance_16u_C3IR, uint16_t, dax::whiteBalance<uint16_t>)
DAX_FORWARD_4(DAXI_WhiteBalance_32f_C3R, float, dax::whiteBalance<float>)
DAX_FORWARD_5(DAXI_WhiteBalance_32f_C3R_MT, float, dax::whiteBalance<float>)
DAX_FORWARD_6(DAXI_WhiteBalance_32f_C3IR, float, dax::whiteBalance<float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
