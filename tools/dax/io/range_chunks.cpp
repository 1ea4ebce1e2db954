#include "io/range_chunks.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <map>

namespace dax::tool {
namespace {

constexpr uint32_t kValues = 0x617D18DB, kMask = 0xA5A53D03, kColour = 0xA5A53D0B, kHeight = 0xA5A53D02,
                   kWidth = 0xA5A53D01;
constexpr uint64_t kColourHead = 16;

struct Payload {
  uint64_t start = 0;
  uint64_t size = 0;
};

class Chunks {
 public:
  explicit Chunks(const std::filesystem::path& path) : file_(path, std::ios::binary | std::ios::ate) {
    auto end = static_cast<uint64_t>(file_.tellg());
    while (file_ && end >= 8) {
      const uint32_t tag = word(end - 8);
      const uint64_t size = word(end - 4);
      if (size > end - 8) return;
      payloads_.insert({tag, {end - 8 - size, size}});
      end -= 8 + size;
    }
  }

  const Payload* find(uint32_t tag) const {
    const auto found = payloads_.find(tag);
    return found == payloads_.end() ? nullptr : &found->second;
  }

  uint32_t word(uint64_t at) {
    std::array<char, 4> bytes = {};
    file_.seekg(static_cast<std::streamoff>(at));
    file_.read(bytes.data(), bytes.size());
    uint32_t value = 0;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }

 private:
  std::ifstream file_;
  std::map<uint32_t, Payload> payloads_;  // of each tag the one nearest to the end
};

std::string lacking(const char* what, const Payload& payload, uint64_t needed, uint64_t width, uint64_t height) {
  if (payload.size >= needed) return {};
  return std::string("its ") + what + " has " + std::to_string(payload.size) + " bytes, of " + std::to_string(needed) +
         " for " + std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

std::string lackingColour(Chunks& chunks, const Payload& colour) {
  if (colour.size < kColourHead) return "its colour has " + std::to_string(colour.size) + " bytes, of 16 for its head";
  const uint64_t width = chunks.word(colour.start + 4), height = chunks.word(colour.start + 8);
  if (width > 32767 || height > 32767) return {};  // the library refuses that
  return lacking("colour", colour, kColourHead + 3 * width * height, width, height);
}

}  // namespace

std::string shortPayload(const std::filesystem::path& path) {
  Chunks chunks(path);
  std::string what;
  if (const Payload* colour = chunks.find(kColour)) what = lackingColour(chunks, *colour);
  const Payload *width = chunks.find(kWidth), *height = chunks.find(kHeight);
  if (!what.empty() || !width || !height || width->size != 4 || height->size != 4) return what;
  const uint64_t w = chunks.word(width->start), h = chunks.word(height->start);
  if (w > 32767 || h > 32767) return {};
  if (const Payload* values = chunks.find(kValues)) what = lacking("range", *values, 2 * w * h, w, h);
  const Payload* mask = chunks.find(kMask);
  return what.empty() && mask ? lacking("mask", *mask, w * h, w, h) : what;
}

}  // namespace dax::tool
