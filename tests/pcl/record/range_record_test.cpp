#include "dax3dpcl/range_record.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "dax3dpcl/range_calib.h"
#include "dax3dpcl/record_check.h"
#include "tests/pcl/record/range_sample.h"
#include "tests/support/guarded_buffer.h"
#include "zur/memory.h"

namespace dax::test {
namespace {

using Record = DAX3D_RANGE_V4;

void release(Record& record) {
  DAX3DPCL_UTILS_RELEASE_RANGE_V4(&record);
  EXPECT_FALSE(record.range.owner[0] || record.mask.owner[0] || record.range.image.plane[0]);
  for (void* owner : record.colour.owner) ZUR_Free(owner);
}

TEST(RangeRecord, WhatIsAccepted) {
  RangeSample sample(8, 5, DAX3D_RANGE_WITH_MASK, 200);
  Record r = sample.record;
  r.range.image.step[0] = r.mask.image.step[0] = 4;  // half the width will do
  r.scale = {-1, -1, 1.1920929e-7f};
  r.colour = {};
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&r, 0), DAX_STS_OK);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&r, 2), DAX_STS_OK);
  r.type = DAX3D_RANGE_WITHOUT_MASK, r.mask = {};
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&r, 0), DAX_STS_OK);
  RangeSample packed(8, 5, DAX3D_RANGE_WITH_MASK, 201);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&packed.record, 1), DAX_STS_OK);
  --packed.record.colour.image.step[0];
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&packed.record, 1), DAX_STS_IMAGE_STEP);
  packed.record.colour.image.width = 0x40000000;  // three times this does not fit 32 bits
  packed.record.colour.image.step[0] = INT32_MAX;
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&packed.record, 1), DAX_STS_IMAGE_STEP);
}

bool sameMemory(const DAX3D_IMAGE_SLOT& a, const DAX3D_IMAGE_SLOT& b, int plane, size_t bytes) {
  return a.image.plane[plane] != b.image.plane[plane] && a.owner[plane] == a.image.plane[plane] &&
         std::memcmp(a.image.plane[plane], b.image.plane[plane], bytes) == 0;
}

TEST(RangeRecord, CopiesAreDeep) {
  for (const uint32_t format : {200u, 201u}) {
    const RangeSample sample(8, 5, DAX3D_RANGE_WITH_MASK, format);
    Record copy = {};
    ASSERT_EQ(DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&sample.record, &copy), DAX_STS_OK);
    EXPECT_EQ(std::memcmp(&copy.calib, &sample.record.calib, sizeof(copy.calib)), 0);
    EXPECT_EQ(std::memcmp(&copy.scale, &sample.record.scale, 2 * sizeof(copy.scale)), 0);
    EXPECT_TRUE(sameMemory(copy.range, sample.record.range, 0, 80));
    EXPECT_TRUE(sameMemory(copy.mask, sample.record.mask, 0, 40));
    const bool planar = format == 200;
    for (int i = 0; i < (planar ? 3 : 1); ++i) {
      EXPECT_TRUE(sameMemory(copy.colour, sample.record.colour, i, planar ? 40 : 120)) << i;
    }
    EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&copy, 1), DAX_STS_OK);
    release(copy);
  }
}

// Rows of half the width, against a page that faults; a padded image without the padding of its last row.
TEST(RangeRecord, CopyReadsNoMoreThanThereIs) {
  RangeSample sample(8, 3, DAX3D_RANGE_WITHOUT_MASK);
  for (const int32_t step : {4, 11}) {
    for (const uint32_t type : {DAX3D_RANGE_WITHOUT_MASK, DAX3D_RANGE_WITH_MASK}) {
      const size_t elements = static_cast<size_t>(2 * step + std::min(step, 8));
      GuardedBuffer<int16_t> values(elements);
      GuardedBuffer<uint8_t> mask(elements);
      Record record = sample.record, copy = {};
      record.type = type;
      RangeSample::set(record.range, 3, 8, 3, step, values.data());
      RangeSample::set(record.mask, 1, 8, 3, step, mask.data());
      ASSERT_EQ(DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&record, &copy), DAX_STS_OK);
      EXPECT_EQ(copy.type, type);
      EXPECT_TRUE(sameMemory(copy.range, record.range, 0, 2 * elements));
      EXPECT_EQ(copy.mask.owner[0] != nullptr, type == DAX3D_RANGE_WITH_MASK);
      if (copy.mask.owner[0]) {
        EXPECT_TRUE(sameMemory(copy.mask, record.mask, 0, elements));
      }
      EXPECT_FALSE(copy.colour.owner[0]);
      release(copy);
    }
  }
  const RangeSample pixel(1, 1, DAX3D_RANGE_WITH_MASK);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&pixel.record, 0), DAX_STS_OK);
  Record untouched = {}, bad = sample.record;
  bad.scale.z = 0;
  untouched.type = 77;
  EXPECT_EQ(DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&bad, nullptr), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&bad, &bad), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&sample.record, &sample.record), DAX_STS_BAD_PARAM);
  bad = sample.record;
  bad.range.image.step[0] = bad.range.image.height = INT32_MAX;
  EXPECT_EQ(DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&bad, &untouched), DAX_STS_NO_MEMORY);
  EXPECT_EQ(untouched.type, 77u);
  EXPECT_EQ(DAX3DPCL_UTILS_RELEASE_RANGE_V4(nullptr), DAX_STS_OK);
}

