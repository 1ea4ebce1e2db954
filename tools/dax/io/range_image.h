// Range images: a record of the library with the memory that it owns.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "cloud/cloud.h"
#include "dax3dpcl/range_record.h"

namespace dax::tool {

// A valid record whose rows have no padding.
class RangeImage {
 public:
  // Throws Failure(kCannotRead).
  static RangeImage read(const std::filesystem::path& path);

  // An image of type 0 with all pixels invalid. Throws std::bad_alloc.
  static RangeImage make(DaxiSize size, const DAX3D_VECTOR_32F& scale, const DAX3D_VECTOR_32F& offset);

  // Writes the file completely or not at all. Throws Failure(kCannotWrite).
  void write(const std::filesystem::path& path) const;

  const DAX3D_RANGE_V4& record() const { return *record_; }
  DaxiSize size() const { return {record_->range.image.width, record_->range.image.height}; }
  std::span<int16_t> values() const;
  // One byte per pixel, not 0 where valid; empty for records without a mask, where all pixels are valid.
  std::span<uint8_t> mask() const;
  bool valid(size_t pixel) const { return mask().empty() || mask()[pixel] != 0; }
  float height(size_t pixel) const { return values()[pixel] * record_->scale.z + record_->offset.z; }

  // Marks the pixels of connected regions of at most `maxSize` pixels with steps below `difference` as invalid; returns
  // their number. Throws Failure(kRefused).
  size_t clearSpeckles(int32_t maxSize, int32_t difference);

  // The valid pixels as points. Throws Failure(kRefused) if there are none.
  Cloud toCloud() const;

 private:
  struct Release {
    void operator()(DAX3D_RANGE_V4* record) const;
  };
  RangeImage();

  std::unique_ptr<DAX3D_RANGE_V4, Release> record_;
};

}  // namespace dax::tool
