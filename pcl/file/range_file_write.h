// Worker that writes range files, after the checks.
#pragma once

#include "dax3dpcl/range_file.h"

extern "C" DaxStatus _DAX3DPCL_UTILS_WRITE_RANGE_V4(const char* path, const DAX3D_RANGE_V4* record);
