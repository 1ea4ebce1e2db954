#include "calib/board/chessboard_board.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace dax {
namespace {

int32_t labelFor(const ChessboardQuad& quad) {
  if (quad.neighbours == 1) return DAX_CHESSBOARD_LABEL_1;
  return quad.neighbours == 2 ? DAX_CHESSBOARD_LABEL_2 : DAX_CHESSBOARD_LABEL_3;
}

bool isJoined(const ChessboardCornerPoint& a, int32_t id) {
  return std::find(a.neighbour, a.neighbour + a.neighbours, id) != a.neighbour + a.neighbours;
}

bool join(ChessboardCornerPoint& a, ChessboardCornerPoint& b) {
  if (a.neighbours == 4 || b.neighbours == 4 || isJoined(a, b.id) || a.id == b.id) return false;
  a.neighbour[a.neighbours++] = b.id;
  b.neighbour[b.neighbours++] = a.id;
  return true;
}

// Labels the linked corners of a quad and joins consecutive ones. Links may lead out of the group.
bool addQuad(const QuadTable& table, const ChessboardQuad& quad) {
  const int32_t label = labelFor(quad);
  for (size_t k = 0; k < 4; ++k) {
    if (quad.neighbour[k] == 0) continue;
    ChessboardCornerPoint& corner = table.corner(quad.corner[k]);
    if (corner.label == 0 || label < corner.label) corner.label = label;
    const size_t next = (k + 1) % 4;
    if (quad.neighbour[next] != 0 && !join(corner, table.corner(quad.corner[next]))) return false;
  }
  return true;
}

// Calls visit(corner) once for every corner of the group that is in the graph.
template <class Visit>
void forEachCorner(const QuadTable& table, const QuadGroup& group, Visit visit) {
  for (int32_t i = 0; i < group.count; ++i) {
    const ChessboardQuad& quad = table.quad(group.ids[i]);
    for (size_t k = 0; k < 4; ++k) {
      if (quad.neighbour[k] == 0) continue;
      ChessboardCornerPoint& corner = table.corner(quad.corner[k]);
      // Skips a corner that was visited as that of an earlier square.
      const auto* const before = std::find_if(group.ids, group.ids + i, [&](int32_t id) {
        const ChessboardQuad& other = table.quad(id);
        for (size_t m = 0; m < 4; ++m) {
          if (other.corner[m] == corner.id && other.neighbour[m] != 0) return true;
        }
        return false;
      });
      if (before == group.ids + i) visit(corner);
    }
  }
}

struct Census {
  int32_t corners = 0, loose = 0, twos = 0, threes = 0;
};

Census countCorners(const QuadTable& table, const QuadGroup& group) {
  Census census;
  forEachCorner(table, group, [&](const ChessboardCornerPoint& c) {
    ++census.corners;
    census.loose += c.neighbours < 2;
    census.twos += c.neighbours == 2;
    census.threes += c.neighbours == 3;
  });
  return census;
}

// The first corner of the board: one of the four with two neighbours, of the squares with the fewest neighbours.
int32_t firstCorner(const QuadTable& table, const QuadGroup& group) {
  int32_t best = 0, bestLabel = DAX_CHESSBOARD_LABEL_3;
  forEachCorner(table, group, [&](const ChessboardCornerPoint& c) {
    if (c.neighbours != 2 || c.label >= bestLabel) return;
    best = c.id;
    bestLabel = c.label;
  });
  return best;
}

// Reads rows and columns from the graph.
class BoardReader {
 public:
  BoardReader(const QuadTable& table, ChessboardPatternSize pattern, int32_t* ids)
      : table_(table), columns_(pattern.columns), rows_(pattern.rows), ids_(ids) {}

  bool read(int32_t first) {
    const ChessboardCornerPoint& corner = table_.corner(first);
    const int32_t a = corner.neighbour[0], b = corner.neighbour[1];
    const bool aAlongRow = lineLength(first, a) == columns_ && lineLength(first, b) == rows_;
    const bool bAlongRow = lineLength(first, b) == columns_ && lineLength(first, a) == rows_;
    // Where both fit, the turn from rows to columns must be that from x to y.
    const bool useA = aAlongRow && (!bAlongRow || turnsClockwise(first, a, b));
    if (!useA && !bAlongRow) return false;
    if (!fill(first, useA ? a : b, useA ? b : a)) return false;
    if (!turnsClockwise(first, useA ? a : b, useA ? b : a)) reverseRows();
    return true;
  }

 private:
  // The corner that continues the line from `from` over `at`: the neighbour of `at` that shares no cell with `from`. 0
  // where the line ends.
  int32_t straightOn(int32_t from, int32_t at) const {
    const ChessboardCornerPoint& c = table_.corner(at);
    for (int32_t i = 0; i < c.neighbours; ++i) {
      if (c.neighbour[i] != from && commonBesides(from, c.neighbour[i], at) == 0) return c.neighbour[i];
    }
    return 0;
  }

