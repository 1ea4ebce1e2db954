// Pictures that the program writes, in the format that their names end in.
#pragma once

#include <filesystem>
#include <string>

#include "io/grey_image.h"

namespace dax::tool {

// requireEnding() for these formats: .png and .pgm.
void requirePictureName(const std::string& option, const std::filesystem::path& path);

// Throws Failure(kCannotWrite).
void writePicture(const std::filesystem::path& path, const GreyImage& image);

}  // namespace dax::tool
