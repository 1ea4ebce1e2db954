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

// A decoded image, turned upright where the file says how it was taken.
class ImageFile {
 public:
  // Throws Failure(kCannotRead) with a message that starts with the name.
  static ImageFile read(const std::filesystem::path& path);

  ImageFile(ImageFile&&) noexcept;
  ~ImageFile();

  // Alpha is dropped. With 16-bit components, grey = (299 R + 587 G + 114 B) / 257000, rounded: the weights of ITU-R
  // BT.601, and for 8-bit images (R = 257 r) exactly the same weights of r, g and b.
  GreyImage toGrey() const;

  // The largest value of a component that the file can hold: 255 or, of more than 8 bits, up to 65535.
  int maxValue() const { return maxValue_; }
  // Whether all components are those of an 8-bit image, times 257: then toGrey() loses nothing.
  bool hasOnly8Bits() const;
  // Grey values of 0..maxValue(), with the same weights.
  Grey16Image toGrey16() const;

  // Pictures in the file, of which the first one is read.
  size_t pages() const { return pages_; }

 private:
  void makeRgb() const;

  ImageFile(std::unique_ptr<Magick::Image> image, int maxValue, size_t pages);
  std::unique_ptr<Magick::Image> image_;
  int maxValue_;
  size_t pages_;
};

// Whether a file-name extension is of a format that can be read.
bool hasImageExtension(const std::filesystem::path& path);

// Encoded 8-bit grey images.
std::string encodePng(const GreyImage& image);
std::string encodePgm(const GreyImage& image);
std::string encodePgm(const Grey16Image& image);

// Encoded 16-bit grey images.
std::string encodePng(const Grey16Image& image);
std::string encodeTiff(const Grey16Image& image);

}  // namespace dax::tool
