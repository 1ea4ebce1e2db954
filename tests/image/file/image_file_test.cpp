#include "daxi/image_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "fuzz/image_samples.h"
#include "fuzz/memory_file.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

DaxiImageReadCfg readCfg() {
  DaxiImageReadCfg cfg;
  EXPECT_EQ(DAXI_ImageReadDefaultCfg(&cfg), DAX_STS_OK);
  return cfg;
}

DaxiImageWriteCfg writeCfg(int32_t format) {
  DaxiImageWriteCfg cfg;
  EXPECT_EQ(DAXI_ImageWriteDefaultCfg(&cfg), DAX_STS_OK);
  cfg.format = format;
  return cfg;
}

int32_t sampleBytesOf(const DaxiImageRecord& image) {
  return image.type == DAXI_SAMPLE_8U ? 1 : image.type == DAXI_SAMPLE_16U ? 2 : 4;
}

// What a read gave: rows without gaps, each read into rows with gaps, in memory that faults beyond its end.
struct Result {
  DaxStatus status;
  DaxiImageRecord image;
  std::string pixels;
};

template <class Info, class Read>
Result readBy(const Info& info, const Read& read) {
  Result result = {};
  result.status = info(&result.image);
  if (result.status != DAX_STS_OK) return result;
  const auto row = static_cast<size_t>(result.image.width * result.image.channels * sampleBytesOf(result.image));
  const auto height = static_cast<size_t>(result.image.height),
             gap = static_cast<size_t>(3 * sampleBytesOf(result.image));
  GuardedBuffer<uint8_t> memory(height * (row + gap) - gap);
  result.status = read(result.image, memory.data(), static_cast<int32_t>((row + gap)) / sampleBytesOf(result.image));
  for (size_t y = 0; y < height; ++y) {
    result.pixels.append(reinterpret_cast<const char*>(memory.data()) + y * (row + gap), row);
  }
  return result;
}

// From memory and from a file, which must agree.
Result readBoth(const std::string& file, const DaxiImageReadCfg& cfg) {
  GuardedBuffer<uint8_t> bytes(std::max<size_t>(file.size(), 1));
  std::memcpy(bytes.data(), file.data(), file.size());
  Result memory =
      readBy([&](DaxiImageRecord* image) { return DAXI_ImageInfoMemory(bytes.data(), file.size(), &cfg, image); },
             [&](const DaxiImageRecord& image, void* pixels, int32_t step) {
               return DAXI_ImageReadMemory(bytes.data(), file.size(), &cfg, &image, pixels, step);
             });
  const fuzz::MemoryFile onDisk(bytes.data(), file.size());
  const std::string path = onDisk.path();
  const Result disk = readBy([&](DaxiImageRecord* image) { return DAXI_ImageInfoFile(path.c_str(), &cfg, image); },
                             [&](const DaxiImageRecord& image, void* pixels, int32_t step) {
                               return DAXI_ImageReadFile(path.c_str(), &cfg, &image, pixels, step);
                             });
  EXPECT_EQ(disk.status, memory.status);
  EXPECT_EQ(disk.pixels, memory.pixels);
  EXPECT_EQ(std::memcmp(&disk.image, &memory.image, sizeof(disk.image)), 0);
  return memory;
}

void expectSamples(const std::vector<fuzz::ImageSample>& samples) {
  for (const fuzz::ImageSample& sample : samples) {
    const Result result = readBoth(sample.file, readCfg());
    EXPECT_EQ(result.status, sample.status) << sample.name;
    if (sample.status != DAX_STS_OK) continue;
    EXPECT_EQ(result.image.channels, sample.channels) << sample.name;
    EXPECT_EQ(result.pixels, sample.pixels) << sample.name;
    EXPECT_EQ(result.image.bytes, sample.pixels.size()) << sample.name;
    EXPECT_EQ(result.image.orientation, 1);
    // A file that ends earlier is refused, unless what is lacking fills up a last row.
    for (size_t length = 0; length + 4 < sample.file.size(); ++length) {
      EXPECT_NE(readBoth(sample.file.substr(0, length), readCfg()).status, DAX_STS_OK) << sample.name << " " << length;
    }
  }
}

