#include "optim/sparse/cholesky.h"

#include <algorithm>

#include "optim/dense/dense.h"

namespace dax {
namespace {

struct Panel {
  Panel(const PrmCholesky& f, int32_t s)
      : first(f.firstColumn[s]),
        columns(f.firstColumn[s + 1] - first),
        rowCount(static_cast<int32_t>(f.firstRow[s + 1] - f.firstRow[s])),
        rows(f.rows + f.firstRow[s]),
        values(f.values + f.at[s]) {}
  int32_t first, columns, rowCount;
  const int32_t* rows;
  double* values;
};

void load(const PrmCholesky& f, const double* values, int64_t elements, double shift) {
  std::fill_n(f.values, f.at[f.panels], 0.0);
  for (int64_t k = 0; k < elements; ++k) {
    if (f.place[k] >= 0) f.values[f.place[k]] = values[k];
  }
  for (int32_t j = 0; j < f.n; ++j) f.values[f.diagonal[j]] += shift;
}

// Left-looking update: subtracts from panel s the product of rows from.. of panel d with the transpose of the `count`
// first of them, which are columns of s.
void applyUpdate(const PrmCholesky& f, const Panel& s, const Panel& d, int32_t from, int32_t count) {
  const int32_t height = d.rowCount - from;
  const double* const source = d.values + from;
  const int32_t* const rows = d.rows + from;
  const int32_t top = f.position[rows[0]], bottom = f.position[rows[height - 1]];
  if (bottom - top == height - 1) {
    subtractProduct(height, count, d.columns, source, d.rowCount, source, d.rowCount,
                    s.values + top + int64_t{top} * s.rowCount, s.rowCount, true);
    return;
  }
  std::fill_n(f.update, int64_t{height} * count, 0.0);
  subtractProduct(height, count, d.columns, source, d.rowCount, source, d.rowCount, f.update, height, true);
  for (int32_t j = 0; j < count; ++j) {
    double* const column = s.values + int64_t{rows[j] - s.first} * s.rowCount;
    const double* const update = f.update + int64_t{j} * height;
    for (int32_t i = j; i < height; ++i) column[f.position[rows[i]]] += update[i];
  }
}

// Links panel s into the list of the panel that contains its row `from`, where its next update goes.
void wait(const PrmCholesky& f, int32_t s, const Panel& panel, int32_t from) {
  f.done[s] = from;
  if (from == panel.rowCount) return;
  const int32_t column = panel.rows[from];
  const int32_t* const owner = std::upper_bound(f.firstColumn + s, f.firstColumn + f.panels, column) - 1;
  const auto t = static_cast<int32_t>(owner - f.firstColumn);
  f.nextWaiting[s] = f.waiting[t];
  f.waiting[t] = s;
}

bool factorise(const PrmCholesky& f) {
  std::fill_n(f.waiting, f.panels, -1);
  for (int32_t s = 0; s < f.panels; ++s) {
    const Panel panel(f, s);
    if (f.waiting[s] >= 0) {
      for (int32_t i = 0; i < panel.rowCount; ++i) f.position[panel.rows[i]] = i;
    }
    for (int32_t d = f.waiting[s]; d >= 0;) {
      const int32_t following = f.nextWaiting[d];
      const Panel other(f, d);
      const int32_t from = f.done[d];
      int32_t to = from;
      while (to < other.rowCount && other.rows[to] < panel.first + panel.columns) ++to;
      applyUpdate(f, panel, other, from, to - from);
      wait(f, d, other, to);
      d = following;
    }
    if (!factorPanel(panel.columns, panel.rowCount, panel.values, panel.rowCount)) return false;
    wait(f, s, panel, panel.columns);
  }
  return true;
}

void solve(const PrmCholesky& f, double* x) {
  for (int32_t s = 0; s < f.panels; ++s) {
    const Panel panel(f, s);
    const double* column = panel.values;
    for (int32_t j = 0; j < panel.columns; ++j, column += panel.rowCount) {
      const double value = x[panel.first + j] /= column[j];
      for (int32_t i = j + 1; i < panel.rowCount; ++i) x[panel.rows[i]] -= column[i] * value;
    }
  }
  for (int32_t s = f.panels - 1; s >= 0; --s) {
    const Panel panel(f, s);
    for (int32_t j = panel.columns - 1; j >= 0; --j) {
      const double* const column = panel.values + int64_t{j} * panel.rowCount;
      double rest = x[panel.first + j];
      // Descending order: the value found last is needed last, which shortens the chain of dependent operations.
      for (int32_t i = panel.rowCount - 1; i > j; --i) rest -= column[i] * x[panel.rows[i]];
      x[panel.first + j] = rest / column[j];
    }
  }
}

}  // namespace
}  // namespace dax

int32_t PRM_Cholesky_Process_64f(PrmCholesky* factor, const double* values, int64_t elements, double shift,
                                 double* solution) {
  const PrmCholesky& f = *factor;
  dax::load(f, values, elements, shift);
  if (!dax::factorise(f)) return 0;
  for (int32_t i = 0; i < f.n; ++i) f.permuted[i] = solution[f.original[i]];
  dax::solve(f, f.permuted);
  for (int32_t i = 0; i < f.n; ++i) solution[f.original[i]] = f.permuted[i];
  return 1;
}
