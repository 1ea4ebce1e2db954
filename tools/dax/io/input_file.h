// Input files: regular files of limited size.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace dax::tool {

// Throws Failure(kCannotRead), with a message that starts with the name, unless it is a regular file of at most 1 GiB.
uintmax_t requireRegularFile(const std::filesystem::path& path);

// All bytes. Throws as above.
std::string readFile(const std::filesystem::path& path);

}  // namespace dax::tool
