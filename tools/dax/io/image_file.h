// Image files. Reads PNG, JPEG, TIFF, BMP and PGM/PPM from memory. Only the first bytes select the format, never the
// name, so that no name can reach another decoder.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "io/grey_image.h"

namespace Magick {
class Image;
}

namespace dax::tool {

// Sets the limits of the decoders; call once, before threads start.
void setUpDecoders();

// A decoded image.
class ImageFile {
 public:
  // Throws Failure(kCannotRead) with a message that starts with the name.
  static ImageFile read(const std::filesystem::path& path);

  ImageFile(ImageFile&&) noexcept;
  ~ImageFile();

  // Alpha is dropped. With 16-bit components, grey = (299 R + 587 G + 114 B) / 257000, rounded: the weights of ITU-R
  // BT.601, and for 8-bit images (R = 257 r) exactly the same weights of r, g and b.
  GreyImage toGrey() const;

  // 16-bit grey values with the same weights. False for images with fewer bits.
  bool has16Bits() const;
  Grey16Image toGrey16() const;

 private:
  void makeRgb() const;

  explicit ImageFile(std::unique_ptr<Magick::Image> image);
  std::unique_ptr<Magick::Image> image_;
};

// Whether a file-name extension is of a format that can be read.
bool hasImageExtension(const std::filesystem::path& path);

// Encoded 8-bit grey images.
std::string encodePng(const GreyImage& image);
std::string encodePgm(const GreyImage& image);

// Encoded 16-bit grey images.
std::string encodePng(const Grey16Image& image);
std::string encodeTiff(const Grey16Image& image);

}  // namespace dax::tool
