// Picture files; the ending of the name selects the format.
#pragma once

#include <filesystem>
#include <string>

#include "io/grey_image.h"

namespace dax::tool {

// requireEnding() for these formats: .png and .pgm.
void requirePictureName(const std::string& option, const std::filesystem::path& path);

// Throws Failure(kCannotWrite).
void writePicture(const std::filesystem::path& path, const GreyImage& image);
void writePicture(const std::filesystem::path& path, const Grey16Image& image);

}  // namespace dax::tool
