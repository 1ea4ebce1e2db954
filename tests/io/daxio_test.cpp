#include "daxio.h"

#include <gtest/gtest.h>
#include <png.h>
#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

struct Picture {
  DaxStatus status;
  DaxiImageRecord image;
  std::string pixels;
};

int32_t sampleBytesOf(int32_t type) {
  return type == DAXI_SAMPLE_8U ? 1 : type == DAXI_SAMPLE_16U ? 2 : 4;
}

DaxiImageReadCfg readCfg() {
  DaxiImageReadCfg cfg;
  DAXI_ImageReadDefaultCfg(&cfg);
  return cfg;
}

DaxiImageWriteCfg writeCfg(int32_t format) {
  DaxiImageWriteCfg cfg;
  DAXI_ImageWriteDefaultCfg(&cfg);
  cfg.format = format;
  return cfg;
}

// From memory that faults beyond its end, into rows with gaps.
Picture read(const std::string& file, const DaxiImageReadCfg& cfg = readCfg()) {
  GuardedBuffer<uint8_t> bytes(std::max<size_t>(file.size(), 1));
  std::memcpy(bytes.data(), file.data(), file.size());
  Picture result = {};
  DaxioMessage message;
  result.status = DAXIO_ImageInfoMemory(bytes.data(), file.size(), &cfg, &result.image, &message);
  if (result.status != DAX_STS_OK) return result;
  const int32_t sample = sampleBytesOf(result.image.type), row = result.image.width * result.image.channels;
  const int32_t step = row + 3;
  GuardedBuffer<uint8_t> pixels(static_cast<size_t>((step * (result.image.height - 1) + row) * sample));
  result.status = DAXIO_ImageReadMemory(bytes.data(), file.size(), &cfg, &result.image, pixels.data(), step, &message);
  for (int32_t y = 0; y < result.image.height; ++y) {
    result.pixels.append(reinterpret_cast<const char*>(pixels.data()) + y * step * sample,
                         static_cast<size_t>(row * sample));
  }
  return result;
}

DaxiImageRecord recordOf(DaxiSize size, int32_t channels, int32_t type, int32_t bits = 0) {
  return {size.width, size.height, channels, type, bits, 0, 1, 1, 0, 0, 0};
}

std::string randomPixels(const DaxiImageRecord& image, uint64_t seed = 3) {
  std::string bytes(static_cast<size_t>(image.width * image.height * image.channels * sampleBytesOf(image.type)), 0);
  Random random(seed);
  for (char& byte : bytes) byte = static_cast<char>(random.next());
  return bytes;
}

std::string encode(const DaxiImageRecord& image, const std::string& pixels, const DaxiImageWriteCfg& cfg) {
  uint64_t needed = 0, written = 0;
  const int32_t step = image.width * image.channels;
  EXPECT_EQ(DAXIO_ImageWriteMemory(&image, pixels.data(), step, &cfg, nullptr, 0, &needed, nullptr), DAX_STS_OK);
  std::string file(needed, 0);
  EXPECT_EQ(DAXIO_ImageWriteMemory(&image, pixels.data(), step, &cfg, file.data(), needed - 1, &written, nullptr),
            DAX_STS_BAD_SIZE);
  EXPECT_EQ(DAXIO_ImageWriteMemory(&image, pixels.data(), step, &cfg, file.data(), needed, &written, nullptr),
            DAX_STS_OK);
  EXPECT_EQ(written, needed);
  return file;
}

