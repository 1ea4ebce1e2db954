#include "pcl/record/range_rgbd.h"

#include <cfloat>
#include <cmath>
#include <cstring>

#include "dax3dpcl/record_check.h"
#include "frame/check.h"
#include "frame/rows.h"
#include "pcl/record/range_calib.h"
#include "pcl/record/range_record.h"
#include "zur/memory.h"

namespace dax {
namespace {

DaxStatus checkCalib(const DAX3D_RANGE_CALIB& calib) {
  DAX_REQUIRE_OK(checkCamera(calib.depth));
  DAX_REQUIRE_OK(checkCamera(calib.rgb));
  DAX_REQUIRE_OK(DAX3DPCL_UTILS_Check_SE3_64f(calib.depthToRgb));
  DAX_REQUIRE(1 / calib.depth.fx > FLT_EPSILON && 1 / calib.depth.fy > FLT_EPSILON, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

void setHeader(DAX3D_RANGE_V4& record, float depthScale, const DAX3D_RANGE_CALIB* calib) {
  record.type = DAX3D_RANGE_WITH_MASK;
  record.scale = {1, 1, depthScale};
  if (!calib) return;
  const DAX3D_CAMERA_64F& depth = calib->depth;
  record.calib = *calib;
  record.scale.x = static_cast<float>(1 / depth.fx);
  record.scale.y = static_cast<float>(1 / depth.fy);
  record.offset.x = static_cast<float>(-depth.cx / depth.fx);
  record.offset.y = static_cast<float>(-depth.cy / depth.fy);
}

void fillDepth(const int16_t* depth, int32_t step, DaxiSize size, int16_t* values, uint8_t* mask) {
  for (int32_t y = 0; y < size.height; ++y) {
    const int16_t* const row = rowAt(depth, step, y);
    for (int32_t x = 0; x < size.width; ++x) {
      *values++ = row[x];
      *mask++ = row[x] != 0 ? 255 : 0;
    }
  }
}

}  // namespace
}  // namespace dax

DaxStatus _DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4(const int16_t* depth, int32_t depthStep, const uint8_t* colour,
                                                        int32_t colourStep, DaxiSize depthSize, DaxiSize colourSize,
                                                        float depthScale, const DAX3D_RANGE_CALIB* calib,
                                                        DAX3D_RANGE_V4* record) {
  const uint64_t depthPixels = dax::pixelsOf(depthSize);
  const uint64_t colourPixels = dax::pixelsOf(colourSize);
  auto* const values = static_cast<int16_t*>(ZUR_Malloc(depthPixels * sizeof(int16_t), dax::kRecordAlignment));
  auto* const mask = static_cast<uint8_t*>(ZUR_Malloc(depthPixels, dax::kRecordAlignment));
  auto* const rgb = static_cast<uint8_t*>(ZUR_Malloc(colourPixels * 3, dax::kRecordAlignment));
  if (!values || !mask || !rgb) {
    for (void* block : {static_cast<void*>(values), static_cast<void*>(mask), static_cast<void*>(rgb)}) ZUR_Free(block);
    return DAX_STS_NO_MEMORY;
  }
  *record = {};
  dax::setHeader(*record, depthScale, calib);
  dax::setShape(record->range.image, dax::kValueFormat, depthSize.width, depthSize.height);
  dax::setShape(record->mask.image, dax::kMaskFormat, depthSize.width, depthSize.height);
  dax::setShape(record->colour.image, dax::kPackedColour, colourSize.width, colourSize.height);
  record->colour.image.step[0] = 3 * colourSize.width;
  dax::setPlane(record->range, values);
  dax::setPlane(record->mask, mask);
  dax::setPlane(record->colour, rgb);

  dax::fillDepth(depth, depthStep, depthSize, values, mask);
  const auto rowBytes = static_cast<size_t>(colourSize.width) * 3;
  for (int32_t y = 0; y < colourSize.height; ++y) {
    std::memcpy(rgb + static_cast<size_t>(y) * rowBytes, dax::rowAt(colour, colourStep, y), rowBytes);
  }
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4(const int16_t* depth, int32_t depthStep, const uint8_t* colour,
                                                       int32_t colourStep, DaxiSize depthSize, DaxiSize colourSize,
                                                       float depthScale, const DAX3D_RANGE_CALIB* calib,
                                                       DAX3D_RANGE_V4* record) {
  DAX_REQUIRE(depth && colour && record, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::sidesFit(depthSize) && dax::sidesFit(colourSize), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(dax::rowFits(depthSize.width, depthStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(dax::rowFits(colourSize.width, colourStep, 3), DAX_STS_BAD_STEP);
  DAX_REQUIRE(depthScale >= FLT_EPSILON && depthScale <= FLT_MAX, DAX_STS_BAD_PARAM);
  if (calib) DAX_REQUIRE_OK(dax::checkCalib(*calib));
  return _DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4(depth, depthStep, colour, colourStep, depthSize, colourSize,
                                                       depthScale, calib, record);
}
