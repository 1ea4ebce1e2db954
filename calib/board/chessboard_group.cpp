#include "calib/board/chessboard_group.h"

#include <algorithm>
#include <array>

namespace dax {
namespace {

// Steps from a cell to those of the neighbours at the four corners of a quad, in the order of the corners around it.
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

  // Places the quads, starting at the one with the most links (the first of equals).
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

  // Finds the position and orientation of the board that contains the most quads, and drops the quads outside. Drops
  // all quads when the squares continue beyond it, as those of a larger board do.
  void trim(ChessboardPatternSize pattern) {
    const CellWindow upright = bestWindow(pattern.columns + 1, pattern.rows + 1);
    const CellWindow turned = bestWindow(pattern.rows + 1, pattern.columns + 1);
    const CellWindow window = count(turned) > count(upright) ? turned : upright;
    if (continues(window)) {
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

  // Links quads in adjacent places whose corners are both free.
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

  // The place of the neighbour at a slot. The neighbour's own slot of this link gives its rotation.
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

  // Places the neighbours of a quad. Of two quads that contradict each other, the one with fewer links is dropped.
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
    CellWindow window{{-kMaxQuads, kMaxQuads}, {-kMaxQuads, kMaxQuads}};
    peel(window, window.columns, kAxes[0], columns);
    peel(window, window.rows, kAxes[1], rows);
    return window;
  }

  // Removes lines of cells at the end that has fewer quads, until `cells` are left.
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

  // Whether a line of cells next to the window belongs to a board: more than half of its dark cells are taken, and at
  // least two, since a single one can be there by chance.
  bool continues(const CellWindow& window) {
    const auto [columns, rows] = window;
    const auto isLine = [&](const CellWindow& line) {
      const int32_t quads = count(line);
      return quads >= 2 && 2 * quads > darkCells(line);
    };
    return isLine({{columns.first - 1, columns.first - 1}, rows}) ||
           isLine({{columns.last + 1, columns.last + 1}, rows}) ||
           isLine({columns, {rows.first - 1, rows.first - 1}}) || isLine({columns, {rows.last + 1, rows.last + 1}});
  }

  // Dark cells of a line: like the first quad's cell, those with an even sum of column and row.
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

}  // namespace
}  // namespace dax

void DAXI_ChessboardCorner_order_connected_quads(const dax::QuadTable* table, dax::QuadGroup* group,
                                                 ChessboardPatternSize pattern, const dax::GroupScratch* scratch) {
  dax::GridWalk walk(*table, *group, scratch->places);
  walk.placeAll();
  walk.trim(pattern);
  walk.closeGaps();
}
