// Output files appear whole or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace dax::tool {

// Writes to a temporary name in the same folder and renames. Follows links; devices and pipes are written to as they are.
// Throws Failure(kCannotWrite).
void writeFile(const std::filesystem::path& path, std::string_view content);

// Creates a folder and its parents. Throws Failure(kCannotWrite).
void makeFolder(const std::filesystem::path& path);

}  // namespace dax::tool
