// TIFF by libtiff. Samples are taken from rows or tiles of planes, as they lie in the file.
#include <algorithm>
#include <vector>

#include "io/tiff.h"

namespace dax::io {
namespace {

constexpr uint64_t kMaxTileBytes = uint64_t{1} << 28;

struct TiffLayout {
  uint32_t width = 0, height = 0;
  uint16_t bits = 1, samples = 1, photometric = PHOTOMETRIC_MINISBLACK, planar = PLANARCONFIG_CONTIG;
  uint16_t format = SAMPLEFORMAT_UINT, compression = COMPRESSION_NONE, orientation = 1;
  const uint16_t* map[3] = {};  // a palette, of 2^bits colours
  bool asRgba = false;          // what libtiff itself makes colours of
};

TiffLayout layoutOf(TIFF* tiff) {
  TiffLayout layout;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &layout.height);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &layout.bits);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &layout.samples);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &layout.planar);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &layout.format);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &layout.compression);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_ORIENTATION, &layout.orientation);
  if (layout.orientation < 1 || layout.orientation > 8) layout.orientation = 1;
  if (!TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &layout.photometric)) {
    layout.photometric = layout.samples >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK;
  }
  if (layout.photometric == PHOTOMETRIC_YCBCR && layout.compression == COMPRESSION_JPEG) {
    TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    layout.photometric = PHOTOMETRIC_RGB;
  }
  return layout;
}

bool isFloat(const TiffLayout& layout) {
  return layout.format == SAMPLEFORMAT_IEEEFP && layout.bits == 32;
}

// How many samples of a pixel are taken; 0: none are known.
int32_t channelsOf(TIFF* tiff, TiffLayout& layout) {
  switch (layout.photometric) {
    case PHOTOMETRIC_MINISWHITE:
    case PHOTOMETRIC_MINISBLACK:
      return std::min<int32_t>(layout.samples, 2);
    case PHOTOMETRIC_RGB:
      return layout.samples >= 3 ? std::min<int32_t>(layout.samples, 4) : 0;
    case PHOTOMETRIC_PALETTE: {
      uint16_t *red, *green, *blue;
      if (layout.bits > 8 || !TIFFGetField(tiff, TIFFTAG_COLORMAP, &red, &green, &blue)) return 0;
      layout.map[0] = red, layout.map[1] = green, layout.map[2] = blue;
      return 3;
    }
    default: {
      char why[1024];
      layout.asRgba = layout.bits <= 8 && TIFFRGBAImageOK(tiff, why) == 1;
      return layout.asRgba ? 3 : 0;
    }
  }
}

DaxStatus describe(TIFF* tiff, const DaxiImageReadCfg& cfg, TiffLayout& layout, DaxiImageRecord& image,
                   DaxioMessage* message) {
  const uint32_t pages = std::max<uint32_t>(TIFFNumberOfDirectories(tiff), 1);
  if (static_cast<uint32_t>(cfg.page) >= pages) return DAX_STS_UNSUPPORTED_METHOD;
  if (!TIFFSetDirectory(tiff, static_cast<tdir_t>(cfg.page))) return DAX_STS_DATA_RANGE;
  layout = layoutOf(tiff);
  const bool isWhole = (layout.format == SAMPLEFORMAT_UINT || layout.format == SAMPLEFORMAT_VOID) && layout.bits <= 16;
  if (layout.bits < 1 || (!isWhole && !isFloat(layout))) {
    say(message, "samples with a sign, of more than 16 bits, or floats of other than 32");
    return DAX_STS_IMAGE_FORMAT;
  }
  const int32_t channels = channelsOf(tiff, layout);
  if (channels == 0) {
    say(message, "an interpretation of colours that is not read");
    return DAX_STS_UNSUPPORTED_METHOD;
  }
  const bool wide = layout.bits > 8;
  image = {};
  image.width = layout.width > INT32_MAX ? 0 : static_cast<int32_t>(layout.width);
  image.height = layout.height > INT32_MAX ? 0 : static_cast<int32_t>(layout.height);
  image.channels = channels;
  image.type = isFloat(layout) ? DAXI_SAMPLE_32F : wide ? DAXI_SAMPLE_16U : DAXI_SAMPLE_8U;
  image.bits = layout.bits;
  image.maxValue = isFloat(layout) ? 0 : wide ? (1 << layout.bits) - 1 : 255;
  image.orientation = layout.orientation;
  image.pages = static_cast<int32_t>(pages);
  image.format = DAXI_IMAGE_TIFF;
  return checkSides(image, cfg);
}

