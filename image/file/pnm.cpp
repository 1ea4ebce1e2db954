// PGM and PPM, P2, P3, P5 and P6, as netpbm describes them.
#include <bit>

#include "image/file/image_file.h"
#include "image/file/raw.h"
#include "image/file/text_head.h"
#include "image/file/words.h"

namespace dax {
namespace {

bool pnmStarts(const uint8_t* bytes, uint64_t count) {
  return count >= 2 && bytes[0] == 'P' && (bytes[1] == '2' || bytes[1] == '3' || bytes[1] == '5' || bytes[1] == '6');
}

struct PnmHead {
  bool isText;
  int64_t max;
  DaxiImageRecord image;
};

DaxStatus readPnmHead(ByteSource& source, PnmHead& head) {
  char magic[2];
  DAX_REQUIRE(source.read(magic, 2), DAX_STS_FILE_READ);
  int64_t width, height;
  DAX_REQUIRE_OK(readCount(source, INT32_MAX, &width));
  DAX_REQUIRE_OK(readCount(source, INT32_MAX, &height));
  DAX_REQUIRE_OK(readCount(source, 65535, &head.max));
  DAX_REQUIRE(head.max >= 1, DAX_STS_DATA_RANGE);
  head.isText = magic[1] <= '3';
  const bool wide = head.max > 255;
  head.image = plainRecord(DAXI_IMAGE_PNM, width, height, magic[1] == '2' || magic[1] == '5' ? 1 : 3,
                           wide ? DAXI_SAMPLE_16U : DAXI_SAMPLE_8U, std::bit_width(static_cast<uint32_t>(head.max)),
                           wide ? static_cast<int32_t>(head.max) : 255);
  return DAX_STS_OK;
}

DaxStatus pnmInfo(ByteSource& source, const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
  PnmHead head;
  DAX_REQUIRE_OK(readPnmHead(source, head));
  image = head.image;
  DAX_REQUIRE_OK(checkSides(image, cfg));
  // A sample of text takes a digit and what ends it.
  const uint64_t samples = rowSamples(image) * static_cast<uint64_t>(image.height);
  DAX_REQUIRE((head.isText ? 2 * samples : image.bytes) <= source.left(), DAX_STS_FILE_READ);
  return DAX_STS_OK;
}

// Stretches bytes, or leaves words: 8 bits have values of 0..255 in memory.
DaxStatus takeRow(uint8_t* row, const PnmHead& head) {
  const uint64_t count = rowSamples(head.image);
  if (head.image.type == DAXI_SAMPLE_16U) {
    return wordsWithin(row, count, static_cast<int32_t>(head.max)) ? DAX_STS_OK : DAX_STS_DATA_RANGE;
  }
  if (head.max == 255) return DAX_STS_OK;
  for (uint64_t i = 0; i < count; ++i) {
    DAX_REQUIRE(row[i] <= head.max, DAX_STS_DATA_RANGE);
    row[i] = stretchedTo8(row[i], static_cast<uint32_t>(head.max));
  }
  return DAX_STS_OK;
}

DaxStatus readTextRow(ByteSource& source, uint8_t* row, const PnmHead& head) {
  for (uint64_t i = 0; i < rowSamples(head.image); ++i) {
    int64_t value;
    DAX_REQUIRE_OK(readCount(source, head.max, &value));
    if (head.image.type == DAXI_SAMPLE_16U) {
      putWord(row, i, static_cast<uint16_t>(value));
    } else {
      row[i] = static_cast<uint8_t>(value);
    }
  }
  return DAX_STS_OK;
}

DaxStatus readPnmRow(ByteSource& source, uint8_t* row, const PnmHead& head) {
  if (head.isText) return readTextRow(source, row, head);
  DAX_REQUIRE(source.read(row, rowBytesOf(head.image)), DAX_STS_FILE_READ);
  swapSamples(row, rowSamples(head.image), head.image.type);
  return DAX_STS_OK;
}

DaxStatus pnmRead(ByteSource& source, const DaxiImageReadCfg&, const DaxiImageRecord& image, PixelRows<uint8_t> rows) {
  PnmHead head;
  DAX_REQUIRE(source.seek(0), DAX_STS_FILE_READ);
  DAX_REQUIRE_OK(readPnmHead(source, head));
  DAX_REQUIRE(head.image.width == image.width && head.image.type == image.type, DAX_STS_FILE_READ);
  DAX_REQUIRE(head.image.channels == image.channels, DAX_STS_FILE_READ);
  for (int32_t y = 0; y < image.height; ++y) {
    DAX_REQUIRE_OK(readPnmRow(source, rows.row(y), head));
    DAX_REQUIRE_OK(takeRow(rows.row(y), head));
  }
  return DAX_STS_OK;
}

struct PnmText {
  char text[48];
  uint64_t length;
};

PnmText pnmHead(const DaxiImageRecord& image) {
  const int32_t max = image.type == DAXI_SAMPLE_8U ? 255 : image.maxValue == 0 ? 65535 : image.maxValue;
  PnmText head;
  char* at = head.text;
  *at++ = 'P', *at++ = image.channels == 1 ? '5' : '6', *at++ = '\n';
  at = putCount(at, static_cast<uint32_t>(image.width)), *at++ = ' ';
  at = putCount(at, static_cast<uint32_t>(image.height)), *at++ = '\n';
  at = putCount(at, static_cast<uint32_t>(max)), *at++ = '\n';
  head.length = static_cast<uint64_t>(at - head.text);
  return head;
}

DaxStatus pnmSize(const DaxiImageRecord& image, uint64_t* bytes) {
  const bool wide = image.type == DAXI_SAMPLE_16U;
  DAX_REQUIRE(image.channels == 1 || image.channels == 3, DAX_STS_UNSUPPORTED_METHOD);
  DAX_REQUIRE(image.type == DAXI_SAMPLE_8U || wide, DAX_STS_UNSUPPORTED_METHOD);
  const bool maxFits =
      image.maxValue == 0 || (wide ? image.maxValue >= 256 && image.maxValue <= 65535 : image.maxValue == 255);
  DAX_REQUIRE(maxFits, DAX_STS_UNSUPPORTED_METHOD);
  DAX_REQUIRE_OK(kRawFormat.size(image, bytes));
  *bytes += pnmHead(image).length;
  return DAX_STS_OK;
}

void pnmWrite(ByteSink& sink, const DaxiImageRecord& image, PixelRows<const uint8_t> rows, const DaxiImageWriteCfg&) {
  const PnmText head = pnmHead(image);
  sink.write(head.text, head.length);
  for (int32_t y = 0; y < image.height; ++y) writeSamples(sink, rows.row(y), rowSamples(image), image.type, true);
}

}  // namespace

const ImageFormat kPnmFormat = {DAXI_IMAGE_PNM, pnmStarts, pnmInfo, pnmRead, pnmSize, pnmWrite};

}  // namespace dax
