#include "calib/board/chessboard_board.h"
#include "calib/board/chessboard_mask.h"
#include "calib/board/chessboard_surplus.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/calib/board/board_search.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;
constexpr int32_t kModes[] = {DAXI_CHESSBOARD_OTSU, DAXI_CHESSBOARD_LOCAL_MEAN};

void expectFound(const BoardView& view, std::initializer_list<int32_t> modes) {
  constexpr double kTolerance = 6;
  const BoardImage board(view, 5);
  for (const int32_t mode : modes) {
    SCOPED_TRACE(testing::Message() << view.columns << " x " << view.rows << " turned " << view.rotation << " mode "
                                    << mode);
    const QuadResult result = findQuads(board.image, {view.columns, view.rows}, mode);
    ASSERT_TRUE(result.found);
    EXPECT_EQ(result.count, view.columns * view.rows);
    EXPECT_TRUE(isOrdered(result.corners.data(), view.columns, view.rows));
    if (!view.mirrored && view.columns != view.rows) {
      EXPECT_LE(worstError(result.corners.data(), board.corners), kTolerance);
    }
    EXPECT_LE(worstNearest(result.corners.data(), board.corners), kTolerance);
  }
}

TEST(Chessboard, EverySizeAndRotation) {
  int32_t turn = 0;
  for (const auto& [columns, rows] : {std::pair{3, 2},
                                      {2, 3},
                                      {3, 3},
                                      {4, 3},
                                      {5, 5},
                                      {7, 6},
                                      {6, 9},
                                      {9, 6},
                                      {11, 8},
                                      {8, 14},
                                      {20, 14},
                                      {25, 25}}) {
    BoardView view;
    view.columns = columns;
    view.rows = rows;
    view.size = columns * rows > 100 ? DaxiSize{1280, 960} : DaxiSize{640, 480};
    view.firstDark = turn % 2 == 0;
    view.rotation = 15 * turn++ + 4;
    view.tilt = 10;
    view.tiltAxis = 40 * turn;
    view.blur = 0.5;
    expectFound(view, {DAXI_CHESSBOARD_OTSU, DAXI_CHESSBOARD_LOCAL_MEAN});
  }
}

TEST(Chessboard, UnevenLightMirrorsAndUpsideDown) {
  for (const double rotation : {0.0, 90.0, 180.0, 270.0, 7.0, 187.0}) {
    BoardView view;
    view.columns = 7;
    view.rows = 5;
    view.rotation = rotation;
    expectFound(view, {DAXI_CHESSBOARD_OTSU});
    view.mirrored = true;
    expectFound(view, {DAXI_CHESSBOARD_OTSU});
    view.gradient = 4;
    expectFound(view, {DAXI_CHESSBOARD_LOCAL_MEAN});
  }
}

TEST(Chessboard, MarginOfEightPixels) {
  BoardView view;
  view.columns = 5;
  view.rows = 4;
  view.square = 24;
  view.size = {320, 260};
  for (const double corner : {12.0, 6.5}) {
    view.shiftX = corner - (319 / 2.0 - 2 * 24);
    const BoardImage board(view);
    const QuadResult result = findQuads(board.image, {5, 4}, 0);
    EXPECT_EQ(result.count, 20) << corner;
    EXPECT_EQ(result.found, corner > 10) << corner;
  }
}

// A dark square that touches a corner square of the board.
TEST(Chessboard, SquareTooMany) {
  BoardView view;
  view.columns = 6;
  view.rows = 5;
  view.square = 40;
  BoardImage board(view);
  const BoardCamera camera(view);
  const PlanePoint p = camera(6, 5);
  board.image.fill([&](int32_t x, int32_t y) {
    const bool inside = x >= p.x && x < p.x + 40 && y >= p.y && y < p.y + 40;
    return inside ? 40 : static_cast<int32_t>(board.image.at(x, y));
  });
  EXPECT_TRUE(findQuads(board.image, {6, 5}, 0).found);
}

