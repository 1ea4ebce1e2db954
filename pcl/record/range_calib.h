// Checks of the cameras in a range record.
#pragma once

#include "dax3dpcl/range_calib.h"

namespace dax {

// DAX3DPCL_UTILS_Check_CamIntrins on the camera's four intrinsics.
DaxStatus checkCamera(const DAX3D_CAMERA_64F& camera);

}  // namespace dax
