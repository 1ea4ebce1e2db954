// Labelling for tests.
#pragma once

#include <gtest/gtest.h>

#include "measure/blob/blob_find.h"
#include "tests/measure/blob/blob_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {

// Labels masks of one size in memory of exactly the queried sizes, guarded and poisoned.
class Labeller {
 public:
  Labeller(DaxiSize size, int32_t connectivity, uint8_t poison = 0xA5)
      : connectivity_(connectivity),
        model_(bytes(DAXI_BlobFindModelSize_8u, size, connectivity), Guard::after, poison),
        buffer_(bytes(DAXI_BlobFindBufferSize_8u, size, connectivity), Guard::after, poison) {}

  const DaxiDomainList& operator()(const TestImage<uint8_t>& mask, int32_t isa) {
    return *_DAXI_FindDomain_8u_C1R(mask.data(), mask.step(), mask.size(), connectivity_, model_.data(), buffer_.data(),
                                    isa);
  }

 private:
  static uint64_t bytes(DaxStatus (*query)(DaxiSize, int32_t, uint64_t*), DaxiSize size, int32_t connectivity) {
    uint64_t result = 0;
    EXPECT_EQ(query(size, connectivity, &result), DAX_STS_OK);
    return result;
  }
  int32_t connectivity_;
  GuardedBuffer<uint8_t> model_, buffer_;
};

inline oracle::Mask toMask(const TestImage<uint8_t>& image) {
  oracle::Mask mask{image.size().width, image.size().height, {}};
  for (int32_t y = 0; y < mask.height; ++y)
    mask.pixels.insert(mask.pixels.end(), image.row(y), image.row(y) + mask.width);
  return mask;
}

}  // namespace dax::test
