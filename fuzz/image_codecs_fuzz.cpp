// Any bytes as PNG, JPEG and TIFF files.
#include "daxio.h"

#include "fuzz/any_image.h"
#include "fuzz/png.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const auto run = [size](const uint8_t* bytes) {
    dax::fuzz::expectImage(
        [&](const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
          return DAXIO_ImageInfoMemory(bytes, size, &cfg, &image, nullptr);
        },
        [&](const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, void* pixels, int32_t step) {
          return DAXIO_ImageReadMemory(bytes, size, &cfg, &image, pixels, step, nullptr);
        });
  };
  run(data);
  if (data[0] != 0x89) return 0;
  std::vector<uint8_t> mended(data, data + size);
  dax::fuzz::mendPng(mended.data(), size);
  run(mended.data());
  return 0;
}
