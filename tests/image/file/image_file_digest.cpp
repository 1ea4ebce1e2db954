#include <gtest/gtest.h>

#include "daxi/image_file.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// Files of all formats, and the pixels that come back from them.
TEST(Digests, ImageFiles) {
  TestImage<float> pixels({40, 9});
  pixels.fill([](int32_t x, int32_t y) { return static_cast<float>(x * 7 + y) / 3; });
  Digest digest;
  for (const auto& [format, type] : {std::pair(DAXI_IMAGE_BMP, DAXI_SAMPLE_8U),
                                     {DAXI_IMAGE_PNM, DAXI_SAMPLE_16U},
                                     {DAXI_IMAGE_PFM, DAXI_SAMPLE_32F},
                                     {DAXI_IMAGE_RAW, DAXI_SAMPLE_32F}}) {
    const DaxiImageRecord image = {13, 9, 3, type, 0, 0, 0, 0, 0, 0, 0};
    DaxiImageWriteCfg write;
    DaxiImageReadCfg read;
    DAXI_ImageWriteDefaultCfg(&write), DAXI_ImageReadDefaultCfg(&read);
    write.format = read.format = format;
    read.rawWidth = 13, read.rawHeight = 9, read.rawChannels = 3, read.rawType = type;
    std::vector<uint8_t> file(4000), back(4000);
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_ImageWriteMemory(&image, pixels.row(0), 40, &write, file.data(), file.size(), &bytes), DAX_STS_OK);
    ASSERT_EQ(DAXI_ImageReadMemory(file.data(), bytes, &read, &image, back.data(), 39), DAX_STS_OK);
    digest.add(file.data(), bytes).add(back.data(), back.size());
  }
  EXPECT_EQ(digest.value(), 0xAA32F07DA4550D19u);
}

}  // namespace
}  // namespace dax::test
