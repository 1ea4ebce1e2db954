// Image files: PNG, JPEG, TIFF, BMP and PGM/PPM. Only the first bytes select the format, never the name.
#pragma once

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "daxi/image_file.h"
#include "io/grey_image.h"

namespace dax::tool {

// An image as it is in the file, turned upright where the file says how it was taken. Rows have no gaps.
struct Samples {
  DaxiImageRecord record;
  std::vector<uint8_t> bytes;  // records tell the type of what is in them
  // Of a colour space other than red, green, blue: the names of its channels, and how numbers stand for them.
  std::vector<std::string> names;
  std::string coding;
  std::string note;  // of the last step: what it did with samples that it could not keep

  const uint16_t* words() const { return reinterpret_cast<const uint16_t*>(bytes.data()); }
  uint16_t* words() { return reinterpret_cast<uint16_t*>(bytes.data()); }

  double value(size_t i) const {
    if (record.type == DAXI_SAMPLE_8U) return bytes[i];
    if (record.type == DAXI_SAMPLE_16U) return words()[i];
    float value;
    std::memcpy(&value, &bytes[4 * i], sizeof(value));
    return value;
  }
};

// Throws Failure(kCannotRead) with a message that starts with the name. isPicture: only formats and types of the
// program's pictures, which have whole numbers of at most 16 bits and sides that all of its commands take.
Samples readSamples(const std::filesystem::path& path, bool isPicture);

// A decoded picture.
class ImageFile {
 public:
  // Throws Failure(kCannotRead) with a message that starts with the name.
  static ImageFile read(const std::filesystem::path& path) { return ImageFile(readSamples(path, true)); }

  // Alpha is dropped. Of 8 bits grey = (299 R + 587 G + 114 B) / 1000, the weights of ITU-R BT.601, halves rounded up; of
  // more bits the same, times 255 / maxValue(), rounded once.
  GreyImage toGrey() const;

  // The largest value of a component that the file can hold: 255 or, of more than 8 bits, up to 65535.
  int maxValue() const { return samples_.record.maxValue; }
  // Whether all components are those of an 8-bit image, stretched: then toGrey() loses nothing.
  bool hasOnly8Bits() const;
  // Grey values of 0..maxValue(), with the same weights.
  Grey16Image toGrey16() const;

  // Pictures in the file, of which the first one is read.
  size_t pages() const { return static_cast<size_t>(samples_.record.pages); }

 private:
  explicit ImageFile(Samples samples) : samples_(std::move(samples)) {}
  Samples samples_;
};

// Whether a file-name extension is of a format that can be read.
bool hasImageExtension(const std::filesystem::path& path);

// The format of a name such as "png"; and that name of a file's ending.
std::optional<int32_t> imageFormatOf(const std::string& name);
std::string formatName(const std::filesystem::path& path);

// Encoded grey images.
std::string encodePng(const GreyImage& image);
std::string encodePng(const Grey16Image& image);
std::string encodePgm(const GreyImage& image);
std::string encodePgm(const Grey16Image& image);
std::string encodeTiff(const Grey16Image& image);

// Any record in the format that cfg names. Throws Failure(kCannotWrite) where the format does not hold it.
std::string encode(const DaxiImageRecord& record, const void* pixels, const DaxiImageWriteCfg& cfg);

}  // namespace dax::tool
