#include "io/picture_file.h"

#include "io/image_file.h"
#include "io/output_file.h"
#include "io/output_name.h"

namespace dax::tool {

void requirePictureName(const std::string& option, const std::filesystem::path& path) {
  requireEnding(option, path, {".png", ".pgm"});
}

void writePicture(const std::filesystem::path& path, const GreyImage& image) {
  writeFile(path, path.extension() == ".pgm" ? encodePgm(image) : encodePng(image));
}

void writePicture(const std::filesystem::path& path, const Grey16Image& image) {
  writeFile(path, path.extension() == ".pgm" ? encodePgm(image) : encodePng(image));
}

}  // namespace dax::tool