// Takes samples as they lie in a row of the file, and puts them where they belong.
class SampleRows {
 public:
  SampleRows(const TiffLayout& layout, const DaxiImageRecord& image, const Canvas& canvas, int64_t width)
      : layout_(layout),
        image_(image),
        canvas_(canvas),
        bytes_(sampleBytes(image.type)),
        values_(static_cast<size_t>(width * image.channels * bytes_)) {}

  // A row with all samples of each pixel, of `count` pixels from (x, y).
  void take(const uint8_t* row, int64_t x, int64_t y, int64_t count) {
    const int32_t taken = image_.channels;
    if (layout_.map[0]) {
      for (int64_t i = 0; i < count; ++i)
        putColour(sample(row, i * layout_.samples), &values_[static_cast<size_t>(3 * i)]);
    } else {
      for (int64_t i = 0; i < count; ++i) {
        for (int32_t c = 0; c < taken; ++c) convert(row, i * layout_.samples + c, c, i * taken + c);
      }
    }
    canvas_.put(x, y, count, values_.data());
  }

  // A row of one plane.
  void takePlane(const uint8_t* row, int64_t x, int64_t y, int64_t count, int32_t plane) {
    if (layout_.map[0]) return take(row, x, y, count);
    for (int64_t i = 0; i < count; ++i) convert(row, i, plane, i);
    canvas_.putPart(x, y, count, values_.data(), plane * bytes_, bytes_);
  }

 private:
  // Of up to 16 bits, packed from the highest on; whole bytes have the order of this machine.
  uint32_t sample(const uint8_t* row, int64_t i) const {
    if (layout_.bits == 8) return row[i];
    if (layout_.bits == 16) {
      uint16_t value;
      std::memcpy(&value, row + 2 * i, 2);
      return value;
    }
    const int64_t bit = i * layout_.bits;
    uint32_t value = 0;
    for (int64_t b = bit; b < bit + layout_.bits; ++b) value = value << 1 | (row[b / 8] >> (7 - b % 8) & 1);
    return value;
  }

  void convert(const uint8_t* row, int64_t i, int32_t channel, int64_t to) {
    uint8_t* const value = &values_[static_cast<size_t>(to * bytes_)];
    if (image_.type == DAXI_SAMPLE_32F) {
      std::memcpy(value, row + 4 * i, 4);
      return;
    }
    const uint32_t max = (uint32_t{1} << layout_.bits) - 1;
    uint32_t whole = sample(row, i);
    if (layout_.photometric == PHOTOMETRIC_MINISWHITE && channel == 0) whole = max - whole;
    if (image_.type == DAXI_SAMPLE_8U) {
      *value = static_cast<uint8_t>((whole * 255 + max / 2) / max);
    } else {
      const auto word = static_cast<uint16_t>(whole);
      std::memcpy(value, &word, 2);
    }
  }

  // Of 16 bits, unless its writer took them for bytes.
  void putColour(uint32_t index, uint8_t* pixel) {
    if (narrow_ < 0) {
      narrow_ = 1;
      for (const uint16_t* part : layout_.map) {
        if (std::any_of(part, part + (size_t{1} << layout_.bits), [](uint16_t v) { return v > 255; })) narrow_ = 0;
      }
    }
    for (int32_t c = 0; c < 3; ++c) pixel[c] = static_cast<uint8_t>(layout_.map[c][index] >> (narrow_ == 1 ? 0 : 8));
  }