  // A common neighbour of two corners other than `third`; 0 for none.
  int32_t commonBesides(int32_t a, int32_t b, int32_t third) const {
    const ChessboardCornerPoint& c = table_.corner(a);
    for (int32_t i = 0; i < c.neighbours; ++i) {
      if (c.neighbour[i] != third && isJoined(table_.corner(b), c.neighbour[i])) return c.neighbour[i];
    }
    return 0;
  }

  int32_t lineLength(int32_t from, int32_t at) const {
    const int32_t longest = std::max(columns_, rows_);
    int32_t length = 2;
    for (int32_t next = straightOn(from, at); next != 0 && length <= longest; next = straightOn(from, at)) {
      from = at;
      at = next;
      ++length;
    }
    return length;
  }

  // Fills the first row and column along straight lines; then each further corner completes a cell.
  bool fill(int32_t first, int32_t alongRow, int32_t alongColumn) {
    id(0, 0) = first;
    id(0, 1) = alongRow;
    id(1, 0) = alongColumn;
    for (int32_t c = 2; c < columns_; ++c) id(0, c) = straightOn(id(0, c - 2), id(0, c - 1));
    for (int32_t r = 2; r < rows_; ++r) id(r, 0) = straightOn(id(r - 2, 0), id(r - 1, 0));
    for (int32_t r = 1; r < rows_; ++r) {
      for (int32_t c = 1; c < columns_; ++c) {
        id(r, c) = commonBesides(id(r - 1, c), id(r, c - 1), id(r - 1, c - 1));
        if (id(r, c) == 0) return false;
      }
    }
    return allDiffer();
  }

  bool allDiffer() const {
    const int32_t count = columns_ * rows_;
    for (int32_t i = 0; i < count; ++i) {
      if (std::find(ids_ + i + 1, ids_ + count, ids_[i]) != ids_ + count) return false;
    }
    return true;
  }

  bool turnsClockwise(int32_t first, int32_t alongRow, int32_t alongColumn) const {
    const ChessboardCornerPoint &o = table_.corner(first), &a = table_.corner(alongRow),
                                &b = table_.corner(alongColumn);
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x) > 0;
  }

  void reverseRows() {
    for (int32_t r = 0; r < rows_; ++r) std::reverse(&id(r, 0), &id(r, 0) + columns_);
  }

  int32_t& id(int32_t row, int32_t column) { return ids_[row * columns_ + column]; }

  const QuadTable& table_;
  int32_t columns_, rows_;
  int32_t* ids_;
};

// Whether the corners first, first + step, ... advance steadily from the first to the last.
bool isMonotone(const DaxiPoint32f* first, int32_t step, int32_t count) {
  const DaxiPoint32f a = first[0], b = first[ptrdiff_t{step} * (count - 1)];
  const float dx = b.x - a.x, dy = b.y - a.y;
  if (std::fabs(dx) + std::fabs(dy) < FLT_EPSILON) return false;
  float before = 0;
  for (int32_t i = 1; i < count - 1; ++i) {
    const DaxiPoint32f p = first[ptrdiff_t{step} * i];
    const float t = ((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy);
    if (!(t >= before && t <= 1)) return false;
    before = t;
  }
  return true;
}

}  // namespace
}  // namespace dax

bool DAXI_ChessboardCorner_check_quad_group(const dax::QuadTable* table, const dax::QuadGroup* group,
                                            ChessboardPatternSize pattern, int32_t* ids) {
  for (int32_t i = 0; i < group->count; ++i) {
    if (!dax::addQuad(*table, table->quad(group->ids[i]))) return false;
  }
  const dax::Census census = dax::countCorners(*table, *group);
  const bool fits = census.corners == pattern.columns * pattern.rows && census.corners >= 1 && census.loose == 0 &&
                    census.twos == 4 && census.threes == 2 * (pattern.columns + pattern.rows) - 8;
  if (!fits) return false;
  const int32_t first = dax::firstCorner(*table, *group);
  return first != 0 && dax::BoardReader(*table, pattern, ids).read(first);
}

bool DAXI_ChessboardCorner_check_board_monotony(const DaxiPoint32f* corners, ChessboardPatternSize pattern) {
  for (int32_t r = 0; r < pattern.rows; ++r) {
    if (!dax::isMonotone(corners + ptrdiff_t{r} * pattern.columns, 1, pattern.columns)) return false;
  }
  for (int32_t c = 0; c < pattern.columns; ++c) {
    if (!dax::isMonotone(corners + c, pattern.columns, pattern.rows)) return false;
  }
  return true;
}
