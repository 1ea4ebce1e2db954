// JPEG by libjpeg, which leaves functions by longjmp as well; see png.cpp.
#include <csetjmp>
#include <cstdio>
#include <vector>

#include <jpeglib.h>
// After it, which it needs.
#include <jerror.h>

#include "io/codec.h"

namespace dax::io {
namespace {

constexpr int kMaxScans = 100;

// What the two directions share: errors that jump.
struct JpegErrors {
  jpeg_error_mgr manager;
  jmp_buf target = {};
  DaxioMessage* message;
  DaxStatus status = DAX_STS_DATA_RANGE;

  explicit JpegErrors(DaxioMessage* where);
};

JpegErrors& errorsOf(j_common_ptr codec) {
  return *reinterpret_cast<JpegErrors*>(codec->err);  // its first member
}

[[noreturn]] void failJpeg(j_common_ptr codec) {
  JpegErrors& errors = errorsOf(codec);
  char text[JMSG_LENGTH_MAX];
  codec->err->format_message(codec, text);
  say(errors.message, text);
  const int code = codec->err->msg_code;
  if (code == JERR_OUT_OF_MEMORY) errors.status = DAX_STS_NO_MEMORY;
  if (code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER || code == JERR_INPUT_EMPTY) errors.status = DAX_STS_FILE_READ;
  if (code == JERR_BAD_PRECISION || code == JERR_SOF_UNSUPPORTED) errors.status = DAX_STS_UNSUPPORTED_METHOD;
  longjmp(errors.target, 1);
}

// Extra bytes between segments lose no pixels; every other warning does.
void warnJpeg(j_common_ptr codec, int level) {
  if (level < 0 && codec->err->msg_code != JWRN_EXTRANEOUS_DATA) failJpeg(codec);
}

JpegErrors::JpegErrors(DaxioMessage* where) : message(where) {
  jpeg_std_error(&manager);
  manager.error_exit = failJpeg;
  manager.emit_message = warnJpeg;
  manager.output_message = [](j_common_ptr) {};
}

// A few bytes can ask for any number of passes over the whole image.
void countScans(j_common_ptr codec) {
  if (!codec->is_decompressor) return;
  if (reinterpret_cast<j_decompress_ptr>(codec)->input_scan_number <= kMaxScans) return;
  say(errorsOf(codec).message, "more than 100 scans");
  longjmp(errorsOf(codec).target, 1);
}

struct JpegReader {
  jpeg_decompress_struct jpeg = {};
  jpeg_progress_mgr progress = {};
  JpegErrors errors;

