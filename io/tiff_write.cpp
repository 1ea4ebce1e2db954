#include <algorithm>
#include <vector>

#include "io/tiff.h"

namespace dax::io {
namespace {

void setTags(TIFF* tiff, const DaxiImageRecord& image, const DaxiImageWriteCfg& cfg) {
  constexpr int kCompressions[] = {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE};
  const bool isFloat = image.type == DAXI_SAMPLE_32F;
  const auto width = static_cast<uint32_t>(image.width);
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(image.height));
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8 * sampleBytes(image.type));
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, image.channels);
  TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, isFloat ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, image.channels >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, image.orientation >= 1 && image.orientation <= 8 ? image.orientation : 1);
  if (image.channels == 2 || image.channels == 4) {
    const uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
  }
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, kCompressions[cfg.compression]);
  if (cfg.compression > 0)
    TIFFSetField(tiff, TIFFTAG_PREDICTOR, isFloat ? PREDICTOR_FLOATINGPOINT : PREDICTOR_HORIZONTAL);
  if (cfg.compression == 2) TIFFSetField(tiff, TIFFTAG_ZIPQUALITY, std::max(cfg.level, 1));
  const uint64_t strip = std::max<uint64_t>(1, (uint64_t{1} << 16) / rowBytes(image));
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(strip));
}

}  // namespace

DaxStatus writeTiff(const DaxiImageRecord& image, const Pixels& pixels, const DaxiImageWriteCfg& cfg, Growing& file,
                    DaxioMessage* message) {
  if (image.bits != 0 && image.bits != 8 * sampleBytes(image.type)) return DAX_STS_UNSUPPORTED_METHOD;
  const uint64_t bytes = rowBytes(image) * static_cast<uint64_t>(image.height);
  TiffStream stream{.file = {}, .made = &file, .message = message};
  // Offsets of 64 bits only where there is need.
  Tiff tiff = openTiff(stream, bytes > uint64_t{3} << 30 ? "w8m" : "wm", UINT64_MAX);
  if (!tiff) return DAX_STS_NO_MEMORY;
  setTags(tiff.get(), image, cfg);
  std::vector<uint8_t> row(rowBytes(image));  // the predictor works in place
  for (int32_t y = 0; y < image.height; ++y) {
    std::copy_n(pixels.row(y), row.size(), row.data());
    if (TIFFWriteScanline(tiff.get(), row.data(), static_cast<uint32_t>(y), 0) != 1) return DAX_STS_NO_MEMORY;
  }
  const bool done = TIFFFlush(tiff.get()) == 1;
  tiff.reset();
  return done && !stream.failed ? DAX_STS_OK : DAX_STS_NO_MEMORY;
}

}  // namespace dax::io
