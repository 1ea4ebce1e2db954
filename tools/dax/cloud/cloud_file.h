// Files of point clouds: PLY, PCD and, to read, range files; what a file is, its first bytes tell.
#pragma once

#include <filesystem>
#include <string>

#include "cloud/cloud.h"

namespace dax::tool {

// Throws Failure(kCannotRead).
Cloud readCloud(const std::filesystem::path& path);

// True when the name ends in .ply or .pcd.
bool hasCloudExtension(const std::filesystem::path& path);

// Throws Failure(kCannotWrite).
void writeCloud(const std::filesystem::path& path, const Cloud& cloud, bool text);

}  // namespace dax::tool