TEST(Daxio, RoundTripsLoseNothing) {
  for (const int32_t format : {DAXI_IMAGE_PNG, DAXI_IMAGE_TIFF, DAXI_IMAGE_BMP, DAXI_IMAGE_PNM, DAXI_IMAGE_PFM}) {
    for (const int32_t type : {DAXI_SAMPLE_8U, DAXI_SAMPLE_16U, DAXI_SAMPLE_32F}) {
      for (int32_t channels = 1; channels <= 4; ++channels) {
        for (const int32_t compression : {0, 1, 2}) {
          if (compression > 0 && format != DAXI_IMAGE_TIFF) continue;
          if (type == DAXI_SAMPLE_32F ? format != DAXI_IMAGE_TIFF && format != DAXI_IMAGE_PFM
                                      : format == DAXI_IMAGE_PFM)
            continue;
          if (format == DAXI_IMAGE_BMP && (type != DAXI_SAMPLE_8U || channels == 2)) continue;
          if ((format == DAXI_IMAGE_PNM || format == DAXI_IMAGE_PFM) && channels % 2 == 0) continue;
          for (const DaxiSize size : {DaxiSize{1, 1}, {37, 29}, {3, 700}}) {
            const DaxiImageRecord image = recordOf(size, channels, type);
            const std::string pixels = randomPixels(image);
            DaxiImageWriteCfg cfg = writeCfg(format);
            cfg.compression = compression;
            const Picture back = read(encode(image, pixels, cfg));
            ASSERT_EQ(back.status, DAX_STS_OK) << format << " " << type << " " << channels;
            const int32_t maxValue = type == DAXI_SAMPLE_8U ? 255 : type == DAXI_SAMPLE_16U ? 65535 : 0;
            EXPECT_EQ(std::tuple(back.image.width, back.image.height, back.image.channels, back.image.type,
                                 back.image.format, back.image.maxValue),
                      std::tuple(size.width, size.height, channels, type, format, maxValue));
            EXPECT_EQ(back.pixels, pixels) << format << " " << type << " " << channels << " " << compression;
          }
        }
      }
    }
  }
}

TEST(Daxio, PngOfFewBits) {
  for (const int32_t bits : {1, 2, 4}) {
    DaxiImageRecord image = recordOf({21, 5}, 1, DAXI_SAMPLE_8U, bits);
    std::string pixels = randomPixels(image);
    const int max = (1 << bits) - 1;
    const Picture back = read(encode(image, pixels, writeCfg(DAXI_IMAGE_PNG)));
    EXPECT_EQ(back.image.bits, bits);
    for (char& pixel : pixels) pixel = static_cast<char>((static_cast<uint8_t>(pixel) * max + 127) / 255 * 255 / max);
    EXPECT_EQ(back.pixels, pixels);
  }
}

TEST(Daxio, JpegIsNear) {
  for (const int32_t channels : {1, 3}) {
    const DaxiImageRecord image = recordOf({64, 40}, channels, DAXI_SAMPLE_8U);
    std::string pixels = randomPixels(image);
    for (size_t i = 0; i < pixels.size(); ++i)
      pixels[i] = static_cast<char>(i / static_cast<size_t>(channels) % 64 * 3);
    std::string file = encode(image, pixels, writeCfg(DAXI_IMAGE_JPEG));
    const Picture back = read(file);
    ASSERT_EQ(back.status, DAX_STS_OK);
    int worst = 0;
    for (size_t i = 0; i < pixels.size(); ++i) {
      worst = std::max(worst, std::abs(static_cast<uint8_t>(pixels[i]) - static_cast<uint8_t>(back.pixels[i])));
    }
    EXPECT_LE(worst, 6);
    file[file.find("\xFF\xC0") + 4] = 12;  // bits
    EXPECT_EQ(read(file).status, DAX_STS_UNSUPPORTED_METHOD);
  }
}

// Every length of a file but the whole is refused.
TEST(Daxio, FilesCutShort) {
  for (const int32_t format : {DAXI_IMAGE_PNG, DAXI_IMAGE_TIFF, DAXI_IMAGE_JPEG}) {
    const DaxiImageRecord image = recordOf({19, 7}, 3, format == DAXI_IMAGE_JPEG ? DAXI_SAMPLE_8U : DAXI_SAMPLE_16U);
    const std::string file = encode(image, randomPixels(image), writeCfg(format));
    for (size_t length = 0; length < file.size(); ++length) {
      EXPECT_NE(read(file.substr(0, length)).status, DAX_STS_OK) << format << ": " << length << " of " << file.size();
    }
  }
}

// Where pixel (x, y) of the file lies in the upright image of these sides.
DaxiSize turned(int32_t orientation, int32_t x, int32_t y, int32_t w, int32_t h) {
  switch (orientation) {
    case 2:
      return {w - 1 - x, y};
    case 3:
      return {w - 1 - x, h - 1 - y};
    case 4:
      return {x, h - 1 - y};
    case 5:
      return {y, x};
    case 6:
      return {h - 1 - y, x};
    case 7:
      return {h - 1 - y, w - 1 - x};
    case 8:
      return {y, w - 1 - x};
    default:
      return {x, y};
  }
}

