#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, RangeToPoints) {
  TestImage<int16_t> values({301, 203});
  Image mask(values.size());
  values.randomize(8), mask.randomize(9);
  DAX3DPCL_RANGE_MAP map = {203, 301, {0.1f, -0.3f, 0.07f, 11.1f, 3, -5}, nullptr, mask.data(), values.data()};
  std::vector<float> buffer(3 * 301 * 203 + 32);
  float* points = nullptr;
  DAX3DPCL_CLOUD_SIZE size = {};
  Digest digest;
  ASSERT_EQ(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f(&map, buffer.data(), 1, &points, &size), DAX_STS_OK);
  digest.add(points, size_t{12} * 301 * 203);
  const float pinhole[6] = {0.01f, 0.3f, 511.7f, 499.1f, 150.3f, 101.9f};
  std::copy(pinhole, pinhole + 6, map.params);
  ASSERT_EQ(DAX3DPCL_PREP_CONVERT_Depth2XYZ_16s32f(&map, buffer.data(), 0, &points, &size), DAX_STS_OK);
  digest.add(points, size_t{12} * static_cast<size_t>(size.width));

  const DAX3DPCL_CLOUD3D cloud = {size.width, size.width, points};
  const float box[6] = {-300, -200, -300, 250, 200, 300};
  uint64_t resultBytes = 0, workBytes = 0;
  ASSERT_EQ(DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize(cloud.count, &resultBytes), DAX_STS_OK);
  ASSERT_EQ(DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize(cloud.count, &workBytes), DAX_STS_OK);
  std::vector<uint8_t> result(resultBytes), work(workBytes);
  DAX3DPCL_CLOUD3D* thinned = nullptr;
  ASSERT_EQ(DAX3DPCL_PREP_SAMPLE_VoxelGrid(&cloud, box, &thinned, result.data(), work.data(), 2, 3, 5), DAX_STS_OK);
  digest.add(thinned->points, size_t{12} * static_cast<size_t>(thinned->count));
  EXPECT_EQ(digest.value(), 0x62243EAFDD10350Fu);
}

}  // namespace
}  // namespace dax::test
