// Digests of measurements, detectors and solvers: see digest_test.cpp.
#include <gtest/gtest.h>

#include "daxi.h"
#include "prmt.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

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

// Single edges and pairs of many boxes at a time.
TEST(Digests, CalipersOnPool) {
  const Image image = hills({301, 203}, 7);
  constexpr int32_t kCount = 40, kMost = 20;
  CaliperEdgePairCfg cfg = {};
  cfg.projection = 1, cfg.polarity = 3, cfg.filterHalfWidth = 3, cfg.maxPairs = kMost, cfg.threshold = 1;
  cfg.scoreFlags = 0x1, cfg.contrast = {0, 1, 30, 100, 0, 1};
  std::vector<CaliperBox> boxes;
  for (int32_t i = 0; i < kCount; ++i) {
    boxes.push_back({7.3f * static_cast<float>(i), 101.2f, 60, 12, 0.15f * static_cast<float>(i - 20)});
  }
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    std::vector<CaliperEdgePair> pairs(kCount * kMost);
    std::vector<CaliperEdgePairResult> results(kCount);
    for (size_t i = 0; i < kCount; ++i) results[i] = {&pairs[i * kMost], nullptr, 0};
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_CalipEdgePairDetectV2BufferSize_8u(boxes.data(), kCount, threads, &bytes), DAX_STS_OK);
    std::vector<double> buffer(bytes / sizeof(double) + 1);
    ASSERT_EQ(DAXI_CalipEdgePairDetectV2_8u_C1R(image.data(), image.step(), image.size(), boxes.data(), kCount, &cfg,
                                                results.data(), buffer.data(), threads, pool.get()),
              DAX_STS_OK);
    Digest digest;
    int32_t found = 0;
    for (const CaliperEdgePairResult& result : results) {
      digest.add(result.pairs, static_cast<size_t>(result.count) * sizeof(CaliperEdgePair));
      found += result.count;
    }
    EXPECT_GT(found, 100);
    EXPECT_EQ(digest.value(), 0xD98950840CAF0F64u) << threads << " threads";
  }
}

TEST(Digests, Chessboards) {
  const Image image = boardOf(8, 6, {320, 260});
  const DaxiSize size = image.size();
  std::vector<DaxiPoint32f> points(DAXI_CHECKERBOARD_MAX_CORNERS);
  std::vector<CheckerboardCorner> corners(DAXI_CHECKERBOARD_MAX_CORNERS);
  Digest digest;
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_ChessboardCornerBufferSize_8u(size, {8, 6}, &bytes), DAX_STS_OK);
  std::vector<uint8_t> buffer(bytes);
  for (const int32_t mode : {DAXI_CHESSBOARD_OTSU, DAXI_CHESSBOARD_LOCAL_MEAN}) {
    int32_t count = 0, found = 0;
    ASSERT_EQ(DAXI_ChessboardCorner_8u_C1R(image.data(), image.step(), size, {8, 6}, points.data(), &count, &found,
                                           mode, 8, buffer.data()),
              DAX_STS_OK);
    ASSERT_EQ(found, 1);
    digest.add(points.data(), 48 * sizeof(DaxiPoint32f));
    for (auto* const refine : {DAXI_ChessboardCornerGetSubpix_8u_C1R, DAXI_ChessboardCornerGetSubpix_8u_C1R_v2}) {
      std::vector<DaxiPoint32f> refined(48);
      ASSERT_EQ(refine(image.data(), image.step(), size, points.data(), 48, {5, 5}, 20, refined.data(), 1e-4f),
                DAX_STS_OK);
      digest.add(refined.data(), 48 * sizeof(DaxiPoint32f));
    }
  }
  ASSERT_EQ(DAXI_CheckerboardCornerHessianBufferSize_8u(size, &bytes), DAX_STS_OK);
  buffer.resize(bytes);
  for (const int32_t filter : {DAXI_CHECKERBOARD_MEDIAN, DAXI_CHECKERBOARD_PLAIN}) {
    const CheckerboardHessianParam param = {filter, 1, 3, 20, 20, 160};
    CheckerboardGrid grid = {};
    ASSERT_EQ(DAXI_CheckerboardCornerHessian_8u_C1R(image.data(), image.step(), size, points.data(), corners.data(),
                                                    buffer.data(), &param, &grid),
              DAX_STS_OK);
    ASSERT_EQ(grid.columns * grid.rows, 48);
    digest.add(corners.data(), 48 * sizeof(CheckerboardCorner));
  }
  EXPECT_EQ(digest.value(), 0xEF2981FFF39EE39Au);
}

TEST(Digests, ChessboardsOnPool) {
  const Image image = boardOf(8, 6, {320, 260});
  const CheckerboardSymCfg cfg = {3, 20, 30, 8, 5, DAXI_CHECKERBOARD_PLAIN, DAXI_CHECKERBOARD_LADDER};
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_CheckerboardCornerSymBufferSize_8u(image.size(), &bytes), DAX_STS_OK);
  std::vector<uint8_t> buffer(bytes);
  std::vector<DaxiPoint32f> points(DAXI_CHECKERBOARD_MAX_CORNERS);
  std::vector<CheckerboardCorner> corners(DAXI_CHECKERBOARD_MAX_CORNERS);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    CheckerboardGrid grid = {};
    ASSERT_EQ(DAXI_CheckerboardCornerSym_8u_C1R(image.data(), image.step(), image.size(), points.data(), corners.data(),
                                                &grid, &cfg, buffer.data(), pool.get()),
              DAX_STS_OK);
    ASSERT_EQ(grid.columns * grid.rows, 48);
    EXPECT_EQ(Digest().add(corners.data(), 48 * sizeof(CheckerboardCorner)).value(), 0x5836DEEFD787032Au)
        << threads << " threads";
  }
}

// Products, sums and transposes of sparse matrices, written out in full.
TEST(Digests, SparseMatrices) {
  Random random(12);
  std::vector<std::vector<double>> memory;
  const auto matrix = [&](int32_t rows, int32_t cols, int32_t elements) {
    uint64_t bytes = 0;
    PRMT_MSP_BufSize_f64(rows, cols, 4000, &bytes);
    PrmtMsp result;
    PRMT_MSP_Init_f64(&result, rows, cols, 4000, memory.emplace_back(bytes / sizeof(double) + 1).data());
    for (int32_t i = 0; i < elements; ++i) {
      const int32_t row = random.below(rows), col = random.below(cols);
      PRMT_MSP_AddEle_tpl_f64(&result, row, col, (random.below(2001) - 1000) / 7.0);
    }
    return result;
  };
  const PrmtMsp a = matrix(40, 30, 200), b = matrix(30, 50, 250), c = matrix(40, 50, 150);
  PrmtMsp product = matrix(40, 50, 0), sum = matrix(40, 50, 0), transposed = matrix(50, 40, 0);
  std::vector<double> buffer(10000), full(2000), in(50, 1 / 3.0), out(40);
  ASSERT_EQ(PRMT_MSP_Mul_f64(&a, &b, &product, buffer.data()), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_Add_f64(0.3, &product, -1.7, &c, &sum, buffer.data()), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_Trans_f64(&sum, &transposed), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_MspToMat_f64(&transposed, full.data(), 40), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_MulVec_f64(&sum, in.data(), out.data()), PRMT_STS_OK);
  Digest digest;
  digest.add(full.data(), full.size() * sizeof(double)).add(out.data(), out.size() * sizeof(double));
  EXPECT_EQ(digest.value(), 0x6D6EDA83153D2FD3u);
}

}  // namespace
}  // namespace dax::test
