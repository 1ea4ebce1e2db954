#include "calib/board/corner_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "calib/board/grid_board.h"
#include "geometry/vector2.h"

namespace dax {
namespace {

constexpr float kAlongCosine = 0.93f;  // min cosine between an edge and the step to the next corner: 21 degrees
constexpr float kSameLine = 0.9f;      // min cosine between that step and the next corner's edge: 26 degrees
constexpr float kMinStep = 7;          // pixels from one corner to the next
constexpr float kUnlikeSteps = 2.2f;   // max ratio of the distances to opposite neighbours
constexpr int32_t kMinComponent = 4;   // corners of a grid
constexpr int32_t kMaxRounds = 64;     // of growth
constexpr int32_t kFarCell = 1024;     // start value of a minimum of columns or rows
constexpr float kSamePlace = 2;        // pixels between corners that count as one
// Limits of the growth from one step to the next.
constexpr float kMaxGrowth = 1.33f, kMinGrowth = 0.75f;

struct Cell {
  int32_t column;
  int32_t row;
};
constexpr Cell kSteps[4] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};

bool isFinite(DaxiPoint32f p) {
  constexpr float kFar = 1e6f;
  return p.x >= -kFar && p.x <= kFar && p.y >= -kFar && p.y <= kFar;
}

bool isUsable(const CheckerboardCorner& c) {
  return isFinite(c.point) && isFinite(c.intoDark) && isFinite(c.intoLight);
}

// Slots are numbered clockwise on the screen: even ones lie along the edge into dark, odd ones along that into light.
void makeNode(const CheckerboardCorner& corner, GridNode& node) {
  const DaxiPoint32f along = corner.intoDark;
  const DaxiPoint32f across = cross(along, corner.intoLight) >= 0 ? corner.intoLight : -corner.intoLight;
  node = {{-1, -1, -1, -1}, {along, across, -along, -across}, -1, 0, 0, 0};
}

class GridFinder {
 public:
  GridFinder(CheckerboardCorner* corners, int32_t* count, const CornerProber* prober, void* buffer)
      : corners_(corners), count_(*count), prober_(prober), buffer_(buffer) {
    for (int32_t i = 0; i < count_; ++i) makeNode(corners[i], node(i));
  }

  void linkAll() {
    for (int32_t i = 0; i < count_; ++i) {
      if (isUsable(corners_[i])) findNeighbours(i);
    }
    // In separate passes, so that the order of the corners does not matter.
    for (int32_t i = 0; i < count_; ++i) keepMutual(i);
    for (int32_t i = 0; i < count_; ++i) dropUnlikeSteps(i);
    for (int32_t i = 0; i < count_; ++i) keepMutual(i);
  }

  // Whether a corner is linked and not yet in a component.
  bool isSeed(int32_t i) {
    const int32_t* const to = node(i).neighbour;
    return node(i).component < 0 && std::any_of(to, to + 4, [](int32_t j) { return j >= 0; });
  }

  // The cells of all corners linked to a seed and of those that the prober adds; no cells where there are too few
  // corners.
  CellRectangle growFrom(int32_t seed) {
    int32_t placed = placeFrom(seed);
    if (placed < kMinComponent) return {};
    CellRectangle map = mapCells(placed);
    for (int32_t round = 0; prober_ && map.columns > 0 && round < kMaxRounds; ++round) {
      const int32_t before = placed;
      placed = grow(map, placed);
      if (placed == before) break;
      map = mapCells(placed);
    }
    return map;
  }

  int32_t count() const { return count_; }
  const GridBuffer& buffer() const { return at_; }

 private:
  GridNode& node(int32_t i) { return at_.nodes.in(buffer_)[i]; }

  // Puts all corners linked to a seed into the queue, with their cells; returns how many.
  int32_t placeFrom(int32_t seed) {
    int32_t* const queue = at_.queue.in(buffer_);
    int32_t placed = 0;
    node(seed).component = seed;
    node(seed).column = node(seed).row = node(seed).turn = 0;
    queue[placed++] = seed;
    for (int32_t i = 0; i < placed; ++i) {
      for (int32_t slot = 0; slot < 4; ++slot) placed += placeNeighbour(seed, queue[i], slot, queue + placed);
    }
    return placed;
  }

  // The cells of a placed component with a margin of one cell; none where there would be too many.
  CellRectangle mapCells(int32_t placed) {
    const int32_t* const queue = at_.queue.in(buffer_);
    int32_t left = kFarCell, right = -kFarCell, top = kFarCell, bottom = -kFarCell;
    for (int32_t i = 0; i < placed; ++i) {
      left = std::min(left, node(queue[i]).column), right = std::max(right, node(queue[i]).column);
      top = std::min(top, node(queue[i]).row), bottom = std::max(bottom, node(queue[i]).row);
    }
    origin_ = {left - 1, top - 1};
    const CellRectangle map{at_.cells.in(buffer_), right - left + 3, right - left + 3, bottom - top + 3};
    if (int64_t{map.columns} * map.rows > kMaxCells) return {map.cells, 0, 0, 0};
    std::fill_n(map.cells, map.columns * map.rows, -1);
    for (int32_t i = 0; i < placed; ++i) {
      const GridNode& n = node(queue[i]);
      int32_t& cell = map.at(n.column - origin_.column, n.row - origin_.row);
      if (cell < 0) cell = queue[i];
    }
    return map;
  }

