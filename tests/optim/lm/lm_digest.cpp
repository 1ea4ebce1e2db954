#include <gtest/gtest.h>

#include "prmt.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// Residuals of basic operations alone: rational functions of the parameters.
int32_t rationalResiduals(const double* x, int32_t n, int32_t m, void*, double* r) {
  for (int32_t i = 0; i < m; ++i) {
    const double t = i * 0.25, a = x[i % n], b = x[(i * 7 + 3) % n];
    r[i] = (a + t) / (1 + b * b + t * t) - 0.3 + 0.1 * (i % 5);
  }
  return 0;
}
int32_t addStep(double* x, const double* step, int32_t n, void*) {
  for (int32_t j = 0; j < n; ++j) x[j] += step[j];
  return 0;
}
int32_t differences(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* jacobian) {
  std::vector<double> scratch(static_cast<size_t>(2 * (m + n)));
  return PRMT_JacNum_Process_f64(x, n, m, user, rationalResiduals, addStep, jacobian, scratch.data());
}

TEST(Digests, LeastSquares) {
  constexpr int32_t kN = 41, kM = 150;
  const PrmtLmFunctions functions{rationalResiduals, differences, addStep, 0};
  std::vector<uint8_t> buffer(1 << 22);
  Digest digest;
  int32_t user = 0;
  for (const int32_t variant : {0, 1, 2}) {
    PrmtLmParam param{1e-12, 0, 6, 1e-6, 0.01, 10, 0, 0};
    PrmtCgParam cg{1e-10, 100, 4, 0, 0};
    std::vector<double> x(kN + 2);
    for (int32_t j = 0; j < kN; ++j) x[static_cast<size_t>(j)] = 0.1 * j - 2;
    double* const outputs = x.data() + kN;
    uint64_t bytes = buffer.size();
    const auto run = [&] {
      if (variant == 0) {
        return PRMT_LM_Process_f64(x.data(), kN, kM, &functions, &user, &param, outputs, outputs + 1, buffer.data(),
                                   &bytes);
      }
      if (variant == 1) {
        return PRMT_LM_HUBER_Process_f64(x.data(), kN, kM, &functions, &user, &param, 0.2, outputs, outputs + 1,
                                         buffer.data(), &bytes);
      }
      return PRMT_LM_CG_Process_f64(x.data(), kN, kM, &functions, &user, &param, &cg, outputs, outputs + 1,
                                    buffer.data(), &bytes);
    };
    ASSERT_EQ(run(), 0);
    digest.add(x.data(), x.size() * sizeof(double));
  }
  for (int32_t k = 0; k < 200; ++k) {
    double twist[6], motion[16];
    for (int32_t i = 0; i < 6; ++i) twist[i] = ((k * 37 + i * 11) % 101 - 50) * (k % 4 == 0 ? 1e-3 : 0.03);
    PRMT_SE3_Exp_f64(twist, motion);
    PRMT_SE3_Update_f64(twist, twist);
    digest.add(motion, sizeof motion).add(twist, sizeof twist);
  }
  EXPECT_EQ(digest.value(), 0x170E66C992EA246Fu);
}

// A row of blocks of which each block of the second group links `reach` neighbours.
struct Row {
  static constexpr int32_t kSizeA = 3, kCountA = 70, kSizeB = 2, kCountB = 65, kN = kSizeA * kCountA + kSizeB * kCountB;

  explicit Row(int32_t reach) {
    for (int32_t j = 0; j < kCountB; ++j) {
      for (int32_t i = j; i < std::min(j + reach, kCountA); ++i) links.push_back(i);
      starts.push_back(static_cast<int32_t>(links.size()));
    }
  }
  static int32_t energy(const double* x, int32_t n, int32_t, void*, double* sum) {
    *sum = 0;
    for (int32_t j = 0; j < n; ++j) *sum += x[j] * x[j] / (1 + 0.01 * j);
    return 0;
  }
  static int32_t normal(const double* x, int32_t, int32_t, void*, PrmtHblk* h) {
    const int32_t side = kSizeA * kCountA;
    for (int32_t i = 0; i < side; ++i) {
      h->a[int64_t{i} * side + i] = 200 + 0.1 * (i % 7), h->rhsA[i] = -x[i];
      if (i > 0) h->a[int64_t{i} * side + i - 1] = 0.3 * (i % 5) - 0.7;
    }
    for (int32_t j = 0; j < kCountB; ++j) {
      const double block[] = {50 + 0.01 * j, 0, 0.25, 60};
      std::copy_n(block, 4, h->b + 4 * j);
      for (int32_t k = 0; k < kSizeB; ++k) h->rhsB[kSizeB * j + k] = -x[side + kSizeB * j + k];
    }
    const int32_t links = h->shape.linkStart[kCountB];
    for (int32_t k = 0; k < links * kSizeA * kSizeB; ++k) h->w[k] = 0.1 * (k * 37 % 23) - 1.1;
    return 0;
  }
  std::vector<int32_t> starts = {0}, links;
};

// The system of the first group sparse, and dense beyond the blocks of the cache.
TEST(Digests, TwoGroupsOfBlocks) {
  Digest digest;
  for (const int32_t reach : {3, 60}) {
    const Row row(reach);
    const PrmtHblkShape shape{Row::kSizeA,  Row::kCountA,      Row::kSizeB,
                              Row::kCountB, row.starts.data(), row.links.data()};
    const PrmtLmHblkFunctions functions{Row::energy, Row::normal, addStep, shape};
    uint64_t bytes = 0;
    ASSERT_EQ(PRMT_LM_HBLK_BufferSize_f64(Row::kN, 9, &shape, &bytes), 0);
    std::vector<uint8_t> buffer(bytes);
    std::vector<double> x(Row::kN);
    for (int32_t j = 0; j < Row::kN; ++j) x[static_cast<size_t>(j)] = 0.37 * (j % 11) - 1.3;
    PrmtLmParam param{0, 0, 5, 1e-6, 0.01, 10, 0, 0};
    double rmse = 0, norm = 0;
    int32_t user = 0;
    ASSERT_EQ(
        PRMT_LM_HBLK_Process_f64(x.data(), Row::kN, 9, &functions, &user, &param, &rmse, &norm, buffer.data(), &bytes),
        0);
    digest.add(x.data(), x.size() * sizeof(double));
  }
  EXPECT_EQ(digest.value(), 0xD7EA17B98C8F68DFu);
}

}  // namespace
}  // namespace dax::test
