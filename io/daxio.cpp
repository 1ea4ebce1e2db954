#include "daxio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <new>
#include <string_view>
#include <vector>

#include "dax/file.h"
#include "io/codec.h"

namespace dax::io {
namespace {

constexpr const Codec* kCodecs[] = {&kPng, &kJpeg, &kTiff};
constexpr uint64_t kMaxFileBytes = uint64_t{1} << 32;

const Codec* codecOf(FileBytes file) {
  const auto* const found =
      std::find_if(std::begin(kCodecs), std::end(kCodecs), [&](const Codec* codec) { return codec->starts(file); });
  return found == std::end(kCodecs) ? nullptr : *found;
}

const Codec* codecOf(int32_t format) {
  const auto* const found =
      std::find_if(std::begin(kCodecs), std::end(kCodecs), [&](const Codec* codec) { return codec->code == format; });
  return found == std::end(kCodecs) ? nullptr : *found;
}

int32_t formatOfName(std::string_view path) {
  struct Ending {
    std::string_view text;
    int32_t format;
  };
  constexpr Ending kEndings[] = {{".png", DAXI_IMAGE_PNG},
                                 {".jpg", DAXI_IMAGE_JPEG},
                                 {".jpeg", DAXI_IMAGE_JPEG},
                                 {".tif", DAXI_IMAGE_TIFF},
                                 {".tiff", DAXI_IMAGE_TIFF}};
  const auto equal = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
  for (const auto& [text, format] : kEndings) {
    if (path.size() < text.size()) continue;
    const std::string_view end = path.substr(path.size() - text.size());
    if (std::equal(end.begin(), end.end(), text.begin(), equal)) return format;
  }
  return DAXI_IMAGE_ANY;
}

// What the library checks in the same calls. It is asked about a file of its own, so that these checks are in one place.
DaxStatus checkCfg(const DaxiImageReadCfg& cfg) {
  DaxiImageReadCfg plain = cfg;
  if (plain.format > DAXI_IMAGE_ANY && plain.format <= DAXI_IMAGE_TIFF) plain.format = DAXI_IMAGE_ANY;
  DaxiImageRecord none;
  const DaxStatus status = DAXI_ImageInfoMemory("", 0, &plain, &none);
  return status == DAX_STS_BAD_PARAM ? status : DaxStatus{DAX_STS_OK};
}

DaxStatus checkWrite(const DaxiImageRecord& image, const void* pixels, int32_t step, const DaxiImageWriteCfg& cfg) {
  DaxiImageWriteCfg raw = cfg;
  if (raw.format > DAXI_IMAGE_ANY && raw.format <= DAXI_IMAGE_TIFF) raw.format = DAXI_IMAGE_RAW;
  DaxiImageRecord whole = image;
  whole.maxValue = 0;
  uint64_t bytes;
  return DAXI_ImageWriteMemory(&whole, pixels, step, &raw, nullptr, 0, &bytes);
}

DaxStatus checkPixels(const DaxiImageRecord& image, const void* pixels, int32_t step) {
  DaxiImageWriteCfg raw;
  DAXI_ImageWriteDefaultCfg(&raw);
  raw.format = DAXI_IMAGE_RAW;
  return checkWrite(image, pixels, step, raw);
}

// Regular files only, without waiting for the other end of a pipe.
DaxStatus load(const char* path, std::vector<uint8_t>& bytes) {
  const int file = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return DAX_STS_FILE_OPEN;
  struct stat status;
  const bool regular = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  DaxStatus result = DAX_STS_OK;
  if (!regular) result = DAX_STS_FILE_OPEN;
  if (regular && static_cast<uint64_t>(status.st_size) > kMaxFileBytes) result = DAX_STS_IMAGE_SIZE;
  size_t filled = 0;
  try {
    if (result == DAX_STS_OK) bytes.resize(static_cast<size_t>(status.st_size));
  } catch (const std::bad_alloc&) {
    result = DAX_STS_NO_MEMORY;
  }
  while (result == DAX_STS_OK && filled < bytes.size()) {
    const ssize_t count = read(file, bytes.data() + filled, bytes.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) result = DAX_STS_FILE_READ;
    filled += count > 0 ? static_cast<size_t>(count) : 0;
  }
  close(file);
  return result;
}

// What codecs cannot allocate is a status too.
template <class Work>
DaxStatus guarded(const Work& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return DAX_STS_NO_MEMORY;
  }
}

DaxStatus info(FileBytes file, const DaxiImageReadCfg& cfg, DaxiImageRecord& image, DaxioMessage* message) {
  const Codec* const codec = cfg.format == DAXI_IMAGE_RAW ? nullptr : codecOf(file);
  if (!codec) return DAXI_ImageInfoMemory(file.data(), file.size(), &cfg, &image);
  if (cfg.format != DAXI_IMAGE_ANY && cfg.format != codec->code) return DAX_STS_IMAGE_FORMAT;
  DaxiImageRecord found = {};
  const DaxStatus status = guarded([&] { return codec->info(file, cfg, found, message); });
  if (status != DAX_STS_OK) return status;
  if (cfg.page >= found.pages) return DAX_STS_UNSUPPORTED_METHOD;
  if (cfg.upright != 0) {
    if (found.orientation >= 5) std::swap(found.width, found.height);
    found.orientation = 1;
  }
  image = found;
  return DAX_STS_OK;
}

DaxStatus read(FileBytes file, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, void* pixels, int32_t step,
               DaxioMessage* message) {
  const Codec* const codec = cfg.format == DAXI_IMAGE_RAW ? nullptr : codecOf(file);
  if (!codec) return DAXI_ImageReadMemory(file.data(), file.size(), &cfg, &image, pixels, step);
  if (cfg.format != DAXI_IMAGE_ANY && cfg.format != codec->code) return DAX_STS_IMAGE_FORMAT;
  DaxiImageRecord found = {};
  const DaxStatus status = guarded([&] { return codec->info(file, cfg, found, message); });
  if (status != DAX_STS_OK) return status;
  if (cfg.page >= found.pages) return DAX_STS_UNSUPPORTED_METHOD;
  const int32_t turn = cfg.upright != 0 ? found.orientation : 1;
  const int32_t width = turn >= 5 ? found.height : found.width, height = turn >= 5 ? found.width : found.height;
  const bool same =
      width == image.width && height == image.height && found.channels == image.channels && found.type == image.type;
  if (!same) return DAX_STS_IMAGE_SIZE;
  return guarded([&] { return codec->read(file, cfg, found, Canvas(found, turn, pixels, step), message); });
}

DaxStatus encode(const Codec& codec, const DaxiImageRecord& image, const void* pixels, int32_t step,
                 const DaxiImageWriteCfg& cfg, Growing& file, DaxioMessage* message) {
  const Pixels rows = {static_cast<const uint8_t*>(pixels), ptrdiff_t{step} * sampleBytes(image.type)};
  return guarded([&] { return codec.write(image, rows, cfg, file, message); });
}

}  // namespace
}  // namespace dax::io

