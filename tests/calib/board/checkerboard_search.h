// Searches for boards of any size in memory of exactly the queried size.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/calib/board/board_truth.h"
#include "tests/support/guarded_buffer.h"

namespace dax::test {

struct FoundBoards {
  std::vector<CheckerboardGrid> boards;
  std::vector<DaxiPoint32f> points;
  std::vector<CheckerboardCorner> corners;

  const DaxiPoint32f* pointsOf(size_t board) const { return points.data() + boards[board].first; }

  void cut(size_t count) {
    boards.resize(count);
    int32_t n = 0;
    for (const CheckerboardGrid& board : boards) n += board.columns * board.rows;
    points.resize(static_cast<size_t>(n));
    corners.resize(static_cast<size_t>(n));
  }
};

struct SearchBuffers {
  SearchBuffers(uint64_t bytes, Guard guard)
      : work(bytes, guard),
        points(DAXI_CHECKERBOARD_MAX_CORNERS, guard),
        corners(DAXI_CHECKERBOARD_MAX_CORNERS, guard) {}
  GuardedBuffer<uint8_t> work;
  GuardedBuffer<DaxiPoint32f> points;
  GuardedBuffer<CheckerboardCorner> corners;

  FoundBoards boards(const std::vector<CheckerboardGrid>& grids, int32_t count) {
    FoundBoards found{grids, {points.begin(), points.end()}, {corners.begin(), corners.end()}};
    found.cut(static_cast<size_t>(count));
    return found;
  }
};

inline constexpr CheckerboardHessianParam kHessian{DAXI_CHECKERBOARD_MEDIAN, 1, 3, 300, 0, 180};
inline constexpr CheckerboardSymCfg kSymmetry{3, 300, 15, 6, 5, DAXI_CHECKERBOARD_MEDIAN, DAXI_CHECKERBOARD_LADDER};

inline FoundBoards findByHessian(const TestImage<uint8_t>& image, const CheckerboardHessianParam& param = kHessian,
                                 int32_t max = 8, Guard guard = Guard::after) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_MulCheckerboardCornerHessianBufferSize_8u(image.size(), &bytes), DAX_STS_OK);
  SearchBuffers buffers(bytes, guard);
  std::vector<CheckerboardGrid> grids(static_cast<size_t>(max));
  int32_t count = -1;
  EXPECT_EQ(DAXI_MulCheckerboardCornerHessian_8u_C1R(image.data(), image.step(), image.size(), buffers.points.data(),
                                                     buffers.corners.data(), buffers.work.data(), &param, grids.data(),
                                                     max, &count),
            DAX_STS_OK);
  return buffers.boards(grids, count);
}

inline FoundBoards findBySymmetry(const TestImage<uint8_t>& image, const CheckerboardSymCfg& cfg = kSymmetry,
                                  int32_t max = 8, Guard guard = Guard::after, void* pool = nullptr) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_CheckerboardCornerSymMulBufferSize_8u(image.size(), &bytes), DAX_STS_OK);
  SearchBuffers buffers(bytes, guard);
  std::vector<CheckerboardGrid> grids(static_cast<size_t>(max));
  int32_t count = -1;
  const DaxStatus status = DAXI_CheckerboardCornerSymMul_8u_C1R(
      image.data(), image.step(), image.size(), buffers.points.data(), buffers.corners.data(), grids.data(), max,
      &count, &cfg, buffers.work.data(), pool);
  EXPECT_EQ(status, count > 0 ? DaxStatus{DAX_STS_OK} : DAXI_STS_NO_BOARD);
  return buffers.boards(grids, count);
}

}  // namespace dax::test
