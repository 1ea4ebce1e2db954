// Any bytes as BMP, PNM and PFM files.
#include "daxi/image_file.h"

#include "fuzz/any_image.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const auto run = [size](const uint8_t* bytes) {
    dax::fuzz::expectImage([&](const DaxiImageReadCfg& cfg,
                               DaxiImageRecord& image) { return DAXI_ImageInfoMemory(bytes, size, &cfg, &image); },
                           [&](const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, void* pixels, int32_t step) {
                             return DAXI_ImageReadMemory(bytes, size, &cfg, &image, pixels, step);
                           });
  };
  run(data);

  return 0;
}
