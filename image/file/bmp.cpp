// BMP files.
#include <algorithm>
#include <cstring>

#include "image/file/bmp_head.h"

namespace dax {
namespace {

bool bmpStarts(const uint8_t* bytes, uint64_t count) {
  return count >= 2 && bytes[0] == 'B' && bytes[1] == 'M';
}

DaxStatus bmpInfo(ByteSource& source, const DaxiImageReadCfg& cfg, DaxiImageRecord& image) {
  BmpHead head;
  DAX_REQUIRE_OK(readBmpHead(source, head));
  DAX_REQUIRE_OK(checkSides(head.image, cfg));
  DAX_REQUIRE(source.seek(head.pixels), DAX_STS_FILE_READ);
  if (!head.isRuns()) {
    const uint64_t needed = head.rowBytes() * static_cast<uint64_t>(head.image.height - 1) +
                            (static_cast<uint64_t>(head.image.width) * static_cast<uint64_t>(head.bits) + 7) / 8;
    DAX_REQUIRE(needed <= source.left(), DAX_STS_FILE_READ);
  }
  image = head.image;
  return DAX_STS_OK;
}

void putIndex(const BmpHead& head, uint32_t index, uint8_t* pixel) {
  const BmpColour& colour = head.palette[index];
  pixel[0] = colour.red;
  if (head.image.channels == 1) return;
  pixel[1] = colour.green, pixel[2] = colour.blue;
}

// Pixels of a row from the packed bytes of them, which begin a byte.
void unpack(const BmpHead& head, const uint8_t* packed, int32_t count, uint8_t* pixels) {
  const int32_t channels = head.image.channels;
  for (int32_t i = 0; i < count; ++i, pixels += channels) {
    if (head.bits <= 8) {
      const int32_t place = i * head.bits;
      const int32_t low = 8 - head.bits - place % 8;
      putIndex(head, static_cast<uint32_t>(packed[place / 8] >> low & ((1 << head.bits) - 1)), pixels);
    } else if (head.bits == 24) {
      pixels[0] = packed[3 * i + 2], pixels[1] = packed[3 * i + 1], pixels[2] = packed[3 * i];
    } else {
      const int32_t bytes = head.bits / 8;
      const uint32_t pixel = littleEndian(packed + bytes * i, bytes);
      for (int32_t c = 0; c < channels; ++c) pixels[c] = head.masks[c].of(pixel);
    }
  }
}

DaxStatus readPlainRow(ByteSource& source, const BmpHead& head, uint8_t* row) {
  uint8_t packed[1024];
  constexpr int32_t kPixels = 8 * sizeof(packed) / 32;  // of the widest
  for (int32_t x = 0, count; x < head.image.width; x += count) {
    count = std::min(kPixels, head.image.width - x);
    DAX_REQUIRE(source.read(packed, static_cast<uint64_t>((count * head.bits + 7) / 8)), DAX_STS_FILE_READ);
    unpack(head, packed, count, row + ptrdiff_t{x} * head.image.channels);
  }
  return DAX_STS_OK;
}

DaxStatus readPlain(ByteSource& source, const BmpHead& head, PixelRows<uint8_t> rows) {
  const int32_t height = head.image.height;
  for (int32_t i = 0; i < height; ++i) {
    DAX_REQUIRE(source.seek(head.pixels + head.rowBytes() * static_cast<uint64_t>(i)), DAX_STS_FILE_READ);
    DAX_REQUIRE_OK(readPlainRow(source, head, rows.row(head.topDown ? i : height - 1 - i)));
  }
  return DAX_STS_OK;
}

// Run lengths: pairs of a count and a colour, or of 0 and a code: 0 ends the row, 1 the image, 2 moves, any other is
// a number of colours that follow, filled up to a whole number of 16-bit words.
class RunReader {
 public:
  RunReader(ByteSource& source, const BmpHead& head, PixelRows<uint8_t> rows)
      : source_(source), head_(head), rows_(rows) {}

