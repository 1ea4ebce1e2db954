#include "daxi/colour_matrix.h"
#include "image/colour/colour_matrix.h"

DaxStatus DAXI_ColourMatrix_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   const double matrix[12]) {
  return dax::colourMatrix<uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, matrix);
}

DaxStatus DAXI_ColourMatrix_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                      int32_t dstStep, DaxiSize size, const double matrix[12]) {
  return dax::colourMatrix<uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, matrix);
}

DaxStatus DAXI_ColourMatrix_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, const double matrix[12]) {
  return dax::colourMatrix<uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, matrix);
}

DaxStatus DAXI_ColourMatrix_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                    const double matrix[12]) {
  return dax::colourMatrix<uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, matrix);
}

DaxStatus DAXI_ColourMatrix_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                       uint16_t* dst, int32_t dstStep, DaxiSize size, const double matrix[12]) {
  return dax::colourMatrix<uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, matrix);
}

DaxStatus DAXI_ColourMatrix_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, const double matrix[12]) {
  return dax::colourMatrix<uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, matrix);
}

DaxStatus DAXI_ColourMatrix_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    const double matrix[12]) {
  return dax::colourMatrix<float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, matrix);
}

DaxStatus DAXI_ColourMatrix_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                       int32_t dstStep, DaxiSize size, const double matrix[12]) {
  return dax::colourMatrix<float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, matrix);
}

DaxStatus DAXI_ColourMatrix_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const double matrix[12]) {
  return dax::colourMatrix<float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, matrix);
}

DaxStatus DAXI_WhiteBalance_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   const double gains[3]) {
  return dax::whiteBalance<uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, gains);
}

DaxStatus DAXI_WhiteBalance_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                      int32_t dstStep, DaxiSize size, const double gains[3]) {
  return dax::whiteBalance<uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, gains);
}

DaxStatus DAXI_WhiteBalance_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, const double gains[3]) {
  return dax::whiteBalance<uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, gains);
}

DaxStatus DAXI_WhiteBalance_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                    const double gains[3]) {
  return dax::whiteBalance<uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, gains);
}

DaxStatus DAXI_WhiteBalance_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                       uint16_t* dst, int32_t dstStep, DaxiSize size, const double gains[3]) {
  return dax::whiteBalance<uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, gains);
}

DaxStatus DAXI_WhiteBalance_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, const double gains[3]) {
  return dax::whiteBalance<uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, gains);
}

DaxStatus DAXI_WhiteBalance_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    const double gains[3]) {
  return dax::whiteBalance<float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, gains);
}

DaxStatus DAXI_WhiteBalance_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                       int32_t dstStep, DaxiSize size, const double gains[3]) {
  return dax::whiteBalance<float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, gains);
}

DaxStatus DAXI_WhiteBalance_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const double gains[3]) {
  return dax::whiteBalance<float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, gains);
}
