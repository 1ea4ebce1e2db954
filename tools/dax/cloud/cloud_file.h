// Files of point clouds: PLY, PCD and, for reading, range files; the first bytes decide the format.
#pragma once

#include <filesystem>
#include <string>

#include "cloud/cloud.h"

namespace dax::tool {

// Throws Failure(kCannotRead).
Cloud readCloud(const std::filesystem::path& path);

// Whether the name ends in .ply or .pcd.
bool hasCloudExtension(const std::filesystem::path& path);

// Throws Failure(kCannotWrite).
void writeCloud(const std::filesystem::path& path, const Cloud& cloud, bool text);

}  // namespace dax::tool
