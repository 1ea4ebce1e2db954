// Digests of outputs over fixed inputs. The numbers are the same on every machine: a change of one bit in one result
// shows here, and so does a machine that computes differently. This file is compiled with NEON kernels, without them, and
// for the reference pool; a family with _MT members takes its digest anew for 1 to 16 threads. After a change:
// scripts/digests, which puts the numbers into the documents.
#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "daxi.h"
#include "prmt.h"
#include "tests/support/any_pool.h"
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

TEST(Digests, Calipers) {
  const Image image = hills({301, 203}, 7);
  CaliperEdgePairCfg pairs = {};
  pairs.polarity = 3, pairs.maxPairs = 100, pairs.threshold = 1, pairs.scoreFlags = 0x3FF, pairs.expectedWidth = 9;
  for (CaliperCriterion* c = &pairs.contrast; c <= &pairs.gray; ++c) *c = {0, -5, 3, 40, 0.3f, 0.9f};
  CaliperEdgeCfg edges = {};
  edges.polarity = 3, edges.maxEdges = 100, edges.threshold = 1, edges.scoreFlags = 0x207;
  for (CaliperCriterion* c = &edges.contrast; c <= &edges.gray; ++c) *c = {1, 3, 60, 250, 0.3f, 0.9f};
  std::vector<double> buffer(1 << 16);
  std::vector<CaliperEdge> foundEdges(100);
  std::vector<CaliperEdgePair> foundPairs(100);
  std::vector<DaxiPoint32f> points(200);
  CaliperEdgeResult edgeResult = {foundEdges.data(), points.data(), 0};
  CaliperEdgePairResult pairResult = {foundPairs.data(), points.data(), 0};
  int32_t found = 0;
  Digest digest;
  const auto measure = [&](auto* detect, auto* detectPairs, const auto& region) {
    for (uint32_t i = 0; i < 6; ++i) {
      edges.projection = pairs.projection = i % 2;
      edges.filterHalfWidth = pairs.filterHalfWidth = 1 + 4 * i;
      ASSERT_EQ(detect(image.data(), image.step(), image.size(), &region, &edges, &edgeResult, buffer.data()),
                DAX_STS_OK);
      found += edgeResult.count + pairResult.count;
      digest.add(edgeResult.edges, static_cast<size_t>(edgeResult.count) * sizeof(CaliperEdge));
      digest.add(edgeResult.points, static_cast<size_t>(edgeResult.count) * sizeof(DaxiPoint32f));
      ASSERT_EQ(detectPairs(image.data(), image.step(), image.size(), &region, &pairs, &pairResult, buffer.data()),
                DAX_STS_OK);
      digest.add(pairResult.pairs, static_cast<size_t>(pairResult.count) * sizeof(CaliperEdgePair));
    }
  };
  for (int i = 0; i < 20; ++i) {
    const float angle = -3.1f + 0.31f * static_cast<float>(i), x = 20.3f + 13.0f * static_cast<float>(i);
    measure(DAXI_CalipEdgeDetect_8u_C1R, DAXI_CalipEdgePairDetect_8u_C1R, CaliperBox{x, 99.7f, 150, 120.4f, angle});
    measure(DAXI_CalipEdgeDetectRhomboid_8u_C1R, DAXI_CalipEdgePairDetectRhomboid_8u_C1R,
            CaliperRhomboid{x, 99.7f, 150, 120.4f, angle, angle > 2 ? 0.1f : angle + 1});
    measure(DAXI_CalipEdgeDetectAnnulus_8u_C1R, DAXI_CalipEdgePairDetectAnnulus_8u_C1R,
            CaliperAnnulus{x, 99.7f, 12.3f, 140, angle, 1.5f});
  }
  EXPECT_GT(found, 5000);
  EXPECT_EQ(digest.value(), 0x4EB71ABBFA4E90CEu);
}

