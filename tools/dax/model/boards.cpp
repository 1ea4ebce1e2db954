#include "model/boards.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/failure.h"
#include "base/library_call.h"
#include "daxi/chessboard_subpix.h"
#include "daxi/chessboard_sym.h"
#include "daxi/filter_mean.h"
#include "daxi/filter_median3x3.h"
#include "draw/annotated_picture.h"
#include "model/board_checks.h"

namespace dax::tool {
namespace {

using Pattern = ChessboardPatternSize;

constexpr int kErosions = 8;
constexpr int kMinSide = 64;
constexpr int kIterations = 30;
constexpr float kEpsilon = 1e-4f;
constexpr int kMinWindow = 2, kMaxWindow = 11;

float cornerDistance(DaxiPoint32f a, DaxiPoint32f b) {
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

std::optional<Board> ofSize(const std::optional<Board>& board, Pattern size) {
  if (!board) return std::nullopt;
  const Pattern p = board->pattern;
  if (p.columns == size.columns && p.rows == size.rows) return board;
  return p.columns == size.rows && p.rows == size.columns ? std::optional(turned(*board)) : std::nullopt;
}

// A window that contains no second corner.
int32_t windowFor(const Board& board) {
  float nearest = std::numeric_limits<float>::max();
  for (size_t i = 0; i < board.corners.size(); ++i) {
    for (size_t j = 0; j < i; ++j) nearest = std::min(nearest, cornerDistance(board.corners[i], board.corners[j]));
  }
  return std::clamp(static_cast<int32_t>(0.4f * nearest), kMinWindow, kMaxWindow);
}

// Corners that are known to a pixel keep their place where the refinement would lead further away: to something else in
// the window.
void refine(const GreyImage& image, Board& board, float maxShift) {
  const int32_t half = windowFor(board);
  const std::vector<DaxiPoint32f> start = board.corners;
  check(DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(image.pixels.data(), image.step(), image.size, start.data(),
                                                 static_cast<int32_t>(start.size()), {half, half}, kIterations,
                                                 board.corners.data(), kEpsilon),
        "the refinement of corners");
  for (size_t i = 0; i < start.size(); ++i) {
    if (cornerDistance(board.corners[i], start[i]) > maxShift) board.corners[i] = start[i];
  }
  board.refined = ringsOf(image, board, std::max(2.0F, 0.6F * static_cast<float>(half)));
}

GreyImage filtered(const GreyImage& image, DaxiSize window) {
  uint64_t bytes = 0;
  check(DAXI_FilterMeanBufferSize_8u(image.size, &bytes), "the search for a board");
  const Memory buffer(bytes);
  GreyImage result = makeGreyImage(image.size);
  check(DAXI_FilterMean_8u_C1R(image.pixels.data(), image.step(), result.pixels.data(), result.step(), image.size,
                               window, buffer.get()),
        "the search for a board");
  return result;
}

// Dark where a pixel is below the mean of its surroundings, without specks, and smoothed: the detector of squares takes
// its level from the histogram, and of two grey values only it would take all.
GreyImage localMask(const GreyImage& image) {
  const int32_t side = std::clamp(std::min(image.size.width, image.size.height) / 8, 15, 255) | 1;
  const GreyImage mean = filtered(image, {side, side});
  GreyImage mask = makeGreyImage(image.size);
  std::transform(image.pixels.begin(), image.pixels.end(), mean.pixels.begin(), mask.pixels.begin(),
                 [](int grey, int around) { return static_cast<uint8_t>(grey < around - 3 ? 0 : 255); });
  GreyImage median = makeGreyImage(image.size);
  check(DAXI_FilterMedian3x3_8u_C1R(mask.pixels.data(), mask.step(), median.pixels.data(), median.step(), mask.size),
        "the search for a board");
  return filtered(median, {3, 3});
}

bool hasTwoLevels(const GreyImage& image) {
  std::array<bool, 256> used = {};
  for (const uint8_t grey : image.pixels) used[grey] = true;
  return std::count(used.begin(), used.end(), true) <= 2;
}

// Corners between quads are guesses: all of them must prove themselves.
std::optional<Board> findProvenQuads(const GreyImage& image, const GreyImage& seen, Pattern size) {
  auto board = findQuads(seen, size, DAXI_CHESSBOARD_OTSU);
  if (!board) return std::nullopt;
  refine(image, *board, kMaxWindow);
  const bool isProven = std::all_of(board->refined.begin(), board->refined.end(), [](bool r) { return r; });
  return isProven && isPlaneGrid(*board) ? board : std::nullopt;
}

// The detectors that see the whole board come first; where one of them sees a board of another size, none is found.
std::optional<Board> findSized(const GreyImage& image, Pattern size) {
  constexpr int32_t kMax = 300;
  const int32_t minCorners = std::min(size.columns, size.rows);
  const auto area = [](const Board& board) { return board.pattern.columns * board.pattern.rows; };
  for (const auto& board :
       {findSymmetric(image, static_cast<uint32_t>(minCorners), kMax), findHessian(image, minCorners, kMax)}) {
    if (auto found = ofSize(board, size)) return found;
    if (board && area(*board) > size.columns * size.rows) return std::nullopt;
  }
  if (auto board = findProvenQuads(image, hasTwoLevels(image) ? filtered(image, {3, 3}) : image, size)) return board;
  return findProvenQuads(image, localMask(image), size);
}

std::optional<Board> findAny(const GreyImage& image) {
  constexpr int32_t kMin = 3, kMax = 300;
  auto board = findSymmetric(image, kMin, kMax);
  if (!board) board = findHessian(image, kMin, kMax);
  return board && board->pattern.rows > board->pattern.columns ? turned(*board) : board;
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
  if (board->refined.empty()) refine(image, *board, 1);
  orderByColour(image, *board);
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
  const double half = 0.3 * static_cast<double>(cornerDistance(first, beside));
  for (const int32_t i : {0, columns - 1, columns * rows - 1})
    picture.label(around(corner(i), half), std::to_string(i));
  return picture.png();
}

}  // namespace dax::tool
