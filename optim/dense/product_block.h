// Products of dense matrices by tiles of registers, and by blocks that stay in the cache.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace dax {

// Registers of doubles. Each element is computed on its own, so results do not depend on their width.
typedef double Pair __attribute__((vector_size(16)));
#ifdef __AVX__
typedef double Wide __attribute__((vector_size(32)));
constexpr int kWideRegisters = 2;
#else
typedef Pair Wide;
#ifdef __aarch64__
constexpr int kWideRegisters = 4;
#else
constexpr int kWideRegisters = 2;
#endif
#endif

// What becomes of the sums of a product: subtracted from C, or continued from what C holds and stored there, so that a
// sum can be formed in parts.
enum class Into { subtract, accumulate };

// The operands of C -= A B^T or C += A B^T; see dense.h.
struct Product {
  int32_t k;
  const double* a;
  ptrdiff_t lda;
  const double* b;
  ptrdiff_t ldb;
  double* c;
  ptrdiff_t ldc;

  Product from(int32_t i, int32_t j) const { return {k, a + i, lda, b + j, ldb, c + i + j * ldc, ldc}; }
};

// Passed by reference, because the calling convention for vectors depends on the instruction set.
template <class Register>
inline void load(Register& to, const double* from) {
  std::memcpy(&to, from, sizeof to);
}
template <class Register>
inline void store(double* to, const Register& from) {
  std::memcpy(to, &from, sizeof from);
}

// A tile of C: kRegisters of rows, kColumns of columns.
template <Into kInto, class Register, int kRegisters, int kColumns>
[[gnu::always_inline]] inline void multiplyTile(const Product& product) {
  constexpr int kLanes = sizeof(Register) / sizeof(double);
  Register sum[kColumns][kRegisters] = {}, rows[kRegisters], old;
  if (kInto == Into::accumulate) {
    for (int j = 0; j < kColumns; ++j) {
      for (int r = 0; r < kRegisters; ++r) load(sum[j][r], product.c + j * product.ldc + r * kLanes);
    }
  }
  const double *a = product.a, *b = product.b;
  for (int32_t p = 0; p < product.k; ++p, a += product.lda, b += product.ldb) {
    for (int r = 0; r < kRegisters; ++r) load(rows[r], a + r * kLanes);
    for (int j = 0; j < kColumns; ++j) {
      for (int r = 0; r < kRegisters; ++r) sum[j][r] += rows[r] * b[j];
    }
  }
  for (int j = 0; j < kColumns; ++j) {
    double* const column = product.c + j * product.ldc;
    for (int r = 0; r < kRegisters; ++r) {
      if (kInto == Into::subtract) load(old, column + r * kLanes), sum[j][r] = old - sum[j][r];
      store(column + r * kLanes, sum[j][r]);
    }
  }
}

// kColumns columns of C, `m` rows from `i` on. For few terms the loads and stores of C take the time, which wide ones
// across cache lines do not shorten.
template <Into kInto, int kColumns>
inline void multiplyColumns(const Product& product, int32_t i, int32_t m, int32_t j) {
  constexpr int32_t kWideRows = kWideRegisters * (sizeof(Wide) / sizeof(double));
  const bool deep = product.k >= 6;
  for (; deep && i + kWideRows <= m; i += kWideRows)
    multiplyTile<kInto, Wide, kWideRegisters, kColumns>(product.from(i, j));
  for (; i + 4 <= m; i += 4) multiplyTile<kInto, Pair, 2, kColumns>(product.from(i, j));
  if (i + 2 <= m) multiplyTile<kInto, Pair, 1, kColumns>(product.from(i, j)), i += 2;
  if (i < m) multiplyTile<kInto, double, 1, kColumns>(product.from(i, j));
}

template <Into kInto>
inline void multiplyTiles(int32_t m, int32_t n, const Product& product, bool lower) {
  int32_t j = 0;
  for (; j + 4 <= n; j += 4) multiplyColumns<kInto, 4>(product, lower ? j : 0, m, j);
  if (j + 2 <= n) multiplyColumns<kInto, 2>(product, lower ? j : 0, m, j), j += 2;
  if (j < n) multiplyColumns<kInto, 1>(product, lower ? j : 0, m, j);
}

// A block of C that stays in the cache while its sums run over k, in parts of kDepth, for which the same holds of A and
// B. 16 KB.
struct Block {
  static constexpr int32_t kHeight = 32, kWidth = 64, kDepth = 32;

  Block(int32_t height, int32_t width) : m(height), n(width) { std::fill_n(sums, kHeight * width, 0.0); }

  // Columns from `j` on.
  void add(int32_t j, int32_t width, int32_t k, const double* a, ptrdiff_t lda, const double* b, ptrdiff_t ldb) {
    for (int32_t p = 0; p < k; p += kDepth) {
      const int32_t depth = std::min(kDepth, k - p);
      multiplyTiles<Into::accumulate>(m, width,
                                      {depth, a + p * lda, lda, b + p * ldb, ldb, sums + j * kHeight, kHeight}, false);
    }
  }

  // The rows from `first` + column on; none are left out when that is negative.
  void subtractFrom(int32_t j, int32_t width, double* c, ptrdiff_t ldc, int32_t first) const {
    for (int32_t q = 0; q < width; ++q, c += ldc) {
      const double* const sum = sums + (j + q) * kHeight;
      for (int32_t i = std::max(first + q, 0); i < m; ++i) c[i] -= sum[i];
    }
  }

  int32_t m, n;
  double sums[kHeight * kWidth];
};

}  // namespace dax