// A board is not found in a larger one, whose part could be any.
TEST(Chessboard, LargerBoardIsNotTheAskedOne) {
  for (const double rotation : {0.0, 40.0, 130.0}) {
    BoardView view;
    view.columns = 9;
    view.rows = 6;
    view.blur = 0.5;
    view.rotation = rotation;
    BoardImage board(view);
    EXPECT_TRUE(findQuads(board.image, {9, 6}, DAXI_CHESSBOARD_OTSU).found);
    EXPECT_TRUE(findQuads(board.image, {6, 9}, DAXI_CHESSBOARD_OTSU).found);
    for (const ChessboardPatternSize pattern :
         {ChessboardPatternSize{8, 6}, {9, 5}, {6, 8}, {7, 5}, {4, 3}, {3, 3}, {3, 2}, {2, 5}}) {
      for (const int32_t mode : kModes) {
        const QuadResult result = findQuads(board.image, pattern, mode);
        EXPECT_TRUE(result.count == 0 && !result.found) << pattern.columns << " x " << pattern.rows << ", " << rotation;
      }
    }
  }
}

// Nothing, too much, and images made to have as many regions as there can be; in guarded memory.
TEST(Chessboard, ImagesWithoutABoard) {
  const DaxiSize size{200, 170};
  std::vector<Image> images;
  for (int32_t i = 0; i < 7; ++i) images.emplace_back(size, i % 2);
  images[0].fill([](int32_t, int32_t) { return 90; });
  images[1].randomize(3);
  images[2].fill([](int32_t x, int32_t y) { return (x + y) % 2 * 255; });
  images[3].fill([](int32_t x, int32_t y) { return x % 2 || y % 2 ? 255 : 0; });
  images[4].fill([](int32_t x, int32_t y) { return x % 5 < 3 && y % 5 < 3 ? 0 : 255; });  // 1360 squares
  images[5].fill([](int32_t x, int32_t y) { return x % 8 < 5 && y % 6 < 4 && x + y * 200 / 6 < 99999 ? 0 : 255; });
  images[6].fill([](int32_t x, int32_t) { return x; });
  for (const Image& image : images) {
    for (const int32_t mode : kModes) {
      for (const Guard guard : kGuards) {
        for (const ChessboardPatternSize pattern : {ChessboardPatternSize{2, 2}, {9, 6}, {25, 25}}) {
          EXPECT_FALSE(findQuads(image, pattern, mode, 18, guard).found);
        }
      }
    }
  }
  // The size that takes the fewest bytes and the one of the worst step.
  Image smallest({64, 64}, 11);
  smallest.randomize(5);
  EXPECT_FALSE(findQuads(smallest, {3, 3}, 1, 18).found);
}

// The largest board, and as many dark squares beside it as make 800 regions, or one more.
TEST(Chessboard, AtMostEightHundredRegions) {
  constexpr int32_t kBoardSquares = 338, kSide = 12;
  for (const auto& [regions, found] : {std::pair{800, true}, {801, false}}) {
    Image image({1024, 670});
    image.fill([](int32_t, int32_t) { return 200; });
    const auto darken = [&](int32_t left, int32_t top) {
      for (int32_t y = top; y < top + kSide; ++y) std::fill_n(image.row(y) + left, kSide, uint8_t{40});
    };
    for (int32_t i = 0; i < 26 * 26; ++i) {
      if ((i % 26 + i / 26) % 2 == 0) darken(20 + kSide * (i % 26), 20 + kSide * (i / 26));
    }
    for (int32_t i = 0; i < regions - kBoardSquares; ++i) darken(350 + 30 * (i % 22), 12 + 30 * (i / 22));
    EXPECT_EQ(findQuads(image, {25, 25}, DAXI_CHESSBOARD_LOCAL_MEAN).found, found) << regions;
  }
}

