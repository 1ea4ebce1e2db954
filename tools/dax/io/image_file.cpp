#include "io/image_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <string_view>

#include "base/failure.h"
#include "base/text.h"
#include "daxi/blob_find.h"
#include "daxio.h"
#include "io/input_file.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

[[noreturn]] void fail(const fs::path& path, const std::string& what) {
  throw Failure(ExitStatus::kCannotRead, printable(path.string()) + ": " + what);
}

bool isPictureFormat(std::string_view bytes) {
  constexpr std::array kMagics = {
      "\x89PNG\r\n\x1a\n"sv, "\xff\xd8\xff"sv, "II*\0"sv, "MM\0*"sv, "BM"sv, "P2"sv, "P3"sv, "P5"sv, "P6"sv};
  return std::any_of(kMagics.begin(), kMagics.end(), [&](std::string_view magic) { return bytes.starts_with(magic); });
}

std::string reasonOf(DaxStatus status, const DaxioMessage& message) {
  return message.text[0] != '\0' ? printable(message.text) : DAX_GetStatusText(status);
}

// What a status of a reader means for a file that has one of the formats.
void requireRead(const fs::path& path, DaxStatus status, const DaxioMessage& message) {
  switch (status) {
    case DAX_STS_OK:
      return;
    case DAX_STS_NO_MEMORY:
      throw std::bad_alloc();
    case DAX_STS_IMAGE_SIZE:
      fail(path, "is too large, or has no pixels");
    case DAX_STS_IMAGE_FORMAT:
      fail(path, "has pixels with a sign, in floating point or of more than 16 bits");
    case DAX_STS_UNSUPPORTED_METHOD:
      fail(path, "is not read: " + reasonOf(status, message));
    default:
      fail(path, "is damaged: " + reasonOf(status, message));
  }
}

DaxiImageReadCfg readCfg(bool isPicture) {
  DaxiImageReadCfg cfg;
  DAXI_ImageReadDefaultCfg(&cfg);
  cfg.upright = 1;
  if (isPicture) cfg.maxWidth = cfg.maxHeight = DAXI_BLOB_MAX_SIDE;
  return cfg;
}

// Calls take(sum of weighted components, in units of 1 / 1000) for each pixel in turn.
template <class Sample, class Take>
void forEachGrey(const DaxiImageRecord& record, const Sample* samples, Take take) {
  const size_t pixels = static_cast<size_t>(record.width) * static_cast<size_t>(record.height);
  const auto channels = static_cast<size_t>(record.channels);
  for (size_t i = 0; i < pixels; ++i, samples += channels) {
    const bool colour = channels >= 3;
    take(i, colour ? uint64_t{299} * samples[0] + uint64_t{587} * samples[1] + uint64_t{114} * samples[2]
                   : uint64_t{1000} * samples[0]);
  }
}

DaxiSize sizeOf(const DaxiImageRecord& record) {
  return {record.width, record.height};
}

template <class Pixel>
std::string encodeGrey(const PixelImage<Pixel>& image, int32_t format) {
  DaxiImageRecord record = {};
  record.width = image.size.width, record.height = image.size.height, record.channels = 1;
  record.type = sizeof(Pixel) == 1 ? DAXI_SAMPLE_8U : DAXI_SAMPLE_16U;
  DaxiImageWriteCfg cfg;
  DAXI_ImageWriteDefaultCfg(&cfg);
  cfg.format = format;
  return encode(record, image.pixels.data(), cfg);
}

}  // namespace

Samples readSamples(const fs::path& path, bool isPicture) {
  const std::string bytes = readFile(path);
  if (bytes.empty()) fail(path, "is empty");
  if (isPicture && !isPictureFormat(bytes)) fail(path, "is not a PNG, JPEG, TIFF, BMP, PGM or PPM image");
  const DaxiImageReadCfg cfg = readCfg(isPicture);
  DaxioMessage message = {};
  Samples samples = {};
  requireRead(path, DAXIO_ImageInfoMemory(bytes.data(), bytes.size(), &cfg, &samples.record, &message), message);
  const DaxiImageRecord& record = samples.record;
  if (isPicture && record.type == DAXI_SAMPLE_32F) requireRead(path, DAX_STS_IMAGE_FORMAT, message);
  samples.bytes.resize(record.bytes);
  requireRead(path,
              DAXIO_ImageReadMemory(bytes.data(), bytes.size(), &cfg, &record, samples.bytes.data(),
                                    record.width * record.channels, &message),
              message);
  return samples;
}

