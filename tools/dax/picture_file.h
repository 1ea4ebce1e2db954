// Pictures that the program writes, in the format that their names end in.
#pragma once

#include <filesystem>

#include "grey_image.h"

namespace dax::tool {

// Throws Failure(kUsage) unless the name ends in .png or .pgm.
void requirePictureName(const std::filesystem::path& path);

// Throws Failure(kCannotWrite).
void writePicture(const std::filesystem::path& path, const GreyImage& image);

}  // namespace dax::tool
