// The two detectors that find out the size of a board.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "calib/board/chessboard_sym.h"
#include "tests/calib/board/checkerboard_search.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;

struct AnyDetector {
  const char* name;
  std::function<FoundBoards(const Image&, Guard)> find;
  double error;  // pixels, on clean boards
};

const AnyDetector kDetectors[] = {
    {"Hessian", [](const Image& i, Guard g) { return findByHessian(i, kHessian, 8, g); }, 0.15},
    {"symmetry", [](const Image& i, Guard g) { return findBySymmetry(i, kSymmetry, 8, g); }, 0.3},
};

// The corners are those of the board, and the edges lead where they say.
void expectBoard(const FoundBoards& found, const BoardImage& board, const BoardView& view, double error) {
  ASSERT_EQ(found.boards.size(), 1u);
  const auto [columns, rows, first] = found.boards[0];
  EXPECT_EQ(first, 0);
  EXPECT_EQ(columns, std::max(view.columns, view.rows));
  EXPECT_EQ(rows, std::min(view.columns, view.rows));
  ASSERT_EQ(found.points.size(), board.corners.size());
  EXPECT_LE(worstNearest(found.points.data(), board.corners), error);
  if (columns != rows) {
    EXPECT_TRUE(isOrdered(found.points.data(), columns, rows));
  }
  for (const CheckerboardCorner& corner : found.corners) {
    EXPECT_EQ(std::memcmp(&corner.point, &found.points[static_cast<size_t>(&corner - found.corners.data())], 8), 0);
    // Between the edges, seven pixels from the corner.
    const auto look = [&](DaxiPoint32f a, DaxiPoint32f b) {
      if (a.x * b.y - a.y * b.x < 0) b = {-b.x, -b.y};
      const float x = a.x + b.x, y = a.y + b.y, length = std::hypot(x, y);
      return board.image.at(static_cast<int32_t>(corner.point.x + 7 * x / length + 0.5f),
                            static_cast<int32_t>(corner.point.y + 7 * y / length + 0.5f));
    };
    EXPECT_LT(look(corner.intoDark, corner.intoLight) + 20, look(corner.intoLight, corner.intoDark));
  }
}

TEST(Checkerboards, SizesRotationsBlurAndNoise) {
  const std::pair<int32_t, int32_t> sizes[] = {{3, 3}, {4, 3}, {3, 7}, {9, 6}, {11, 8}, {20, 14}};
  int32_t turn = 0;
  for (const AnyDetector& detector : kDetectors) {
    for (const auto& [columns, rows] : sizes) {
      BoardView view;
      view.columns = columns;
      view.rows = rows;
      view.size = columns > 11 ? DaxiSize{1024, 800} : DaxiSize{640, 480};
      view.firstDark = turn % 2 == 0;
      view.rotation = 37 * turn++ + 2;
      view.tilt = 5.0 * (turn % 8);
      view.tiltAxis = 50 * turn;
      view.blur = 0.6;
      SCOPED_TRACE(testing::Message() << detector.name << ' ' << columns << " x " << rows << " turned "
                                      << view.rotation);
      const BoardImage clean(view, 3);
      expectBoard(detector.find(clean.image, Guard::after), clean, view, detector.error);
      view.blur = 1.5;
      view.noise = 6;
      view.gradient = 3;
      const BoardImage poor(view);
      expectBoard(detector.find(poor.image, Guard::before), poor, view, 1.5);
    }
  }
}

// Two boards side by side, the smaller one first in the image.
struct TwoBoards {
  TwoBoards() : image({960, 480}) {
    BoardView view;
    view.size = {480, 480};
    view.blur = 0.7;
    view.columns = 5, view.rows = 4, view.rotation = 12;
    const BoardImage left(view);
    view.columns = 8, view.rows = 6, view.rotation = -20;
    const BoardImage right(view);
    image.fill([&](int32_t x, int32_t y) { return x < 480 ? left.image.at(x, y) : right.image.at(x - 480, y); });
  }
  Image image;
};

TEST(Checkerboards, SeveralBoardsTheLargestFirst) {
  const TwoBoards two;
  for (const AnyDetector& detector : kDetectors) {
    const FoundBoards found = detector.find(two.image, Guard::after);
    ASSERT_EQ(found.boards.size(), 2u) << detector.name;
    EXPECT_EQ(found.boards[0].columns * found.boards[0].rows, 48);
    EXPECT_EQ(found.boards[1].columns * found.boards[1].rows, 20);
    EXPECT_EQ(found.boards[1].first, 48);
    EXPECT_GT(found.pointsOf(0)->x, 480);
    EXPECT_LT(found.pointsOf(1)->x, 480);
  }
  EXPECT_EQ(findByHessian(two.image, kHessian, 1).boards.size(), 1u);
  EXPECT_EQ(findBySymmetry(two.image, kSymmetry, 1).boards.size(), 1u);
  // Limits of extent choose between them.
  CheckerboardHessianParam small = kHessian;
  small.maxExtent = 7;
  CheckerboardSymCfg smallToo = kSymmetry;
  smallToo.maxExtent = 7;
  for (const FoundBoards& found : {findByHessian(two.image, small), findBySymmetry(two.image, smallToo)}) {
    ASSERT_EQ(found.boards.size(), 1u);
    EXPECT_EQ(found.boards[0].columns, 5);
  }
}

