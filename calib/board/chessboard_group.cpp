// Groups of linked quads: their places on the board, and what is too much of them.
#include <algorithm>
#include <array>
#include <cmath>

#include "calib/board/chessboard.h"
#include "measure/blob/enclose_box.h"

namespace dax {
namespace {

constexpr float kMostBoxArea = 1.0e6f;

// Corners of a quad follow each other in this order around it; so do these steps to the neighbours' cells.
constexpr std::array<std::array<int32_t, 2>, 4> kDiagonal{{{-1, 1}, {-1, -1}, {1, -1}, {1, 1}}};

int32_t slotOf(const ChessboardQuad& quad, int32_t neighbour) {
  for (int32_t slot = 0; slot < 4; ++slot) {
    if (quad.neighbour[slot] == neighbour) return slot;
  }
  return -1;
}

int32_t QuadPlace::*const kAxes[] = {&QuadPlace::column, &QuadPlace::row};

// A span of cells along an axis.
struct CellSpan {
  int32_t first;
  int32_t last;
  bool holds(int32_t cell) const { return cell >= first && cell <= last; }
  int32_t length() const { return last - first + 1; }
};

struct CellWindow {
  CellSpan columns;
  CellSpan rows;
  bool holds(const QuadPlace& p) const { return p.placed && columns.holds(p.column) && rows.holds(p.row); }
};

class GridWalk {
 public:
  GridWalk(const QuadTable& table, QuadGroup& group, QuadPlace* places)
      : table_(table), group_(group), places_(places) {}

  // Places the quads from the one on that is linked best, the first of equals.
  void placeAll() {
    for (int32_t i = 0; i < group_.count; ++i) place(group_.ids[i]).placed = false;
    place(*std::max_element(group_.ids, group_.ids + group_.count, [&](int32_t a, int32_t b) {
      return table_.quad(a).neighbours < table_.quad(b).neighbours;
    })) = {0, 0, 0, true};
    for (bool moved = true; moved;) {
      moved = false;
      for (int32_t i = 0; i < group_.count; ++i) {
        if (place(group_.ids[i]).placed) moved |= visit(table_.quad(group_.ids[i]));
      }
    }
  }

  // Drops what lies outside the board, at the place and the way round where it holds most; everything when the squares
  // go on there as those of a larger board do.
  void trim(ChessboardPatternSize pattern) {
    const CellWindow upright = bestWindow(pattern.columns + 1, pattern.rows + 1);
    const CellWindow turned = bestWindow(pattern.rows + 1, pattern.columns + 1);
    const CellWindow window = count(turned) > count(upright) ? turned : upright;
    if (goesOn(window)) {
      group_.count = 0;
      return;
    }
    for (int32_t i = 0; i < group_.count; ++i) {
      if (!window.holds(place(group_.ids[i]))) drop(table_.quad(group_.ids[i]));
    }
    group_.count = static_cast<int32_t>(
        std::remove_if(group_.ids, group_.ids + group_.count, [&](int32_t id) { return !place(id).placed; }) -
        group_.ids);
  }

  // Links quads whose places touch, where both corners are still free.
  void closeGaps() {
    for (int32_t i = 0; i < group_.count; ++i) {
      ChessboardQuad& quad = table_.quad(group_.ids[i]);
      for (int32_t slot = 0; slot < 4; ++slot) {
        if (quad.neighbour[slot] == 0) closeGap(quad, slot);
      }
    }
  }

 private:
  QuadPlace& place(int32_t id) { return places_[id - 1]; }

  int32_t quadAt(int32_t column, int32_t row) {
    for (int32_t i = 0; i < group_.count; ++i) {
      const QuadPlace& p = place(group_.ids[i]);
      if (p.placed && p.column == column && p.row == row) return group_.ids[i];
    }
    return 0;
  }

  // Where the neighbour at a slot must be. Its own slot of this link points back.
  QuadPlace placeAcross(const ChessboardQuad& quad, int32_t slot) {
    const QuadPlace& from = place(quad.id);
    const auto& step = kDiagonal[static_cast<size_t>((slot + from.turn) % 4)];
    const int32_t back = slotOf(table_.quad(quad.neighbour[slot]), quad.id);
    return {from.column + step[0], from.row + step[1], (slot + from.turn + 2 - back + 4) % 4, true};
  }