  const TiffLayout& layout_;
  const DaxiImageRecord& image_;
  const Canvas& canvas_;
  int32_t bytes_;
  int narrow_ = -1;
  std::vector<uint8_t> values_;
};

// What a row of so many pixels takes in the file, all planes or one.
uint64_t packedBytes(const TiffLayout& layout, uint64_t pixels) {
  const uint64_t samples = pixels * (layout.planar == PLANARCONFIG_SEPARATE ? 1 : layout.samples);
  return (samples * layout.bits + 7) / 8;
}

DaxStatus readStrips(TIFF* tiff, const TiffLayout& layout, const DaxiImageRecord& image, SampleRows& rows) {
  const uint64_t bytes = TIFFScanlineSize64(tiff);
  if (bytes < packedBytes(layout, layout.width)) return DAX_STS_DATA_RANGE;
  if (bytes > std::max<uint64_t>(kMaxTileBytes, image.bytes)) return DAX_STS_IMAGE_SIZE;
  std::vector<uint8_t> row(bytes);
  const bool planes = layout.planar == PLANARCONFIG_SEPARATE;
  for (int32_t plane = 0; plane < (planes ? (layout.map[0] ? 1 : image.channels) : 1); ++plane) {
    for (int32_t y = 0; y < image.height; ++y) {
      if (TIFFReadScanline(tiff, row.data(), static_cast<uint32_t>(y), static_cast<uint16_t>(plane)) != 1) {
        return DAX_STS_FILE_READ;
      }
      planes ? rows.takePlane(row.data(), 0, y, image.width, plane) : rows.take(row.data(), 0, y, image.width);
    }
  }
  return DAX_STS_OK;
}

struct Tiles {
  uint32_t width = 0, height = 0;
  uint64_t bytes = 0, rowBytes = 0;
};

DaxStatus readTile(TIFF* tiff, const TiffLayout& layout, const Tiles& tiles, uint32_t x, uint32_t y, int32_t plane,
                   std::vector<uint8_t>& tile, SampleRows& rows) {
  const auto read = TIFFReadTile(tiff, tile.data(), x, y, 0, static_cast<uint16_t>(plane));
  if (read < 0 || static_cast<uint64_t>(read) != tiles.bytes) return DAX_STS_FILE_READ;
  const uint32_t columns = std::min(tiles.width, layout.width - x), lines = std::min(tiles.height, layout.height - y);
  for (uint32_t i = 0; i < lines; ++i) {
    const uint8_t* const row = tile.data() + i * tiles.rowBytes;
    layout.planar == PLANARCONFIG_SEPARATE ? rows.takePlane(row, x, y + i, columns, plane)
                                           : rows.take(row, x, y + i, columns);
  }
  return DAX_STS_OK;
}

DaxStatus readTiles(TIFF* tiff, const TiffLayout& layout, const DaxiImageRecord& image, const Canvas& canvas) {
  Tiles tiles;
  TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &tiles.width);
  TIFFGetField(tiff, TIFFTAG_TILELENGTH, &tiles.height);
  tiles.bytes = TIFFTileSize64(tiff), tiles.rowBytes = TIFFTileRowSize64(tiff);
  if (tiles.width == 0 || tiles.height == 0 || tiles.rowBytes < packedBytes(layout, tiles.width))
    return DAX_STS_DATA_RANGE;
  if (tiles.bytes == 0 || tiles.bytes > kMaxTileBytes) return DAX_STS_IMAGE_SIZE;
  if (tiles.bytes / tiles.height < tiles.rowBytes) return DAX_STS_DATA_RANGE;
  SampleRows rows(layout, image, canvas, tiles.width);
  std::vector<uint8_t> tile(tiles.bytes);
  const int32_t planes = layout.planar == PLANARCONFIG_SEPARATE && !layout.map[0] ? image.channels : 1;
  for (int32_t plane = 0; plane < planes; ++plane) {
    for (uint64_t y = 0; y < layout.height; y += tiles.height) {
      for (uint64_t x = 0; x < layout.width; x += tiles.width) {
        const DaxStatus status =
            readTile(tiff, layout, tiles, static_cast<uint32_t>(x), static_cast<uint32_t>(y), plane, tile, rows);
        if (status != DAX_STS_OK) return status;
      }
    }
  }
  return DAX_STS_OK;
}