DaxStatus DAXIO_ImageInfoMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                                DaxiImageRecord* image, DaxioMessage* message) {
  dax::io::say(message, "");
  if (!file || !cfg || !image) return DAX_STS_NULL_POINTER;
  if (const DaxStatus status = dax::io::checkCfg(*cfg); status != DAX_STS_OK) return status;
  return dax::io::info({static_cast<const uint8_t*>(file), fileBytes}, *cfg, *image, message);
}

DaxStatus DAXIO_ImageInfoFile(const char* path, const DaxiImageReadCfg* cfg, DaxiImageRecord* image,
                              DaxioMessage* message) {
  dax::io::say(message, "");
  if (!path || !cfg || !image) return DAX_STS_NULL_POINTER;
  if (const DaxStatus status = dax::io::checkCfg(*cfg); status != DAX_STS_OK) return status;
  std::vector<uint8_t> bytes;
  if (const DaxStatus status = dax::io::load(path, bytes); status != DAX_STS_OK) return status;
  if (bytes.empty()) return DAX_STS_IMAGE_FORMAT;
  return dax::io::info(bytes, *cfg, *image, message);
}

DaxStatus DAXIO_ImageReadMemory(const void* file, uint64_t fileBytes, const DaxiImageReadCfg* cfg,
                                const DaxiImageRecord* image, void* pixels, int32_t step, DaxioMessage* message) {
  dax::io::say(message, "");
  if (!file || !cfg || !image || !pixels) return DAX_STS_NULL_POINTER;
  if (const DaxStatus status = dax::io::checkPixels(*image, pixels, step); status != DAX_STS_OK) return status;
  if (const DaxStatus status = dax::io::checkCfg(*cfg); status != DAX_STS_OK) return status;
  return dax::io::read({static_cast<const uint8_t*>(file), fileBytes}, *cfg, *image, pixels, step, message);
}

