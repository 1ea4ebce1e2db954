// Digests of outputs over fixed inputs. The numbers are the same on every machine: a change of one bit in one result
// shows here, and so does a machine that computes differently. This file and the other digest_*_test.cpp are compiled
// with NEON kernels, without them, and for the reference pool; a family with _MT members takes its digest anew for 1 to
// 16 threads. After a change: scripts/digests, which puts the numbers into the documents.
#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"
#include "tests/support/labeller.h"

namespace dax::test {
namespace {

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

TEST(Digests, FilterMean) {
  std::vector<double> buffer(302 * 204);
  Digest digest;
  const auto add = [&]<class T>(DaxStatus (*mean)(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, void*)) {
    TestImage<T> src({301, 203}), dst(src.size());
    Random random(8);
    src.fill([&](int32_t, int32_t) { return T(random.below(256)) / T(3); });
    for (const DaxiSize mask : {DaxiSize{3, 3}, {16, 5}, {201, 101}}) {
      ASSERT_EQ(mean(src.data(), src.step(), dst.data(), dst.step(), src.size(), mask, buffer.data()), DAX_STS_OK);
      digest.add(dst);
    }
  };
  add(DAXI_FilterMean_8u_C1R);
  add(DAXI_FilterMean_16u_C1R);
  add(DAXI_FilterMean_16s_C1R);
  add(DAXI_FilterMean_32f_C1R);
  add(DAXI_FilterMean_64f_C1R);
  add(DAXI_FilterMeanInt_8u_C1R);
  add(DAXI_FilterMeanInt_16u_C1R);
  add(DAXI_FilterMeanInt_16s_C1R);
  add(DAXI_FilterMeanInt_32f_C1R);
  add(DAXI_FilterMeanInt_64f_C1R);
  EXPECT_EQ(digest.value(), 0xAC16227DB9AC0895u);
}

TEST(Digests, FilterMeanOnPool) {
  Image src({301, 203}), dst(src.size());
  src.randomize(8);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    Digest digest;
    for (const DaxiSize mask : {DaxiSize{3, 3}, {16, 5}, {201, 12}}) {
      uint64_t bytes = 0;
      ASSERT_EQ(DAXI_FilterMeanBufferSize_8u_MT(src.size(), mask, threads, &bytes), DAX_STS_OK);
      std::vector<uint8_t> buffer(bytes);
      ASSERT_EQ(DAXI_FilterMean_8u_C1R_MT(src.data(), src.step(), dst.data(), dst.step(), src.size(), mask,
                                          buffer.data(), threads, pool.get()),
                DAX_STS_OK);
      digest.add(dst);
    }
    EXPECT_EQ(digest.value(), 0x7559546A58D2A75Cu) << threads << " threads";
  }
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

TEST(Digests, FilterMedianOnPool) {
  TestImage<uint8_t> src({301, 37}), dst(src.size());
  src.randomize(4);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    ASSERT_EQ(DAXI_FilterMedian3x3_8u_C1R_NEON_MT(pool.get(), threads, src.data(), src.step(), dst.data(), dst.step(),
                                                  src.size()),
              DAX_STS_OK);
    EXPECT_EQ(Digest().add(dst).value(), 0x49424509E44C80D2u) << threads << " threads";
  }
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

// A mask and its grey image; a configuration for each sort key.
struct BlobScene {
  BlobScene() : gray(hills({640, 480}, 3)), mask(gray.size()) {
    mask.fill([&](int32_t x, int32_t y) { return gray.at(x, y) > 140 ? 255 : 0; });
  }
  static BlobSelectCfg config(uint32_t key) {
    BlobSelectCfg cfg = {};
    cfg.grayMode = key % 2;
    cfg.maxCount = 200;
    cfg.flags = key % 3 ? 0x1 : 0x13;
    cfg.area = {2, 5000}, cfg.perimeter = {0, 1000}, cfg.circularity = {0, 1};
    cfg.areaWeight = 1, cfg.circularityWeight = 0.5f;
    cfg.sortKey = key, cfg.sortOrder = 1 + key % 3;
    return cfg;
  }
  Image gray, mask;
};

// The records of the best 200 blobs by each key, after those of the runs.
template <class Select>
uint64_t blobDigest(const BlobScene& scene, const Select& select) {
  Digest digest;
  for (const int32_t connectivity : {4, 8}) {
    Labeller label(scene.mask.size(), connectivity);
    const DaxiDomainList& list = label(scene.mask, DAX_ISA_NEON);
    digest.add(list.runs, list.runCount * sizeof(DomainRun));
    for (uint32_t key = 1; key <= 13; ++key) {
      const BlobSelectCfg cfg = BlobScene::config(key);
      std::vector<BlobInfo> blobs(200);
      BlobSelectResult result = {blobs.data(), 0, nullptr};
      EXPECT_EQ(select(list, result, cfg), static_cast<DaxStatus>(DAX_STS_OK));
      EXPECT_EQ(result.count, 200u);
      for (BlobInfo& blob : blobs) blob.domain = nullptr;
      digest.add(blobs.data(), blobs.size() * sizeof(BlobInfo));
    }
  }
  return digest.value();
}

TEST(Digests, Blobs) {
  const BlobScene scene;
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_BlobSelectBufferSize_8u(scene.mask.size(), &bytes), DAX_STS_OK);
  std::vector<uint8_t> buffer(bytes);
  const auto select = [&](const DaxiDomainList& list, BlobSelectResult& result, const BlobSelectCfg& cfg) {
    return DAXI_BlobSelect_8u_C1R(scene.gray.data(), scene.gray.step(), scene.gray.data(), scene.gray.step(),
                                  scene.gray.size(), &list, static_cast<int32_t>(list.domainCount), &result, &cfg,
                                  buffer.data());
  };
  EXPECT_EQ(blobDigest(scene, select), 0x6FB69BAA142E9D0Du);
}

TEST(Digests, BlobsOnPool) {
  const BlobScene scene;
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_BlobSelectBufferSize_8u_MT(scene.mask.size(), threads, &bytes), DAX_STS_OK);
    std::vector<uint8_t> buffer(bytes);
    const auto select = [&](const DaxiDomainList& list, BlobSelectResult& result, const BlobSelectCfg& cfg) {
      return DAXI_BlobSelect_8u_C1R_MT(scene.gray.data(), scene.gray.step(), scene.gray.data(), scene.gray.step(),
                                       scene.gray.size(), &list, static_cast<int32_t>(list.domainCount), &result, &cfg,
                                       buffer.data(), threads, pool.get());
    };
    EXPECT_EQ(blobDigest(scene, select), 0x6FB69BAA142E9D0Du) << threads << " threads";
  }
}

