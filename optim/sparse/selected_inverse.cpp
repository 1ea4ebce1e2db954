#include "optim/sparse/selected_inverse.h"

#include <algorithm>

namespace dax {
namespace {

// A panel of columns C with the rows R below them; column-major, ld rows in all.
struct InversePanel {
  InversePanel(const PrmCholesky& f, int32_t s)
      : first(f.firstColumn[s]),
        columns(f.firstColumn[s + 1] - first),
        ld(f.firstRow[s + 1] - f.firstRow[s]),
        below(ld - columns),
        rows(f.rows + f.firstRow[s] + columns),
        values(f.values + f.at[s]) {}
  double& at(int64_t row, int64_t column) const { return values[row + column * ld]; }

  int32_t first, columns;
  int64_t ld, below;
  const int32_t* rows;  // R
  double* values;
};

// z = the inverse's elements at R x R, column-major. They lie in later panels, each of which has the rows of R behind its
// own column.
void gatherBelow(const PrmCholesky& f, const InversePanel& panel, double* z) {
  for (int64_t j = 0; j < panel.below; ++j) {
    const int32_t column = panel.rows[j];
    const auto owner =
        static_cast<int32_t>(std::upper_bound(f.firstColumn, f.firstColumn + f.panels, column) - f.firstColumn) - 1;
    const InversePanel other(f, owner);
    const int32_t* row = f.rows + f.firstRow[owner];
    const double* const from = other.values + (column - other.first) * other.ld;
    int64_t at = 0;
    for (int64_t i = j; i < panel.below; ++i) {
      while (row[at] != panel.rows[i]) ++at;
      z[i + j * panel.below] = z[j + i * panel.below] = from[at];
    }
  }
}

// y = L_RC L_CC^-1, column-major.
void dividePanel(const InversePanel& panel, double* y) {
  const int64_t n = panel.below;
  for (int32_t j = panel.columns - 1; j >= 0; --j) {
    double* const to = y + j * n;
    for (int64_t i = 0; i < n; ++i) to[i] = panel.at(panel.columns + i, j);
    for (int32_t k = j + 1; k < panel.columns; ++k) {
      const double factor = panel.at(k, j);
      for (int64_t i = 0; i < n; ++i) to[i] -= factor * y[k * n + i];
    }
    for (int64_t i = 0; i < n; ++i) to[i] /= panel.at(j, j);
  }
}

// m = L_CC^-1, lower triangle, column-major.
void invertTriangle(const InversePanel& panel, double* m) {
  const int32_t n = panel.columns;
  for (int32_t j = 0; j < n; ++j) {
    m[j + int64_t{j} * n] = 1 / panel.at(j, j);
    for (int32_t i = j + 1; i < n; ++i) {
      double sum = 0;
      for (int32_t k = j; k < i; ++k) sum += panel.at(i, k) * m[k + int64_t{j} * n];
      m[i + int64_t{j} * n] = -sum / panel.at(i, i);
    }
  }
}

// With Y = L_RC L_CC^-1: Z_RC = -Z_RR Y and Z_CC = L_CC^-T L_CC^-1 - Y^T Z_RC.
void invertPanel(const PrmCholesky& f, const InversePanel& panel, double* scratch) {
  const int64_t n = panel.below, columns = panel.columns;
  double *const z = scratch, *const y = z + n * n, *const w = y + n * columns, *const m = w + n * columns;
  gatherBelow(f, panel, z);
  dividePanel(panel, y);
  invertTriangle(panel, m);
  std::fill_n(w, n * columns, 0.0);
  for (int64_t j = 0; j < columns; ++j) {
    for (int64_t k = 0; k < n; ++k) {
      const double factor = y[k + j * n];
      for (int64_t i = 0; i < n; ++i) w[i + j * n] += factor * z[i + k * n];
    }
  }
  for (int64_t j = 0; j < columns; ++j) {
    for (int64_t i = j; i < columns; ++i) {
      double sum = 0;
      for (int64_t k = i; k < columns; ++k) sum += m[k + i * columns] * m[k + j * columns];
      for (int64_t k = 0; k < n; ++k) sum += y[k + i * n] * w[k + j * n];
      panel.at(i, j) = sum;
    }
    for (int64_t i = 0; i < n; ++i) panel.at(columns + i, j) = -w[i + j * n];
  }
}

}  // namespace

void invertSelected(const PrmCholesky& factor, double* scratch) {
  for (int32_t s = factor.panels - 1; s >= 0; --s) invertPanel(factor, InversePanel(factor, s), scratch);
}

}  // namespace dax