  // Adds corners that the prober finds in empty cells; returns the new number of placed corners.
  int32_t grow(const CellRectangle& map, int32_t placed) {
    int32_t* const queue = at_.queue.in(buffer_);
    const int32_t seed = queue[0];
    for (int32_t row = 0; row < map.rows; ++row) {
      for (int32_t column = 0; column < map.columns && count_ < kMaxGridCorners; ++column) {
        if (map.at(column, row) >= 0 || placed >= kMaxGridCorners || !probe(map, {column, row})) continue;
        GridNode& n = node(count_);
        makeNode(corners_[count_], n);
        n.component = seed;
        n.column = column + origin_.column;
        n.row = row + origin_.row;
        queue[placed++] = count_++;
      }
    }
    return placed;
  }

  // Whether a step of that length runs along the node's line of even or of odd slots.
  bool liesAlong(const GridNode& n, DaxiPoint32f step, float distance, bool even) const {
    return std::fabs(dot(n.direction[even ? 0 : 1], step)) >= kSameLine * distance;
  }

  void findNeighbours(int32_t i) {
    GridNode& n = node(i);
    float nearest[4];
    std::fill_n(nearest, 4, std::numeric_limits<float>::max());
    for (int32_t j = 0; j < count_; ++j) {
      const DaxiPoint32f step = corners_[j].point - corners_[i].point;
      const float d2 = dot(step, step);
      if (j == i || !(d2 < *std::max_element(nearest, nearest + 4)) || !(d2 > 0)) continue;
      const float distance = std::sqrt(d2);
      for (int32_t slot = 0; slot < 4; ++slot) {
        const bool fits = d2 < nearest[slot] && distance >= std::max(corners_[j].radius, kMinStep) &&
                          dot(n.direction[slot], step) >= kAlongCosine * distance &&
                          liesAlong(node(j), step, distance, slot % 2 != 0);
        if (!fits) continue;
        nearest[slot] = d2;
        n.neighbour[slot] = j;
      }
    }
  }

  int32_t slotTo(int32_t from, int32_t to) {
    for (int32_t slot = 0; slot < 4; ++slot) {
      if (node(from).neighbour[slot] == to) return slot;
    }
    return -1;
  }

  void keepMutual(int32_t i) {
    for (int32_t& j : node(i).neighbour) {
      if (j >= 0 && slotTo(j, i) < 0) j = -1;
    }
  }

  void dropUnlikeSteps(int32_t i) {
    GridNode& n = node(i);
    for (int32_t slot = 0; slot < 2; ++slot) {
      int32_t &ahead = n.neighbour[slot], &behind = n.neighbour[slot + 2];
      if (ahead < 0 || behind < 0) continue;
      const float a = length(corners_[ahead].point - corners_[i].point);
      const float b = length(corners_[behind].point - corners_[i].point);
      if (a > kUnlikeSteps * b) ahead = -1;
      if (b > kUnlikeSteps * a) behind = -1;
    }
  }

  int32_t placeNeighbour(int32_t seed, int32_t from, int32_t slot, int32_t* queued) {
    const int32_t to = node(from).neighbour[slot];
    if (to < 0 || node(to).component >= 0) return 0;
    const GridNode& n = node(from);
    const Cell step = kSteps[(slot + n.turn) % 4];
    GridNode& next = node(to);
    next.component = seed;
    next.column = n.column + step.column;
    next.row = n.row + step.row;
    next.turn = (slot + n.turn + 2 - slotTo(to, from) + 4) % 4;
    *queued = to;
    return 1;
  }

  const CheckerboardCorner* cornerAt(const CellRectangle& map, Cell cell) const {
    const bool inside = cell.column >= 0 && cell.column < map.columns && cell.row >= 0 && cell.row < map.rows;
    const int32_t i = inside ? map.at(cell.column, cell.row) : -1;
    return i >= 0 ? &corners_[i] : nullptr;
  }

  // Extrapolates a line of two or three corners: with three, the steps continue to grow or shrink by the same factor.
  static DaxiPoint32f extrapolate(const CheckerboardCorner& last, const CheckerboardCorner& before,
                                  const CheckerboardCorner* first) {
    const DaxiPoint32f step = last.point - before.point;
    float growth = 1;
    if (first) {
      const float earlier = length(before.point - first->point);
      if (earlier > 0) growth = std::clamp(length(step) / earlier, kMinGrowth, kMaxGrowth);
    }
    return last.point + growth * step;
  }

