// PNG by libpng. It leaves functions by longjmp: where that lands there are no destructors, and what is to be released
// belongs to the caller.
#include <png.h>

#include <csetjmp>
#include <vector>

#include "io/codec.h"

namespace dax::io {
namespace {

// Of reading or writing. Lives outside of the functions that libpng jumps to.
struct PngState {
  png_structp png = nullptr;
  png_infop info = nullptr;
  const uint8_t* at = nullptr;  // what is left to be read
  size_t left = 0;
  Growing* file = nullptr;
  DaxioMessage* message;
  DaxStatus status = DAX_STS_DATA_RANGE;  // of the next failure
  bool writes;

  PngState(bool isWriter, DaxioMessage* where);
  ~PngState() { writes ? png_destroy_write_struct(&png, &info) : png_destroy_read_struct(&png, &info, nullptr); }
  PngState(const PngState&) = delete;
  PngState& operator=(const PngState&) = delete;
};

[[noreturn]] void failPng(png_structp png, png_const_charp text) {
  say(static_cast<PngState*>(png_get_error_ptr(png))->message, text);
  png_longjmp(png, 1);
}

// Chunks that are no part of the pixels: the pixels are complete.
void warnPng(png_structp, png_const_charp) {}

void takeBytes(png_structp png, png_bytep to, size_t bytes) {
  auto& state = *static_cast<PngState*>(png_get_io_ptr(png));
  if (bytes > state.left) {
    state.status = DAX_STS_FILE_READ;
    png_error(png, "cut short");
  }
  std::memcpy(to, state.at, bytes);
  state.at += bytes;
  state.left -= bytes;
}

void giveBytes(png_structp png, png_bytep data, size_t bytes) {
  auto& state = *static_cast<PngState*>(png_get_io_ptr(png));
  if (state.file->append(data, bytes)) return;
  state.status = DAX_STS_NO_MEMORY;
  png_error(png, "no memory");
}

PngState::PngState(bool isWriter, DaxioMessage* where) : message(where), writes(isWriter) {
  png = writes ? png_create_write_struct(PNG_LIBPNG_VER_STRING, this, failPng, warnPng)
               : png_create_read_struct(PNG_LIBPNG_VER_STRING, this, failPng, warnPng);
  if (png) info = png_create_info_struct(png);
}

int32_t exifOrientation(const PngState& state) {
  png_uint_32 count = 0;
  png_bytep exif = nullptr;
  if (png_get_eXIf_1(state.png, state.info, &count, &exif) == 0) return 1;
  return orientationOf({exif, count});
}

DaxStatus readPngHead(PngState& state, const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
  if (setjmp(png_jmpbuf(state.png))) return state.status;
  png_set_read_fn(state.png, &state, takeBytes);
  png_set_user_limits(state.png, INT32_MAX, INT32_MAX);  // told apart from damage below
  png_read_info(state.png, state.info);
  const int bits = png_get_bit_depth(state.png, state.info), colour = png_get_color_type(state.png, state.info);
  const bool alpha = (colour & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(state.png, state.info, PNG_INFO_tRNS) != 0;
  image = {};
  image.width = static_cast<int32_t>(png_get_image_width(state.png, state.info));
  image.height = static_cast<int32_t>(png_get_image_height(state.png, state.info));
  image.channels = ((colour & PNG_COLOR_MASK_COLOR) != 0 ? 3 : 1) + (alpha ? 1 : 0);
  image.type = bits == 16 ? DAXI_SAMPLE_16U : DAXI_SAMPLE_8U;
  image.bits = bits;
  image.maxValue = bits == 16 ? 65535 : 255;
  image.orientation = exifOrientation(state);
  image.pages = 1;
  image.format = DAXI_IMAGE_PNG;
  return checkSides(image, cfg);
}

// Rows where they belong, or by a row that is turned; of interlaced ones all rows, since every pass adds to them.
DaxStatus readPngRows(PngState& state, const DaxiImageRecord& image, const Canvas& canvas, uint8_t* rows,
                      uint64_t stride) {
  if (setjmp(png_jmpbuf(state.png))) return state.status;
  if (image.bits == 16) png_set_swap(state.png);
  png_set_expand(state.png);
  const int passes = png_set_interlace_handling(state.png);
  png_read_update_info(state.png, state.info);
  if (png_get_rowbytes(state.png, state.info) != rowBytes(image)) return DAX_STS_DATA_RANGE;
  for (int pass = 0; pass < passes; ++pass) {
    for (int32_t y = 0; y < image.height; ++y) {
      uint8_t* const row = rows ? rows + static_cast<uint64_t>(y) * stride : canvas.at(0, y);
      png_read_row(state.png, row, nullptr);
      if (rows && pass == passes - 1) canvas.put(0, y, image.width, row);
    }
  }
  png_read_end(state.png, nullptr);
  return DAX_STS_OK;
}

bool pngStarts(FileBytes file) {
  return file.size() >= 8 && png_sig_cmp(file.data(), 0, 8) == 0;
}

DaxStatus openPng(PngState& state, FileBytes file, const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
  if (!state.info) return DAX_STS_NO_MEMORY;
  state.at = file.data(), state.left = file.size();
  return readPngHead(state, cfg, image);
}

DaxStatus pngInfo(FileBytes file, const DaxiImageReadCfg& cfg, DaxiImageRecord& image, DaxioMessage* message) {
  PngState state(false, message);
  return openPng(state, file, cfg, image);
}

DaxStatus pngRead(FileBytes file, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, const Canvas& canvas,
                  DaxioMessage* message) {
  PngState state(false, message);
  DaxiImageRecord again;
  if (const DaxStatus status = openPng(state, file, cfg, again); status != DAX_STS_OK) return status;
  std::vector<uint8_t> turned;
  uint64_t stride = 0;
  if (!canvas.isStraight()) {
    const bool interlaced = png_get_interlace_type(state.png, state.info) != PNG_INTERLACE_NONE;
    stride = interlaced ? rowBytes(image) : 0;
    turned.resize(rowBytes(image) * static_cast<uint64_t>(interlaced ? image.height : 1));
  }
  return readPngRows(state, image, canvas, turned.empty() ? nullptr : turned.data(), stride);
}

// The nearest of the values of fewer bits, one a byte.
void quantise(const uint8_t* row, uint8_t* to, int32_t count, int32_t bits) {
  const int32_t max = (1 << bits) - 1;
  for (int32_t x = 0; x < count; ++x) to[x] = static_cast<uint8_t>((row[x] * max + 127) / 255);
}

DaxStatus writePng(PngState& state, const DaxiImageRecord& image, const Pixels& pixels, int level, int bits,
                   uint8_t* row) {
  constexpr int kColours[] = {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_RGBA};
  if (setjmp(png_jmpbuf(state.png))) return state.status;
  png_set_write_fn(state.png, &state, giveBytes, nullptr);
  png_set_user_limits(state.png, INT32_MAX, INT32_MAX);
  png_set_compression_level(state.png, level);
  png_set_IHDR(state.png, state.info, static_cast<png_uint_32>(image.width), static_cast<png_uint_32>(image.height),
               bits, kColours[image.channels - 1], PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_write_info(state.png, state.info);
  if (bits == 16) png_set_swap(state.png);
  if (bits < 8) png_set_packing(state.png);
  for (int32_t y = 0; y < image.height; ++y) {
    if (bits < 8) quantise(pixels.row(y), row, image.width, bits);
    png_write_row(state.png, bits < 8 ? row : pixels.row(y));
  }
  png_write_end(state.png, nullptr);
  return DAX_STS_OK;
}

DaxStatus pngWrite(const DaxiImageRecord& image, const Pixels& pixels, const DaxiImageWriteCfg& cfg, Growing& file,
                   DaxioMessage* message) {
  if (image.type == DAXI_SAMPLE_32F) return DAX_STS_UNSUPPORTED_METHOD;
  const int whole = image.type == DAXI_SAMPLE_16U ? 16 : 8, bits = image.bits == 0 ? whole : image.bits;
  const bool packs = whole == 8 && image.channels == 1 && (bits == 1 || bits == 2 || bits == 4);
  // Deep samples of fewer bits stay as they are.
  const bool fits = bits == whole || packs || (whole == 16 && bits > 8 && bits < 16);
  if (!fits) return DAX_STS_UNSUPPORTED_METHOD;
  PngState state(true, message);
  if (!state.info) return DAX_STS_NO_MEMORY;
  state.file = &file;
  std::vector<uint8_t> row(packs ? static_cast<size_t>(image.width) : 0);
  return writePng(state, image, pixels, cfg.level, packs ? bits : whole, row.data());
}

}  // namespace

const Codec kPng = {DAXI_IMAGE_PNG, pngStarts, pngInfo, pngRead, pngWrite};

}  // namespace dax::io