// More than 3 below the mean of a window whose sides follow from the image's, the edges going on outside.
TEST(ChessboardMask, LocalMeanByDefinition) {
  for (const DaxiSize size : {DaxiSize{64, 65}, {128, 129}, {131, 64}, {256, 257}, {513, 70}}) {
    Image image(size, 2);
    image.randomize(static_cast<uint64_t>(size.width));
    Image mask(size);
    std::vector<uint32_t> columns(static_cast<size_t>(size.width));
    maskDark(image.data(), image.step(), mask.data(), mask.step(), size, DAXI_CHESSBOARD_LOCAL_MEAN, columns.data(), 0);
    const int32_t w = meanWindowSide(size.width), h = meanWindowSide(size.height);
    for (int32_t i = 0; i < 400; ++i) {
      const int32_t x = i * 37 % size.width, y = i * 91 % size.height;
      int64_t sum = 0;
      for (int32_t v = y - h / 2; v < y + h / 2; ++v) {
        for (int32_t u = x - w / 2; u < x + w / 2; ++u) {
          sum += image.at(std::clamp(u, 0, size.width - 1), std::clamp(v, 0, size.height - 1));
        }
      }
      ASSERT_EQ(mask.at(x, y) != 0, (image.at(x, y) + 3) * w * h < sum) << x << ", " << y << " of " << size.width;
    }
  }
  const std::pair<int32_t, int32_t> sides[] = {{64, 8},   {128, 8},  {129, 16},  {256, 16},   {257, 32},
                                               {512, 32}, {513, 64}, {1024, 64}, {1025, 128}, {65536, 128}};
  for (const auto& [side, window] : sides) EXPECT_EQ(meanWindowSide(side), window) << side;
}

// Squares of a chain, one pixel apart at their corners, and what the stages make of them.
class Quads : public testing::Test {
 protected:
  void add(double x, double y, double half = 10) {
    const auto index = static_cast<int32_t>(quads_.size());
    const double dx[] = {-half, -half, half, half}, dy[] = {half, -half, -half, half};
    ChessboardQuad quad{{}, {}, -1, index + 1, static_cast<float>(4 * half * half), 0};
    for (int32_t k = 0; k < 4; ++k) {
      quad.corner[k] = 4 * index + k + 1;
      points_.push_back({static_cast<float>(x + dx[k]), static_cast<float>(y + dy[k]), quad.corner[k], 0, 0, {}});
    }
    quads_.push_back(quad);
  }
  // The dark squares of a board of columns x rows inner corners.
  void addBoard(int32_t columns, int32_t rows) {
    for (int32_t r = 0; r <= rows; ++r) {
      for (int32_t c = r % 2; c <= columns; c += 2) add(100 + 22 * c, 100 + 22 * r);
    }
  }
  void link() {
    table_ = {quads_.data(), points_.data(), static_cast<int32_t>(quads_.size())};
    DAXI_ChessboardCorner_find_quads_neighbor(&table_);
    ids_.resize(quads_.size());
    group_ = {ids_.data(), 0};
    DAXI_ChessboardCorner_find_connected_quads(&table_, 0, &group_);
  }
  GroupScratch scratch() {
    uint64_t bytes = 0;
    _DAXI_PtEncloseBoxBufferSize_32s(kMaxQuads, &bytes);
    box_.resize(bytes);
    places_ = std::make_unique<GuardedBuffer<QuadPlace>>(quads_.size());
    centres_.resize(kMaxQuads);
    hull_.resize(4 * kMaxQuads + 5);
    return {places_->data(), centres_.data(), hull_.data(), box_.data()};
  }

  std::vector<ChessboardQuad> quads_;
  std::vector<ChessboardCornerPoint> points_;
  std::vector<int32_t> ids_;
  QuadTable table_{};
  QuadGroup group_{};
  std::vector<uint8_t> box_;
  std::unique_ptr<GuardedBuffer<QuadPlace>> places_;
  std::vector<DaxiPoint32s> centres_, hull_;
};

TEST_F(Quads, LinkedSquaresShareThePointHalfWay) {
  add(100, 100);
  add(122, 122);
  add(300, 300);
  link();
  ASSERT_EQ(group_.count, 2);
  EXPECT_EQ(quads_[0].neighbour[3], 2);
  EXPECT_EQ(quads_[1].neighbour[1], 1);
  EXPECT_EQ(quads_[2].neighbours, 0);
  EXPECT_EQ(quads_[0].corner[3], quads_[1].corner[1]);
  EXPECT_EQ(points_[3].x, 111);
}

