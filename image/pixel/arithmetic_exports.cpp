#include "daxi/arithmetic.h"
#include "image/pixel/arithmetic.h"

DaxStatus DAXI_Add_8u_C1RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                             int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint8_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Add_8u_C3RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                             int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint8_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Add_8u_C1IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep, DaxiSize size,
                              int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint8_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Add_8u_C3IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep, DaxiSize size,
                              int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint8_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Add_16u_C1RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2, uint16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Add_16u_C3RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2, uint16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Add_16u_C1IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                               DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                 scaleFactor);
}

DaxStatus DAXI_Add_16u_C3IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                               DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, uint16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                 scaleFactor);
}

DaxStatus DAXI_Add_16s_C1RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, int16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Add_16s_C3RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, int16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Add_16s_C1IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep, DaxiSize size,
                               int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, int16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Add_16s_C3IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep, DaxiSize size,
                               int32_t scaleFactor) {
  return dax::withImage<dax::AddOp, int16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Add_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                           int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::AddOp, float, 1>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_Add_32f_C3R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                           int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::AddOp, float, 3>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_Add_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::AddOp, float, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                              dax::kNoScaleFactor);
}

DaxStatus DAXI_Add_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::AddOp, float, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                              dax::kNoScaleFactor);
}

DaxStatus DAXI_Sub_8u_C1RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                             int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint8_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Sub_8u_C3RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                             int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint8_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Sub_8u_C1IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep, DaxiSize size,
                              int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint8_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Sub_8u_C3IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep, DaxiSize size,
                              int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint8_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Sub_16u_C1RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2, uint16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Sub_16u_C3RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2, uint16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Sub_16u_C1IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                               DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                 scaleFactor);
}

DaxStatus DAXI_Sub_16u_C3IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                               DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, uint16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                 scaleFactor);
}

DaxStatus DAXI_Sub_16s_C1RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, int16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Sub_16s_C3RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, int16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Sub_16s_C1IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep, DaxiSize size,
                               int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, int16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Sub_16s_C3IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep, DaxiSize size,
                               int32_t scaleFactor) {
  return dax::withImage<dax::SubOp, int16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Sub_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                           int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::SubOp, float, 1>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_Sub_32f_C3R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                           int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::SubOp, float, 3>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_Sub_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::SubOp, float, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                              dax::kNoScaleFactor);
}

DaxStatus DAXI_Sub_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::SubOp, float, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                              dax::kNoScaleFactor);
}

DaxStatus DAXI_Mul_8u_C1RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                             int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint8_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Mul_8u_C3RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                             int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint8_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Mul_8u_C1IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep, DaxiSize size,
                              int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint8_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Mul_8u_C3IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep, DaxiSize size,
                              int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint8_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Mul_16u_C1RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2, uint16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Mul_16u_C3RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2, uint16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Mul_16u_C1IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                               DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                 scaleFactor);
}

DaxStatus DAXI_Mul_16u_C3IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                               DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, uint16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                 scaleFactor);
}

DaxStatus DAXI_Mul_16s_C1RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, int16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Mul_16s_C3RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                              int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, int16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_Mul_16s_C1IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep, DaxiSize size,
                               int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, int16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Mul_16s_C3IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep, DaxiSize size,
                               int32_t scaleFactor) {
  return dax::withImage<dax::MulOp, int16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                scaleFactor);
}

DaxStatus DAXI_Mul_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                           int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::MulOp, float, 1>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_Mul_32f_C3R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                           int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::MulOp, float, 3>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_Mul_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::MulOp, float, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                              dax::kNoScaleFactor);
}

DaxStatus DAXI_Mul_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::MulOp, float, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                              dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiff_8u_C1RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                 int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint8_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_AbsDiff_8u_C3RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                 int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint8_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_AbsDiff_8u_C1IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                  DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint8_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                    scaleFactor);
}

DaxStatus DAXI_AbsDiff_8u_C3IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                  DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint8_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                    scaleFactor);
}

DaxStatus DAXI_AbsDiff_16u_C1RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                  uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_AbsDiff_16u_C3RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                  uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_AbsDiff_16u_C1IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                     scaleFactor);
}

DaxStatus DAXI_AbsDiff_16u_C3IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, uint16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                     scaleFactor);
}

DaxStatus DAXI_AbsDiff_16s_C1RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, int16_t, 1>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_AbsDiff_16s_C3RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, int16_t, 3>(src1, step1, src2, step2, dst, dstStep, size, scaleFactor);
}

DaxStatus DAXI_AbsDiff_16s_C1IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, int16_t, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                    scaleFactor);
}

DaxStatus DAXI_AbsDiff_16s_C3IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size, int32_t scaleFactor) {
  return dax::withImage<dax::AbsDiffOp, int16_t, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                    scaleFactor);
}

