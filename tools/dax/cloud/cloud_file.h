// Files of point clouds: PLY, PCD and, for reading, range files; the first bytes decide the format.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cloud/cloud.h"

namespace dax::tool {

// Throws Failure(kCannotRead).
Cloud readCloud(const std::filesystem::path& path);

// Whether the name ends in .ply or .pcd.
bool hasCloudExtension(const std::filesystem::path& path);

// Coordinates are doubles where floats lose more than a thousandth of the spacing. Returns the names of what the format
// does not hold. Throws Failure(kCannotWrite).
std::vector<std::string> writeCloud(const std::filesystem::path& path, const Cloud& cloud, bool text);

}  // namespace dax::tool