TEST(ImageFile, Bmp) {
  expectSamples(fuzz::bmpSamples());
}
TEST(ImageFile, Pnm) {
  expectSamples(fuzz::pnmSamples());
}
TEST(ImageFile, Pfm) {
  expectSamples(fuzz::pfmSamples());
}

TEST(ImageFile, RecordsTellTheFile) {
  const auto recordOf = [](const std::string& file) { return readBoth(file, readCfg()).image; };
  const DaxiImageRecord deep = recordOf(fuzz::pnmSamples()[4].file), palette = recordOf(fuzz::bmpSamples()[4].file);
  EXPECT_EQ(std::tuple(deep.format, deep.type, deep.bits, deep.maxValue, deep.pages),
            std::tuple(DAXI_IMAGE_PNM, DAXI_SAMPLE_16U, 12, 4095, 1));
  EXPECT_EQ(std::tuple(palette.format, palette.type, palette.bits, palette.maxValue),
            std::tuple(DAXI_IMAGE_BMP, DAXI_SAMPLE_8U, 4, 255));
}

TEST(ImageFile, RawLayouts) {
  DaxiImageReadCfg cfg = readCfg();
  cfg.format = DAXI_IMAGE_RAW, cfg.rawWidth = 2, cfg.rawHeight = 2, cfg.rawType = DAXI_SAMPLE_16U, cfg.rawBigEndian = 1;
  cfg.rawOffset = 3, cfg.rawRowBytes = 5;
  EXPECT_EQ(readBoth("headabcd-efgh", cfg).status, DAX_STS_OK);
  EXPECT_EQ(readBoth("HEDabcd-efgh", cfg).pixels, "badcfehg");
  EXPECT_EQ(readBoth("HEDabcd-efg", cfg).status, DAX_STS_FILE_READ);
  for (const uint64_t stride : {UINT64_MAX, UINT64_MAX / 2 + 1}) {
    cfg.rawRowBytes = stride;
    EXPECT_EQ(readBoth("HEDabcd-efgh", cfg).status, DAX_STS_FILE_READ);
  }
  cfg.rawRowBytes = 3;
  EXPECT_EQ(readBoth("HEDabcd-efgh", cfg).status, DAX_STS_DATA_RANGE);
  cfg.rawRowBytes = 0, cfg.rawOffset = UINT64_MAX;
  EXPECT_EQ(readBoth("HEDabcd-efgh", cfg).status, DAX_STS_FILE_READ);
}

TEST(ImageFile, Limits) {
  const std::string file = "P5 4 3 255\n012345678901";
  const auto statusWith = [&](auto change) {
    DaxiImageReadCfg cfg = readCfg();
    change(cfg);
    return readBoth(file, cfg).status;
  };
  EXPECT_EQ(statusWith([](auto& c) { c.maxWidth = 4, c.maxHeight = 3, c.maxPixels = c.maxBytes = 12; }), DAX_STS_OK);
  EXPECT_EQ(statusWith([](auto& c) { c.maxWidth = 3; }), DAX_STS_IMAGE_SIZE);
  EXPECT_EQ(statusWith([](auto& c) { c.maxHeight = 2; }), DAX_STS_IMAGE_SIZE);
  EXPECT_EQ(statusWith([](auto& c) { c.maxPixels = 11; }), DAX_STS_IMAGE_SIZE);
  EXPECT_EQ(statusWith([](auto& c) { c.maxBytes = 11; }), DAX_STS_IMAGE_SIZE);
  EXPECT_EQ(statusWith([](auto& c) { c.page = 1; }), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusWith([](auto& c) { c.format = DAXI_IMAGE_BMP; }), DAX_STS_IMAGE_FORMAT);
  EXPECT_EQ(readBoth("PNG", readCfg()).status, DAX_STS_IMAGE_FORMAT);
  EXPECT_EQ(readBoth("", readCfg()).status, DAX_STS_IMAGE_FORMAT);
  const DaxiImageReadCfg cfg = readCfg();
  DaxiImageRecord image;
  EXPECT_EQ(DAXI_ImageInfoFile("/dev/zero", &cfg, &image), DAX_STS_FILE_OPEN);
  const std::string bits = fuzz::bmpSamples()[3].file;  // two bytes for nine pixels, and two that fill up the row
  EXPECT_EQ(DAXI_ImageInfoMemory(bits.data(), bits.size() - 3, &cfg, &image), DAX_STS_FILE_READ);
  // Another file than the one that was asked about.
  ASSERT_EQ(DAXI_ImageInfoMemory(file.data(), file.size(), &cfg, &image), DAX_STS_OK);
  char pixels[12];
  EXPECT_EQ(DAXI_ImageReadMemory("P5 3 4 255\n012345678901", 23, &cfg, &image, pixels, 4), DAX_STS_IMAGE_SIZE);
  EXPECT_EQ(DAXI_ImageReadMemory("P6 4 3 255\n012345678901012345678901012345678901", 47, &cfg, &image, pixels, 4),
            DAX_STS_IMAGE_SIZE);
}