DaxStatus DAXIO_ImageReadFile(const char* path, const DaxiImageReadCfg* cfg, const DaxiImageRecord* image, void* pixels,
                              int32_t step, DaxioMessage* message) {
  dax::io::say(message, "");
  if (!path || !cfg || !image || !pixels) return DAX_STS_NULL_POINTER;
  if (const DaxStatus status = dax::io::checkPixels(*image, pixels, step); status != DAX_STS_OK) return status;
  if (const DaxStatus status = dax::io::checkCfg(*cfg); status != DAX_STS_OK) return status;
  std::vector<uint8_t> bytes;
  if (const DaxStatus status = dax::io::load(path, bytes); status != DAX_STS_OK) return status;
  if (bytes.empty()) return DAX_STS_IMAGE_FORMAT;
  return dax::io::read(bytes, *cfg, *image, pixels, step, message);
}

DaxStatus DAXIO_ImageWriteMemory(const DaxiImageRecord* image, const void* pixels, int32_t step,
                                 const DaxiImageWriteCfg* cfg, void* file, uint64_t capacity, uint64_t* fileBytes,
                                 DaxioMessage* message) {
  dax::io::say(message, "");
  if (!image || !pixels || !cfg || !fileBytes) return DAX_STS_NULL_POINTER;
  const dax::io::Codec* const codec = dax::io::codecOf(cfg->format);
  if (!codec) return DAXI_ImageWriteMemory(image, pixels, step, cfg, file, capacity, fileBytes);
  if (const DaxStatus status = dax::io::checkWrite(*image, pixels, step, *cfg); status != DAX_STS_OK) return status;
  dax::io::Growing made;
  const DaxStatus status = dax::io::encode(*codec, *image, pixels, step, *cfg, made, message);
  if (status != DAX_STS_OK) return status;
  if (file && capacity < made.size()) return DAX_STS_BAD_SIZE;
  *fileBytes = made.size();
  if (file) std::memcpy(file, made.data(), made.size());
  return DAX_STS_OK;
}

DaxStatus DAXIO_ImageWriteFile(const DaxiImageRecord* image, const void* pixels, int32_t step,
                               const DaxiImageWriteCfg* cfg, const char* path, DaxioMessage* message) {
  dax::io::say(message, "");
  if (!image || !pixels || !cfg || !path) return DAX_STS_NULL_POINTER;
  const int32_t format = cfg->format == DAXI_IMAGE_ANY ? dax::io::formatOfName(path) : cfg->format;
  const dax::io::Codec* const codec = dax::io::codecOf(format);
  if (!codec) return DAXI_ImageWriteFile(image, pixels, step, cfg, path);
  DaxiImageWriteCfg known = *cfg;
  known.format = format;
  if (const DaxStatus status = dax::io::checkWrite(*image, pixels, step, known); status != DAX_STS_OK) return status;
  dax::io::Growing made;
  const DaxStatus status = dax::io::encode(*codec, *image, pixels, step, known, made, message);
  return status == DAX_STS_OK ? DAX_WriteFile(path, made.data(), made.size()) : status;
}