void expectTurned(const std::string& file, int32_t orientation) {
  DaxiImageReadCfg cfg = readCfg();
  const Picture lying = read(file);
  cfg.upright = 1;
  const Picture upright = read(file, cfg);
  const auto [w, h, channels, type] =
      std::tuple(lying.image.width, lying.image.height, lying.image.channels, lying.image.type);
  const int32_t width = orientation >= 5 ? h : w;
  EXPECT_EQ(std::tuple(lying.image.orientation, upright.image.orientation, upright.image.width),
            std::tuple(orientation, 1, width));
  const auto bytes = static_cast<size_t>(channels * sampleBytesOf(type));
  for (int32_t i = 0; i < w * h; ++i) {
    const DaxiSize to = turned(orientation, i % w, i / w, w, h);
    EXPECT_EQ(lying.pixels.substr(bytes * static_cast<size_t>(i), bytes),
              upright.pixels.substr(bytes * static_cast<size_t>(width * to.height + to.width), bytes))
        << orientation;
  }
  cfg.maxWidth = width;
  EXPECT_EQ(read(file, cfg).status, DAX_STS_OK);
  --cfg.maxWidth;
  EXPECT_EQ(read(file, cfg).status, DAX_STS_IMAGE_SIZE);
}

// An EXIF block that tells its maker, then the orientation; the lower byte of numbers first, or the higher one.
std::string exifOf(int32_t orientation, bool bigEndian) {
  using namespace std::string_literals;
  const char code = static_cast<char>(orientation);
  return bigEndian ? "MM\0*\0\0\0\10\0\2\1\17\0\2\0\0\0\1A\0\0\0\1\22\0\3\0\0\0\1\0"s + code + "\0\0"s
                   : "II*\0\10\0\0\0\2\0\17\1\2\0\1\0\0\0A\0\0\0\22\1\3\0\1\0\0\0"s + code + "\0\0\0"s;
}

