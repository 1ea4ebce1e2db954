#include "io/codec.h"

#include <algorithm>

namespace dax::io {
namespace {

class ExifNumbers {
 public:
  explicit ExifNumbers(FileBytes bytes) : bytes_(bytes), little_(!bytes.empty() && bytes[0] == 'I') {}

  bool holds(uint64_t place, uint64_t count) const { return place <= bytes_.size() && count <= bytes_.size() - place; }
  // 0 outside the block.
  uint32_t at(uint64_t place, uint64_t count) const {
    if (!holds(place, count)) return 0;
    uint32_t value = 0;
    for (uint64_t i = 0; i < count; ++i) value = value << 8 | bytes_[place + (little_ ? count - 1 - i : i)];
    return value;
  }

 private:
  FileBytes bytes_;
  bool little_;
};

}  // namespace

void say(DaxioMessage* message, const char* text) {
  if (!message) return;
  const size_t length = std::min(std::strlen(text), sizeof(message->text) - 1);
  std::memcpy(message->text, text, length);
  message->text[length] = '\0';
}

DaxStatus checkSides(DaxiImageRecord& image, const DaxiImageReadCfg& cfg) {
  const bool turned = cfg.upright != 0 && image.orientation >= 5;
  const int32_t width = turned ? image.height : image.width, height = turned ? image.width : image.height;
  if (!(width >= 1 && width <= cfg.maxWidth && height >= 1 && height <= cfg.maxHeight)) return DAX_STS_IMAGE_SIZE;
  const uint64_t pixels = static_cast<uint64_t>(width) * static_cast<uint64_t>(height);
  if (!(pixels <= cfg.maxPixels)) return DAX_STS_IMAGE_SIZE;
  image.bytes = pixels * static_cast<uint64_t>(image.channels * sampleBytes(image.type));
  return image.bytes <= cfg.maxBytes ? DAX_STS_OK : DAX_STS_IMAGE_SIZE;
}

int32_t orientationOf(FileBytes exif) {
  constexpr uint32_t kOrientation = 0x112, kShort = 3, kEntryBytes = 12;
  const ExifNumbers numbers(exif);
  if (numbers.at(2, 2) != 42) return 1;
  const uint64_t directory = numbers.at(4, 4), count = numbers.at(directory, 2);
  for (uint64_t i = 0; i < count; ++i) {
    const uint64_t entry = directory + 2 + i * kEntryBytes;
    if (!numbers.holds(entry, kEntryBytes)) break;
    if (numbers.at(entry, 2) != kOrientation || numbers.at(entry + 2, 2) != kShort) continue;
    const auto value = static_cast<int32_t>(numbers.at(entry + 8, 2));
    return value >= 1 && value <= 8 ? value : 1;
  }
  return 1;
}

// Of the upright image, where pixel (x, y) of the file goes: orientations 5..8 swap x and y.
Canvas::Canvas(const DaxiImageRecord& image, int32_t orientation, void* pixels, int32_t step)
    : pixelBytes(image.channels * sampleBytes(image.type)) {
  const ptrdiff_t pixel = pixelBytes, row = ptrdiff_t{step} * sampleBytes(image.type);
  const bool swapped = orientation >= 5;
  const bool mirrored = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
  const bool flipped = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
  right = (swapped ? row : pixel) * (mirrored ? -1 : 1);
  down = (swapped ? pixel : row) * (flipped ? -1 : 1);
  origin = static_cast<uint8_t*>(pixels);
  if (mirrored) origin -= (image.width - 1) * right;
  if (flipped) origin -= (image.height - 1) * down;
}

void Canvas::put(int64_t x, int64_t y, int64_t count, const uint8_t* samples) const {
  if (isStraight()) {
    std::memcpy(at(x, y), samples, static_cast<size_t>(count * pixelBytes));
  } else {
    putPart(x, y, count, samples, 0, pixelBytes);
  }
}

void Canvas::putPart(int64_t x, int64_t y, int64_t count, const uint8_t* samples, int32_t offset, int32_t bytes) const {
  uint8_t* to = at(x, y) + offset;
  for (int64_t i = 0; i < count; ++i, to += right, samples += bytes) {
    std::memcpy(to, samples, static_cast<size_t>(bytes));
  }
}

bool Growing::put(uint64_t place, const void* data, uint64_t bytes) {
  const uint64_t end = place + bytes;
  if (end > room_) {
    const uint64_t room = std::max(end, 2 * room_ + 4096);
    auto* const grown = static_cast<uint8_t*>(std::realloc(data_, room));
    if (!grown) return false;
    data_ = grown;
    room_ = room;
  }
  if (place > size_) std::memset(data_ + size_, 0, place - size_);
  if (bytes > 0) std::memcpy(data_ + place, data, bytes);
  size_ = std::max(size_, end);
  return true;
}

}  // namespace dax::io