  void drop(ChessboardQuad& quad) {
    for (int32_t slot = 0; slot < 4; ++slot) {
      if (quad.neighbour[slot] != 0) unlink(table_, quad, slot);
    }
    place(quad.id).placed = false;
  }

  // Places the neighbours of a quad. Of two that contradict, the one with fewer links goes.
  bool visit(ChessboardQuad& quad) {
    bool moved = false;
    for (int32_t slot = 0; slot < 4; ++slot) {
      const int32_t id = quad.neighbour[slot];
      if (id == 0) continue;
      const QuadPlace wanted = placeAcross(quad, slot);
      QuadPlace& at = place(id);
      const bool agrees = at.column == wanted.column && at.row == wanted.row && at.turn == wanted.turn;
      if (at.placed && agrees) continue;
      if (at.placed && table_.quad(id).neighbours > quad.neighbours) {
        drop(quad);
        return moved;
      }
      if (at.placed || quadAt(wanted.column, wanted.row) != 0) {
        drop(table_.quad(id));
      } else {
        at = wanted;
        moved = true;
      }
    }
    return moved;
  }

  template <class Holds>
  int32_t countIf(Holds holds) {
    return static_cast<int32_t>(
        std::count_if(group_.ids, group_.ids + group_.count, [&](int32_t id) { return holds(place(id)); }));
  }
  int32_t count(const CellWindow& window) {
    return countIf([&](const QuadPlace& p) { return window.holds(p); });
  }

  CellWindow bestWindow(int32_t columns, int32_t rows) {
    CellWindow window{{-kMostQuads, kMostQuads}, {-kMostQuads, kMostQuads}};
    peel(window, window.columns, kAxes[0], columns);
    peel(window, window.rows, kAxes[1], rows);
    return window;
  }

  // Takes lines of cells away at the end that has fewer quads, until so many are left.
  void peel(const CellWindow& window, CellSpan& span, int32_t QuadPlace::*axis, int32_t cells) {
    const auto quadsOn = [&](int32_t line) {
      return countIf([&](const QuadPlace& p) { return window.holds(p) && p.*axis == line; });
    };
    while (span.first < span.last && quadsOn(span.first) == 0) ++span.first;
    while (span.first < span.last && quadsOn(span.last) == 0) --span.last;
    while (span.last - span.first >= cells) {
      if (quadsOn(span.first) < quadsOn(span.last)) {
        ++span.first;
      } else {
        --span.last;
      }
    }
  }

  // Whether a line of cells next to the window is that of a board: most of its dark cells are taken, and not by chance
  // a single one.
  bool goesOn(const CellWindow& window) {
    const auto [columns, rows] = window;
    const auto isLine = [&](const CellWindow& line) {
      const int32_t quads = count(line);
      return quads >= 2 && 2 * quads > darkCells(line);
    };
    return isLine({{columns.first - 1, columns.first - 1}, rows}) ||
           isLine({{columns.last + 1, columns.last + 1}, rows}) ||
           isLine({columns, {rows.first - 1, rows.first - 1}}) || isLine({columns, {rows.last + 1, rows.last + 1}});
  }

  // Of a line. Dark are the cells with an even sum of column and row, like the first one.
  static int32_t darkCells(const CellWindow& line) {
    const int32_t cells = line.columns.length() + line.rows.length() - 1;
    return (line.columns.first + line.rows.first) % 2 == 0 ? (cells + 1) / 2 : cells / 2;
  }

  void closeGap(ChessboardQuad& quad, int32_t slot) {
    const QuadPlace& from = place(quad.id);
    const auto& step = kDiagonal[static_cast<size_t>((slot + from.turn) % 4)];
    const int32_t id = quadAt(from.column + step[0], from.row + step[1]);
    if (id == 0) return;
    ChessboardQuad& other = table_.quad(id);
    const int32_t back = (slot + from.turn + 2 - place(id).turn + 4) % 4;
    if (other.neighbour[back] == 0) link(table_, quad, slot, other, back);
  }