DaxStatus DAXI_AbsDiff_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                               int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::AbsDiffOp, float, 1>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiff_32f_C3R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                               int32_t dstStep, DaxiSize size) {
  return dax::withImage<dax::AbsDiffOp, float, 3>(src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiff_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::AbsDiffOp, float, 1>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                  dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiff_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, DaxiSize size) {
  return dax::withImage<dax::AbsDiffOp, float, 3>(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size,
                                                  dax::kNoScaleFactor);
}

DaxStatus DAXI_AddC_8u_C1RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                              uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint8_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_AddC_8u_C3RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                              const uint8_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint8_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_AddC_8u_C1IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint8_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_AddC_8u_C3IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, const uint8_t value[3],
                               int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint8_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_AddC_16u_C1RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                               uint16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_AddC_16u_C3RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                               const uint16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_AddC_16u_C1IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_AddC_16u_C3IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, const uint16_t value[3],
                                int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, uint16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_AddC_16s_C1RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                               int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, int16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_AddC_16s_C3RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                               const int16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, int16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_AddC_16s_C1IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, int16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_AddC_16s_C3IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, const int16_t value[3],
                                int32_t scaleFactor) {
  return dax::withConstant<dax::AddOp, int16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_AddC_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                            float value) {
  return dax::withConstant<dax::AddOp, float, 1>(src, srcStep, dst, dstStep, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_AddC_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                            const float value[3]) {
  return dax::withConstant<dax::AddOp, float, 3>(src, srcStep, dst, dstStep, size, value, dax::kNoScaleFactor);
}

DaxStatus DAXI_AddC_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, float value) {
  return dax::withConstant<dax::AddOp, float, 1>(srcDst, step, srcDst, step, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_AddC_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const float value[3]) {
  return dax::withConstant<dax::AddOp, float, 3>(srcDst, step, srcDst, step, size, value, dax::kNoScaleFactor);
}

DaxStatus DAXI_SubC_8u_C1RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                              uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint8_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_SubC_8u_C3RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                              const uint8_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint8_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_SubC_8u_C1IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint8_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_SubC_8u_C3IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, const uint8_t value[3],
                               int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint8_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_SubC_16u_C1RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                               uint16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_SubC_16u_C3RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                               const uint16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_SubC_16u_C1IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_SubC_16u_C3IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, const uint16_t value[3],
                                int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, uint16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_SubC_16s_C1RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                               int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, int16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_SubC_16s_C3RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                               const int16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, int16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_SubC_16s_C1IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, int16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_SubC_16s_C3IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, const int16_t value[3],
                                int32_t scaleFactor) {
  return dax::withConstant<dax::SubOp, int16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_SubC_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                            float value) {
  return dax::withConstant<dax::SubOp, float, 1>(src, srcStep, dst, dstStep, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_SubC_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                            const float value[3]) {
  return dax::withConstant<dax::SubOp, float, 3>(src, srcStep, dst, dstStep, size, value, dax::kNoScaleFactor);
}

DaxStatus DAXI_SubC_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, float value) {
  return dax::withConstant<dax::SubOp, float, 1>(srcDst, step, srcDst, step, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_SubC_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const float value[3]) {
  return dax::withConstant<dax::SubOp, float, 3>(srcDst, step, srcDst, step, size, value, dax::kNoScaleFactor);
}

DaxStatus DAXI_MulC_8u_C1RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                              uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint8_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_MulC_8u_C3RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                              const uint8_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint8_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_MulC_8u_C1IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint8_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_MulC_8u_C3IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, const uint8_t value[3],
                               int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint8_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_MulC_16u_C1RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                               uint16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_MulC_16u_C3RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                               const uint16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_MulC_16u_C1IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_MulC_16u_C3IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, const uint16_t value[3],
                                int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, uint16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_MulC_16s_C1RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                               int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, int16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_MulC_16s_C3RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                               const int16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, int16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_MulC_16s_C1IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, int16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_MulC_16s_C3IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, const int16_t value[3],
                                int32_t scaleFactor) {
  return dax::withConstant<dax::MulOp, int16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_MulC_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                            float value) {
  return dax::withConstant<dax::MulOp, float, 1>(src, srcStep, dst, dstStep, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_MulC_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                            const float value[3]) {
  return dax::withConstant<dax::MulOp, float, 3>(src, srcStep, dst, dstStep, size, value, dax::kNoScaleFactor);
}

DaxStatus DAXI_MulC_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, float value) {
  return dax::withConstant<dax::MulOp, float, 1>(srcDst, step, srcDst, step, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_MulC_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const float value[3]) {
  return dax::withConstant<dax::MulOp, float, 3>(srcDst, step, srcDst, step, size, value, dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiffC_8u_C1RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint8_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_8u_C3RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  const uint8_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint8_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_8u_C1IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint8_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_8u_C3IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, const uint8_t value[3],
                                   int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint8_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16u_C1RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   uint16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16u_C3RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   const uint16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16u_C1IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value,
                                    int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16u_C3IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, const uint16_t value[3],
                                    int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, uint16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16s_C1RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                   int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, int16_t, 1>(src, srcStep, dst, dstStep, size, &value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16s_C3RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                   const int16_t value[3], int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, int16_t, 3>(src, srcStep, dst, dstStep, size, value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16s_C1IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value, int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, int16_t, 1>(srcDst, step, srcDst, step, size, &value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_16s_C3IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, const int16_t value[3],
                                    int32_t scaleFactor) {
  return dax::withConstant<dax::AbsDiffOp, int16_t, 3>(srcDst, step, srcDst, step, size, value, scaleFactor);
}

DaxStatus DAXI_AbsDiffC_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                float value) {
  return dax::withConstant<dax::AbsDiffOp, float, 1>(src, srcStep, dst, dstStep, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiffC_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                const float value[3]) {
  return dax::withConstant<dax::AbsDiffOp, float, 3>(src, srcStep, dst, dstStep, size, value, dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiffC_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, float value) {
  return dax::withConstant<dax::AbsDiffOp, float, 1>(srcDst, step, srcDst, step, size, &value, dax::kNoScaleFactor);
}

DaxStatus DAXI_AbsDiffC_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const float value[3]) {
  return dax::withConstant<dax::AbsDiffOp, float, 3>(srcDst, step, srcDst, step, size, value, dax::kNoScaleFactor);
}
