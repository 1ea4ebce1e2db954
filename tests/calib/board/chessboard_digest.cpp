#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

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

}  // namespace
}  // namespace dax::test
