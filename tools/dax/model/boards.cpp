#include "model/boards.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/failure.h"
#include "base/library_call.h"
#include "daxi/chessboard_subpix.h"
#include "daxi/chessboard_sym.h"
#include "draw/annotated_picture.h"

namespace dax::tool {
namespace {

using Pattern = ChessboardPatternSize;

constexpr int kErosions = 8;
constexpr int kMinSide = 64;
constexpr int kIterations = 30;
constexpr float kEpsilon = 1e-4f;
constexpr int kMinWindow = 2, kMaxWindow = 11;

float distance(DaxiPoint32f a, DaxiPoint32f b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

std::optional<Board> findQuads(const GreyImage& image, Pattern pattern, int mode) {
  uint64_t bytes = 0;
  check(DAXI_ChessboardCornerBufferSize_8u(image.size, pattern, &bytes), "the search for a board");
  const Memory buffer(bytes);
  Board board{pattern, "quads", std::vector<DaxiPoint32f>(static_cast<size_t>(pattern.columns * pattern.rows))};
  int32_t count = 0;
  int32_t found = 0;
  check(DAXI_ChessboardCorner_8u_C1R(image.pixels.data(), image.step(), image.size, pattern, board.corners.data(),
                                     &count, &found, mode, kErosions, buffer.get()),
        "the search for a board");
  return found ? std::optional(board) : std::nullopt;
}

// For detectors of boards of any size.
struct AnySize {
  std::vector<DaxiPoint32f> points = std::vector<DaxiPoint32f>(DAXI_CHECKERBOARD_MAX_CORNERS);
  std::vector<CheckerboardCorner> corners = std::vector<CheckerboardCorner>(DAXI_CHECKERBOARD_MAX_CORNERS);
  CheckerboardGrid grid{};

  std::optional<Board> board(const char* detector) const {
    if (grid.columns == 0) return std::nullopt;
    return Board{{grid.columns, grid.rows}, detector, {points.begin(), points.begin() + grid.columns * grid.rows}};
  }
};

std::optional<Board> findHessian(const GreyImage& image, int32_t minCorners, int32_t maxCorners) {
  uint64_t bytes = 0;
  check(DAXI_CheckerboardCornerHessianBufferSize_8u(image.size, &bytes), "the search for a board");
  const Memory buffer(bytes);
  AnySize found;
  for (const int32_t sampling : {1, 2, 4}) {
    if (std::min(image.size.width, image.size.height) / sampling < kMinSide) break;
    const CheckerboardHessianParam param{DAXI_CHECKERBOARD_MEDIAN, sampling, minCorners, maxCorners, 0, 180};
    check(DAXI_CheckerboardCornerHessian_8u_C1R(image.pixels.data(), image.step(), image.size, found.points.data(),
                                                found.corners.data(), buffer.get(), &param, &found.grid),
          "the search for a board");
    if (found.grid.columns > 0) break;
  }
  return found.board("Hessian");
}

std::optional<Board> findSymmetric(const GreyImage& image, uint32_t minCorners, uint32_t maxCorners) {
  uint64_t bytes = 0;
  check(DAXI_CheckerboardCornerSymBufferSize_8u(image.size, &bytes), "the search for a board");
  const Memory buffer(bytes);
  AnySize found;
  const CheckerboardSymCfg cfg{minCorners, maxCorners, 15, 6, 5, DAXI_CHECKERBOARD_MEDIAN, DAXI_CHECKERBOARD_LADDER};
  const DaxStatus status =
      DAXI_CheckerboardCornerSym_8u_C1R(image.pixels.data(), image.step(), image.size, found.points.data(),
                                        found.corners.data(), &found.grid, &cfg, buffer.get(), nullptr);
  if (status == DAXI_STS_NO_BOARD) return std::nullopt;
  check(status, "the search for a board");
  return found.board("symmetry");
}

// A quarter turn: rows become columns; the orientation is kept.
Board turned(const Board& board) {
  const auto [columns, rows] = board.pattern;
  Board result{{rows, columns}, board.detector, {}};
  for (int32_t r = 0; r < columns; ++r) {
    for (int32_t c = 0; c < rows; ++c) {
      result.corners.push_back(
          board.corners[static_cast<size_t>(rows - 1 - c) * static_cast<size_t>(columns) + static_cast<size_t>(r)]);
    }
  }
  // Keeps the row nearer to the top first.
  if (result.corners.back().y < result.corners.front().y) std::reverse(result.corners.begin(), result.corners.end());
  return result;
}

std::optional<Board> ofSize(const std::optional<Board>& board, Pattern size) {
  if (!board) return std::nullopt;
  const Pattern p = board->pattern;
  if (p.columns == size.columns && p.rows == size.rows) return board;
  return p.columns == size.rows && p.rows == size.columns ? std::optional(turned(*board)) : std::nullopt;
}

std::optional<Board> findSized(const GreyImage& image, Pattern size) {
  for (const int mode : {DAXI_CHESSBOARD_OTSU, DAXI_CHESSBOARD_LOCAL_MEAN}) {
    if (auto board = findQuads(image, size, mode)) return board;
  }
  const int32_t minCorners = std::min(size.columns, size.rows), maxCorners = std::max(size.columns, size.rows);
  if (auto board = ofSize(findHessian(image, minCorners, maxCorners), size)) return board;
  return ofSize(findSymmetric(image, static_cast<uint32_t>(minCorners), static_cast<uint32_t>(maxCorners)), size);
}

std::optional<Board> findAny(const GreyImage& image) {
  constexpr int32_t kMin = 3, kMax = 300;
  if (auto board = findHessian(image, kMin, kMax)) return board;
  return findSymmetric(image, kMin, kMax);
}

// A window that contains no second corner.
int32_t windowFor(const Board& board) {
  float nearest = std::numeric_limits<float>::max();
  for (size_t i = 0; i < board.corners.size(); ++i) {
    for (size_t j = 0; j < i; ++j) nearest = std::min(nearest, distance(board.corners[i], board.corners[j]));
  }
  return std::clamp(static_cast<int32_t>(0.4f * nearest), kMinWindow, kMaxWindow);
}

// Red to violet and back to red.
Ink colourOf(int32_t row) {
  constexpr Ink kColours[] = {{0.95, 0.30, 0.26, 1}, {0.98, 0.62, 0.15, 1}, {0.95, 0.87, 0.25, 1},
                              {0.40, 0.85, 0.35, 1}, {0.25, 0.75, 0.95, 1}, {0.65, 0.50, 0.95, 1}};
  return kColours[row % 6];
}

std::vector<Point> stroke(DaxiPoint32f p, float dx, float dy) {
  return {{p.x - dx, p.y - dy}, {p.x + dx, p.y + dy}};
}

Rect around(DaxiPoint32f p, double half) {
  return {static_cast<double>(p.x) - half, static_cast<double>(p.y) - half, 2 * half, 2 * half};
}

}  // namespace

std::optional<Board> findBoard(const GreyImage& image, const std::optional<Pattern>& size) {
  if (std::min(image.size.width, image.size.height) < kMinSide) {
    throw Failure(ExitStatus::kRefused, "is smaller than 64 x 64 pixels, too small for a board");
  }
  auto board = size ? findSized(image, *size) : findAny(image);
  if (!board) return board;
  const int32_t half = windowFor(*board);
  check(DAXI_ChessboardCornerGetSubpix_8u_C1R(image.pixels.data(), image.step(), image.size, board->corners.data(),
                                              static_cast<int32_t>(board->corners.size()), {half, half}, kIterations,
                                              board->corners.data(), kEpsilon),
        "the refinement of corners");
  return board;
}

std::string drawBoard(const GreyImage& image, const std::optional<Board>& board) {
  AnnotatedPicture picture(image, 0);
  if (!board) return picture.png();
  const auto [columns, rows] = board->pattern;
  const auto corner = [&](int32_t i) { return board->corners[static_cast<size_t>(i)]; };
  // Crosses are diagonal to the squares, so that no edge of the board hides them.
  constexpr float kArm = 0.12f;
  const DaxiPoint32f first = corner(0), beside = corner(1), below = corner(columns);
  const float ax = kArm * (beside.x - first.x), ay = kArm * (beside.y - first.y);
  const float bx = kArm * (below.x - first.x), by = kArm * (below.y - first.y);
  std::vector<Point> way;
  for (int32_t r = 0; r < rows; ++r) {
    if (r > 0) {
      way = {{corner(r * columns - 1).x, corner(r * columns - 1).y}, {corner(r * columns).x, corner(r * columns).y}};
      picture.line(way, false, colourOf(r), 0.6);
    }
    way.clear();
    for (int32_t c = 0; c < columns; ++c) way.push_back({corner(r * columns + c).x, corner(r * columns + c).y});
    picture.line(way, false, colourOf(r), 1.4);
  }
  for (int32_t i = 0; i < columns * rows; ++i) {
    picture.line(stroke(corner(i), ax + bx, ay + by), false, colourOf(i / columns), 1.4);
    picture.line(stroke(corner(i), ax - bx, ay - by), false, colourOf(i / columns), 1.4);
  }
  const double half = 0.3 * static_cast<double>(distance(first, beside));
  for (const int32_t i : {0, columns - 1, columns * rows - 1})
    picture.label(around(corner(i), half), std::to_string(i));
  return picture.png();
}

}  // namespace dax::tool
