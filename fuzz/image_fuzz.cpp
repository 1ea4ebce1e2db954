// Any bytes as an image file: a failure, or grey values of 8 bits that are those of the file's depth rounded.
#include <cstdlib>
#include <vector>

#include "daxi/blob_find.h"
#include "fuzz/memory_file.h"
#include "fuzz/png.h"
#include "tools/dax/base/failure.h"
#include "tools/dax/io/image_file.h"

namespace {

using dax::fuzz::require;
using dax::tool::Grey16Image, dax::tool::GreyImage, dax::tool::ImageFile;

void read(const uint8_t* data, size_t size) try {
  const dax::fuzz::MemoryFile file(data, size);
  const ImageFile image = ImageFile::read(file.path());
  const GreyImage grey = image.toGrey();
  const Grey16Image fine = image.toGrey16();
  const auto [width, height] = fine.size;
  require(grey.size.width == width && grey.size.height == height);
  require(width > 0 && width <= DAXI_BLOB_MAX_SIDE && height > 0 && height <= DAXI_BLOB_MAX_SIDE);
  const int32_t max = image.maxValue();
  require(max >= 255 && max <= 65535);
  const int32_t tolerance = (max + 255) / 2 + 255;  // both are rounded, and what the decoder gives
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const int32_t value = fine.pixels[size_t(y) * size_t(width) + size_t(x)];
      require(value <= max && std::abs(grey.row(y)[x] * max - value * 255) <= tolerance);
    }
  }
} catch (const dax::tool::Failure&) {
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  read(data, size);
  if (size > 0 && data[0] == 0x89) {
    std::vector<uint8_t> mended(data, data + size);
    dax::fuzz::mendPng(mended.data(), size);
    read(mended.data(), mended.size());
  }
  return 0;
}