// Interlaced, of 8 bits.
std::string pngWithExif(int32_t width, std::string pixels, std::string exif) {
  std::string file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  const auto append = [](png_structp to, png_bytep data, size_t bytes) {
    static_cast<std::string*>(png_get_io_ptr(to))->append(reinterpret_cast<const char*>(data), bytes);
  };
  png_set_write_fn(png, &file, append, nullptr);
  std::vector<png_bytep> rows;
  for (size_t at = 0; at < pixels.size(); at += static_cast<size_t>(width))
    rows.push_back(reinterpret_cast<png_bytep>(&pixels[at]));
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(rows.size()), 8,
               PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_ADAM7, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_eXIf_1(png, info, static_cast<png_uint_32>(exif.size()), reinterpret_cast<png_bytep>(exif.data()));
  png_set_rows(png, info, rows.data());
  png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

TEST(Daxio, Orientations) {
  using namespace std::string_literals;
  const DaxiImageRecord grey = recordOf({17, 9}, 1, DAXI_SAMPLE_8U);
  const std::string pixels = randomPixels(grey), jpeg = encode(grey, pixels, writeCfg(DAXI_IMAGE_JPEG));
  for (int32_t orientation = 1; orientation <= 8; ++orientation) {
    DaxiImageRecord image = recordOf({5, 3}, 3, DAXI_SAMPLE_16U);
    image.orientation = orientation;
    expectTurned(encode(image, randomPixels(image), writeCfg(DAXI_IMAGE_TIFF)), orientation);
    const std::string exif = exifOf(orientation, orientation % 2 == 0);
    const std::string segment = "\xFF\xE1\0"s + static_cast<char>(exif.size() + 8) + "Exif\0\0"s + exif;
    expectTurned(jpeg.substr(0, 2) + segment + jpeg.substr(2), orientation);
    const std::string png = pngWithExif(17, pixels, exif);
    EXPECT_EQ(read(png).pixels, pixels);
    expectTurned(png, orientation);
  }
}

// Files that libtiff itself makes: tiles, planes, few bits, either sense of grey, palettes.
class TiffFile {
 public:
  TiffFile()
      : path_(testing::TempDir() + "dax-io-" + std::to_string(getpid()) + ".tif"),
        tiff_(TIFFOpen(path_.c_str(), "w")) {}
  ~TiffFile() { std::filesystem::remove(path_); }

  TIFF* get() { return tiff_; }
  void set(int width, int height, int bits, int samples, int photometric, int planar = PLANARCONFIG_CONTIG) {
    TIFFSetField(tiff_, TIFFTAG_IMAGEWIDTH, width), TIFFSetField(tiff_, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff_, TIFFTAG_BITSPERSAMPLE, bits), TIFFSetField(tiff_, TIFFTAG_SAMPLESPERPIXEL, samples);
    TIFFSetField(tiff_, TIFFTAG_PHOTOMETRIC, photometric), TIFFSetField(tiff_, TIFFTAG_PLANARCONFIG, planar);
  }
  std::string bytes() {
    TIFFClose(tiff_);
    std::ifstream stream(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

 private:
  std::string path_;
  TIFF* tiff_;
};

TEST(Daxio, TiffTilesAndPlanes) {
  for (const bool planes : {false, true}) {
    for (const bool tiles : {false, true}) {
      TiffFile file;
      file.set(21, 18, 16, 3, PHOTOMETRIC_RGB, planes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
      if (tiles) TIFFSetField(file.get(), TIFFTAG_TILEWIDTH, 16), TIFFSetField(file.get(), TIFFTAG_TILELENGTH, 16);
      const auto value = [](int x, int y, int c) { return static_cast<uint16_t>(1000 * c + 40 * y + x); };
      std::vector<uint16_t> block;
      for (int plane = 0; plane < (planes ? 3 : 1); ++plane) {
        for (int top = 0; top < 18; top += tiles ? 16 : 1) {
          for (int left = 0; left < 21; left += tiles ? 16 : 21) {
            block.clear();
            for (int y = top; y < top + (tiles ? 16 : 1); ++y) {
              for (int x = left; x < left + (tiles ? 16 : 21); ++x) {
                for (int c = 0; c < (planes ? 1 : 3); ++c) block.push_back(value(x, y, c + plane));
              }
            }
            const auto p = static_cast<uint16_t>(plane);
            tiles
                ? TIFFWriteTile(file.get(), block.data(), static_cast<uint32_t>(left), static_cast<uint32_t>(top), 0, p)
                : TIFFWriteScanline(file.get(), block.data(), static_cast<uint32_t>(top), p);
          }
        }
      }
      const Picture back = read(file.bytes());
      ASSERT_EQ(back.status, DAX_STS_OK);
      for (int y = 0; y < 18; ++y) {
        for (int x = 0; x < 21; ++x) {
          for (int c = 0; c < 3; ++c) {
            uint16_t word;
            std::memcpy(&word, back.pixels.data() + 2 * (3 * (21 * y + x) + c), 2);
            EXPECT_EQ(word, value(x, y, c)) << planes << tiles;
          }
        }
      }
    }
  }
}

TEST(Daxio, TiffOfFewAndOddBits) {
  struct Case {
    int bits, photometric;
    std::string row, pixels;
    int32_t maxValue;
  };
  using namespace std::string_literals;
  const Case cases[] = {{1, PHOTOMETRIC_MINISWHITE, "\xA0"s, "\0\xFF\0"s, 255},
                        {4, PHOTOMETRIC_MINISBLACK, "\x1F\x80"s, "\x11\xFF\x88"s, 255},
                        {12, PHOTOMETRIC_MINISBLACK, "\x12\x3F\xFF\x00\x10"s, "\x23\x01\xFF\x0F\x01\0"s, 4095}};
  for (const Case& c : cases) {
    TiffFile file;
    file.set(3, 1, c.bits, 1, c.photometric);
    std::string row = c.row;
    TIFFWriteScanline(file.get(), row.data(), 0, 0);
    const Picture back = read(file.bytes());
    EXPECT_EQ(back.pixels, c.pixels) << c.bits;
    EXPECT_EQ(std::pair(back.image.bits, back.image.maxValue), std::pair(c.bits, c.maxValue));
  }
  TiffFile ink;  // colours are made by libtiff; pixels stay as they lie
  ink.set(2, 1, 8, 4, PHOTOMETRIC_SEPARATED);
  TIFFSetField(ink.get(), TIFFTAG_ORIENTATION, ORIENTATION_BOTRIGHT);
  uint8_t cyanAndNone[8] = {255};
  TIFFWriteScanline(ink.get(), cyanAndNone, 0, 0);
  EXPECT_EQ(read(ink.bytes()).pixels, "\0\xFF\xFF\xFF\xFF\xFF"s);
  for (const int scale : {1, 256}) {  // writers of palettes disagree
    TiffFile file;
    file.set(2, 1, 8, 1, PHOTOMETRIC_PALETTE);
    uint16_t red[256] = {}, green[256] = {}, blue[256] = {};
    red[7] = static_cast<uint16_t>(255 * scale), green[7] = static_cast<uint16_t>(3 * scale);
    TIFFSetField(file.get(), TIFFTAG_COLORMAP, red, green, blue);
    uint8_t row[2] = {7, 0};
    TIFFWriteScanline(file.get(), row, 0, 0);
    EXPECT_EQ(read(file.bytes()).pixels, "\xFF\x03\0\0\0\0"s);
  }
}

TEST(Daxio, OneFunctionForAllFormats) {
  const DaxiImageRecord image = recordOf({4, 3}, 3, DAXI_SAMPLE_8U);
  const std::string pixels = randomPixels(image), folder = testing::TempDir() + "dax-all-" + std::to_string(getpid());
  std::filesystem::create_directories(folder);
  const DaxiImageWriteCfg any = writeCfg(DAXI_IMAGE_ANY);
  const DaxiImageReadCfg cfg = readCfg();
  for (const char* name : {"a.png", "a.JPG", "a.jpeg", "a.tif", "a.Tiff", "a.bmp", "a.ppm"}) {
    const std::string path = folder + "/" + name;
    EXPECT_EQ(DAXIO_ImageWriteFile(&image, pixels.data(), 12, &any, path.c_str(), nullptr), DAX_STS_OK) << name;
    DaxiImageRecord found;
    EXPECT_EQ(DAXIO_ImageInfoFile(path.c_str(), &cfg, &found, nullptr), DAX_STS_OK);
    std::string back(36, 0);
    EXPECT_EQ(DAXIO_ImageReadFile(path.c_str(), &cfg, &found, back.data(), 12, nullptr), DAX_STS_OK);
    EXPECT_TRUE(back == pixels || std::strchr(name, 'J') || std::strchr(name, 'j')) << name;
  }
  EXPECT_EQ(DAXIO_ImageWriteFile(&image, pixels.data(), 12, &any, "a.gif", nullptr), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAXIO_ImageWriteFile(&image, pixels.data(), 12, &any, "/nowhere/a.png", nullptr), DAX_STS_FILE_OPEN);
  EXPECT_EQ(DAXIO_ImageWriteFile(&image, pixels.data(), 11, &any, "a.png", nullptr), DAX_STS_BAD_STEP);
  DaxiImageRecord found;
  EXPECT_EQ(DAXIO_ImageInfoFile("/dev/zero", &cfg, &found, nullptr), DAX_STS_FILE_OPEN);
  std::filesystem::remove_all(folder);
}

TEST(Daxio, MessagesAndLimits) {
  const DaxiImageRecord image = recordOf({64, 64}, 1, DAXI_SAMPLE_8U);
  for (const int32_t format : {DAXI_IMAGE_PNG, DAXI_IMAGE_JPEG, DAXI_IMAGE_TIFF}) {
    const std::string file = encode(image, randomPixels(image), writeCfg(format));
    const auto statusWith = [&](auto change) {
      DaxiImageReadCfg cfg = readCfg();
      change(cfg);
      return read(file, cfg).status;
    };
    EXPECT_EQ(statusWith([](auto& cfg) { cfg.maxPixels = cfg.maxBytes = 64 * 64; }), DAX_STS_OK);
    EXPECT_EQ(statusWith([](auto& cfg) { cfg.maxPixels = 64 * 64 - 1; }), DAX_STS_IMAGE_SIZE);
    EXPECT_EQ(statusWith([](auto& cfg) { cfg.maxBytes = 64 * 64 - 1; }), DAX_STS_IMAGE_SIZE);
    EXPECT_EQ(statusWith([](auto& cfg) { cfg.page = 1; }), DAX_STS_UNSUPPORTED_METHOD);
    EXPECT_EQ(statusWith([](auto& cfg) { cfg.upright = 2; }), DAX_STS_BAD_PARAM);
    EXPECT_EQ(statusWith([](auto& cfg) { cfg.format = DAXI_IMAGE_BMP; }), DAX_STS_IMAGE_FORMAT);
    const DaxiImageReadCfg cfg = readCfg();
    DaxiImageRecord found;
    DaxioMessage message;
    EXPECT_NE(DAXIO_ImageInfoMemory(file.data(), 20, &cfg, &found, &message), DAX_STS_OK);
    EXPECT_NE(message.text[0], '\0');
  }
}

}  // namespace
}  // namespace dax::test
