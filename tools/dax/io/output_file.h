// Output files are written completely or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace dax::tool {

// Writes a file without a name in the same folder and links it, or a temporary one and renames it. Follows links; devices and pipes are written directly.
// Throws Failure(kCannotWrite).
void writeFile(const std::filesystem::path& path, std::string_view content);

// Creates a folder and its parents. Throws Failure(kCannotWrite).
void makeFolder(const std::filesystem::path& path);

}  // namespace dax::tool