DaxStatus readRgba(TIFF* tiff, const TiffStream& stream, const DaxiImageRecord& image, const Canvas& canvas) {
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, static_cast<uint16_t>(ORIENTATION_TOPLEFT));
  const auto width = static_cast<uint32_t>(image.width), height = static_cast<uint32_t>(image.height);
  std::vector<uint32_t> raster(static_cast<size_t>(width) * height);
  const int done = TIFFReadRGBAImageOriented(tiff, width, height, raster.data(), ORIENTATION_TOPLEFT, 1);
  if (done != 1 || stream.failed) return DAX_STS_FILE_READ;
  std::vector<uint8_t> row(3 * static_cast<size_t>(width));
  for (uint32_t y = 0; y < height; ++y) {
    for (uint32_t x = 0; x < width; ++x) {
      const uint32_t pixel = raster[static_cast<size_t>(y) * width + x];
      for (uint32_t c = 0; c < 3; ++c) row[3 * size_t{x} + c] = static_cast<uint8_t>(pixel >> (8 * c));
    }
    canvas.put(0, y, image.width, row.data());
  }
  return DAX_STS_OK;
}

bool tiffStarts(FileBytes file) {
  constexpr char kMarks[][5] = {"II*\0", "MM\0*", "II+\0", "MM\0+"};
  return file.size() >= 4 && std::any_of(std::begin(kMarks), std::end(kMarks),
                                         [&](const char* mark) { return std::memcmp(file.data(), mark, 4) == 0; });
}

DaxStatus tiffInfo(FileBytes file, const DaxiImageReadCfg& cfg, DaxiImageRecord& image, DaxioMessage* message) {
  TiffStream stream{.file = file, .message = message};
  const Tiff tiff = openTiff(stream, "rm", cfg.maxBytes);
  if (!tiff) return DAX_STS_FILE_READ;
  TiffLayout layout;
  return describe(tiff.get(), cfg, layout, image, message);
}

DaxStatus tiffRead(FileBytes file, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, const Canvas& canvas,
                   DaxioMessage* message) {
  TiffStream stream{.file = file, .message = message};
  const Tiff tiff = openTiff(stream, "rm", std::max(cfg.maxBytes, kMaxTileBytes));
  if (!tiff) return DAX_STS_FILE_READ;
  TiffLayout layout;
  DaxiImageRecord again;
  if (const DaxStatus status = describe(tiff.get(), cfg, layout, again, message); status != DAX_STS_OK) return status;
  stream.failed = false;
  if (layout.asRgba) return readRgba(tiff.get(), stream, image, canvas);
  DaxStatus status;
  if (TIFFIsTiled(tiff.get())) {
    status = readTiles(tiff.get(), layout, image, canvas);
  } else {
    SampleRows rows(layout, image, canvas, image.width);
    status = readStrips(tiff.get(), layout, image, rows);
  }
  // Some decoders fill up what they miss and only complain.
  if (status == DAX_STS_OK && stream.failed) return DAX_STS_FILE_READ;
  return status;
}

}  // namespace

const Codec kTiff = {DAXI_IMAGE_TIFF, tiffStarts, tiffInfo, tiffRead, writeTiff};

}  // namespace dax::io