  const QuadTable& table_;
  QuadGroup& group_;
  QuadPlace* places_;
};

// Half away from zero; far outside any image first, so that the conversion is defined.
int32_t roundCoordinate(float v) {
  const float bounded = v >= -1e8f && v <= 1e8f ? v : 0;
  return static_cast<int32_t>(std::round(bounded));
}

DaxiPoint32s centreOf(const QuadTable& table, const ChessboardQuad& quad) {
  int32_t x = 0, y = 0;
  for (const int32_t id : quad.corner) {
    x += roundCoordinate(table.corner(id).x);
    y += roundCoordinate(table.corner(id).y);
  }
  return {x >> 2, y >> 2};
}

DaxiPoint32s meanOf(const DaxiPoint32s* points, int32_t count) {
  int64_t x = 0, y = 0;
  for (int32_t i = 0; i < count; ++i) {
    x += points[i].x;
    y += points[i].y;
  }
  return {static_cast<int32_t>(x / count), static_cast<int32_t>(y / count)};
}

class SurplusRemover {
 public:
  SurplusRemover(const QuadTable& table, QuadGroup& group, const GroupScratch& scratch)
      : table_(table), group_(group), centres_(scratch.centres), scratch_(scratch) {
    for (int32_t i = 0; i < group.count; ++i) centres_[i] = centreOf(table, table.quad(group.ids[i]));
    mean_ = meanOf(centres_, group.count);
  }

  void run(int32_t most) {
    while (group_.count > most) {
      const int32_t slot = findSurplus();
      if (slot < 0) {
        group_.count = 0;
        return;
      }
      remove(slot);
    }
  }

 private:
  // Area of the box around all centres, that of one slot replaced by their mean.
  float areaWithout(int32_t slot) {
    const DaxiPoint32s kept = centres_[slot];
    centres_[slot] = mean_;
    DaxiRotatedBox box;
    const DaxStatus status =
        _DAXI_PtEncloseBox_32s(centres_, group_.count, DAXI_BOX_LEAST_AREA, &box, scratch_.boxBuffer);
    centres_[slot] = kept;
    return status == DAX_STS_OK ? box.width * box.height : kMostBoxArea;
  }

  // Corners of the hull around all centres and their mean. No other centre changes the box by leaving.
  int32_t findHull() {
    const int32_t count = group_.count + 1;
    DaxiPoint32s* const sorted = scratch_.hull + 3 * count + 1;
    std::copy(centres_, centres_ + group_.count, sorted);
    sorted[group_.count] = mean_;
    std::sort(sorted, sorted + count,
              [](DaxiPoint32s a, DaxiPoint32s b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
    return sortedPointsHull(sorted, count, scratch_.hull);
  }

  int32_t findSurplus() {
    const int32_t hullCount = findHull();
    const auto onHull = [&](DaxiPoint32s p) {
      return std::any_of(scratch_.hull, scratch_.hull + hullCount,
                         [p](DaxiPoint32s h) { return h.x == p.x && h.y == p.y; });
    };
    float least = kMostBoxArea, inner = -1;
    int32_t best = -1;
    for (int32_t i = 0; i < group_.count; ++i) {
      float area = inner;
      if (onHull(centres_[i]) || inner < 0) {
        area = areaWithout(i);
        if (!onHull(centres_[i])) inner = area;
      }
      if (area < least) {
        least = area;
        best = i;
      }
    }
    return best;
  }

  // The last quad takes the slot, and the count falls by two.
  void remove(int32_t slot) {
    ChessboardQuad& quad = table_.quad(group_.ids[slot]);
    for (int32_t i = 0; i < group_.count; ++i) {
      ChessboardQuad& other = table_.quad(group_.ids[i]);
      for (int32_t& id : other.neighbour) {
        if (i == slot || id != quad.id) continue;
        id = 0;
        --other.neighbours;
      }
    }
    group_.ids[slot] = group_.ids[group_.count - 1];
    centres_[slot] = centres_[group_.count - 1];
    group_.count = std::max(group_.count - 2, 0);
  }

  const QuadTable& table_;
  QuadGroup& group_;
  DaxiPoint32s* centres_;
  const GroupScratch& scratch_;
  DaxiPoint32s mean_;
};

}  // namespace
}  // namespace dax

void DAXI_ChessboardCorner_order_connected_quads(const dax::QuadTable* table, dax::QuadGroup* group,
                                                 ChessboardPatternSize pattern, const dax::GroupScratch* scratch) {
  dax::GridWalk walk(*table, *group, scratch->places);
  walk.placeAll();
  walk.trim(pattern);
  walk.closeGaps();
}

void DAXI_ChessboardCorner_clean_surplus_quads(const dax::QuadTable* table, dax::QuadGroup* group, int32_t most,
                                               const dax::GroupScratch* scratch) {
  if (group->count > most) dax::SurplusRemover(*table, *group, *scratch).run(most);
}
