#include "io/tiff_samples.h"

#include <cstddef>
#include <cstdint>

namespace dax::tool {
namespace {

constexpr uint32_t kBitsPerSample = 258, kSampleFormat = 339;
constexpr uint32_t kShort = 3;
constexpr uint32_t kUnsigned = 1, kUndefined = 4;
constexpr size_t kEntryBytes = 12, kMaxPages = 65535;

bool isTiff(std::string_view bytes) {
  using namespace std::string_view_literals;
  return bytes.starts_with("II*\0"sv) || bytes.starts_with("MM\0*"sv);
}

class Numbers {
 public:
  explicit Numbers(std::string_view bytes) : bytes_(bytes), littleEndian_(bytes.starts_with("II")) {}

  bool holds(size_t at, size_t count) const { return at <= bytes_.size() && count <= bytes_.size() - at; }

  // An integer of 2 or 4 bytes; 0 outside the file.
  uint32_t at(size_t place, size_t count) const {
    if (!holds(place, count)) return 0;
    uint32_t value = 0;
    for (size_t i = 0; i < count; ++i) {
      value = value << 8 | static_cast<uint8_t>(bytes_[place + (littleEndian_ ? count - 1 - i : i)]);
    }
    return value;
  }

  // The first value of a directory entry: in the entry itself if all values fit into 4 bytes, else at its offset.
  uint32_t ofEntry(size_t entry) const {
    const size_t size = at(entry + 2, 2) == kShort ? 2 : 4;
    const bool inside = uint64_t{at(entry + 4, 4)} * size <= 4;
    return at(inside ? entry + 8 : at(entry + 8, 4), size);
  }

 private:
  std::string_view bytes_;
  bool littleEndian_;
};

}  // namespace

size_t countTiffPages(std::string_view bytes) {
  if (!isTiff(bytes)) return 1;
  const Numbers numbers(bytes);
  size_t pages = 0;
  // Directories may lead back to earlier ones.
  for (size_t directory = numbers.at(4, 4); directory != 0 && pages < kMaxPages; ++pages) {
    const size_t end = directory + 2 + numbers.at(directory, 2) * kEntryBytes;
    directory = numbers.at(end, 4);
  }
  return pages;
}

bool hasPlainTiffSamples(std::string_view bytes) {
  if (!isTiff(bytes)) return true;
  const Numbers numbers(bytes);
  const size_t directory = numbers.at(4, 4), count = numbers.at(directory, 2);
  for (size_t i = 0; i < count; ++i) {
    const size_t entry = directory + 2 + i * kEntryBytes;
    if (!numbers.holds(entry, kEntryBytes)) break;
    const uint32_t tag = numbers.at(entry, 2), value = numbers.ofEntry(entry);
    if (tag == kBitsPerSample && value > 16) return false;
    if (tag == kSampleFormat && value != 0 && value != kUnsigned && value != kUndefined) return false;
  }
  return true;
}

}  // namespace dax::tool