TEST(Checkerboards, MaskLeavesTheOtherBoard) {
  const TwoBoards two;
  Image mask(two.image.size(), 5);
  mask.fill([](int32_t x, int32_t) { return x < 480 ? 1 : 0; });
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_CheckerboardCornerSymBufferSize_8u(two.image.size(), &bytes), DAX_STS_OK);
  SearchBuffers buffers(bytes, Guard::after);
  CheckerboardGrid grid{};
  const auto find = [&] {
    return DAXI_CheckerboardCornerSym_8u_C1RM(two.image.data(), two.image.step(), mask.data(), mask.step(), mask.size(),
                                              buffers.points.data(), buffers.corners.data(), &grid, &kSymmetry,
                                              buffers.work.data(), nullptr);
  };
  EXPECT_EQ(find(), DAX_STS_OK);
  EXPECT_EQ(grid.columns, 5);
  mask.fill([](int32_t, int32_t) { return 0; });
  EXPECT_EQ(find(), DAXI_STS_NO_BOARD);
  EXPECT_EQ(grid.columns, 0);
}

TEST(Checkerboards, FailureOfThePool) {
  const TwoBoards two;
  MockPool pool;
  pool.failingTile = 1;
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_CheckerboardCornerSymMulBufferSize_8u(two.image.size(), &bytes), DAX_STS_OK);
  SearchBuffers buffers(bytes, Guard::after);
  CheckerboardGrid grid{};
  int32_t count = 7;
  EXPECT_EQ(DAXI_CheckerboardCornerSymMul_8u_C1R(two.image.data(), two.image.step(), two.image.size(),
                                                 buffers.points.data(), buffers.corners.data(), &grid, 1, &count,
                                                 &kSymmetry, buffers.work.data(), &pool),
            pool.failure);
  EXPECT_EQ(count, 0);
}

// The two halves of the Hessian detector one after the other.
TEST(Checkerboards, LocatedThenSorted) {
  const TwoBoards two;
  const DaxiSize size = two.image.size();
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_CheckerboardCornerHessianBufferSize_8u(size, &bytes), DAX_STS_OK);
  SearchBuffers located(bytes, Guard::after);
  int32_t count = 0, boards = 0;
  ASSERT_EQ(DAXI_CheckerboardCornerHessian_Loc_8u_C1R(two.image.data(), two.image.step(), size, located.corners.data(),
                                                      2048, &count, located.work.data(), &kHessian),
            DAX_STS_OK);
  EXPECT_GE(count, 68);
  ASSERT_EQ(DAXI_MulCheckerboardCornerHessian_SortBufferSize(count, &bytes), DAX_STS_OK);
  SearchBuffers sorted(bytes, Guard::after);
  CheckerboardGrid grids[3];
  ASSERT_EQ(DAXI_MulCheckerboardCornerHessian_Sort(located.corners.data(), count, sorted.corners.data(),
                                                   sorted.work.data(), &kHessian, grids, 3, &boards),
            DAX_STS_OK);
  ASSERT_EQ(boards, 2);
  const FoundBoards whole = findByHessian(two.image);
  EXPECT_EQ(std::memcmp(sorted.corners.data(), whole.corners.data(), 68 * sizeof(CheckerboardCorner)), 0);
  ASSERT_EQ(DAXI_CheckerboardCornerHessian_Sort(located.corners.data(), count, sorted.corners.data(),
                                                sorted.work.data(), &kHessian, grids),
            DAX_STS_OK);
  EXPECT_EQ(grids[0].columns, 8);
  // A few of them only, those found first.
  int32_t few = 0;
  ASSERT_EQ(DAXI_CheckerboardCornerHessian_Loc_8u_C1R(two.image.data(), two.image.step(), size, sorted.corners.data(),
                                                      10, &few, located.work.data(), &kHessian),
            DAX_STS_OK);
  EXPECT_EQ(few, 10);
  EXPECT_EQ(std::memcmp(sorted.corners.data(), located.corners.data(), 10 * sizeof(CheckerboardCorner)), 0);
}