struct Written {
  DaxiImageRecord image;
  std::string pixels, file;
};

// Random samples in rows with gaps, written to memory and to a file.
Written write(int32_t format, const char* ending, int32_t type, int32_t channels, DaxiSize size, int32_t maxValue = 0) {
  Written result = {{size.width, size.height, channels, type, 0, maxValue, 0, 0, 0, 0, 0}, {}, {}};
  const int32_t bytes = sampleBytesOf(result.image), step = size.width * channels + 2;
  GuardedBuffer<uint8_t> memory(static_cast<size_t>((step * size.height - 2) * bytes));
  Random random(7);
  for (int32_t i = 0; i < (step * size.height - 2) * bytes; ++i) memory.data()[i] = static_cast<uint8_t>(random.next());
  if (maxValue > 0 && maxValue < 65535) {
    for (int32_t i = 1; i < (step * size.height - 2) * bytes; i += 2) memory.data()[i] &= 1;
  }
  for (int32_t y = 0; y < size.height; ++y) {
    result.pixels.append(reinterpret_cast<const char*>(memory.data()) + y * step * bytes,
                         static_cast<size_t>(size.width * channels * bytes));
  }
  const DaxiImageWriteCfg cfg = writeCfg(format);
  uint64_t needed = 0, length = 0;
  EXPECT_EQ(DAXI_ImageWriteMemory(&result.image, memory.data(), step, &cfg, nullptr, 0, &needed), DAX_STS_OK);
  GuardedBuffer<uint8_t> file(needed);
  EXPECT_EQ(DAXI_ImageWriteMemory(&result.image, memory.data(), step, &cfg, file.data(), needed - 1, &length),
            DAX_STS_BAD_SIZE);
  EXPECT_EQ(DAXI_ImageWriteMemory(&result.image, memory.data(), step, &cfg, file.data(), needed, &length), DAX_STS_OK);
  EXPECT_EQ(length, needed);
  result.file.assign(reinterpret_cast<const char*>(file.data()), needed);
  const std::string path = testing::TempDir() + "dax-image-" + std::to_string(getpid()) + ending;
  const DaxiImageWriteCfg any = writeCfg(DAXI_IMAGE_ANY);
  EXPECT_EQ(DAXI_ImageWriteFile(&result.image, memory.data(), step, &any, path.c_str()), DAX_STS_OK);
  std::ifstream stream(path, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), result.file);
  std::filesystem::remove(path);
  return result;
}

