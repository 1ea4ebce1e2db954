#include "image/file/raw.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace dax {
namespace {

uint64_t rawStride(const DaxiImageReadCfg& cfg, const DaxiImageRecord& image) {
  return cfg.rawRowBytes == 0 ? rowBytesOf(image) : cfg.rawRowBytes;
}

DaxStatus rawInfo(ByteSource& source, const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
  const int32_t maxima[] = {255, 65535, 0};
  image = plainRecord(DAXI_IMAGE_RAW, cfg.rawWidth, cfg.rawHeight, cfg.rawChannels, cfg.rawType,
                      8 * sampleBytes(cfg.rawType), maxima[cfg.rawType - 1]);
  DAX_REQUIRE_OK(checkSides(image, cfg));
  const uint64_t row = rowBytesOf(image), stride = rawStride(cfg, image);
  DAX_REQUIRE(stride >= row, DAX_STS_DATA_RANGE);
  uint64_t above, all;
  const bool counts = !__builtin_mul_overflow(stride, static_cast<uint64_t>(image.height - 1), &above) &&
                      !__builtin_add_overflow(above, row, &all);
  DAX_REQUIRE(counts && source.seek(cfg.rawOffset) && all <= source.left(), DAX_STS_FILE_READ);
  return DAX_STS_OK;
}

DaxStatus rawRead(ByteSource& source, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image,
                  PixelRows<uint8_t> rows) {
  const uint64_t stride = rawStride(cfg, image);
  for (int32_t y = 0; y < image.height; ++y) {
    const bool there = source.seek(cfg.rawOffset + stride * static_cast<uint64_t>(y));
    DAX_REQUIRE(there && source.read(rows.row(y), rowBytesOf(image)), DAX_STS_FILE_READ);
    if (cfg.rawBigEndian) swapSamples(rows.row(y), rowSamples(image), image.type);
  }
  return DAX_STS_OK;
}

DaxStatus rawSize(const DaxiImageRecord& image, uint64_t* bytes) {
  const bool counts = !__builtin_mul_overflow(rowBytesOf(image), static_cast<uint64_t>(image.height), bytes);
  return counts && *bytes <= INT64_MAX ? DAX_STS_OK : DAX_STS_IMAGE_SIZE;
}

void rawWrite(ByteSink& sink, const DaxiImageRecord& image, PixelRows<const uint8_t> rows,
              const DaxiImageWriteCfg& cfg) {
  for (int32_t y = 0; y < image.height; ++y) {
    writeSamples(sink, rows.row(y), rowSamples(image), image.type, cfg.bigEndian != 0);
  }
}

}  // namespace

void swapSamples(uint8_t* samples, uint64_t count, int32_t type) {
  const int32_t bytes = sampleBytes(type);
  for (uint64_t i = 0; i < count && bytes > 1; ++i, samples += bytes) std::reverse(samples, samples + bytes);
}

void writeSamples(ByteSink& sink, const uint8_t* samples, uint64_t count, int32_t type, bool swap) {
  const auto bytes = static_cast<uint64_t>(sampleBytes(type));
  if (!swap || bytes == 1) {
    sink.write(samples, count * bytes);
    return;
  }
  uint8_t piece[1024];
  for (uint64_t done = 0; done < count;) {
    const uint64_t some = std::min<uint64_t>(sizeof(piece) / bytes, count - done);
    std::memcpy(piece, samples + done * bytes, some * bytes);
    swapSamples(piece, some, type);
    sink.write(piece, some * bytes);
    done += some;
  }
}

const ImageFormat kRawFormat = {DAXI_IMAGE_RAW, nullptr, rawInfo, rawRead, rawSize, rawWrite};

}  // namespace dax
