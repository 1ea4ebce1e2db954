// Worker that makes a range record from the images of an RGB-D camera, after the checks.
#pragma once

#include "dax3dpcl/range_record.h"

extern "C" DaxStatus _DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4(const int16_t* depth, int32_t depthStep,
                                                                   const uint8_t* colour, int32_t colourStep,
                                                                   DaxiSize depthSize, DaxiSize colourSize,
                                                                   float depthScale, const DAX3D_RANGE_CALIB* calib,
                                                                   DAX3D_RANGE_V4* record);
