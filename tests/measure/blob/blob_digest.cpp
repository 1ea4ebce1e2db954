#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/measure/blob/labeller.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

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
    for (const int32_t mode : {DAXI_BOX_MIN_AREA, DAXI_BOX_MIN_PERIMETER}) {
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
