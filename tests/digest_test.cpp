// Digests of outputs over fixed inputs. The numbers are the same on every machine: a change of one bit in one result
// shows here, and so does a machine that computes differently.
#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "daxi.h"
#include "tests/support/labeller.h"

namespace dax::test {
namespace {

// FNV-1a.
class Digest {
 public:
  Digest& add(const void* data, size_t bytes) {
    for (size_t i = 0; i < bytes; ++i) value_ = (value_ ^ static_cast<const uint8_t*>(data)[i]) * 0x100000001B3u;
    return *this;
  }
  template <class T>
  Digest& add(const TestImage<T>& image) {
    for (int32_t y = 0; y < image.size().height; ++y) {
      add(image.row(y), static_cast<size_t>(image.size().width) * sizeof(T));
    }
    return *this;
  }
  uint64_t value() const { return value_; }

 private:
  uint64_t value_ = 0xCBF29CE484222325u;
};

using Image = TestImage<uint8_t>;

// Smooth random hills: sums of random levels over a window, so that thresholds give blobs.
Image hills(DaxiSize size, uint64_t seed) {
  TestImage<uint8_t> noise({size.width + 8, size.height + 8});
  noise.randomize(seed);
  Image image(size);
  image.fill([&](int32_t x, int32_t y) {
    int32_t sum = 0;
    for (int32_t i = 0; i < 81; ++i) sum += noise.at(x + i % 9, y + i / 9);
    return std::clamp((sum / 81 - 128) * 5 + 128, 0, 255);
  });
  return image;
}

TEST(Digests, CopyBorder) {
  TestImage<float> src({37, 23});
  src.randomize(1);
  Digest digest;
  for (auto* const border : {DAXI_CopyReplicateBorder_32f_C1R, DAXI_CopyMirrorBorder_32f_C1R,
                             DAXI_CopySymmetricBorder_32f_C1R, DAXI_CopyCircularBorder_32f_C1R}) {
    TestImage<float> dst({140, 90});
    ASSERT_EQ(border(src.data(), src.step(), src.size(), dst.data(), dst.step(), dst.size(), 30, 51), DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 0x7BC30AE92DF1C490u);
}

TEST(Digests, Erode) {
  const Image gray = hills({301, 203}, 5);
  Image mask(gray.size()), dst(gray.size());
  mask.fill([&](int32_t x, int32_t y) { return gray.at(x, y) > 120 ? gray.at(x, y) : 0; });
  std::vector<uint8_t> buffer(301 * 204);
  Digest digest;
  for (const int32_t iterations : {1, 2, 30}) {
    ASSERT_EQ(
        DAXI_Erode3x3_8u_C1R(mask.data(), mask.step(), dst.data(), dst.step(), mask.size(), iterations, buffer.data()),
        DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 0x4D680024EDF33C59u);
}

TEST(Digests, FilterBox) {
  std::vector<uint8_t> buffer(4 * 512);
  Digest digest;
  const auto add = [&](auto* box, auto pixel, auto sum) {
    TestImage<decltype(pixel)> src({301, 203});
    TestImage<decltype(sum)> dst(src.size());
    Random random(6);
    src.fill([&](int32_t, int32_t) { return decltype(pixel)(random.below(256)) / decltype(pixel)(3); });
    for (const int32_t radius : {1, 7, 60}) {
      ASSERT_EQ(box(src.data(), src.step(), dst.data(), dst.step(), src.size(), radius, buffer.data()), DAX_STS_OK);
      digest.add(dst);
    }
  };
  add(DAXI_FilterBox_8u32s_C1R, uint8_t{}, int32_t{});
  add(DAXI_FilterBox_16s32f_C1R, int16_t{}, float{});
  add(DAXI_FilterBox_32s_C1R, int32_t{}, int32_t{});
  add(DAXI_FilterBox_32f_C1R, float{}, float{});
  EXPECT_EQ(digest.value(), 0xF1EAF9B45932609Eu);
}

TEST(Digests, FilterMedian) {
  Digest digest;
  const auto add = [&]<class T>(DaxStatus (*median)(const T*, int32_t, T*, int32_t, DaxiSize)) {
    TestImage<T> src({301, 37}), dst(src.size());
    src.randomize(4);
    ASSERT_EQ(median(src.data(), src.step(), dst.data(), dst.step(), src.size()), DAX_STS_OK);
    digest.add(dst);
  };
  add(DAXI_FilterMedian3x3_8u_C1R);
  add(DAXI_FilterMedian3x3_16u_C1R);
  add(DAXI_FilterMedian3x3_16s_C1R);
  add(DAXI_FilterMedian3x3_32f_C1R);
  add(DAXI_FilterMedian3x3_64f_C1R);
  EXPECT_EQ(digest.value(), 0x62584CBCF12CC33Du);
}

TEST(Digests, Threshold) {
  const Image src = hills({301, 203}, 2);
  Digest digest;
  for (uint32_t method = 1; method <= 6; ++method) {
    DaxiThresholdBinCfg cfg = {method, 1, 0.03f, 0.11f, 0.1f, 0.83f, 77, 40, 190, 120, 60};
    Image dst(src.size());
    uint8_t levels[2];
    ASSERT_EQ(DAXI_ThresholdBinV2_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, levels,
                                         levels + 1),
              DAX_STS_OK);
    digest.add(dst).add(levels, 2);
  }
  EXPECT_EQ(digest.value(), 0x22150A20762B2ED9u);
}

TEST(Digests, Blobs) {
  const Image gray = hills({640, 480}, 3);
  Image mask(gray.size());
  mask.fill([&](int32_t x, int32_t y) { return gray.at(x, y) > 140 ? 255 : 0; });
  Digest digest;
  for (const int32_t connectivity : {4, 8}) {
    Labeller label(mask.size(), connectivity);
    const DaxiDomainList& list = label(mask, DAX_ISA_NEON);
    digest.add(list.runs, list.runCount * sizeof(DomainRun));
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_BlobSelectBufferSize_8u(mask.size(), &bytes), DAX_STS_OK);
    std::vector<uint8_t> buffer(bytes);
    for (uint32_t key = 1; key <= 13; ++key) {
      BlobSelectCfg cfg = {};
      cfg.grayMode = key % 2;
      cfg.maxCount = 200;
      cfg.flags = key % 3 ? 0x1 : 0x13;
      cfg.area = {2, 5000}, cfg.perimeter = {0, 1000}, cfg.circularity = {0, 1};
      cfg.areaWeight = 1, cfg.circularityWeight = 0.5f;
      cfg.sortKey = key, cfg.sortOrder = 1 + key % 3;
      std::vector<BlobInfo> blobs(200);
      BlobSelectResult result = {blobs.data(), 0, nullptr};
      ASSERT_EQ(DAXI_BlobSelect_8u_C1R(gray.data(), gray.step(), gray.data(), gray.step(), gray.size(), &list,
                                       static_cast<int32_t>(list.domainCount), &result, &cfg, buffer.data()),
                DAX_STS_OK);
      EXPECT_EQ(result.count, 200u);
      for (BlobInfo& blob : blobs) blob.domain = nullptr;
      digest.add(blobs.data(), blobs.size() * sizeof(BlobInfo));
    }
  }
  EXPECT_EQ(digest.value(), 0x6FB69BAA142E9D0Du);
}

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

TEST(Digests, Speckles) {
  const Image gray = hills({301, 203}, 10);
  TestImage<int16_t> src(gray.size()), dst(gray.size());
  src.fill([&](int32_t x, int32_t y) { return gray.at(x, y) * 7 - 900; });
  uint64_t bytes = 0;
  ASSERT_EQ(DAX3DPCL_PREP_FILTER_Speckle_BufferSize(src.size(), &bytes), DAX_STS_OK);
  std::vector<uint8_t> buffer(bytes);
  Digest digest;
  for (const int32_t maxDiff : {20, 60, 90}) {
    ASSERT_EQ(DAX3DPCL_PREP_FILTER_Speckle_S16(src.size(), src.data(), dst.data(), {3, 5}, {300, 190}, maxDiff, 50,
                                               -900, buffer.data()),
              DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 0xDD2744EE5B17CEACu);
}

}  // namespace
}  // namespace dax::test
