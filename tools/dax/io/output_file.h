// Output files are written completely or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace dax::tool {

// As DAX_WriteFile: the old file, or the whole new one, of the old one's mode. Follows links; devices and pipes are written
// directly. Throws Failure(kCannotWrite).
void writeFile(const std::filesystem::path& path, std::string_view content);

// Creates a folder and its parents. Throws Failure(kCannotWrite).
void makeFolder(const std::filesystem::path& path);

}  // namespace dax::tool
