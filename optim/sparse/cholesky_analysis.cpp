#include "optim/sparse/cholesky_analysis.h"

#include <algorithm>

#include "optim/sparse/elimination_tree.h"
#include "optim/sparse/msp.h"

namespace dax {
namespace {

// A panel under construction: nodes begin..end - 1, number of their columns, of rows below, and of stored zeros.
struct Candidate {
  int32_t begin, end, columns, below;
  int64_t zeros;
};

// Whether a merged panel with stored zeros is worth its width. Narrow panels may hold more zeros: up to 4 columns any
// share, up to 16 columns 80 %, up to 48 columns 10 %, else 5 % (Chen, Davis, Hager and Rajamanickam 2008).
bool worthMerging(const Candidate& merged) {
  const int64_t c = merged.columns;
  const int64_t size = c * (c + 1) / 2 + c * merged.below;
  if (c <= 4) return true;
  if (c <= 16) return merged.zeros * 10 <= size * 8;
  if (c <= 48) return merged.zeros * 10 <= size;
  return merged.zeros * 20 <= size;
}

// Fundamental supernodes, then children merged into parents where that pays (relaxed supernodes: Ashcraft and Grimes
// 1989).
int32_t findPanels(const CompressedGraph& nodes, const EliminationTree& tree, Candidate* panels) {
  int32_t count = 0;
  for (int32_t k = 0; k < nodes.count; ++k) {
    const int32_t weight = nodes.weight[tree.node[k]];
    Candidate top{k, k + 1, weight, tree.below[k], 0};
    while (count > 0) {
      const Candidate& child = panels[count - 1];
      const int32_t up = tree.parent[child.end - 1];
      if (up < top.begin || up >= top.end) break;
      const Candidate merged{
          child.begin, top.end, child.columns + top.columns, top.below,
          child.zeros + top.zeros + int64_t{child.columns} * (top.columns + top.below - child.below)};
      if (merged.zeros > 0 && !worthMerging(merged)) break;
      top = merged;
      --count;
    }
    panels[count++] = top;
  }
  return count;
}

struct PanelSizes {
  int64_t rows, values;
  int64_t update;  // bound on the size of the largest update of one panel by another
  PanelBounds bounds;
};

PanelSizes sizesOf(const Candidate* panels, int32_t count) {
  PanelSizes sizes{0, 0, 0, {0, 0}};
  int64_t& widest = sizes.bounds.columns;
  for (const Candidate* p = panels; p != panels + count; ++p) {
    widest = std::max<int64_t>(widest, p->columns);
    sizes.bounds.below = std::max<int64_t>(sizes.bounds.below, p->below);
  }
  for (const Candidate* p = panels; p != panels + count; ++p) {
    const int64_t height = int64_t{p->columns} + p->below;
    sizes.rows += height;
    sizes.values += height * p->columns;
    sizes.update = std::max(sizes.update, p->below * std::min<int64_t>(p->below, widest));
  }
  return sizes;
}

// Scratch of the analysis, returned to the arena at its end.
struct Scratch {
  Scratch(Arena& arena, int32_t n, uint64_t elements)
      : matrix(arena, n, elements),
        nodes(arena, n, elements),
        tree(arena, n),
        panels(arena.borrow<Candidate>(unsignedOf(n))),
        columnOf(arena.borrow<int32_t>(unsignedOf(n) + 1)),
        nodeAt(arena.borrow<int32_t>(unsignedOf(n))),
        panelOf(arena.borrow<int32_t>(unsignedOf(n))),
        inverse(arena.borrow<int32_t>(unsignedOf(n))) {}
  SymmetricPattern matrix;
  CompressedGraph nodes;
  EliminationTree tree;
  Candidate* panels;
  int32_t* columnOf;  // first column of the node at each position
  int32_t* nodeAt;    // position of the node of each column of the factor
  int32_t* panelOf;   // panel of the node at each position
  int32_t* inverse;   // column of the factor for each column of the matrix
};

void takePanels(Arena& arena, PrmCholesky& f, int32_t n, int32_t panels, int64_t rows, int64_t values,
                uint64_t elements) {
  f.n = n;
  f.panels = panels;
  const uint64_t p = unsignedOf(panels), columns = unsignedOf(n);
  f.original = arena.take<int32_t>(columns);
  f.firstColumn = arena.take<int32_t>(p + 1);
  f.firstRow = arena.take<int64_t>(p + 1);
  f.at = arena.take<int64_t>(p + 1);
  f.rows = arena.take<int32_t>(unsignedOf(rows));
  f.place = arena.take<int64_t>(elements);
  f.diagonal = arena.take<int64_t>(columns);
  f.position = arena.take<int32_t>(columns);
  f.waiting = arena.take<int32_t>(p);
  f.nextWaiting = arena.take<int32_t>(p);
  f.done = arena.take<int32_t>(p);
  f.permuted = arena.take<double>(columns);
  f.values = arena.take<double>(unsignedOf(values));
}

// Columns of the factor: the columns of the nodes in order of elimination.
void layColumns(const Scratch& s, PrmCholesky& f) {
  int32_t column = 0;
  for (int32_t k = 0; k < s.nodes.count; ++k) {
    s.columnOf[k] = column;
    for (int32_t j = s.nodes.first[s.tree.node[k]]; j != kNone; j = s.nodes.next[j], ++column) {
      f.original[column] = j;
      s.inverse[j] = column;
      s.nodeAt[column] = k;
    }
  }
  s.columnOf[s.nodes.count] = column;
}

// Writes the nodes of the rows below panel p to tree.child, ascending: neighbours of its nodes and remaining rows of its
// children. Returns their number.
int32_t findRowsBelow(const Scratch& s, const PrmCholesky& f, int32_t p) {
  const Candidate& panel = s.panels[p];
  int32_t* const found = s.tree.child;
  int32_t count = 0;
  const auto find = [&](int32_t k) {
    if (k < panel.end || s.tree.mark[k] == p) return;
    s.tree.mark[k] = p;
    found[count++] = k;
  };
  for (int32_t k = panel.begin; k < panel.end; ++k) {
    const int32_t u = s.tree.node[k];
    for (int64_t i = s.nodes.start[u]; i < s.nodes.start[u + 1]; ++i) find(s.tree.position[s.nodes.adjacent[i]]);
  }
  for (int32_t c = f.waiting[p]; c != kNone; c = f.nextWaiting[c]) {
    for (int64_t i = f.firstRow[c] + s.panels[c].columns; i < f.firstRow[c + 1]; ++i) find(s.nodeAt[f.rows[i]]);
  }
  std::sort(found, found + count);
  return count;
}

// Adds panel p to the children of the panel with its parent node: the first one that ends after that node.
void linkToParent(const Scratch& s, const PrmCholesky& f, int32_t p) {
  const int32_t parent = s.tree.parent[s.panels[p].end - 1];
  if (parent == kNone) return;
  const Candidate* const owner = std::upper_bound(s.panels + p, s.panels + f.panels, parent,
                                                  [](int32_t k, const Candidate& c) { return k < c.end; });
  const auto t = static_cast<int32_t>(owner - s.panels);
  f.nextWaiting[p] = f.waiting[t];
  f.waiting[t] = p;
}

// Rows of each panel: its own columns and those of the nodes below. `waiting` holds the first child of each panel.
void layRows(const Scratch& s, PrmCholesky& f) {
  std::fill_n(s.tree.mark, s.nodes.count, kNone);
  std::fill_n(f.waiting, f.panels, kNone);
  int64_t end = 0, at = 0;
  const auto addColumns = [&](int32_t begin, int32_t stop) {
    for (int32_t j = s.columnOf[begin]; j < s.columnOf[stop]; ++j) f.rows[end++] = j;
  };
  for (int32_t p = 0; p < f.panels; ++p) {
    const Candidate& panel = s.panels[p];
    std::fill(s.panelOf + panel.begin, s.panelOf + panel.end, p);
    f.firstColumn[p] = s.columnOf[panel.begin];
    f.firstRow[p] = end;
    f.at[p] = at;
    const int32_t count = findRowsBelow(s, f, p);
    addColumns(panel.begin, panel.end);
    for (int32_t i = 0; i < count; ++i) addColumns(s.tree.child[i], s.tree.child[i] + 1);
    f.firstRow[p + 1] = end;
    at += (end - f.firstRow[p]) * panel.columns;
    linkToParent(s, f, p);
  }
  f.firstColumn[f.panels] = f.n;
  f.at[f.panels] = at;
}

// Position of each element of the matrix in the factor.
void layElements(const Scratch& s, const PrmtMsp& matrix, PrmCholesky& f) {
  const auto placeOf = [&](int32_t i, int32_t j) {
    const int32_t row = std::max(s.inverse[i], s.inverse[j]), column = std::min(s.inverse[i], s.inverse[j]);
    const int32_t p = s.panelOf[s.nodeAt[column]];
    const int32_t* const rows = f.rows + f.firstRow[p];
    const int64_t height = f.firstRow[p + 1] - f.firstRow[p];
    const int64_t index = std::lower_bound(rows, rows + height, row) - rows;
    return f.at[p] + index + (column - f.firstColumn[p]) * height;
  };
  for (int32_t j = 0; j < f.n; ++j) {
    f.diagonal[j] = placeOf(j, j);
    for (int64_t p = matrix.start[j]; p < matrix.start[j + 1]; ++p) {
      f.place[p] = matrix.row[p] < j ? -1 : placeOf(matrix.row[p], j);
    }
  }
}

// Size of the largest update of one panel by another.
int64_t largestUpdate(const PrmCholesky& f) {
  int64_t largest = 0;
  for (int32_t s = 0; s < f.panels; ++s) {
    int64_t from = f.firstRow[s] + f.firstColumn[s + 1] - f.firstColumn[s];
    while (from < f.firstRow[s + 1]) {
      const int32_t* const owner = std::upper_bound(f.firstColumn, f.firstColumn + f.panels, f.rows[from]);
      int64_t to = from;
      while (to < f.firstRow[s + 1] && f.rows[to] < *owner) ++to;
      largest = std::max(largest, (f.firstRow[s + 1] - from) * (to - from));
      from = to;
    }
  }
  return largest;
}

}  // namespace

bool analyse(Arena& arena, const PrmtMsp& matrix, PrmCholesky& factor, int64_t maxValues) {
  const int32_t n = matrix.cols;
  const uint64_t elements = unsignedOf(elementsOf(matrix));
  const Arena::Scope scope(arena);
  Scratch s(arena, n, elements);
  if (!arena.fits()) return false;
  s.matrix.fill(matrix);
  s.nodes.compress(s.matrix, n);
  if (!minimumDegree(arena, s.nodes.view(n), s.tree.node)) return false;
  s.tree.build(s.nodes);
  const int32_t panels = findPanels(s.nodes, s.tree, s.panels);
  const PanelSizes sizes = sizesOf(s.panels, panels);
  if (sizes.values > maxValues) return false;
  takePanels(arena, factor, n, panels, sizes.rows, sizes.values, elements);
  if (!arena.fits()) return false;
  layColumns(s, factor);
  layRows(s, factor);
  layElements(s, matrix, factor);
  factor.update = arena.take<double>(unsignedOf(largestUpdate(factor)));
  factor.patternVersion = matrix.patternVersion;
  return arena.fits();
}

// A panel has as many rows as values or fewer, and so has an update as the panel that it goes to.
void measureCholesky(Arena& arena, int32_t n, uint64_t elements, int64_t maxValues) {
  const Arena::Scope scope(arena);
  const Scratch scratch(arena, n, elements);
  // Each element gives two directed edges.
  measureMinimumDegree(arena, n, n, 2 * elements);
  PrmCholesky factor;
  const int64_t all = std::min(int64_t{n} * n, maxValues);
  takePanels(arena, factor, n, n, all, all, elements);
  arena.take<double>(unsignedOf(all));
}

bool measureBlocks(Arena& arena, Arena& work, const PrmtMsp& blocks, const int32_t* column, uint64_t elements,
                   PanelBounds* bounds) {
  const int32_t n = blocks.cols, columns = column[n];
  const Arena::Scope counting(arena), working(work);
  const Scratch counted(arena, columns, elements);
  Scratch s(work, n, unsignedOf(elementsOf(blocks)));
  if (!work.fits()) return false;
  s.matrix.fill(blocks);
  s.nodes.compress(s.matrix, n);
  for (int32_t k = 0; k < s.nodes.count; ++k) {
    s.nodes.weight[k] = 0;
    for (int32_t b = s.nodes.first[k]; b != kNone; b = s.nodes.next[b]) {
      s.nodes.weight[k] += column[b + 1] - column[b];
    }
  }
  measureMinimumDegree(arena, s.nodes.count, columns, unsignedOf(s.nodes.start[s.nodes.count]));
  if (!minimumDegree(work, s.nodes.view(columns), s.tree.node)) return false;
  s.tree.build(s.nodes);
  const int32_t panels = findPanels(s.nodes, s.tree, s.panels);
  const PanelSizes sizes = sizesOf(s.panels, panels);
  PrmCholesky factor;
  takePanels(arena, factor, columns, panels, sizes.rows, sizes.values, elements);
  arena.take<double>(unsignedOf(sizes.update));
  if (bounds) *bounds = sizes.bounds;
  return true;
}

void measureBlockOrder(Arena& work, int32_t blocks, uint64_t elements, int32_t maxColumns) {
  const Arena::Scope scope(work);
  const Scratch scratch(work, blocks, elements);
  measureMinimumDegree(work, blocks, blocks * maxColumns, 2 * elements);
}

}  // namespace dax
