// The bytes of an image file, in memory or on disk, and the bytes of a new one.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "frame/file/input_file.h"
#include "frame/file/output_file.h"

namespace dax {

// Reads on from a place. Nothing is read beyond the end.
class ByteSource {
 public:
  ByteSource(const void* memory, uint64_t bytes) : memory_(static_cast<const uint8_t*>(memory)), bytes_(bytes) {}
  explicit ByteSource(const InputFile& file) : file_(&file), bytes_(file.bytes()) {}

  uint64_t bytes() const { return bytes_; }
  uint64_t place() const { return place_; }
  uint64_t left() const { return bytes_ - place_; }

  bool seek(uint64_t place) {
    if (place > bytes_) return false;
    place_ = place;
    return true;
  }

  // All of them, or none and false.
  bool read(void* to, uint64_t bytes) {
    if (bytes > left()) return false;
    if (memory_) {
      std::memcpy(to, memory_ + place_, bytes);
    } else if (bytes > sizeof(buffer_)) {
      if (!file_->readAt(place_, to, bytes)) return false;
    } else if (!copyBuffered(static_cast<uint8_t*>(to), bytes)) {
      return false;
    }
    place_ += bytes;
    return true;
  }

  // The next byte, or -1 at the end.
  int32_t next() {
    uint8_t byte;
    return read(&byte, 1) ? byte : -1;
  }

 private:
  bool copyBuffered(uint8_t* to, uint64_t bytes) {
    if (place_ < start_ || place_ + bytes > start_ + held_) {
      start_ = place_;
      held_ = std::min<uint64_t>(sizeof(buffer_), left());
      if (!file_->readAt(start_, buffer_, held_)) return held_ = 0, false;
    }
    std::memcpy(to, buffer_ + (place_ - start_), bytes);
    return true;
  }

  const uint8_t* memory_ = nullptr;
  const InputFile* file_ = nullptr;
  uint64_t bytes_;
  uint64_t place_ = 0;
  uint64_t start_ = 0;
  uint64_t held_ = 0;
  uint8_t buffer_[2048];
};

// Takes what its maker has measured before.
class ByteSink {
 public:
  explicit ByteSink(void* memory) : memory_(static_cast<uint8_t*>(memory)) {}
  explicit ByteSink(OutputFile& file) : file_(&file) {}

  void write(const void* data, uint64_t bytes) {
    if (file_) {
      file_->write(data, bytes);
      return;
    }
    std::memcpy(memory_, data, bytes);
    memory_ += bytes;
  }

 private:
  uint8_t* memory_ = nullptr;
  OutputFile* file_ = nullptr;
};

// Numbers of `bytes` bytes, at most 4.
inline uint32_t littleEndian(const uint8_t* at, int32_t bytes) {
  uint32_t value = 0;
  for (int32_t i = bytes; i-- > 0;) value = value << 8 | at[i];
  return value;
}

inline void putLittleEndian(uint8_t* at, int32_t bytes, uint32_t value) {
  for (int32_t i = 0; i < bytes; ++i) at[i] = static_cast<uint8_t>(value >> (8 * i));
}

}  // namespace dax