  DaxStatus read() {
    clear();
    for (;;) {
      const int32_t count = source_.next(), value = source_.next();
      DAX_REQUIRE(value >= 0, DAX_STS_FILE_READ);
      if (count == 0 && value == 1) return DAX_STS_OK;
      DAX_REQUIRE_OK(count > 0 ? putRun(count, value) : value == 0 ? endRow() : value == 2 ? move() : putEach(value));
    }
  }

 private:
  // Pixels that no run reaches have the first colour.
  void clear() {
    for (int32_t y = 0; y < head_.image.height; ++y) {
      uint8_t* const row = rows_.row(y);
      for (int32_t x = 0; x < head_.image.width; ++x) putIndex(head_, 0, row + ptrdiff_t{x} * head_.image.channels);
    }
  }

  DaxStatus put(int32_t index) {
    DAX_REQUIRE(x_ < head_.image.width && y_ < head_.image.height, DAX_STS_DATA_RANGE);
    uint8_t* const row = rows_.row(head_.image.height - 1 - y_);
    putIndex(head_, static_cast<uint32_t>(index), row + ptrdiff_t{x_++} * head_.image.channels);
    return DAX_STS_OK;
  }

  // The i-th of the colours in bytes of two or one.
  int32_t part(int32_t byte, int32_t i) const { return head_.bits == 8 ? byte : i % 2 == 0 ? byte >> 4 : byte & 15; }

  DaxStatus putRun(int32_t count, int32_t value) {
    for (int32_t i = 0; i < count; ++i) DAX_REQUIRE_OK(put(part(value, i)));
    return DAX_STS_OK;
  }

  DaxStatus putEach(int32_t count) {
    const int32_t perByte = 8 / head_.bits, bytes = (count + perByte - 1) / perByte;
    int32_t byte = 0;
    for (int32_t i = 0; i < count; ++i) {
      if (i % perByte == 0) byte = source_.next();
      DAX_REQUIRE(byte >= 0, DAX_STS_FILE_READ);
      DAX_REQUIRE_OK(put(part(byte, i)));
    }
    return bytes % 2 == 1 && source_.next() < 0 ? DAX_STS_FILE_READ : DAX_STS_OK;
  }

  DaxStatus endRow() {
    x_ = 0;
    DAX_REQUIRE(y_ < head_.image.height, DAX_STS_DATA_RANGE);
    ++y_;
    return DAX_STS_OK;
  }

  DaxStatus move() {
    const int32_t right = source_.next(), up = source_.next();
    DAX_REQUIRE(up >= 0, DAX_STS_FILE_READ);
    DAX_REQUIRE(x_ + right <= head_.image.width && y_ + up < head_.image.height, DAX_STS_DATA_RANGE);
    x_ += right, y_ += up;
    return DAX_STS_OK;
  }

  ByteSource& source_;
  const BmpHead& head_;
  PixelRows<uint8_t> rows_;
  int32_t x_ = 0, y_ = 0;  // y from the bottom
};

DaxStatus bmpRead(ByteSource& source, const DaxiImageReadCfg&, const DaxiImageRecord& image, PixelRows<uint8_t> rows) {
  BmpHead head;
  DAX_REQUIRE(source.seek(0), DAX_STS_FILE_READ);
  DAX_REQUIRE_OK(readBmpHead(source, head));
  // A file may have changed in between.
  DAX_REQUIRE(head.image.width == image.width && head.image.height == image.height, DAX_STS_FILE_READ);
  DAX_REQUIRE(head.image.channels == image.channels && source.seek(head.pixels), DAX_STS_FILE_READ);
  return head.isRuns() ? RunReader(source, head, rows).read() : readPlain(source, head, rows);
}

// The head as written: of version 4 where there is alpha, which it alone has a mask for.
struct BmpPlan {
  uint32_t infoBytes, colours;
  int32_t bits;
  uint64_t rowBytes;

