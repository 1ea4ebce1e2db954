/* The cameras in the calibration block of a range record (DAX3D_RANGE_CALIB in dax3dpcl/range_record.h).
 *
 * Extract reads them, Recover writes them; the other values of the block are kept. Thread-safe on distinct
 * records. A failed call writes nothing. */
#ifndef DAX3DPCL_RANGE_CALIB_H
#define DAX3DPCL_RANGE_CALIB_H

#include "range_record.h"

DAX_BEGIN_DECLS

/* The depth camera. Checks, in order: record or camera null -> 0x10000014; the camera, in the record for Extract and in
 * the argument for Recover, as DAX3DPCL_UTILS_Check_CamIntrins -> 0x10000019. */
DAX_API DaxStatus DAX3DPCL_UTILS_Extract_RANGE_V4_Depth_Intrins(const DAX3D_RANGE_V4* record, DAX3D_CAMERA_64F* camera);
DAX_API DaxStatus DAX3DPCL_UTILS_Recover_RANGE_V4_Depth_Intrins(DAX3D_RANGE_V4* record, const DAX3D_CAMERA_64F* camera);

/* The colour camera and, when depthToRgb is not null, the sixteen values of the pose. Checks as
 * DAX3DPCL_UTILS_Extract_RANGE_V4_Depth_Intrins, then the pose read or written, as DAX3DPCL_UTILS_Check_SE3_64f ->
 * 0x10000000. */
DAX_API DaxStatus DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(const DAX3D_RANGE_V4* record, DAX3D_CAMERA_64F* camera,
                                                              double* depthToRgb);
DAX_API DaxStatus DAX3DPCL_UTILS_Recover_RANGE_V4_RGB_Intrins(DAX3D_RANGE_V4* record, const DAX3D_CAMERA_64F* camera,
                                                              const double* depthToRgb);

DAX_END_DECLS

#endif
