// What must hold for any bytes that a reader of images is given.
#pragma once

#include <cstdint>
#include <vector>

#include "daxi/image_file.h"
#include "fuzz/memory_file.h"
#include "fuzz/seeds.h"

namespace dax::fuzz {

// info(cfg, image) and read(cfg, image, pixels, step) of the same bytes. Either they are refused, or there is an image within
// the limits, of which every read byte lies in memory of exactly the size that the record tells.
template <class Info, class Read>
void expectImage(const Info& info, const Read& read) {
  DaxiImageReadCfg cfg;
  DAXI_ImageReadDefaultCfg(&cfg);
  cfg.maxWidth = cfg.maxHeight = 4096;
  cfg.maxPixels = 1 << 14;  // bytes that ask for many only cost time
  for (const int32_t upright : {0, 1}) {
    cfg.upright = upright;
    DaxiImageRecord image;
    if (info(cfg, image) != DAX_STS_OK) continue;
    require(image.width >= 1 && image.width <= 4096 && image.height >= 1 && image.height <= 4096);
    require(image.channels >= 1 && image.channels <= 4 && image.type >= DAXI_SAMPLE_8U &&
            image.type <= DAXI_SAMPLE_32F);
    require(image.orientation >= 1 && image.orientation <= (upright ? 1 : 8) && image.pages >= 1);
    const int32_t step = image.width * image.channels;
    const uint64_t bytes = image.type == DAXI_SAMPLE_8U ? 1 : image.type == DAXI_SAMPLE_16U ? 2 : 4;
    require(image.bytes == static_cast<uint64_t>(step) * static_cast<uint64_t>(image.height) * bytes);
    std::vector<uint8_t> pixels(image.bytes);
    if (read(cfg, image, pixels.data(), step) != DAX_STS_OK || image.type != DAXI_SAMPLE_16U) continue;
    for (uint64_t i = 0; i < image.bytes / 2; ++i) {
      require(reinterpret_cast<const uint16_t*>(pixels.data())[i] <= image.maxValue);
    }
  }
}

}  // namespace dax::fuzz
