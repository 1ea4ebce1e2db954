#include "pcl/record/range_calib.h"

#include <algorithm>

#include "dax3dpcl/record_check.h"
#include "frame/check.h"

DaxStatus dax::checkCamera(const DAX3D_CAMERA_64F& camera) {
  const double intrinsics[4] = {camera.fx, camera.fy, camera.cx, camera.cy};
  return DAX3DPCL_UTILS_Check_CamIntrins(intrinsics);
}

DaxStatus DAX3DPCL_UTILS_Extract_RANGE_V4_Depth_Intrins(const DAX3D_RANGE_V4* record, DAX3D_CAMERA_64F* camera) {
  DAX_REQUIRE(record && camera, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkCamera(record->calib.depth));
  *camera = record->calib.depth;
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_UTILS_Recover_RANGE_V4_Depth_Intrins(DAX3D_RANGE_V4* record, const DAX3D_CAMERA_64F* camera) {
  DAX_REQUIRE(record && camera, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkCamera(*camera));
  record->calib.depth = *camera;
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(const DAX3D_RANGE_V4* record, DAX3D_CAMERA_64F* camera,
                                                      double* depthToRgb) {
  DAX_REQUIRE(record && camera, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkCamera(record->calib.rgb));
  if (depthToRgb) DAX_REQUIRE_OK(DAX3DPCL_UTILS_Check_SE3_64f(record->calib.depthToRgb));
  *camera = record->calib.rgb;
  if (depthToRgb) std::copy_n(record->calib.depthToRgb, 16, depthToRgb);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_UTILS_Recover_RANGE_V4_RGB_Intrins(DAX3D_RANGE_V4* record, const DAX3D_CAMERA_64F* camera,
                                                      const double* depthToRgb) {
  DAX_REQUIRE(record && camera, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkCamera(*camera));
  if (depthToRgb) DAX_REQUIRE_OK(DAX3DPCL_UTILS_Check_SE3_64f(depthToRgb));
  record->calib.rgb = *camera;
  if (depthToRgb) std::copy_n(depthToRgb, 16, record->calib.depthToRgb);
  return DAX_STS_OK;
}
