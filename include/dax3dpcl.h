/* Point clouds and range images. */
#ifndef DAX3DPCL_H
#define DAX3DPCL_H

#include "dax3dpcl/cloud.h"
#include "dax3dpcl/kdtree.h"
#include "dax3dpcl/kdtree_v2.h"
#include "dax3dpcl/normals.h"
#include "dax3dpcl/range_calib.h"
#include "dax3dpcl/range_file.h"
#include "dax3dpcl/range_record.h"
#include "dax3dpcl/range_to_xyz.h"
#include "dax3dpcl/record_check.h"
#include "dax3dpcl/speckle.h"
#include "dax3dpcl/voxel_grid.h"

#endif