TEST(ImageFile, RoundTrips) {
  struct Case {
    int32_t format;
    const char* ending;
    int32_t type, channels, maxValue;
  };
  const Case cases[] = {
      {DAXI_IMAGE_BMP, ".bmp", DAXI_SAMPLE_8U, 1, 255},    {DAXI_IMAGE_BMP, ".BMP", DAXI_SAMPLE_8U, 3, 0},
      {DAXI_IMAGE_BMP, ".bmp", DAXI_SAMPLE_8U, 4, 0},      {DAXI_IMAGE_PNM, ".pgm", DAXI_SAMPLE_8U, 1, 255},
      {DAXI_IMAGE_PNM, ".Ppm", DAXI_SAMPLE_8U, 3, 0},      {DAXI_IMAGE_PNM, ".pnm", DAXI_SAMPLE_16U, 1, 0},
      {DAXI_IMAGE_PNM, ".ppm", DAXI_SAMPLE_16U, 3, 65535}, {DAXI_IMAGE_PNM, ".pgm", DAXI_SAMPLE_16U, 1, 511},
      {DAXI_IMAGE_PFM, ".pfm", DAXI_SAMPLE_32F, 1, 0},     {DAXI_IMAGE_PFM, ".pfm", DAXI_SAMPLE_32F, 3, 0},
      {DAXI_IMAGE_RAW, ".raw", DAXI_SAMPLE_16U, 2, 0},
  };
  for (const Case& c : cases) {
    for (const DaxiSize size : {DaxiSize{1, 1}, {5, 3}, {1031, 2}}) {
      const Written written = write(c.format, c.ending, c.type, c.channels, size, c.maxValue);
      DaxiImageReadCfg cfg = readCfg();
      if (c.format == DAXI_IMAGE_RAW) {
        cfg.format = c.format, cfg.rawWidth = size.width, cfg.rawHeight = size.height;
        cfg.rawType = c.type, cfg.rawChannels = c.channels;
      }
      const Result read = readBoth(written.file, cfg);
      ASSERT_EQ(read.status, DAX_STS_OK) << c.ending << c.type;
      EXPECT_EQ(read.pixels, written.pixels) << c.ending << c.type;
      EXPECT_EQ(std::tuple(read.image.width, read.image.height, read.image.channels, read.image.type),
                std::tuple(size.width, size.height, c.channels, c.type));
      const int32_t whole = c.type == DAXI_SAMPLE_8U ? 255 : c.type == DAXI_SAMPLE_16U ? 65535 : 0;
      EXPECT_EQ(read.image.maxValue, c.maxValue > 0 ? c.maxValue : whole);
    }
  }
}

TEST(ImageFile, WritersRefuse) {
  const uint16_t pixels[4] = {0, 300, 301, 4};
  const auto statusOf = [&](int32_t format, int32_t type, int32_t channels, int32_t maxValue) {
    const DaxiImageRecord image = {1, 1, channels, type, 0, maxValue, 0, 0, 0, 0, 0};
    const DaxiImageWriteCfg cfg = writeCfg(format);
    uint64_t bytes;
    return DAXI_ImageWriteMemory(&image, pixels, 4, &cfg, nullptr, 0, &bytes);
  };
  EXPECT_EQ(statusOf(DAXI_IMAGE_ANY, DAXI_SAMPLE_8U, 1, 0), DAX_STS_BAD_PARAM);
  EXPECT_EQ(statusOf(DAXI_IMAGE_PNG, DAXI_SAMPLE_8U, 1, 0), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusOf(DAXI_IMAGE_BMP, DAXI_SAMPLE_16U, 1, 0), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusOf(DAXI_IMAGE_BMP, DAXI_SAMPLE_8U, 2, 0), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusOf(DAXI_IMAGE_PNM, DAXI_SAMPLE_8U, 4, 0), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusOf(DAXI_IMAGE_PNM, DAXI_SAMPLE_32F, 1, 0), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusOf(DAXI_IMAGE_PNM, DAXI_SAMPLE_16U, 1, 255), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusOf(DAXI_IMAGE_PFM, DAXI_SAMPLE_8U, 1, 0), DAX_STS_UNSUPPORTED_METHOD);
  EXPECT_EQ(statusOf(DAXI_IMAGE_PNM, DAXI_SAMPLE_16U, 3, 301), DAX_STS_OK);
  EXPECT_EQ(statusOf(DAXI_IMAGE_PNM, DAXI_SAMPLE_16U, 3, 300), DAX_STS_DATA_RANGE);
  const DaxiImageRecord image = {4, 1, 1, DAXI_SAMPLE_16U, 0, 0, 0, 0, 0, 0, 0};
  const DaxiImageWriteCfg any = writeCfg(DAXI_IMAGE_ANY);
  DaxiImageWriteCfg wrong = any;
  wrong.quality = 0;
  EXPECT_EQ(DAXI_ImageWriteFile(&image, pixels, 4, &wrong, "/nowhere/x.pgm"), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAXI_ImageWriteFile(&image, pixels, 4, &any, "x.gif"), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAXI_ImageWriteFile(&image, pixels, 4, &any, "/nowhere/x.pgm"), DAX_STS_FILE_OPEN);
  const DaxiImageWriteCfg pnm = writeCfg(DAXI_IMAGE_PNM);
  EXPECT_EQ(DAXI_ImageWriteFile(&image, pixels, 4, &pnm, "/dev/full"), DAX_STS_FILE_WRITE);
}

}  // namespace
}  // namespace dax::test
