#include "image/file/image_file.h"

#include <algorithm>
#include <cstring>

#include "image/file/words.h"

namespace dax {
namespace {

constexpr const ImageFormat* kImageFormats[] = {&kBmpFormat, &kPnmFormat, &kPfmFormat, &kRawFormat};

const ImageFormat* formatOf(int32_t code) {
  for (const ImageFormat* format : kImageFormats) {
    if (format->code == code) return format;
  }
  return nullptr;
}

struct Ending {
  const char* text;
  int32_t format;
};
constexpr Ending kEndings[] = {{".bmp", DAXI_IMAGE_BMP}, {".pgm", DAXI_IMAGE_PNM}, {".ppm", DAXI_IMAGE_PNM},
                               {".pnm", DAXI_IMAGE_PNM}, {".pfm", DAXI_IMAGE_PFM}, {".raw", DAXI_IMAGE_RAW}};

int32_t formatOfName(const char* path) {
  const size_t length = std::strlen(path);
  if (length < 4) return DAXI_IMAGE_ANY;
  const auto equal = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
  for (const Ending& ending : kEndings) {
    if (std::equal(path + length - 4, path + length, ending.text, equal)) return ending.format;
  }
  return DAXI_IMAGE_ANY;
}

bool isSampleType(int32_t type) {
  return type >= DAXI_SAMPLE_8U && type <= DAXI_SAMPLE_32F;
}

DaxStatus checkReadCfg(const DaxiImageReadCfg& cfg) {
  DAX_REQUIRE(cfg.format >= DAXI_IMAGE_ANY && cfg.format <= DAXI_IMAGE_TIFF, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.upright == 0 || cfg.upright == 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.page >= 0 && cfg.maxWidth >= 1 && cfg.maxHeight >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.rawChannels >= 1 && cfg.rawChannels <= 4 && isSampleType(cfg.rawType), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.rawBigEndian == 0 || cfg.rawBigEndian == 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkWriteCfg(const DaxiImageWriteCfg& cfg) {
  DAX_REQUIRE(cfg.format >= DAXI_IMAGE_ANY && cfg.format <= DAXI_IMAGE_TIFF, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.quality >= 1 && cfg.quality <= 100, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.level >= 0 && cfg.level <= 9, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.compression >= 0 && cfg.compression <= 2, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.bigEndian == 0 || cfg.bigEndian == 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// The caller's image, in memory.
DaxStatus checkPixels(const DaxiImageRecord& image, int32_t step) {
  DAX_REQUIRE(image.width >= 1 && image.height >= 1, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(isSampleType(image.type) && image.channels >= 1 && image.channels <= 4, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(rowFits(image.width, step, image.channels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

// What is read, and the record of what it holds.
DaxStatus openImage(ByteSource& source, const DaxiImageReadCfg& cfg, const ImageFormat** format,
                    DaxiImageRecord& image) {
  uint8_t head[8] = {};
  const uint64_t count = std::min<uint64_t>(sizeof(head), source.bytes());
  DAX_REQUIRE(source.read(head, count) && source.seek(0), DAX_STS_FILE_READ);
  *format = nullptr;
  for (const ImageFormat* each : kImageFormats) {
    const bool asked = cfg.format == DAXI_IMAGE_ANY || cfg.format == each->code;
    const bool is = each->starts ? each->starts(head, count) : cfg.format == each->code;
    if (asked && is) *format = each;
  }
  DAX_REQUIRE(*format, DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE_OK((*format)->info(source, cfg, image));
  DAX_REQUIRE(cfg.page < image.pages, DAX_STS_UNSUPPORTED_METHOD);
  return DAX_STS_OK;
}

DaxStatus queryImage(ByteSource& source, const DaxiImageReadCfg& cfg, DaxiImageRecord* image) {
  const ImageFormat* format;
  DaxiImageRecord found;
  DAX_REQUIRE_OK(openImage(source, cfg, &format, found));
  *image = found;
  return DAX_STS_OK;
}

DaxStatus readImage(ByteSource& source, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, void* pixels,
                    int32_t step) {
  const ImageFormat* format;
  DaxiImageRecord found;
  DAX_REQUIRE_OK(openImage(source, cfg, &format, found));
  DAX_REQUIRE(found.width == image.width && found.height == image.height, DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(found.channels == image.channels && found.type == image.type, DAX_STS_IMAGE_SIZE);
  const ptrdiff_t stride = ptrdiff_t{step} * sampleBytes(image.type);
  return format->read(source, cfg, found, {static_cast<uint8_t*>(pixels), stride});
}

PixelRows<const uint8_t> rowsOf(const DaxiImageRecord& image, const void* pixels, int32_t step) {
  return {static_cast<const uint8_t*>(pixels), ptrdiff_t{step} * sampleBytes(image.type)};
}

DaxStatus checkValues(const DaxiImageRecord& image, PixelRows<const uint8_t> rows) {
  if (image.type != DAXI_SAMPLE_16U || image.maxValue == 0 || image.maxValue == 65535) return DAX_STS_OK;
  for (int32_t y = 0; y < image.height; ++y) {
    DAX_REQUIRE(wordsWithin(rows.row(y), rowSamples(image), image.maxValue), DAX_STS_DATA_RANGE);
  }
  return DAX_STS_OK;
}

DaxStatus planFile(const DaxiImageRecord& image, PixelRows<const uint8_t> rows, int32_t code,
                   const ImageFormat** format, uint64_t* bytes) {
  DAX_REQUIRE(code != DAXI_IMAGE_ANY, DAX_STS_BAD_PARAM);
  *format = formatOf(code);
  DAX_REQUIRE(*format, DAX_STS_UNSUPPORTED_METHOD);
  DAX_REQUIRE_OK((*format)->size(image, bytes));
  return checkValues(image, rows);
}

}  // namespace

DaxStatus checkSides(DaxiImageRecord& image, const DaxiImageReadCfg& cfg) {
  DAX_REQUIRE(image.width >= 1 && image.width <= cfg.maxWidth, DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(image.height >= 1 && image.height <= cfg.maxHeight, DAX_STS_IMAGE_SIZE);
  const uint64_t pixels = static_cast<uint64_t>(image.width) * static_cast<uint64_t>(image.height);
  DAX_REQUIRE(pixels <= cfg.maxPixels && pixels <= INT64_MAX / 16, DAX_STS_IMAGE_SIZE);
  image.bytes = rowBytesOf(image) * static_cast<uint64_t>(image.height);
  DAX_REQUIRE(image.bytes <= cfg.maxBytes, DAX_STS_IMAGE_SIZE);
  return DAX_STS_OK;
}

}  // namespace dax

DaxStatus DAXI_ImageReadDefaultCfg(DaxiImageReadCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {};
  cfg->maxWidth = cfg->maxHeight = 1 << 20;
  cfg->maxPixels = uint64_t{1} << 28;
  cfg->maxBytes = uint64_t{1} << 32;
  cfg->rawChannels = 1;
  cfg->rawType = DAXI_SAMPLE_8U;
  return DAX_STS_OK;
}

DaxStatus DAXI_ImageWriteDefaultCfg(DaxiImageWriteCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_IMAGE_ANY, 95, 6, 1, 0, 0};
  return DAX_STS_OK;
}

DaxStatus DAXI_ImageInfoMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                               DaxiImageRecord* image) {
  DAX_REQUIRE(file && cfg && image, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkReadCfg(*cfg));
  dax::ByteSource source(file, fileBytes);
  return dax::queryImage(source, *cfg, image);
}

DaxStatus DAXI_ImageInfoFile(const char* path, const DaxiImageReadCfg* cfg, DaxiImageRecord* image) {
  DAX_REQUIRE(path && cfg && image, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkReadCfg(*cfg));
  const dax::InputFile file(path);
  DAX_REQUIRE(file.isOpen(), DAX_STS_FILE_OPEN);
  dax::ByteSource source(file);
  return dax::queryImage(source, *cfg, image);
}

DaxStatus DAXI_ImageReadMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                               const DaxiImageRecord* image, void* pixels, int32_t step) {
  DAX_REQUIRE(file && cfg && image && pixels, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkPixels(*image, step));
  DAX_REQUIRE_OK(dax::checkReadCfg(*cfg));
  dax::ByteSource source(file, fileBytes);
  return dax::readImage(source, *cfg, *image, pixels, step);
}

DaxStatus DAXI_ImageReadFile(const char* path, const DaxiImageReadCfg* cfg, const DaxiImageRecord* image, void* pixels,
                             int32_t step) {
  DAX_REQUIRE(path && cfg && image && pixels, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkPixels(*image, step));
  DAX_REQUIRE_OK(dax::checkReadCfg(*cfg));
  const dax::InputFile file(path);
  DAX_REQUIRE(file.isOpen(), DAX_STS_FILE_OPEN);
  dax::ByteSource source(file);
  return dax::readImage(source, *cfg, *image, pixels, step);
}

DaxStatus DAXI_ImageWriteMemory(const DaxiImageRecord* image, const void* pixels, int32_t step,
                                const DaxiImageWriteCfg* cfg, void* file, uint64_t capacity, uint64_t* fileBytes) {
  DAX_REQUIRE(image && pixels && cfg && fileBytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkPixels(*image, step));
  DAX_REQUIRE_OK(dax::checkWriteCfg(*cfg));
  const auto rows = dax::rowsOf(*image, pixels, step);
  const dax::ImageFormat* format;
  uint64_t bytes;
  DAX_REQUIRE_OK(dax::planFile(*image, rows, cfg->format, &format, &bytes));
  DAX_REQUIRE(!file || capacity >= bytes, DAX_STS_BAD_SIZE);
  *fileBytes = bytes;
  if (!file) return DAX_STS_OK;
  dax::ByteSink sink(file);
  format->write(sink, *image, rows, *cfg);
  return DAX_STS_OK;
}

DaxStatus DAXI_ImageWriteFile(const DaxiImageRecord* image, const void* pixels, int32_t step,
                              const DaxiImageWriteCfg* cfg, const char* path) {
  DAX_REQUIRE(image && pixels && cfg && path, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkPixels(*image, step));
  DAX_REQUIRE_OK(dax::checkWriteCfg(*cfg));
  const auto rows = dax::rowsOf(*image, pixels, step);
  const int32_t code = cfg->format == DAXI_IMAGE_ANY ? dax::formatOfName(path) : cfg->format;
  const dax::ImageFormat* format;
  uint64_t bytes;
  DAX_REQUIRE_OK(dax::planFile(*image, rows, code, &format, &bytes));
  dax::OutputFile file(path);
  DAX_REQUIRE(file.isOpen(), DAX_STS_FILE_OPEN);
  dax::ByteSink sink(file);
  format->write(sink, *image, rows, *cfg);
  DAX_REQUIRE(file.commit(), DAX_STS_FILE_WRITE);
  return DAX_STS_OK;
}