  explicit BmpPlan(const DaxiImageRecord& image)
      : infoBytes(image.channels == 4 ? 108 : 40),
        colours(image.channels == 1 ? 256 : 0),
        bits(8 * image.channels),
        rowBytes((rowSamples(image) + 3) / 4 * 4) {}
  uint32_t headBytes() const { return 14 + infoBytes + 4 * colours; }
};

DaxStatus bmpSize(const DaxiImageRecord& image, uint64_t* bytes) {
  DAX_REQUIRE(image.type == DAXI_SAMPLE_8U && image.channels != 2, DAX_STS_UNSUPPORTED_METHOD);
  DAX_REQUIRE((image.bits == 0 || image.bits == 8) && (image.maxValue == 0 || image.maxValue == 255),
              DAX_STS_UNSUPPORTED_METHOD);
  const BmpPlan plan(image);
  *bytes = plan.headBytes() + plan.rowBytes * static_cast<uint64_t>(image.height);
  return *bytes <= UINT32_MAX ? DAX_STS_OK : DAX_STS_IMAGE_SIZE;
}

void writeBmpHead(ByteSink& sink, const DaxiImageRecord& image, const BmpPlan& plan) {
  uint8_t head[14 + 108] = {'B', 'M'};
  const uint64_t pixels = plan.rowBytes * static_cast<uint64_t>(image.height);
  const auto put = [&](int32_t place, int32_t bytes, uint64_t value) {
    putLittleEndian(head + place, bytes, static_cast<uint32_t>(value));
  };
  put(2, 4, plan.headBytes() + pixels), put(10, 4, plan.headBytes()), put(14, 4, plan.infoBytes);
  put(18, 4, static_cast<uint64_t>(image.width)), put(22, 4, static_cast<uint64_t>(image.height));
  put(26, 2, 1), put(28, 2, static_cast<uint64_t>(plan.bits)), put(34, 4, pixels), put(46, 4, plan.colours);
  if (image.channels == 4) {
    put(30, 4, kBmpMasks);
    put(54, 4, 0xFF0000), put(58, 4, 0xFF00), put(62, 4, 0xFF), put(66, 4, 0xFF000000);
    put(70, 4, 0x73524742);  // "sRGB"
  }
  sink.write(head, 14 + uint64_t{plan.infoBytes});
  for (uint32_t i = 0; i < plan.colours; ++i) {
    const auto grey = static_cast<uint8_t>(i);
    const uint8_t entry[4] = {grey, grey, grey, 0};
    sink.write(entry, 4);
  }
}

void writeBmpRow(ByteSink& sink, const uint8_t* row, const DaxiImageRecord& image, uint64_t rowBytes) {
  const int32_t channels = image.channels;
  for (int32_t x = 0; x < image.width; ++x) {
    const uint8_t* const pixel = row + ptrdiff_t{x} * channels;
    uint8_t packed[4];
    std::memcpy(packed, pixel, static_cast<size_t>(channels));
    if (channels >= 3) packed[0] = pixel[2], packed[2] = pixel[0];
    sink.write(packed, static_cast<uint64_t>(channels));
  }
  constexpr uint8_t kFill[4] = {};
  sink.write(kFill, rowBytes - rowSamples(image));
}

void bmpWrite(ByteSink& sink, const DaxiImageRecord& image, PixelRows<const uint8_t> rows, const DaxiImageWriteCfg&) {
  const BmpPlan plan(image);
  writeBmpHead(sink, image, plan);
  for (int32_t y = image.height; y-- > 0;) writeBmpRow(sink, rows.row(y), image, plan.rowBytes);
}

}  // namespace

const ImageFormat kBmpFormat = {DAXI_IMAGE_BMP, bmpStarts, bmpInfo, bmpRead, bmpSize, bmpWrite};

}  // namespace dax