TEST(Digests, Add) {
  Image a({301, 37}), b(a.size()), dst(a.size());
  a.randomize(9), b.randomize(10);
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    ASSERT_EQ(DAXI_Add_8u_C1RSfs_IS(a.data(), a.step(), b.data(), b.step(), dst.data(), dst.step(), a.size(), isa),
              DAX_STS_OK);
    EXPECT_EQ(Digest().add(dst).value(), 0xAA703C013D10FB0Au);
  }
}

// Classes, hulls and enclosing boxes of every domain.

TEST(Digests, Regions) {
  const BlobScene scene;
  const DaxiSize size = scene.mask.size();
  Labeller label(size, 8);
  const DaxiDomainList& list = label(scene.mask, DAX_ISA_NEON);
  std::vector<DaxiPoint32s> points(DAXI_HULL_POINTS(size.height));
  Digest digest;
  for (uint32_t i = 0; i < list.domainCount; ++i) {
    const DaxiDomain* const domain = list.domains + i;
    int32_t count = 0;
    float rectangularity = 0;
    ASSERT_EQ(_DAXI_DomainConvexHull_ROI(&list, domain, size, points.data(), &count), DAX_STS_OK);
    digest.add(points.data(), static_cast<size_t>(count) * sizeof(DaxiPoint32s));
    for (const int32_t mode : {DAXI_BOX_LEAST_AREA, DAXI_BOX_LEAST_PERIMETER}) {
      DaxiRotatedBox box;
      ASSERT_EQ(_DAXI_DomainEncloseBox(&list, domain, size, mode, points.data(), &box), DAX_STS_OK);
      digest.add(&box, sizeof box);
    }
    ASSERT_EQ(_DAXI_DomainRectangularity(&list, domain, size, points.data(), &rectangularity), DAX_STS_OK);
    digest.add(&rectangularity, sizeof rectangularity);
  }
  EXPECT_EQ(digest.value(), 0x5614FE2F059BD07Fu);
}

}  // namespace
}  // namespace dax::test