TEST(Digests, LineFit) {
  Random random(8);
  std::vector<DaxiPoint32f> points;
  for (int i = 0; i < 400; ++i) {
    const auto x = static_cast<float>(random.below(60000)) / 100, noise = static_cast<float>(random.below(200)) / 100;
    points.push_back({x, i % 4 ? 300 - 0.4f * x + noise : static_cast<float>(random.below(400))});
  }
  std::vector<double> buffer(4000);
  std::vector<uint8_t> inliers(400);
  std::vector<float> weights(400);
  Digest digest;
  for (int32_t i = 0; i < 18; ++i) {
    const LineFitCfg cfg = {1 + i % 3, 1 + i / 3 % 3, 30, 100, 4, static_cast<uint32_t>(i / 9), -0.4f, 0.3f};
    DaxiLine line;
    float rms;
    ASSERT_EQ(
        DAXI_LineFitRegre_32f(points.data(), 400, &cfg, &line, inliers.data(), weights.data(), &rms, buffer.data()),
        DAX_STS_OK);
    digest.add(&line, sizeof line).add(&rms, sizeof rms).add(inliers.data(), 400).add(weights.data(), 1600);
  }
  EXPECT_EQ(digest.value(), 0x8FC811A2D494C715u);
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

// Residuals of basic operations alone: rational functions of the parameters.
int32_t rationalResiduals(const double* x, int32_t n, int32_t m, void*, double* r) {
  for (int32_t i = 0; i < m; ++i) {
    const double t = i * 0.25, a = x[i % n], b = x[(i * 7 + 3) % n];
    r[i] = (a + t) / (1 + b * b + t * t) - 0.3 + 0.1 * (i % 5);
  }
  return 0;
}
int32_t addStep(double* x, const double* step, int32_t n, void*) {
  for (int32_t j = 0; j < n; ++j) x[j] += step[j];
  return 0;
}
int32_t differences(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* jacobian) {
  std::vector<double> scratch(static_cast<size_t>(2 * (m + n)));
  return PRMT_JacNum_Process_f64(x, n, m, user, rationalResiduals, addStep, jacobian, scratch.data());
}

TEST(Digests, LeastSquares) {
  constexpr int32_t kN = 41, kM = 150;
  const PrmtLmFunctions functions{rationalResiduals, differences, addStep, 0};
  std::vector<uint8_t> buffer(1 << 22);
  Digest digest;
  int32_t user = 0;
  for (const int32_t variant : {0, 1, 2}) {
    PrmtLmParam param{1e-12, 0, 6, 1e-6, 0.01, 10, 0, 0};
    PrmtCgParam cg{1e-10, 100, 4, 0};
    std::vector<double> x(kN + 2);
    for (int32_t j = 0; j < kN; ++j) x[static_cast<size_t>(j)] = 0.1 * j - 2;
    double* const outputs = x.data() + kN;
    uint64_t bytes = buffer.size();
    const auto run = [&] {
      if (variant == 0) {
        return PRMT_LM_Process_f64(x.data(), kN, kM, &functions, &user, &param, outputs, outputs + 1, buffer.data(),
                                   &bytes);
      }
      if (variant == 1) {
        return PRMT_LM_HUBER_Process_f64(x.data(), kN, kM, &functions, &user, &param, 0.2, outputs, outputs + 1,
                                         buffer.data(), &bytes);
      }
      return PRMT_LM_CG_Process_f64(x.data(), kN, kM, &functions, &user, &param, &cg, outputs, outputs + 1,
                                    buffer.data(), &bytes);
    };
    ASSERT_EQ(run(), 0);
    digest.add(x.data(), x.size() * sizeof(double));
  }
  for (int32_t k = 0; k < 200; ++k) {
    double twist[6], motion[16];
    for (int32_t i = 0; i < 6; ++i) twist[i] = ((k * 37 + i * 11) % 101 - 50) * (k % 4 == 0 ? 1e-3 : 0.03);
    PRMT_SE3_Exp_f64(twist, motion);
    PRMT_SE3_Update_f64(twist, twist);
    digest.add(motion, sizeof motion).add(twist, sizeof twist);
  }
  EXPECT_EQ(digest.value(), 0x170E66C992EA246Fu);
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

// Points {x, y, z} of fine coordinates, and in turn of coarse ones, with many ties.
std::vector<float> makeCloud() {
  TestImage<int16_t> coordinates({3, 3000});
  coordinates.randomize(11);
  std::vector<float> points;
  for (int32_t y = 0; y < 3000; ++y) {
    for (int32_t x = 0; x < 3; ++x) {
      const int16_t c = coordinates.at(x, y);
      points.push_back(y % 2 == 0 ? static_cast<float>(c) / 4096 : static_cast<float>(c / 4096));
    }
  }
  return points;
}

template <class Query, class... Arguments>
std::vector<uint64_t> allocate(Query query, Arguments... arguments) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(arguments..., &bytes), DAX_STS_OK);
  return std::vector<uint64_t>(bytes / 8);
}

TEST(Digests, KdTreeOnPool) {
  constexpr int32_t kCount = 3000, kWithin = 50;
  const std::vector<float> points = makeCloud();
  auto block = allocate(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize, kCount, 3);
  auto boxes = allocate(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize, kCount, 3);
  auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block.data());
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(tree, points.data(), kCount, 3, 10, boxes.data()), DAX_STS_OK);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    auto stack = allocate(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize, kCount, threads);
    Digest digest;
    digest.add(tree->index, sizeof(uint32_t) * kCount);
    std::vector<uint32_t> indices(size_t{kCount} * 80);
    std::vector<float> distances(indices.size());
    std::vector<int32_t> counts(kCount);
    const auto add = [&](DaxStatus status) {
      ASSERT_EQ(status, DAX_STS_OK);
      digest.add(indices.data(), sizeof(uint32_t) * indices.size());
      digest.add(distances.data(), sizeof(float) * distances.size());
      digest.add(counts.data(), sizeof(int32_t) * counts.size());
    };
    for (const int32_t k : {1, 16, 80}) {
      add(DAX3DPCL_KDTREE_KNearestSearch_MT(pool.get(), threads, tree, points.data(), kCount, 3, k, indices.data(),
                                            distances.data(), counts.data(), stack.data()));
    }
    add(DAX3DPCL_KDTREE_RNearestSearch_MT(pool.get(), threads, tree, points.data(), kCount, 3, kWithin, indices.data(),
                                          distances.data(), counts.data(), stack.data(), 1.3f));
    EXPECT_EQ(digest.value(), 0xF7F97F00F136D61Eu) << threads << " threads";
  }
}

TEST(Digests, Normals) {
  constexpr int32_t kCount = 3000;
  const std::vector<float> points = makeCloud();
  auto block = allocate(DAX3DPCL_SEARCH_KDTREE_BufferSize, kCount, 3);
  auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE*>(block.data());
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, points.data(), kCount, 3, 10), DAX_STS_OK);
  Digest digest;
  for (const int32_t k : {5, 16, 80}) {
    auto buffer = allocate(DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize, kCount, k);
    std::vector<DAX3DPCL_NORMAL> normals(kCount);
    const float viewpoint[3] = {1, 2, 30};
    ASSERT_EQ(DAX3DPCL_FEATURE_NORM_PCAEstimate(points.data(), kCount, tree, k, viewpoint, normals.data(),
                                                buffer.data(), 2.5f),
              DAX_STS_OK);
    digest.add(normals.data(), sizeof(DAX3DPCL_NORMAL) * kCount);
  }
  EXPECT_EQ(digest.value(), 0x9B138E3B4C263ADBu);
}

}  // namespace
}  // namespace dax::test
