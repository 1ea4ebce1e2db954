// Grids of given corners: what is linked, what is a board, and in what order.
#include "calib/board/corner_grid.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <numeric>

#include "calib/board/grid_board.h"
#include "tests/calib/board/checkerboard_search.h"

namespace dax::test {
namespace {

constexpr double kStep = 30;
using Corners = std::vector<CheckerboardCorner>;

// Turns a corner's edges clockwise on the screen.
void turnEdges(CheckerboardCorner& corner, double degrees) {
  const double c = std::cos(degrees * std::numbers::pi / 180), s = std::sin(degrees * std::numbers::pi / 180);
  for (DaxiPoint32f* const edge : {&corner.intoDark, &corner.intoLight}) {
    *edge = {static_cast<float>(c * edge->x - s * edge->y), static_cast<float>(s * edge->x + c * edge->y)};
  }
}

// A board's corners row by row; `odd`: dark and light are swapped.
Corners lattice(int32_t columns, int32_t rows, double left, double top, double degrees = 0, bool odd = false) {
  Corners corners;
  const double cosine = std::cos(degrees * std::numbers::pi / 180), sine = std::sin(degrees * std::numbers::pi / 180);
  for (int32_t r = 0; r < rows; ++r) {
    for (int32_t c = 0; c < columns; ++c) {
      const bool swapped = ((c + r) % 2 == 0) == odd;
      const DaxiPoint32f along{1, 0}, across{0, -1};  // lines: either sense will do
      corners.push_back({{static_cast<float>(left + kStep * (c * cosine - r * sine)),
                          static_cast<float>(top + kStep * (c * sine + r * cosine))},
                         swapped ? across : along,
                         swapped ? along : across,
                         100,
                         5});
      turnEdges(corners.back(), degrees);
    }
  }
  return corners;
}

FoundBoards arrange(Corners corners, GridLimits limits = {2, 300}, const CornerProber* prober = nullptr) {
  auto count = static_cast<int32_t>(corners.size());
  corners.resize(kMaxGridCorners);
  GuardedBuffer<uint8_t> buffer(GridBuffer().layout.total());
  std::vector<CheckerboardGrid> grids(8);
  FoundBoards found{{}, {}, Corners(kMaxGridCorners)};
  grids.resize(static_cast<size_t>(
      findBoards(corners.data(), &count, limits, prober, found.corners.data(), grids.data(), 8, buffer.data())));
  found.boards = grids;
  for (const CheckerboardCorner& corner : found.corners) found.points.push_back(corner.point);
  found.cut(grids.size());
  return found;
}

std::vector<std::pair<int32_t, int32_t>> sizesOf(const FoundBoards& found) {
  std::vector<std::pair<int32_t, int32_t>> sizes;
  for (const CheckerboardGrid& board : found.boards) sizes.emplace_back(board.columns, board.rows);
  return sizes;
}

// What lies just within a bound, and just beyond it.
TEST(CornerGrid, Bounds) {
  using Sizes = std::vector<std::pair<int32_t, int32_t>>;
  const auto turned = [](double degrees) {
    Corners corners = lattice(5, 4, 100, 100);
    turnEdges(corners[7], degrees);
    return corners;
  };
  const auto spaced = [](double step, float radius) {
    Corners corners = lattice(5, 4, 120, 120);
    for (CheckerboardCorner& c : corners) {
      c.point = {static_cast<float>(c.point.x * step / kStep), static_cast<float>(c.point.y * step / kStep)};
      c.radius = radius;
    }
    return corners;
  };
  const auto gap = [](double width) {
    Corners corners = lattice(6, 4, 100, 100);
    for (CheckerboardCorner& c : corners) c.point.x += static_cast<float>(c.point.x > 170 ? width - kStep : 0);
    return corners;
  };
  const auto twice = [](double shift) {
    Corners corners = lattice(5, 4, 100, 100);
    for (const CheckerboardCorner& c : lattice(5, 4, 100, 100 + shift, 0, true)) corners.push_back(c);
    return corners;
  };
  // Missing in its third column; numbers that are none.
  Corners gapped = lattice(9, 6, 100, 90);
  gapped.erase(gapped.begin() + 2 * 9 + 2);
  Corners spoiled = lattice(5, 4, 100, 100);
  const float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
  spoiled.insert(spoiled.begin(), {{{nan, 90}, {1, 0}, {0, 1}, 100, 5},
                                   {{115, 104}, {nan, nan}, {0, 1}, 100, 5},
                                   {{infinity, -infinity}, {1, 0}, {0, 1}, nan, nan},
                                   {{1e30f, 1e30f}, {1, 0}, {0, 1}, 100, 5}});
  const struct {
    const char* name;
    Corners corners;
    Sizes sizes;
  } cases[] = {
      {"as they are", turned(0), {{5, 4}}},
      {"without one", gapped, {{6, 6}}},
      {"with some that are none", spoiled, {{5, 4}}},
      {"many columns", lattice(70, 3, 100, 100), {{70, 3}}},
      {"many rows", lattice(3, 70, 100, 100), {{70, 3}}},
      {"up to a million", lattice(3, 3, 999939.5, 100), {{3, 3}}},
      {"further", lattice(3, 3, 999940.5, 100), {}},
      {"edges turned by 21 degrees", turned(21), {{5, 4}}},
      {"edges turned by 22 degrees", turned(-22), {}},
      {"steps of 7 pixels", spaced(7, 5), {{5, 4}}},
      {"steps of 6.9 pixels", spaced(6.9, 5), {}},
      {"steps of the radius", spaced(12, 12), {{5, 4}}},
      {"steps less than the radius", spaced(12, 12.1f), {}},
      {"uneven steps", gap(55), {{6, 4}}},
      {"too uneven steps", gap(57), {}},
      {"steps of another board", gap(67), {{4, 3}, {4, 3}}},
      {"another board in the same place", twice(1.9), {{5, 4}}},
      {"another board beside", twice(2.1), {{5, 4}, {5, 4}}},
  };
  for (const auto& c : cases) EXPECT_EQ(sizesOf(arrange(c.corners, {3, 300})), c.sizes) << c.name;
  EXPECT_EQ(arrange(turned(0), {4, 5}).boards.size(), 1u);
  EXPECT_EQ(arrange(turned(0), {5, 5}).boards.size(), 0u);
  EXPECT_EQ(arrange(turned(0), {4, 4}).boards.size(), 0u);
  EXPECT_EQ(arrange(lattice(3, 1, 100, 100), {1, 5}).boards.size(), 0u);
  EXPECT_EQ(arrange(lattice(4, 1, 100, 100), {1, 5}).boards.size(), 1u);
}

// Whichever corner is the first, and however the board is turned: rows are the longer side, or nearest to upright.
TEST(CornerGrid, OrderOfBoards) {
  for (const auto& [columns, rows] : {std::pair{5, 4}, {4, 5}, {4, 4}}) {
    for (int32_t degrees = 3; degrees < 360; degrees += 19) {
      Corners corners = lattice(columns, rows, 300, 300, degrees);
      std::rotate(corners.begin(), corners.begin() + degrees % 16, corners.end());
      const FoundBoards found = arrange(corners);
      ASSERT_EQ(found.boards.size(), 1u);
      const auto [m, n, first] = found.boards[0];
      EXPECT_EQ(std::pair(m, n), std::pair(std::max(columns, rows), std::min(columns, rows)));
      const DaxiPoint32f row{found.points[1].x - found.points[0].x, found.points[1].y - found.points[0].y};
      EXPECT_TRUE(m == n ? row.x > std::fabs(row.y) : isOrdered(found.points.data(), m, n)) << degrees;
      for (int32_t i = 0; i < m * n; ++i) {
        const DaxiPoint32f p = found.points[static_cast<size_t>(i)], o = found.points[0];
        EXPECT_NEAR(p.x, o.x + row.x * static_cast<float>(i % m) - row.y * static_cast<float>(i / m), 0.01);
        EXPECT_NEAR(p.y, o.y + row.y * static_cast<float>(i % m) + row.x * static_cast<float>(i / m), 0.01);
      }
    }
  }
}

// The prober gets corners of a board in perspective back, within a pixel of where they are and with their distance.
TEST(CornerGrid, GrowsWhereItExpectsCorners) {
  struct Truth {
    Corners corners = lattice(7, 6, 100, 100);
    int32_t asked = 0;
  } truth;
  for (CheckerboardCorner& c : truth.corners) {
    const float x = (c.point.x - 100) / 30, y = (c.point.y - 100) / 30;
    c.point = {100 + 30 * x + x * x, 100 + 24 * y - 0.8f * y * y};
  }
  const CornerProber prober{[](const void* context, DaxiPoint32f expected, float spacing,
                               const CheckerboardCorner& neighbour, CheckerboardCorner* corner) {
                              const Truth& all = *static_cast<const Truth*>(context);
                              for (const CheckerboardCorner& c : all.corners) {
                                const float dx = c.point.x - expected.x, dy = c.point.y - expected.y;
                                if (dx * dx + dy * dy > 0.7f) continue;
                                const double way =
                                    std::hypot(neighbour.point.x - expected.x, neighbour.point.y - expected.y);
                                EXPECT_LE(spacing, way + 0.2);
                                EXPECT_GE(spacing, 15);
                                EXPECT_NE(neighbour.intoDark.x, c.intoDark.x);
                                *corner = c;
                                return true;
                              }
                              return false;
                            },
                            &truth};
  Corners seen;
  for (int32_t i = 0; i < 42; ++i) {
    const int32_t c = i % 7, r = i / 7;
    if (c >= 1 && c <= 5 && r >= 1 && r <= 4 && i != 17) seen.push_back(truth.corners[static_cast<size_t>(i)]);
  }
  const FoundBoards found = arrange(seen, {3, 300}, &prober);
  ASSERT_EQ(sizesOf(found), (std::vector<std::pair<int32_t, int32_t>>{{7, 6}}));
  for (size_t i = 0; i < 42; ++i) EXPECT_TRUE(sameBits(found.points[i], truth.corners[i].point)) << i;
}

// Round a square of steps to a corner beside the first one: the cell keeps that which was reached first.
TEST(CornerGrid, TwoCornersInACell) {
  const auto corner = [](float x, float y, bool odd) -> CheckerboardCorner {
    const DaxiPoint32f along{1, 0}, across{0, 1};
    return {{x, y}, odd ? across : along, odd ? along : across, 100, 5};
  };
  const FoundBoards found = arrange({corner(103, 99, false), corner(130, 100, true), corner(130, 130, false),
                                     corner(100, 130, true), corner(100, 104, false)});
  ASSERT_EQ(sizesOf(found), (std::vector<std::pair<int32_t, int32_t>>{{2, 2}}));
  EXPECT_EQ(std::count_if(found.points.begin(), found.points.end(), [](auto& p) { return p.x == 103; }), 1);
}

TEST(CornerGrid, LargestFullRectangleByDefinition) {
  Random random(5);
  for (int32_t round = 0; round < 60; ++round) {
    const int32_t columns = 1 + random.below(9), rows = 1 + random.below(9), step = columns + 2;
    std::vector<int32_t> cells(static_cast<size_t>(step * rows)), heights(static_cast<size_t>(columns));
    for (int32_t& cell : cells) cell = random.below(5) - 1;
    int32_t largest = 0;
    const auto isFull = [&](const CellRectangle& area) {
      for (int32_t i = 0; i < area.columns * area.rows; ++i) {
        if (area.at(i % area.columns, i / area.columns) < 0) return false;
      }
      return true;
    };
    for (int32_t i = 0; i < columns * rows * columns * rows; ++i) {
      const int32_t left = i % columns, top = i / columns % rows, w = 1 + i / (columns * rows) % columns,
                    h = 1 + i / (columns * rows * columns);
      const CellRectangle area{&cells[static_cast<size_t>(top * step + left)], step, w, h};
      if (left + w <= columns && top + h <= rows && isFull(area)) largest = std::max(largest, w * h);
    }
    const CellRectangle found = largestFullRectangle({cells.data(), step, columns, rows}, heights.data());
    EXPECT_EQ(found.columns * found.rows, largest);
    EXPECT_EQ(found.columns == 0, largest == 0);
    EXPECT_TRUE(isFull(found));
  }
}

// One corner of nine moved: steps along rows and columns may differ a little, and no cell may fold.
TEST(CornerGrid, RegularBoards) {
  std::vector<int32_t> cells(9);
  std::iota(cells.begin(), cells.end(), 0);
  for (size_t moved = 0; moved < 9; ++moved) {
    for (const auto& [dx, dy, regular] :
         {std::tuple{0, 0, true}, {5, 5, true}, {0, 28, false}, {28, 0, false}, {-40, 0, false}}) {
      Corners corners = lattice(3, 3, 100, 100);
      corners[moved].point.x += static_cast<float>(dx);
      corners[moved].point.y += static_cast<float>(dy);
      EXPECT_EQ(isRegular(corners.data(), {cells.data(), 3, 3, 3}), regular) << moved << ": " << dx << ", " << dy;
    }
  }
  for (size_t moved = 0; moved < 4; ++moved) {
    Corners corners = lattice(2, 2, 100, 100);
    const float centre = 115;
    const auto put = [&](float f) {  // along its diagonal
      corners[moved].point = {centre + f * (moved % 2 == 0 ? -15.0f : 15.0f),
                              centre + f * (moved < 2 ? -15.0f : 15.0f)};
      return isRegular(corners.data(), {cells.data(), 2, 2, 2});
    };
    EXPECT_TRUE(put(0.1f));
    EXPECT_FALSE(put(-0.1f));
  }
}

}  // namespace
}  // namespace dax::test
