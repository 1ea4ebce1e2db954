// Range files in a directory of their own, and records that they are read into.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "dax3dpcl/range_file.h"
#include "tests/pcl/file/range_file_oracle.h"
#include "zur/memory.h"

namespace dax::test {

namespace fs = std::filesystem;

enum Tag : uint32_t {
  type = 1,
  calib = 2,
  width = 0xA5A53D01,
  height = 0xA5A53D02,
  mask = 0xA5A53D03,
  scale = 0xA5A53D07,
  offset = 0xA5A53D08,
  colour = 0xA5A53D0B,
  range = 0x617D18DB
};

// A directory that goes with the test.
class RangeFile : public testing::Test {
 protected:
  RangeFile() : directory_(testing::TempDir() + "dax-range-" + std::to_string(getpid())), path_(directory_ + "/file") {
    fs::create_directories(directory_);
  }
  ~RangeFile() override { fs::remove_all(directory_); }

  void save(const std::string& bytes) {
    std::ofstream(path_, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  std::string load() const {
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  size_t filesInDirectory() const {
    return static_cast<size_t>(std::distance(fs::directory_iterator(directory_), fs::directory_iterator()));
  }

  std::string directory_, path_;
};

// A record that is read into, and what it owns.
struct Read {
  Read() = default;
  Read(const Read&) = delete;
  ~Read() {
    DAX3DPCL_UTILS_RELEASE_RANGE_V4(&record);
    for (void* owner : record.colour.owner) ZUR_Free(owner);
  }
  DaxStatus from(const std::string& path) { return DAX3DPCL_UTILS_READ_RANGE_V4(path.c_str(), &record); }
  DAX3D_RANGE_V4 record = {};
};

inline std::string bytesOf(const void* data, size_t size) {
  return {static_cast<const char*>(data), size};
}

// All bytes that a slot says it has; a sanitizer sees where that is too much.
inline std::string contents(const DAX3D_IMAGE_SLOT& slot, int plane, size_t elementBytes) {
  if (!slot.image.plane[plane]) return {};
  return bytesOf(slot.image.plane[plane], static_cast<size_t>(std::max(slot.image.step[plane], 0)) *
                                              static_cast<size_t>(std::max(slot.image.height, 0)) * elementBytes);
}

inline void touch(const DAX3D_RANGE_V4& record) {
  contents(record.range, 0, 2);
  contents(record.mask, 0, 1);
  for (int i = 0; i < 3; ++i) contents(record.colour, i, 1);
}

template <class T>
std::string bytesOf(const std::vector<T>& values) {
  return bytesOf(values.data(), values.size() * sizeof(T));
}

inline std::string colourPayload(uint32_t w, uint32_t h, uint32_t format, const std::string& pixels) {
  return oracle::packed(uint32_t{0}, w, h, format) + pixels;
}

}  // namespace dax::test
