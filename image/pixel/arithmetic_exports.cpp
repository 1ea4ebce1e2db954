#include "daxi/arithmetic.h"
#include "image/pixel/arithmetic.h"

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
