// Image files in memory and on disk: samples of every format, some of them cut or with a changed byte.
#include <cstring>
#include <memory>

#include "daxi.h"
#include "fuzz/image_samples.h"
#include "fuzz/memory_file.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

std::string someFile(Call& c) {
  static const auto all = [] {
    std::vector<fuzz::ImageSample> samples = fuzz::bmpSamples();
    for (const auto& more : {fuzz::pnmSamples(), fuzz::pfmSamples()})
      samples.insert(samples.end(), more.begin(), more.end());
    return samples;
  }();
  const fuzz::ImageSample* sample = &all[0];
  do {
    sample = &all[static_cast<size_t>(c.random.below(static_cast<int32_t>(all.size())))];
  } while (sample->status != DAX_STS_OK && c.chance(90));
  std::string file = sample->file;
  if (c.chance(5)) file.resize(static_cast<size_t>(c.random.below(static_cast<int32_t>(file.size()))));
  if (c.chance(5) && !file.empty()) {
    file[static_cast<size_t>(c.random.below(static_cast<int32_t>(file.size())))] ^= static_cast<char>(c.random.next());
  }
  return file;
}

void fillReadCfg(Call& c) {
  c.filled<DaxiImageReadCfg>("cfg", 1, [&](DaxiImageReadCfg& cfg) {
    DAXI_ImageReadDefaultCfg(&cfg);
    cfg.upright = c.random.below(2);
    if (!c.chance(20)) return;
    cfg.format = DAXI_IMAGE_RAW, cfg.rawWidth = cfg.rawHeight = 2;
    cfg.rawOffset = static_cast<uint64_t>(c.random.below(9)),
    cfg.rawRowBytes = static_cast<uint64_t>(c.random.below(9));
  });
}

// Steps of more memory than there is are too short instead.
void samples(Call& c, const DaxiImageRecord& image, int32_t bytes) {
  const int64_t row = int64_t{image.width} * image.channels;
  const int64_t step = c.number("step", row, INT32_MAX, row + 3);
  const bool tooLong = step > (1 << 20) / image.height;
  if (tooLong) c.vague = true, c.set("step", static_cast<int32_t>(row - 1));
  c.array("pixels", tooLong ? -1 : step * image.height * bytes);
}

// The record of what the file holds, where it is known, and memory for that.
void readInto(Call& c, const std::string& file) {
  const auto* const cfg = c.get<const DaxiImageReadCfg*>("cfg");
  DaxiImageRecord found = {3, 2, 1, DAXI_SAMPLE_8U, 8, 255, 1, 1, 1, 0, 6};
  if (cfg) DAXI_ImageInfoMemory(file.data(), file.size(), cfg, &found);
  c.filled<DaxiImageRecord>("image", 1, [&](DaxiImageRecord& image) { image = found; });
  const int32_t bytes = found.type == DAXI_SAMPLE_8U ? 1 : found.type == DAXI_SAMPLE_16U ? 2 : 4;
  samples(c, found, bytes);
  c.mayWriteOn(DAX_STS_FILE_READ), c.mayWriteOn(DAX_STS_DATA_RANGE);
}

void fromMemory(Call& c) {
  const std::string file = someFile(c);
  auto* const bytes = static_cast<char*>(c.array("file", static_cast<int64_t>(file.size())));
  if (Block* const made = bytes ? c.block(bytes) : nullptr; made && made->bytes >= file.size()) {
    std::memcpy(bytes, file.data(), file.size());
  }
  c.set("fileBytes", uint64_t{file.size()});
  fillReadCfg(c);
  if (c.has("pixels")) readInto(c, file);
}

void fromFile(Call& c) {
  const std::string file = someFile(c);
  const auto onDisk = std::make_shared<fuzz::MemoryFile>(reinterpret_cast<const uint8_t*>(file.data()), file.size());
  const std::string path = c.chance(5) ? "/nowhere" : onDisk->path();
  if (auto* const name = static_cast<char*>(c.array("path", static_cast<int64_t>(path.size()) + 1))) {
    std::memcpy(name, path.c_str(), path.size() + 1);
  }
  fillReadCfg(c);
  if (c.has("pixels")) readInto(c, file);
  c.settle = [onDisk](uint64_t status) { return status; };
}

void write(Call& c) {
  const bool toFile = c.has("path");
  c.filled<DaxiImageWriteCfg>("cfg", 1, [&](DaxiImageWriteCfg& cfg) {
    DAXI_ImageWriteDefaultCfg(&cfg);
    cfg.format = 1 + c.random.below(4);
  });
  const auto* const cfg = c.get<const DaxiImageWriteCfg*>("cfg");
  DaxiImageRecord given = {
      1 + c.random.below(9), 1 + c.random.below(9), c.chance(50) ? 1 : 3, DAXI_SAMPLE_8U, 0, 0, 0, 0, 0, 0, 0};
  if (cfg && cfg->format == DAXI_IMAGE_PFM) given.type = DAXI_SAMPLE_32F;
  if (cfg && cfg->format == DAXI_IMAGE_PNM && c.chance(50)) given.type = DAXI_SAMPLE_16U;
  const auto* const image = c.filled<DaxiImageRecord>("image", 1, [&](DaxiImageRecord& each) { each = given; });
  // A spoiled record may tell of a larger image.
  if (image && c.block(image) && image->width > 0 && image->height > 0 && image->channels > 0) given = *image;
  samples(c, given, 4);
  if (toFile) {
    const auto onDisk = std::make_shared<fuzz::MemoryFile>();
    const std::string path = onDisk->path();
    if (auto* const name = static_cast<char*>(c.array("path", static_cast<int64_t>(path.size()) + 1))) {
      std::memcpy(name, path.c_str(), path.size() + 1);
    }
    c.settle = [onDisk](uint64_t status) {
      uint64_t sum = status;
      for (const uint8_t byte : onDisk->contents()) sum = sum * 31 + byte;
      return sum;
    };
    return;
  }
  const int64_t capacity = 2000;
  c.set("capacity", static_cast<uint64_t>(capacity));
  if (c.chance(20)) {
    c.set<void*>("file", nullptr);
  } else {
    c.array("file", capacity);
    c.meansNothing("file");
  }
}

const Rows rows = {
    {"DAXI_ImageInfoMemory", fromMemory},
    {"DAXI_ImageReadMemory", fromMemory},
    {"DAXI_ImageWriteMemory", write},
    {"DAXI_ImageInfoFile", fromFile},
    {"DAXI_ImageReadFile", fromFile},
    {"DAXI_ImageWriteFile", write},
    {"DAX_WriteFile",
     [](Call& c) {
       const auto onDisk = std::make_shared<fuzz::MemoryFile>();
       const std::string path = c.chance(10) ? "/nowhere/file" : onDisk->path();
       if (auto* const name = static_cast<char*>(c.array("path", static_cast<int64_t>(path.size()) + 1))) {
         std::memcpy(name, path.c_str(), path.size() + 1);
       }
       const int64_t bytes = c.random.below(9000);
       c.array("data", bytes);
       c.set("bytes", static_cast<uint64_t>(bytes));
       c.settle = [onDisk](uint64_t status) { return status + onDisk->contents().size(); };
     }},
};

}  // namespace
}  // namespace dax::hostile
