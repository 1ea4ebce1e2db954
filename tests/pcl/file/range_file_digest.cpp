#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "fuzz/memory_file.h"
#include "tests/pcl/record/range_sample.h"
#include "tests/support/digest.h"
#include "zur.h"

namespace dax::test {
namespace {

// A file of every chunk, and the record that is read from it.

TEST(Digests, RangeFiles) {
  const fuzz::MemoryFile file;
  const RangeSample sample(41, 23, DAX3D_RANGE_WITH_MASK, 201);
  ASSERT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(file.path().c_str(), &sample.record), DAX_STS_OK);
  const std::vector<uint8_t> bytes = file.contents();
  DAX3D_RANGE_V4 record = {};
  ASSERT_EQ(DAX3DPCL_UTILS_READ_RANGE_V4(file.path().c_str(), &record), DAX_STS_OK);
  Digest digest;
  digest.add(bytes.data(), bytes.size()).add(&record.calib, sizeof record.calib);
  digest.add(record.range.owner[0], 41 * 23 * 2).add(record.mask.owner[0], 41 * 23);
  digest.add(record.colour.owner[0], 41 * 23 * 3);
  DAX3DPCL_UTILS_RELEASE_RANGE_V4(&record);
  ZUR_Free(record.colour.owner[0]);
  EXPECT_EQ(digest.value(), 0xFB9D07EC86516E53u);
}

}  // namespace
}  // namespace dax::test
