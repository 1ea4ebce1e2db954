#include "calib/board/grid_board.h"

#include <algorithm>

#include "geometry/vector2.h"

namespace dax {
namespace {

constexpr float kUneven = 0.3f;  // difference of neighbouring steps, relative to the sum of their lengths

bool stepsAlike(DaxiPoint32f a, DaxiPoint32f b, DaxiPoint32f c) {
  const DaxiPoint32f first = b - a, second = c - b;
  return length(second - first) <= kUneven * (length(first) + length(second));
}

// A rectangle after some quarter turns. The turn from rows to columns keeps its sense.
class TurnedBoard {
 public:
  TurnedBoard(const CheckerboardCorner* corners, const CellRectangle& board, int32_t turns)
      : corners_(corners), board_(board), turns_(turns) {}
  int32_t columns() const { return turns_ % 2 == 0 ? board_.columns : board_.rows; }
  int32_t rows() const { return turns_ % 2 == 0 ? board_.rows : board_.columns; }
  int32_t index(int32_t c, int32_t r) const {
    switch (turns_) {
      case 0:
        return board_.at(c, r);
      case 1:
        return board_.at(r, rowsLast() - c);
      case 2:
        return board_.at(board_.columns - 1 - c, rowsLast() - r);
      default:
        return board_.at(board_.columns - 1 - r, c);
    }
  }
  DaxiPoint32f point(int32_t c, int32_t r) const { return corners_[index(c, r)].point; }
  // The first row as a vector.
  DaxiPoint32f rowWay() const { return point(columns() - 1, 0) - point(0, 0); }
  bool firstOnTop() const { return point(0, 0).y <= point(0, rows() - 1).y; }

 private:
  int32_t rowsLast() const { return board_.rows - 1; }
  const CheckerboardCorner* corners_;
  const CellRectangle& board_;
  int32_t turns_;
};

int32_t bestTurns(const CheckerboardCorner* corners, const CellRectangle& board) {
  if (board.columns != board.rows) {
    const int32_t turns = board.columns > board.rows ? 0 : 1;
    return TurnedBoard(corners, board, turns).firstOnTop() ? turns : turns + 2;
  }
  int32_t best = 0;
  for (int32_t turns = 1; turns < 4; ++turns) {
    const DaxiPoint32f way = TurnedBoard(corners, board, turns).rowWay();
    const DaxiPoint32f bestWay = TurnedBoard(corners, board, best).rowWay();
    if (way.x * length(bestWay) > bestWay.x * length(way)) best = turns;
  }
  return best;
}

}  // namespace

// For each row, heights[c] counts the cells without a gap that end there in column c. A rectangle that ends in the row
// is as high as the lowest of its columns.
CellRectangle largestFullRectangle(const CellRectangle& all, int32_t* heights) {
  CellRectangle best{all.cells, all.step, 0, 0};
  std::fill_n(heights, all.columns, 0);
  for (int32_t row = 0; row < all.rows; ++row) {
    for (int32_t c = 0; c < all.columns; ++c) heights[c] = all.at(c, row) >= 0 ? heights[c] + 1 : 0;
    for (int32_t first = 0; first < all.columns; ++first) {
      int32_t height = heights[first];
      for (int32_t last = first; last < all.columns && height > 0; ++last) {
        height = std::min(height, heights[last]);
        const int32_t columns = last - first + 1;
        if (columns * height > best.columns * best.rows) {
          best = {&all.at(first, row - height + 1), all.step, columns, height};
        }
      }
    }
  }
  return best;
}

bool isRegular(const CheckerboardCorner* corners, const CellRectangle& board) {
  const auto point = [&](int32_t c, int32_t r) { return corners[board.at(c, r)].point; };
  for (int32_t r = 0; r < board.rows; ++r) {
    for (int32_t c = 0; c < board.columns; ++c) {
      if (c >= 2 && !stepsAlike(point(c - 2, r), point(c - 1, r), point(c, r))) return false;
      if (r >= 2 && !stepsAlike(point(c, r - 2), point(c, r - 1), point(c, r))) return false;
      if (c < 1 || r < 1) continue;
      const DaxiPoint32f a = point(c - 1, r - 1), b = point(c, r - 1), d = point(c - 1, r), e = point(c, r);
      const bool convex =
          cross(b - a, d - a) > 0 && cross(e - b, a - b) > 0 && cross(d - e, b - e) > 0 && cross(a - d, e - d) > 0;
      if (!convex) return false;
    }
  }
  return true;
}

CheckerboardGrid orderBoard(const CheckerboardCorner* corners, const CellRectangle& board, int32_t* indices) {
  const TurnedBoard turned(corners, board, bestTurns(corners, board));
  for (int32_t r = 0; r < turned.rows(); ++r) {
    for (int32_t c = 0; c < turned.columns(); ++c) indices[r * turned.columns() + c] = turned.index(c, r);
  }
  return {turned.columns(), turned.rows(), 0};
}

}  // namespace dax