DAX3D_RANGE_CALIB calibration() {
  DAX3D_RANGE_CALIB calib = {};
  calib.depth = {500, 400, 320, 240, 0.1, -0.2, 0.001, 0.002, 0.03};
  calib.rgb = {900, 901, 640, 360, 0, 0, 0, 0, 0};
  // A quarter turn about z, and a shift.
  calib.depthToRgb[1] = -1, calib.depthToRgb[4] = 1, calib.depthToRgb[10] = calib.depthToRgb[15] = 1;
  calib.depthToRgb[3] = 25;
  return calib;
}

TEST(RangeRecord, CamerasOfTheCalibration) {
  const DAX3D_RANGE_CALIB calib = calibration();
  Record record = {};
  ASSERT_EQ(DAX3DPCL_UTILS_Recover_RANGE_V4_Depth_Intrins(&record, &calib.depth), DAX_STS_OK);
  ASSERT_EQ(DAX3DPCL_UTILS_Recover_RANGE_V4_RGB_Intrins(&record, &calib.rgb, calib.depthToRgb), DAX_STS_OK);
  EXPECT_EQ(std::memcmp(&record.calib, &calib, sizeof(calib)), 0);
  // The places of the 35 values.
  const auto* const values = reinterpret_cast<const double*>(&record.calib);
  EXPECT_EQ(values[1], 400);
  EXPECT_EQ(values[8], 0.03);
  EXPECT_EQ(values[9], 900);
  EXPECT_EQ(values[21], 25);

  DAX3D_CAMERA_64F depth = {}, rgb = {};
  double pose[16] = {};
  ASSERT_EQ(DAX3DPCL_UTILS_Extract_RANGE_V4_Depth_Intrins(&record, &depth), DAX_STS_OK);
  ASSERT_EQ(DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(&record, &rgb, pose), DAX_STS_OK);
  EXPECT_EQ(std::memcmp(&depth, &calib.depth, sizeof(depth)), 0);
  EXPECT_EQ(std::memcmp(&rgb, &calib.rgb, sizeof(rgb)), 0);
  EXPECT_EQ(std::memcmp(pose, calib.depthToRgb, sizeof(pose)), 0);

  const Record before = record;
  depth.cy = 0;
  pose[0] = 1;
  EXPECT_EQ(DAX3DPCL_UTILS_Recover_RANGE_V4_Depth_Intrins(&record, &depth), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAX3DPCL_UTILS_Recover_RANGE_V4_RGB_Intrins(&record, &rgb, pose), DAX_STS_FAILURE);
  EXPECT_EQ(std::memcmp(&record, &before, sizeof(record)), 0);
  EXPECT_EQ(DAX3DPCL_UTILS_Recover_RANGE_V4_RGB_Intrins(&record, &rgb, nullptr), DAX_STS_OK);
  record.calib.depthToRgb[0] = 1;  // no rotation
  EXPECT_EQ(DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(&record, &rgb, pose), DAX_STS_FAILURE);
  EXPECT_EQ(DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(&record, &rgb, nullptr), DAX_STS_OK);
  record.calib.rgb.fx = -1;
  rgb.fy = 5;
  EXPECT_EQ(DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(&record, &rgb, nullptr), DAX_STS_BAD_PARAM);
  EXPECT_EQ(rgb.fy, 5);
}

struct RgbdArguments {
  const int16_t* depth;
  int32_t depthStep;
  const uint8_t* colour;
  int32_t colourStep;
  DaxiSize depthSize, colourSize;
  float depthScale;
  DAX3D_RANGE_CALIB calib;
  bool calibrated;
  Record* record;
};

DaxStatus construct(const RgbdArguments& a) {
  return DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4(a.depth, a.depthStep, a.colour, a.colourStep, a.depthSize,
                                                      a.colourSize, a.depthScale, a.calibrated ? &a.calib : nullptr,
                                                      a.record);
}

TEST(RangeRecord, FromDepthAndColour) {
  GuardedBuffer<int16_t> depth(5 * 2 + 3);
  GuardedBuffer<uint8_t> colour(8 * 1 + 6);
  for (size_t i = 0; i < depth.size(); ++i) depth[i] = static_cast<int16_t>(i % 4 ? 1000 + i : 0);
  for (size_t i = 0; i < colour.size(); ++i) colour[i] = static_cast<uint8_t>(i);
  Record record = {};
  const RgbdArguments good{depth.data(), 5, colour.data(), 8, {3, 3}, {2, 2}, 0.001f, calibration(), true, &record};
  ASSERT_EQ(construct(good), DAX_STS_OK);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&record, 1), DAX_STS_OK);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins(&record), DAX_STS_OK);
  const auto* const values = static_cast<const int16_t*>(record.range.image.plane[0]);
  const auto* const mask = static_cast<const uint8_t*>(record.mask.image.plane[0]);
  const auto* const rgb = static_cast<const uint8_t*>(record.colour.image.plane[0]);
  for (int32_t i = 0; i < 9; ++i) {
    const int16_t expected = depth[static_cast<size_t>(i / 3 * 5 + i % 3)];
    EXPECT_EQ(values[i], expected);
    EXPECT_EQ(mask[i], expected ? 255 : 0);
  }
  EXPECT_EQ(rgb[11], 13);
  EXPECT_EQ(record.scale.x, 0.002f);
  EXPECT_EQ(record.scale.y, 0.0025f);
  EXPECT_EQ(record.scale.z, 0.001f);
  EXPECT_EQ(record.offset.y, -0.6f);
  release(record);
  RgbdArguments plain = good;
  plain.calibrated = false;
  ASSERT_EQ(construct(plain), DAX_STS_OK);
  EXPECT_EQ(record.scale.y, 1);
  release(record);
  plain.record = nullptr;
  EXPECT_EQ(construct(plain), DAX_STS_NULL_POINTER);
}

}  // namespace
}  // namespace dax::test
