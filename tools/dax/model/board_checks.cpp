#include "model/board_checks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace dax::tool {
namespace {

// Bilinear, with the edge pixels repeated.
double greyAt(const GreyImage& image, double x, double y) {
  x = std::clamp(x, 0.0, image.size.width - 1.0);
  y = std::clamp(y, 0.0, image.size.height - 1.0);
  const int32_t x0 = static_cast<int32_t>(x), y0 = static_cast<int32_t>(y);
  const int32_t x1 = std::min(x0 + 1, image.size.width - 1), y1 = std::min(y0 + 1, image.size.height - 1);
  const double fx = x - x0, fy = y - y0;
  const double above = image.row(y0)[x0] * (1 - fx) + image.row(y0)[x1] * fx;
  const double below = image.row(y1)[x0] * (1 - fx) + image.row(y1)[x1] * fx;
  return above * (1 - fy) + below * fy;
}

bool alternates(const GreyImage& image, DaxiPoint32f corner, double radius) {
  constexpr int kSamples = 32;
  std::array<double, kSamples> greys;
  for (int k = 0; k < kSamples; ++k) {
    const double angle = 2 * std::numbers::pi * k / kSamples;
    greys[k] = greyAt(image, corner.x + radius * std::cos(angle), corner.y + radius * std::sin(angle));
  }
  const auto [low, high] = std::minmax_element(greys.begin(), greys.end());
  const double middle = (*low + *high) / 2;
  int changes = 0;
  for (int k = 0; k < kSamples; ++k) changes += (greys[k] > middle) != (greys[(k + 1) % kSamples] > middle);
  return changes == 4;
}

constexpr size_t kMaxUnknowns = 10;
using Row = std::array<double, kMaxUnknowns>;

// Linear least squares by normal equations and elimination with pivots; the unknowns are of similar size.
class LeastSquares {
 public:
  explicit LeastSquares(size_t unknowns) : n_(unknowns) {}

  void add(const Row& row, double value) {
    for (size_t i = 0; i < n_; ++i) {
      for (size_t j = 0; j < n_; ++j) matrix_[i][j] += row[i] * row[j];
      right_[i] += row[i] * value;
    }
  }

  Row solve() {
    for (size_t i = 0; i < n_; ++i) eliminate(i);
    Row x = {};
    for (size_t i = n_; i-- > 0;) {
      double sum = right_[i];
      for (size_t j = i + 1; j < n_; ++j) sum -= matrix_[i][j] * x[j];
      x[i] = matrix_[i][i] != 0 ? sum / matrix_[i][i] : 0;
    }
    return x;
  }

 private:
  void eliminate(size_t i) {
    size_t pivot = i;
    for (size_t r = i + 1; r < n_; ++r) {
      if (std::abs(matrix_[r][i]) > std::abs(matrix_[pivot][i])) pivot = r;
    }
    std::swap(matrix_[i], matrix_[pivot]);
    std::swap(right_[i], right_[pivot]);
    for (size_t r = i + 1; r < n_ && matrix_[i][i] != 0; ++r) {
      const double factor = matrix_[r][i] / matrix_[i][i];
      for (size_t c = i; c < n_; ++c) matrix_[r][c] -= factor * matrix_[i][c];
      right_[r] -= factor * right_[i];
    }
  }

