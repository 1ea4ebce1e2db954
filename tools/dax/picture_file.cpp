#include "picture_file.h"

#include "failure.h"
#include "image_file.h"
#include "output_file.h"
#include "text.h"

namespace dax::tool {

void requirePictureName(const std::filesystem::path& path) {
  if (path.extension() == ".png" || path.extension() == ".pgm") return;
  throw Failure(ExitStatus::kUsage, printable(path.string()) + ": does not end in .png or .pgm");
}

void writePicture(const std::filesystem::path& path, const GreyImage& image) {
  writeFile(path, path.extension() == ".pgm" ? encodePgm(image) : encodePng(image));
}

}  // namespace dax::tool
