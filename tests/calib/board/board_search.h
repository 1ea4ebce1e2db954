// Searches for boards in memory of exactly the queried size.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/calib/board/board_truth.h"

namespace dax::test {

struct QuadResult {
  bool found = false;
  int32_t count = 0;
  std::vector<DaxiPoint32f> corners;
};

inline QuadResult findQuads(const TestImage<uint8_t>& image, ChessboardPatternSize pattern, int32_t mode,
                            int32_t maxLevel = 8, Guard guard = Guard::after) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_ChessboardCornerBufferSize_8u(image.size(), pattern, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes, guard, static_cast<uint8_t>(maxLevel + mode));
  GuardedBuffer<DaxiPoint32f> corners(static_cast<size_t>(pattern.columns * pattern.rows));
  int32_t found = 7, count = 7;
  EXPECT_EQ(DAXI_ChessboardCorner_8u_C1R(image.data(), image.step(), image.size(), pattern, corners.data(), &count,
                                         &found, mode, maxLevel, buffer.data()),
            DAX_STS_OK);
  return {found == 1, count, {corners.begin(), corners.end()}};
}

}  // namespace dax::test