  size_t n_;
  std::array<Row, kMaxUnknowns> matrix_ = {};
  Row right_ = {};
};

// A corner's place in the grid and in the image, both about -1..1.
struct Match {
  double u, v, x, y;
};

std::vector<Match> matchesOf(const Board& board, double scale) {
  const auto [columns, rows] = board.pattern;
  double cx = 0, cy = 0;
  for (const DaxiPoint32f& p : board.corners) {
    cx += p.x / static_cast<double>(board.corners.size());
    cy += p.y / static_cast<double>(board.corners.size());
  }
  std::vector<Match> matches;
  for (int32_t i = 0; i < columns * rows; ++i) {
    const DaxiPoint32f& p = board.corners[static_cast<size_t>(i)];
    const int32_t column = i % columns, row = i / columns;
    matches.push_back(
        {2.0 * column / (columns - 1) - 1, 2.0 * row / (rows - 1) - 1, (p.x - cx) / scale, (p.y - cy) / scale});
  }
  return matches;
}

// Replaces the places in the image by their distances from a homography of the grid.
void subtractHomography(std::vector<Match>& matches) {
  LeastSquares system(8);
  for (const auto& [u, v, x, y] : matches) {
    system.add({u, v, 1, 0, 0, 0, -x * u, -x * v}, x);
    system.add({0, 0, 0, u, v, 1, -y * u, -y * v}, y);
  }
  const Row h = system.solve();
  for (auto& [u, v, x, y] : matches) {
    const double w = h[6] * u + h[7] * v + 1;
    x -= (h[0] * u + h[1] * v + h[2]) / w;
    y -= (h[3] * u + h[4] * v + h[5]) / w;
  }
}

// Takes a polynomial of third degree off one of the coordinates: distortions of lenses are such to first order.
void subtractLens(std::vector<Match>& matches, double Match::*coordinate) {
  const auto terms = [](const Match& m) {
    return Row{1,
               m.u,
               m.v,
               m.u * m.u,
               m.u * m.v,
               m.v * m.v,
               m.u * m.u * m.u,
               m.u * m.u * m.v,
               m.u * m.v * m.v,
               m.v * m.v * m.v};
  };
  LeastSquares system(10);
  for (const Match& m : matches) system.add(terms(m), m.*coordinate);
  const Row p = system.solve();
  for (Match& m : matches) {
    const Row row = terms(m);
    for (size_t i = 0; i < row.size(); ++i) m.*coordinate -= p[i] * row[i];
  }
}

double distance(DaxiPoint32f a, DaxiPoint32f b) {
  return std::hypot(double{a.x} - b.x, double{a.y} - b.y);
}

}  // namespace

std::vector<bool> ringsOf(const GreyImage& image, const Board& board, float radius) {
  std::vector<bool> rings;
  for (const DaxiPoint32f& p : board.corners) rings.push_back(alternates(image, p, double{radius}));
  return rings;
}

bool isPlaneGrid(const Board& board) {
  constexpr size_t kEnoughForLens = 24;
  const double scale = distance(board.corners.front(), board.corners.back()) / 2;
  if (!(scale > 0)) return false;
  std::vector<Match> matches = matchesOf(board, scale);
  subtractHomography(matches);
  if (matches.size() >= kEnoughForLens) {
    subtractLens(matches, &Match::x);
    subtractLens(matches, &Match::y);
  }
  const double side = std::min(distance(board.corners[0], board.corners[1]),
                               distance(board.corners[0], board.corners[static_cast<size_t>(board.pattern.columns)]));
  const double tolerance = (0.5 + 0.06 * side) / scale;
  return std::all_of(matches.begin(), matches.end(), [&](const Match& m) { return std::hypot(m.x, m.y) <= tolerance; });
}

void orderByColour(const GreyImage& image, Board& board) {
  const auto [columns, rows] = board.pattern;
  board.ambiguous = (columns + rows) % 2 == 0;
  if (board.ambiguous) return;
  double difference = 0;  // of squares like the one beyond the first corner, and the others
  for (int32_t r = 0; r + 1 < rows; ++r) {
    for (int32_t c = 0; c + 1 < columns; ++c) {
      double x = 0, y = 0;
      for (const int32_t i : {r * columns + c, r * columns + c + 1, (r + 1) * columns + c, (r + 1) * columns + c + 1}) {
        x += board.corners[static_cast<size_t>(i)].x / 4.0;
        y += board.corners[static_cast<size_t>(i)].y / 4.0;
      }
      difference += ((r + c) % 2 == 0 ? 1 : -1) * greyAt(image, x, y);
    }
  }
  if (difference <= 0) return;
  std::reverse(board.corners.begin(), board.corners.end());
  std::reverse(board.refined.begin(), board.refined.end());
}

Board turned(const Board& board) {
  const auto [columns, rows] = board.pattern;
  Board result = board;
  result.pattern = {rows, columns};
  result.corners.clear();
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

}  // namespace dax::tool
