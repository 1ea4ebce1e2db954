// Voxel-grid downsampling with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax3dpcl/voxel_grid.h"
#include "pcl/sample/voxel_grid_portable.h"

namespace dax {

// The grid over a box; false when the box is empty or not finite, or the cell numbers do not fit 32 bits.
bool makeVoxelGrid(const float* box, const float* leaf, VoxelGrid& grid);

void downsample(const DAX3DPCL_CLOUD3D* cloud, const VoxelGrid& grid, DAX3DPCL_CLOUD3D** out, void* result, void* work,
                int32_t isa);

}  // namespace dax
