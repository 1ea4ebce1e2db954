// Regular files that are read at given places.
#pragma once

#include <cstdint>

namespace dax {

class InputFile {
 public:
  // Folders, devices and pipes are not opened.
  explicit InputFile(const char* path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  bool isOpen() const { return file_ >= 0; }
  uint64_t bytes() const { return bytes_; }

  // Whether all of them were read.
  bool readAt(uint64_t place, void* to, uint64_t bytes) const;

 private:
  int file_;
  uint64_t bytes_ = 0;
};

}  // namespace dax