  // Looks for the corner of an empty cell where the lines of its neighbours predict it. The middle of two neighbours
  // counts twice as much as an extrapolation.
  bool probe(const CellRectangle& map, Cell cell) {
    DaxiPoint32f sum{0, 0};
    float weight = 0, spacing = std::numeric_limits<float>::max();
    const CheckerboardCorner* neighbour = nullptr;
    for (const Cell step : kSteps) {
      const auto ahead = [&](int32_t n) {
        return cornerAt(map, {cell.column + n * step.column, cell.row + n * step.row});
      };
      const CheckerboardCorner *const one = ahead(1), *const two = ahead(2), *const across = ahead(-1);
      if (!one || (!two && !across)) continue;
      const DaxiPoint32f expected = across ? 0.5f * (one->point + across->point) : extrapolate(*one, *two, ahead(3));
      const float w = across ? 2.0f : 1.0f;
      sum = sum + w * expected;
      weight += w;
      spacing = std::min(spacing, length(one->point - expected));
      neighbour = one;
    }
    if (!neighbour) return false;
    return prober_->probe(prober_->context, (1 / weight) * sum, spacing, *neighbour, &corners_[count_]);
  }

  GridBuffer at_;
  CheckerboardCorner* corners_;
  int32_t count_;
  const CornerProber* prober_;
  void* buffer_;
  Cell origin_{0, 0};
};

bool isWithin(const CellRectangle& board, GridLimits limits) {
  return std::min(board.columns, board.rows) >= limits.minExtent &&
         std::max(board.columns, board.rows) <= limits.maxExtent;
}

// Boards found so far; the indices of their corners follow each other board by board.
struct FoundBoards {
  CheckerboardGrid* grids;
  int32_t* indices;
  int32_t count = 0;
  int32_t corners = 0;

  // Whether a board shares corners with an earlier one.
  bool overlap(const CheckerboardCorner* all, const CheckerboardGrid& board) const {
    const int32_t n = board.columns * board.rows;
    return std::any_of(indices + corners, indices + corners + n, [&](int32_t i) {
      return std::any_of(indices, indices + corners,
                         [&](int32_t j) { return length(all[i].point - all[j].point) <= kSamePlace; });
    });
  }
};

void sortBySize(FoundBoards& boards) {
  std::sort(boards.grids, boards.grids + boards.count, [](const CheckerboardGrid& a, const CheckerboardGrid& b) {
    const int32_t m = a.columns * a.rows, n = b.columns * b.rows;
    return m != n ? m > n : a.first < b.first;
  });
}

void writeBoards(const FoundBoards& found, int32_t count, const CheckerboardCorner* corners, CheckerboardCorner* sorted,
                 CheckerboardGrid* boards) {
  int32_t total = 0;
  for (int32_t i = 0; i < count; ++i) {
    const CheckerboardGrid& grid = found.grids[i];
    const int32_t size = grid.columns * grid.rows;
    boards[i] = {grid.columns, grid.rows, total};
    for (int32_t k = 0; k < size; ++k) sorted[total + k] = corners[found.indices[grid.first + k]];
    total += size;
  }
}

}  // namespace

GridBuffer::GridBuffer()
    : nodes(layout.add<GridNode>(kMaxGridCorners)),
      queue(layout.add<int32_t>(kMaxGridCorners)),
      cells(layout.add<int32_t>(kMaxCells)),
      heights(layout.add<int32_t>(kMaxCells)),
      board(layout.add<int32_t>(2 * kMaxGridCorners)),
      found(layout.add<CheckerboardGrid>(kMaxGridCorners)) {}

int32_t findBoards(CheckerboardCorner* corners, int32_t* count, GridLimits limits, const CornerProber* prober,
                   CheckerboardCorner* sorted, CheckerboardGrid* boards, int32_t maxBoards, void* buffer) {
  GridFinder finder(corners, count, prober, buffer);
  const GridBuffer& at = finder.buffer();
  finder.linkAll();
  FoundBoards found{at.found.in(buffer), at.board.in(buffer)};
  const int32_t seeds = *count;
  for (int32_t seed = 0; seed < seeds; ++seed) {
    if (!finder.isSeed(seed)) continue;
    const CellRectangle board = largestFullRectangle(finder.growFrom(seed), at.heights.in(buffer));
    const int32_t size = board.columns * board.rows;
    if (!isWithin(board, limits) || !isRegular(corners, board) || found.corners + size > kMaxGridCorners) continue;
    CheckerboardGrid grid = orderBoard(corners, board, found.indices + found.corners);
    grid.first = found.corners;
    if (found.overlap(corners, grid)) continue;
    found.grids[found.count++] = grid;
    found.corners += size;
  }
  *count = finder.count();

  sortBySize(found);
  const int32_t kept = std::min(found.count, maxBoards);
  writeBoards(found, kept, corners, sorted, boards);
  return kept;
}

bool continuesGrid(const CheckerboardCorner& corner, DaxiPoint32f expected, float spacing,
                   const CheckerboardCorner& neighbour) {
  constexpr float kMaxOffset = 0.3f;   // by the spacing
  constexpr float kMinCosine = 0.94f;  // between the edges: 20 degrees
  const DaxiPoint32f offset = corner.point - expected;
  const float reach = kMaxOffset * spacing;
  return dot(offset, offset) <= reach * reach && alike(corner.intoDark, neighbour.intoLight) >= kMinCosine &&
         alike(corner.intoLight, neighbour.intoDark) >= kMinCosine;
}

}  // namespace dax
