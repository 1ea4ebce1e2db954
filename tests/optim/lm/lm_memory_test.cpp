// What the solvers take of memory: nothing but the caller's buffer, and that of its size.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/optim/lm/classic_functions.h"
#include "tests/optim/lm/lm_solve.h"

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define DAX_TEST_ALLOCATOR 1
namespace {
int allocations = 0;
bool allocatorFails = false;
}  // namespace
extern "C" void* __libc_malloc(size_t);
// An allocator that can be told to fail.
extern "C" void* malloc(size_t bytes) {
  ++allocations;
  return allocatorFails ? nullptr : __libc_malloc(bytes);
}
#endif

namespace dax::test {
namespace {

#if DAX_TEST_ALLOCATOR
// (x - 1, y - 2, x y - 2): callbacks of all variants that need no memory.
struct Small {
  static void evaluate(const double* x, double* r) { r[0] = x[0] - 1, r[1] = x[1] - 2, r[2] = x[0] * x[1] - 2; }
  static int32_t residuals(const double* x, int32_t, int32_t, void*, double* r) { return evaluate(x, r), 0; }
  static int32_t update(double* x, const double* step, int32_t, void*) { return x[0] += step[0], x[1] += step[1], 0; }
  static int32_t jacobian(const double* x, int32_t, int32_t, void*, PrmtMsp* to) {
    const double rows[3][2] = {{1, 0}, {0, 1}, {x[1], x[0]}};
    return PRMT_MSP_AddBlk_tpl_f64(to, 0, 0, rows[0], 3, 2, 2);
  }
  static int32_t energy(const double* x, int32_t, int32_t, void*, double* to) {
    double r[3];
    evaluate(x, r);
    return *to = 0.5 * (r[0] * r[0] + r[1] * r[1] + r[2] * r[2]), 0;
  }
  // A = (1 + y^2, x y; x y, 1 + x^2) and -J^T r.
  static int32_t blocks(const double* x, int32_t, int32_t, void*, PrmtHblk* h) {
    double r[3];
    evaluate(x, r);
    h->a[0] = 1 + x[1] * x[1], h->b[0] = 1 + x[0] * x[0], h->w[0] = x[0] * x[1];
    h->rhsA[0] = -(r[0] + x[1] * r[2]), h->rhsB[0] = -(r[1] + x[0] * r[2]);
    return 0;
  }
  static int32_t normal(const double* x, int32_t, double lambda, void* user, PrmtMsp* to, double* b) {
    double a, d, w;
    PrmtHblk h{{}, &a, &d, &w, b, b + 1};
    blocks(x, 2, 3, user, &h);
    const double rows[4] = {a + lambda, w, w, d + lambda};
    return PRMT_MSP_AddBlk_tpl_f64(to, 0, 0, rows, 2, 2, 2);
  }
};

TEST(Lm, AllocatesNothing) {
  const PrmtLmFunctions plain{Small::residuals, Small::jacobian, Small::update, 0};
  const PrmtLmHmspFunctions hmsp{Small::energy, Small::normal, Small::update, 0};
  const int32_t starts[2] = {0, 1}, link = 0;
  const PrmtLmHblkFunctions hblk{Small::energy, Small::blocks, Small::update, {1, 1, 1, 1, starts, &link}};
  std::vector<uint8_t> buffer(1 << 16);
  for (int variant = 0; variant < 5; ++variant) {
    double x[2] = {3, -4}, error, norm;
    int32_t user = 0, status = -1;
    PrmtLmParam param = settings(1e-12);
    PrmtCgParam cg{1e-12, 50, 1, 0};
    uint64_t bytes = buffer.size();
    void* const memory = buffer.data();
    allocations = 0;
    allocatorFails = true;
    switch (variant) {
      case 0:
        status = PRMT_LM_Process_f64(x, 2, 3, &plain, &user, &param, &error, &norm, memory, &bytes);
        break;
      case 1:
        status = PRMT_LM_HUBER_Process_f64(x, 2, 3, &plain, &user, &param, 1, &error, &norm, memory, &bytes);
        break;
      case 2:
        status = PRMT_LM_CG_Process_f64(x, 2, 3, &plain, &user, &param, &cg, &error, &norm, memory, &bytes);
        break;
      case 3:
        status = PRMT_LM_HMSP_Process_f64(x, 2, 3, &hmsp, &user, &param, &error, &norm, memory, &bytes);
        break;
      default:
        status = PRMT_LM_HBLK_Process_f64(x, 2, 3, &hblk, &user, &param, &error, &norm, memory, &bytes);
    }
    allocatorFails = false;
    EXPECT_EQ(status, 0) << variant;
    EXPECT_EQ(allocations, 0) << variant;
    EXPECT_NEAR(x[0], 1, 1e-6) << variant;
    EXPECT_NEAR(x[1], 2, 1e-6) << variant;
  }
}
#endif

// A buffer that is too small fails with a size that gets further, in a few steps, and less than the worst case does.
TEST(Lm, SmallBuffers) {
  LeastSquares problem{60, 59, Vector(60, 1.0),
                       [](const double* x, double* r) {
                         for (int i = 0; i < 59; ++i) r[i] = x[i] - 2 * x[i + 1];
                       },
                       [](const double*, int32_t i, int32_t j) { return i == j       ? 1
                                                                        : j == i + 1 ? -2
                                                                                     : 0; }};
  const PrmtLmFunctions functions = functionsOf(118);
  uint64_t bytes = 0, most = 0;
  ASSERT_EQ(PRMT_LM_BufferSize_f64(60, 59, 118, &most), 0);
  int32_t attempts = 0;
  for (;; ++attempts) {
    ASSERT_LE(attempts, 7);
    GuardedBuffer<uint8_t> buffer(bytes);
    Vector x = problem.start;
    PrmtLmParam param = settings();
    double rmse, norm;
    const uint64_t had = bytes;
    const int32_t status =
        PRMT_LM_Process_f64(x.data(), 60, 59, &functions, &problem, &param, &rmse, &norm, buffer.data(), &bytes);
    if (status == 0) break;
    ASSERT_EQ(status, PRMT_STS_BUFFER_TOO_SMALL);
    ASSERT_GT(bytes, had);
    ASSERT_EQ(x, problem.start);
  }
  EXPECT_LT(bytes, most / 2);
}

TEST(Lm, JacobianWithoutRoom) {
  LeastSquares problem = classicFunctions()[2].problem;
  const PrmtLmFunctions functions = functionsOf(9);  // 10 are needed
  std::vector<uint8_t> buffer(1 << 16);
  uint64_t bytes = buffer.size();
  PrmtLmParam param = settings();
  double rmse, norm;
  Vector x = problem.start;
  EXPECT_EQ(PRMT_LM_Process_f64(x.data(), 4, 6, &functions, &problem, &param, &rmse, &norm, buffer.data(), &bytes),
            PRMT_STS_FULL);
  EXPECT_EQ(x, problem.start);
}

}  // namespace
}  // namespace dax::test