bool ImageFile::hasOnly8Bits() const {
  if (samples_.record.type == DAXI_SAMPLE_8U) return true;
  const int max = maxValue();
  // Alpha does not count.
  const auto channels = static_cast<size_t>(samples_.record.channels), colours = channels >= 3 ? size_t{3} : size_t{1};
  const size_t count = samples_.bytes.size() / 2;
  for (size_t i = 0; i < count; ++i) {
    if (i % channels < colours && (int64_t{samples_.words()[i]} * 65535 + max / 2) / max % 257 != 0) return false;
  }
  return true;
}

Grey16Image ImageFile::toGrey16() const {
  Grey16Image grey = makeImage<uint16_t>(sizeOf(samples_.record));
  const auto put = [&](size_t i, uint64_t weighted) {
    grey.pixels[i] = static_cast<uint16_t>((weighted + 500) / 1000);
  };
  if (samples_.record.type == DAXI_SAMPLE_8U) {
    forEachGrey(samples_.record, samples_.bytes.data(), put);
  } else {
    forEachGrey(samples_.record, samples_.words(), put);
  }
  return grey;
}

GreyImage ImageFile::toGrey() const {
  GreyImage grey = makeGreyImage(sizeOf(samples_.record));
  const auto max = static_cast<uint64_t>(maxValue());
  const auto put = [&](size_t i, uint64_t weighted) {
    grey.pixels[i] = static_cast<uint8_t>((weighted * 255 + 500 * max) / (1000 * max));
  };
  if (samples_.record.type == DAXI_SAMPLE_8U) {
    forEachGrey(samples_.record, samples_.bytes.data(), put);
  } else {
    forEachGrey(samples_.record, samples_.words(), put);
  }
  return grey;
}

std::optional<int32_t> imageFormatOf(const std::string& name) {
  static const std::map<std::string, int32_t> formats = {
      {"bmp", DAXI_IMAGE_BMP},   {"pgm", DAXI_IMAGE_PNM},  {"ppm", DAXI_IMAGE_PNM},  {"pnm", DAXI_IMAGE_PNM},
      {"pfm", DAXI_IMAGE_PFM},   {"raw", DAXI_IMAGE_RAW},  {"png", DAXI_IMAGE_PNG},  {"jpg", DAXI_IMAGE_JPEG},
      {"jpeg", DAXI_IMAGE_JPEG}, {"tif", DAXI_IMAGE_TIFF}, {"tiff", DAXI_IMAGE_TIFF}};
  const auto found = formats.find(name);
  if (found == formats.end()) return std::nullopt;
  return found->second;
}

std::string formatName(const fs::path& path) {
  std::string name;
  for (const char c : path.extension().string()) {
    if (c != '.') name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return name;
}

bool hasImageExtension(const fs::path& path) {
  constexpr std::array kExtensions = {".png"sv, ".jpg"sv, ".jpeg"sv, ".tif"sv, ".tiff"sv, ".bmp"sv, ".pgm"sv, ".ppm"sv};
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

std::string encode(const DaxiImageRecord& record, const void* pixels, const DaxiImageWriteCfg& cfg) {
  const int32_t step = record.width * record.channels;
  const uint64_t samples = static_cast<uint64_t>(step) * static_cast<uint64_t>(record.height);
  DaxioMessage message = {};
  // Room for nearly every file; the query of the bytes would encode it as well.
  uint64_t bytes = samples * (record.type == DAXI_SAMPLE_8U ? 1 : record.type == DAXI_SAMPLE_16U ? 2 : 4);
  std::string file(bytes + bytes / 8 + 4 * static_cast<uint64_t>(record.height) + 65536, '\0');
  const auto write = [&](void* to, uint64_t room) {
    const DaxStatus status = DAXIO_ImageWriteMemory(&record, pixels, step, &cfg, to, room, &bytes, &message);
    if (status == DAX_STS_NO_MEMORY) throw std::bad_alloc();
    if (status == DAX_STS_OK || status == DAX_STS_BAD_SIZE) return status == DAX_STS_OK;
    throw Failure(ExitStatus::kCannotWrite, "cannot be encoded: " + reasonOf(status, message));
  };
  if (!write(file.data(), file.size())) {
    write(nullptr, 0);
    file.resize(bytes);
    write(file.data(), bytes);
  }
  file.resize(bytes);
  return file;
}

std::string encodePng(const GreyImage& image) {
  return encodeGrey(image, DAXI_IMAGE_PNG);
}

std::string encodePng(const Grey16Image& image) {
  return encodeGrey(image, DAXI_IMAGE_PNG);
}

std::string encodePgm(const GreyImage& image) {
  return encodeGrey(image, DAXI_IMAGE_PNM);
}

std::string encodePgm(const Grey16Image& image) {
  return encodeGrey(image, DAXI_IMAGE_PNM);
}

std::string encodeTiff(const Grey16Image& image) {
  return encodeGrey(image, DAXI_IMAGE_TIFF);
}

}  // namespace dax::tool
