// PFM: floats from the bottom row up; the sign of the scale tells their byte order.
#include "image/file/image_file.h"
#include "image/file/raw.h"
#include "image/file/text_head.h"

namespace dax {
namespace {

bool pfmStarts(const uint8_t* bytes, uint64_t count) {
  return count >= 3 && bytes[0] == 'P' && (bytes[1] == 'f' || bytes[1] == 'F') && isBlank(bytes[2]);
}

// A decimal number other than 0, whatever the locale; only its sign is of use.
DaxStatus readScale(ByteSource& source, bool* isNegative) {
  Word<40> word;
  word.read(source);
  DAX_REQUIRE(word.length > 0 && word.end >= 0, DAX_STS_FILE_READ);
  DAX_REQUIRE(word.length < 40, DAX_STS_DATA_RANGE);
  *isNegative = word.text[0] == '-';
  int32_t i = word.text[0] == '-' || word.text[0] == '+' ? 1 : 0, digits = 0, points = 0;
  bool isZero = true;
  for (; i < word.length && (word.text[i] == '.' || (word.text[i] >= '0' && word.text[i] <= '9')); ++i) {
    points += word.text[i] == '.';
    digits += word.text[i] != '.';
    isZero &= word.text[i] == '.' || word.text[i] == '0';
  }
  DAX_REQUIRE(digits > 0 && points <= 1 && !isZero, DAX_STS_DATA_RANGE);
  if (i == word.length) return DAX_STS_OK;
  DAX_REQUIRE(word.text[i] == 'e' || word.text[i] == 'E', DAX_STS_DATA_RANGE);
  ++i;
  i += i < word.length && (word.text[i] == '-' || word.text[i] == '+');
  DAX_REQUIRE(i < word.length, DAX_STS_DATA_RANGE);
  for (; i < word.length; ++i) DAX_REQUIRE(word.text[i] >= '0' && word.text[i] <= '9', DAX_STS_DATA_RANGE);
  return DAX_STS_OK;
}

DaxStatus readPfmHead(ByteSource& source, DaxiImageRecord& image, bool* isLittle) {
  char magic[2];
  DAX_REQUIRE(source.read(magic, 2), DAX_STS_FILE_READ);
  int64_t width, height;
  DAX_REQUIRE_OK(readCount(source, INT32_MAX, &width));
  DAX_REQUIRE_OK(readCount(source, INT32_MAX, &height));
  DAX_REQUIRE_OK(readScale(source, isLittle));
  image = plainRecord(DAXI_IMAGE_PFM, width, height, magic[1] == 'f' ? 1 : 3, DAXI_SAMPLE_32F, 32, 0);
  return DAX_STS_OK;
}

DaxStatus pfmInfo(ByteSource& source, const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
  bool isLittle;
  DAX_REQUIRE_OK(readPfmHead(source, image, &isLittle));
  DAX_REQUIRE_OK(checkSides(image, cfg));
  DAX_REQUIRE(image.bytes <= source.left(), DAX_STS_FILE_READ);
  return DAX_STS_OK;
}

DaxStatus pfmRead(ByteSource& source, const DaxiImageReadCfg&, const DaxiImageRecord& image, PixelRows<uint8_t> rows) {
  DaxiImageRecord found;
  bool isLittle;
  DAX_REQUIRE(source.seek(0), DAX_STS_FILE_READ);
  DAX_REQUIRE_OK(readPfmHead(source, found, &isLittle));
  for (int32_t y = image.height; y-- > 0;) {
    DAX_REQUIRE(source.read(rows.row(y), rowBytesOf(image)), DAX_STS_FILE_READ);
    if (!isLittle) swapSamples(rows.row(y), rowSamples(image), image.type);
  }
  return DAX_STS_OK;
}

struct PfmText {
  char text[48];
  uint64_t length;
};

PfmText pfmHead(const DaxiImageRecord& image, bool isBig) {
  PfmText head;
  char* at = head.text;
  *at++ = 'P', *at++ = image.channels == 1 ? 'f' : 'F', *at++ = '\n';
  at = putCount(at, static_cast<uint32_t>(image.width)), *at++ = ' ';
  at = putCount(at, static_cast<uint32_t>(image.height)), *at++ = '\n';
  *at++ = isBig ? '+' : '-', *at++ = '1', *at++ = '.', *at++ = '0', *at++ = '\n';
  head.length = static_cast<uint64_t>(at - head.text);
  return head;
}

DaxStatus pfmSize(const DaxiImageRecord& image, uint64_t* bytes) {
  DAX_REQUIRE(image.channels == 1 || image.channels == 3, DAX_STS_UNSUPPORTED_METHOD);
  DAX_REQUIRE(image.type == DAXI_SAMPLE_32F, DAX_STS_UNSUPPORTED_METHOD);
  DAX_REQUIRE_OK(kRawFormat.size(image, bytes));
  *bytes += pfmHead(image, false).length;
  return DAX_STS_OK;
}

void pfmWrite(ByteSink& sink, const DaxiImageRecord& image, PixelRows<const uint8_t> rows,
              const DaxiImageWriteCfg& cfg) {
  const PfmText head = pfmHead(image, cfg.bigEndian != 0);
  sink.write(head.text, head.length);
  for (int32_t y = image.height; y-- > 0;) {
    writeSamples(sink, rows.row(y), rowSamples(image), image.type, cfg.bigEndian != 0);
  }
}

}  // namespace

const ImageFormat kPfmFormat = {DAXI_IMAGE_PFM, pfmStarts, pfmInfo, pfmRead, pfmSize, pfmWrite};

}  // namespace dax
