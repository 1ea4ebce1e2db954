// A file without a disk, with a path.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace dax::fuzz {

class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) {
    if (descriptor_ < 0) std::abort();
  }
  MemoryFile(const uint8_t* data, size_t size) : MemoryFile() {
    if (write(descriptor_, data, size) != static_cast<ssize_t>(size)) std::abort();
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::vector<uint8_t> contents() const {
    std::vector<uint8_t> bytes(static_cast<size_t>(lseek(descriptor_, 0, SEEK_END)));
    if (pread(descriptor_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) std::abort();
    return bytes;
  }
  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

// A property of the library that must hold.
inline void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace dax::fuzz