  explicit JpegReader(DaxioMessage* message) : errors(message) { jpeg.err = &errors.manager; }
  ~JpegReader() { jpeg_destroy_decompress(&jpeg); }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;
};

int32_t exifOrientation(const jpeg_decompress_struct& jpeg) {
  constexpr char kExif[6] = {'E', 'x', 'i', 'f', 0, 0};
  for (const auto* marker = jpeg.marker_list; marker; marker = marker->next) {
    if (marker->marker != JPEG_APP0 + 1 || marker->data_length < sizeof(kExif)) continue;
    if (std::memcmp(marker->data, kExif, sizeof(kExif)) != 0) continue;
    return orientationOf({marker->data + sizeof(kExif), marker->data_length - sizeof(kExif)});
  }
  return 1;
}

DaxStatus readJpegHead(JpegReader& reader, FileBytes file, const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
  jpeg_decompress_struct& jpeg = reader.jpeg;
  if (setjmp(reader.errors.target)) return reader.errors.status;
  jpeg_create_decompress(&jpeg);
  reader.progress.progress_monitor = countScans;
  jpeg.progress = &reader.progress;
  jpeg_mem_src(&jpeg, file.data(), static_cast<unsigned long>(file.size()));
  jpeg_save_markers(&jpeg, JPEG_APP0 + 1, 0xFFFF);
  jpeg_read_header(&jpeg, TRUE);
  const int parts = jpeg.num_components;
  if (parts != 1 && parts != 3 && parts != 4) return DAX_STS_UNSUPPORTED_METHOD;
  const auto side = [](JDIMENSION length) { return static_cast<int32_t>(length); };
  image = {side(jpeg.image_width),
           side(jpeg.image_height),
           parts == 1 ? 1 : 3,
           DAXI_SAMPLE_8U,
           8,
           255,
           exifOrientation(jpeg),
           1,
           DAXI_IMAGE_JPEG,
           0,
           0};
  return checkSides(image, cfg);
}

// Cyan, magenta, yellow, black, of ink or, as Adobe writes them, of what is left of the light.
void takeCmyk(const uint8_t* cmyk, uint8_t* rgb, int32_t count, bool inverted) {
  for (int32_t i = 0; i < count; ++i, cmyk += 4, rgb += 3) {
    const int32_t flip = inverted ? 0 : 255, black = cmyk[3] ^ flip;
    for (int32_t c = 0; c < 3; ++c) rgb[c] = static_cast<uint8_t>(((cmyk[c] ^ flip) * black + 127) / 255);
  }
}

// row: room for four samples a pixel where the row is not decoded in its place.
DaxStatus readJpegRows(JpegReader& reader, const DaxiImageRecord& image, const Canvas& canvas, uint8_t* row) {
  jpeg_decompress_struct& jpeg = reader.jpeg;
  if (setjmp(reader.errors.target)) return reader.errors.status;
  const bool cmyk = jpeg.num_components == 4;
  jpeg.out_color_space = cmyk ? JCS_CMYK : image.channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
  jpeg_start_decompress(&jpeg);
  while (jpeg.output_scanline < jpeg.output_height) {
    const int64_t y = jpeg.output_scanline;
    JSAMPROW to = row ? row : canvas.at(0, y);
    jpeg_read_scanlines(&jpeg, &to, 1);
    if (cmyk) takeCmyk(row, row, image.width, jpeg.saw_Adobe_marker != FALSE);
    if (row) canvas.put(0, y, image.width, row);
  }
  jpeg_finish_decompress(&jpeg);
  return DAX_STS_OK;
}

bool jpegStarts(FileBytes file) {
  return file.size() >= 3 && file[0] == 0xFF && file[1] == 0xD8 && file[2] == 0xFF;
}

DaxStatus jpegInfo(FileBytes file, const DaxiImageReadCfg& cfg, DaxiImageRecord& image, DaxioMessage* message) {
  JpegReader reader(message);
  return readJpegHead(reader, file, cfg, image);
}

DaxStatus jpegRead(FileBytes file, const DaxiImageReadCfg& cfg, const DaxiImageRecord& image, const Canvas& canvas,
                   DaxioMessage* message) {
  JpegReader reader(message);
  DaxiImageRecord again;
  if (const DaxStatus status = readJpegHead(reader, file, cfg, again); status != DAX_STS_OK) return status;
  std::vector<uint8_t> row;
  if (!canvas.isStraight() || reader.jpeg.num_components == 4) row.resize(4 * static_cast<size_t>(image.width));
  return readJpegRows(reader, image, canvas, row.empty() ? nullptr : row.data());
}

struct JpegWriter {
  jpeg_compress_struct jpeg = {};
  JpegErrors errors;
  unsigned char* data = nullptr;
  unsigned long size = 0;

  explicit JpegWriter(DaxioMessage* message) : errors(message) { jpeg.err = &errors.manager; }
  ~JpegWriter() {
    jpeg_destroy_compress(&jpeg);
    std::free(data);
  }
  JpegWriter(const JpegWriter&) = delete;
  JpegWriter& operator=(const JpegWriter&) = delete;
};

DaxStatus writeJpeg(JpegWriter& writer, const DaxiImageRecord& image, const Pixels& pixels, int quality) {
  jpeg_compress_struct& jpeg = writer.jpeg;
  if (setjmp(writer.errors.target)) return writer.errors.status;
  jpeg_create_compress(&jpeg);
  jpeg_mem_dest(&jpeg, &writer.data, &writer.size);
  jpeg.image_width = static_cast<JDIMENSION>(image.width);
  jpeg.image_height = static_cast<JDIMENSION>(image.height);
  jpeg.input_components = image.channels;
  jpeg.in_color_space = image.channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
  jpeg_set_defaults(&jpeg);
  jpeg_set_quality(&jpeg, quality, TRUE);
  jpeg_start_compress(&jpeg, TRUE);
  while (jpeg.next_scanline < jpeg.image_height) {
    auto* row = const_cast<JSAMPROW>(pixels.row(jpeg.next_scanline));
    jpeg_write_scanlines(&jpeg, &row, 1);
  }
  jpeg_finish_compress(&jpeg);
  return DAX_STS_OK;
}

DaxStatus jpegWrite(const DaxiImageRecord& image, const Pixels& pixels, const DaxiImageWriteCfg& cfg, Growing& file,
                    DaxioMessage* message) {
  const bool fits = image.type == DAXI_SAMPLE_8U && (image.channels == 1 || image.channels == 3) &&
                    (image.bits == 0 || image.bits == 8);
  if (!fits) return DAX_STS_UNSUPPORTED_METHOD;
  if (image.width > JPEG_MAX_DIMENSION || image.height > JPEG_MAX_DIMENSION) return DAX_STS_IMAGE_SIZE;
  JpegWriter writer(message);
  if (const DaxStatus status = writeJpeg(writer, image, pixels, cfg.quality); status != DAX_STS_OK) return status;
  return file.append(writer.data, writer.size) ? DAX_STS_OK : DAX_STS_NO_MEMORY;
}

}  // namespace

const Codec kJpeg = {DAXI_IMAGE_JPEG, jpegStarts, jpegInfo, jpegRead, jpegWrite};

}  // namespace dax::io