// Squares of ten pixels, and up to the image's edge.
TEST(Checkerboards, SmallSquares) {
  for (const AnyDetector& detector : kDetectors) {
    BoardView view;
    view.size = {160, 120};
    view.square = 10;
    view.rotation = 20;
    const BoardImage board(view);
    expectBoard(detector.find(board.image, Guard::after), board, view, 0.5);
  }
}

TEST(Checkerboards, SubSamplingAndAngles) {
  BoardView view;
  view.size = {1280, 960};
  view.rotation = 15;
  view.blur = 1.5;
  const BoardImage board(view);
  CheckerboardHessianParam param = kHessian;
  param.subSampling = 3;
  expectBoard(findByHessian(board.image, param), board, view, 0.5);
  param.minAngle = 20, param.maxAngle = 60;  // the edges cross at right angles
  EXPECT_TRUE(findByHessian(board.image, param).boards.empty());
}

// A corner fainter than a locator accepts is found where a grid expects it; a still fainter one leaves a gap.
TEST(Checkerboards, FaintCornerOfAGrid) {
  BoardView view;
  view.size = {320, 240};
  view.columns = 5, view.rows = 3;
  view.dark = 90, view.light = 110, view.background = 100;
  view.rotation = 8;
  const BoardImage board(view);
  const PlanePoint middle = board.corners[7];
  const auto fade = [&](double contrast) {
    Image image(view.size);
    image.fill([&](int32_t x, int32_t y) {
      const bool isFaint = std::hypot(x - middle.x, y - middle.y) < 20;
      return 100.5 + (board.image.at(x, y) - 100) * (isFaint ? contrast / 20 : 1);
    });
    return image;
  };
  for (const auto& [detector, expected, tooFaint] : {std::tuple{kDetectors[0], 8, 5}, {kDetectors[1], 11, 8}}) {
    const FoundBoards found = detector.find(fade(expected), Guard::after);
    ASSERT_EQ(found.points.size(), board.corners.size()) << detector.name;
    EXPECT_LE(worstNearest(found.points.data(), board.corners), 0.5) << detector.name;
    EXPECT_TRUE(detector.find(fade(tooFaint), Guard::after).boards.empty()) << detector.name;
  }
}

// The least and the greatest of each field, and beyond.
TEST(Checkerboards, LimitsOfTheConfiguration) {
  const struct {
    uint32_t CheckerboardSymCfg::*field;
    uint32_t low, high;
  } limits[] = {{&CheckerboardSymCfg::minExtent, 2, 300},  {&CheckerboardSymCfg::maxExtent, 2, 300},
                {&CheckerboardSymCfg::contrast, 1, 255},   {&CheckerboardSymCfg::distance, 3, 100},
                {&CheckerboardSymCfg::lastRadius, 3, 100}, {&CheckerboardSymCfg::filter, 1, 2},
                {&CheckerboardSymCfg::scales, 1, 2}};
  for (const auto& [field, low, high] : limits) {
    for (const auto& [value, status] : {std::pair{low - 1, DAX_STS_BAD_PARAM},
                                        {low, DAX_STS_OK},
                                        {high, DAX_STS_OK},
                                        {high + 1, DAX_STS_BAD_PARAM}}) {
      CheckerboardSymCfg cfg = kSymmetry;
      cfg.*field = value;
      EXPECT_EQ(DAXI_CheckerboardCornerSym_check_cfg(&cfg), status) << value;
    }
  }
}

// Nothing to find: no detector finds it, nor leaves its memory; as many candidates as there can be among them.
TEST(Checkerboards, ImagesWithoutABoard) {
  for (const DaxiSize size : {DaxiSize{64, 64}, {301, 203}, {64, 700}}) {
    std::vector<Image> images;
    for (int32_t i = 0; i < 7; ++i) images.emplace_back(size, i % 3);
    images[0].fill([](int32_t, int32_t) { return 90; });
    images[1].randomize(3);
    images[2].fill([](int32_t x, int32_t y) { return (x + y) % 2 * 255; });
    images[3].fill([](int32_t x, int32_t y) { return (x / 2 + y / 2) % 2 * 255; });
    images[4].fill([](int32_t x, int32_t) { return x / 9 % 2 * 255; });
    images[5].fill([](int32_t x, int32_t y) { return x % 20 < 9 && y % 20 < 9 ? 0 : 255; });
    images[6].fill([](int32_t x, int32_t y) { return x + y == 60 ? 255 : 0; });
    for (size_t i = 0; i < images.size(); ++i) {
      for (const AnyDetector& detector : kDetectors) {
        for (const Guard guard : kGuards) {
          EXPECT_TRUE(detector.find(images[i], guard).boards.empty()) << detector.name << " image " << i;
        }
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