TEST_F(Quads, SurplusFallsByTwo) {
  for (const auto& [extra, left] : {std::pair{0, 0}, {1, -1}, {2, 0}, {3, -1}}) {
    quads_.clear();
    points_.clear();
    addBoard(5, 5);  // 18 dark squares
    for (int32_t i = 0; i < extra; ++i) add(100 - 22 * (i + 1), 100 - 22 * (i + 1));
    link();
    ASSERT_EQ(group_.count, 18 + extra);
    const GroupScratch at = scratch();
    DAXI_ChessboardCorner_clean_surplus_quads(&table_, &group_, 18, &at);
    EXPECT_EQ(group_.count, 18 + left) << extra;
    // The square furthest out went, and nothing in the group is linked to it.
    for (int32_t i = 0; i < group_.count && extra > 0; ++i) {
      const ChessboardQuad& quad = table_.quad(group_.ids[i]);
      EXPECT_NE(quad.id, 18 + extra);
      EXPECT_EQ(std::count(quad.neighbour, quad.neighbour + 4, 18 + extra), 0);
      EXPECT_EQ(quad.neighbours, 4 - std::count(quad.neighbour, quad.neighbour + 4, 0));
    }
  }
}

// A square behind the short side, which would have a single dark one there, and a line of them.
TEST_F(Quads, SquaresBesideTheBoard) {
  for (const auto& [more, left] : {std::pair{1, 8}, {2, 0}}) {
    quads_.clear();
    points_.clear();
    addBoard(2, 4);
    if (more == 1) add(122, 78);
    if (more == 2) add(78, 122), add(78, 166);
    link();
    const GroupScratch at = scratch();
    DAXI_ChessboardCorner_order_connected_quads(&table_, &group_, {2, 4}, &at);
    EXPECT_EQ(group_.count, left);
    for (const ChessboardQuad& quad : quads_)
      EXPECT_EQ(quad.neighbours, 4 - std::count(quad.neighbour, quad.neighbour + 4, 0));
  }
}

// From the corner whose square has the fewest neighbours, whatever the order of the group.
TEST_F(Quads, BoardIsReadRowByRow) {
  const ChessboardPatternSize pattern{4, 5};
  for (const bool reversed : {false, true}) {
    quads_.clear();
    points_.clear();
    addBoard(4, 5);
    link();
    const GroupScratch at = scratch();
    DAXI_ChessboardCorner_order_connected_quads(&table_, &group_, pattern, &at);
    if (reversed) std::reverse(group_.ids, group_.ids + group_.count);
    int32_t ids[20];
    ASSERT_TRUE(DAXI_ChessboardCorner_check_quad_group(&table_, &group_, pattern, ids));
    std::vector<DaxiPoint32f> corners;
    for (const int32_t id : ids) corners.push_back({table_.corner(id).x, table_.corner(id).y});
    EXPECT_TRUE(DAXI_ChessboardCorner_check_board_monotony(corners.data(), pattern));
    EXPECT_EQ(corners[0].x, 111);
    EXPECT_EQ(corners[0].y, 111);
    for (int32_t i = 0; i < 20; ++i) EXPECT_EQ(corners[static_cast<size_t>(i)].x, 111 + static_cast<float>(i % 4) * 22);
    // A corner that goes back along its row.
    std::swap(corners[5], corners[6]);
    EXPECT_FALSE(DAXI_ChessboardCorner_check_board_monotony(corners.data(), pattern));
  }
}

TEST_F(Quads, GroupsOfAnotherShapeAreRefused) {
  int32_t ids[64];
  for (const ChessboardPatternSize pattern : {ChessboardPatternSize{4, 4}, {6, 4}, {5, 5}, {10, 2}}) {
    quads_.clear();
    points_.clear();
    addBoard(5, 4);
    link();
    EXPECT_FALSE(DAXI_ChessboardCorner_check_quad_group(&table_, &group_, pattern, ids));
  }
}

}  // namespace
}  // namespace dax::test
