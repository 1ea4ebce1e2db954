// The generic variant, and what all variants share.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "tests/optim/lm/classic_functions.h"
#include "tests/optim/lm/least_squares.h"
#include "tests/optim/lm/lm_oracle.h"
#include "tests/optim/lm/lm_solve.h"
#include "tests/support/guarded_buffer.h"

namespace dax::test {
namespace {

// Captures standard output.
class Captured {
 public:
  Captured() { testing::internal::CaptureStdout(); }
  std::string text() {
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
  }
};

TEST(Lm, ClassicalFunctions) {
  for (ClassicFunction& each : classicFunctions()) {
    SCOPED_TRACE(each.name);
    const bool hard = std::string(each.name) == "Meyer" || std::string(each.name) == "Brown badly scaled";
    Solve run(each.problem, settings(1e-15, 5000));
    ASSERT_EQ(run.status, 0);
    for (size_t j = 0; j < run.x.size(); ++j) {
      const double tolerance = std::string(each.name) == "Powell singular"
                                   ? 1e-3
                                   : (hard ? 1e-5 : 1e-8) * std::fabs(each.solution[j]) + 1e-8;
      EXPECT_NEAR(run.x[j], each.solution[j], tolerance) << j;
    }
  }
}

// The same iterations as the description, with analytic derivatives and with differences, as the prints tell.
TEST(Lm, FollowsTheDescription) {
  for (ClassicFunction& each : classicFunctions()) {
    for (const bool numeric : {false, true}) {
      SCOPED_TRACE(testing::Message() << each.name << (numeric ? ", by differences" : ""));
      LeastSquares problem = each.problem;
      if (numeric) problem.derivative = nullptr;
      // Rounding takes over in the long run of these; the first iterations agree.
      const bool hard = std::string(each.name) == "Meyer" || std::string(each.name) == "Brown badly scaled";
      PrmtLmParam param = settings(1e-6, hard ? 3 : 500);
      const oracle::Minimum expected = oracle::minimise(problem, param);
      param.verbose = 1;
      Captured captured;
      Solve run(problem, param);
      const std::string printed = captured.text();
      ASSERT_EQ(run.status, 0);
      EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 2 * static_cast<int64_t>(expected.rows.size()));
      EXPECT_NEAR(run.rmse, expected.rmse, 1e-6 + (hard ? 1e-3 : 1e-6) * run.rmse);
      for (size_t j = 0; j < run.x.size(); ++j) {
        EXPECT_NEAR(run.x[j], expected.x[j], (hard ? 1e-3 : 1e-6) * (1 + std::fabs(run.x[j]))) << j;
      }
    }
  }
}

// A problem whose every number is exact: one parameter, halved residual.
LeastSquares line() {
  return {
      1, 1, {4}, [](const double* x, double* r) { r[0] = x[0]; }, [](const double*, int32_t, int32_t) { return 1; }};
}

TEST(Lm, PrintsByteForByte) {
  LeastSquares problem = line();
  PrmtLmParam param{0, 0, 2, 1, 1, 10, 1, 0};  // steps of -x / 2
  Captured captured;
  Solve run(problem, param);
  EXPECT_EQ(captured.text(),
            "iter |lambda     |rmse_init  |rmse_post  |drmse      |dxnorm     \n"
            "0000 |+1.000e+00 |+4.000e+00 |+2.000e+00 |-2.000e+00 |+2.000e+00\n"
            "iter |lambda     |rmse_init  |rmse_post  |drmse      |dxnorm     \n"
            "0001 |+1.000e+00 |+2.000e+00 |+1.000e+00 |-1.000e+00 |+1.000e+00\n");
  EXPECT_NEAR(run.x[0], 1, 1e-15);
  EXPECT_NEAR(run.rmse, 1, 1e-15);
  EXPECT_NEAR(run.norm, 1, 1e-15);
  param.verbose = 0;
  Captured silent;
  Solve(problem, param);
  EXPECT_EQ(silent.text(), "");
}

TEST(Lm, Settings) {
  LeastSquares problem = line();
  PrmtLmParam param{};
  param.useDefaults = 1;
  Solve defaults(problem, param);
  EXPECT_EQ(defaults.status, 0);
  EXPECT_LT(std::fabs(defaults.x[0]), 1e-5);
  // The caller's record is rewritten.
  uint64_t bytes = 1 << 16;
  std::vector<uint8_t> buffer(bytes);
  const PrmtLmFunctions functions = functionsOf();
  double x = 4, rmse, norm;
  param = {9, 9, 9, 9, 9, 9, 0, 1};
  ASSERT_EQ(PRMT_LM_Process_f64(&x, 1, 1, &functions, &problem, &param, &rmse, &norm, buffer.data(), &bytes), 0);
  EXPECT_EQ(param.stepTolerance, 1e-6);
  EXPECT_EQ(param.energyTolerance, 1e-6);
  EXPECT_EQ(param.maxIterations, 500);
  EXPECT_EQ(param.smallestDamping, 1e-6);
  EXPECT_EQ(param.initialDamping, 0.01);
  EXPECT_EQ(param.dampingFactor, 10);
  EXPECT_EQ(param.useDefaults, 1);

  // However few iterations are asked for, one is made; zeros and NaN neither hang nor spoil x.
  const double nan = std::nan("");
  const struct {
    PrmtLmParam param;
    int32_t status;
    double x;
  } cases[] = {{{0, 0, 1, 1, 1, 10, 0, 0}, 0, 2},
               {{0, 0, 0, 1, 1, 10, 0, 0}, 0, 2},
               {{0, 0, -7, 1, 1, 10, 0, 0}, 0, 2},
               {{0, 0, 3, 1, 1, 10, 0, 0}, 0, 0.5},
               {{}, 0, 0},
               {{nan, nan, 3, 1, 1, 10, 0, 0}, 0, 0.5},
               {{0, 0, 3, 1, nan, 10, 0, 0}, -1, 4},
               {{0, 0, 3, 1, -1, 10, 0, 0}, -1, 4},
               {{2, 0, 30, 1, 1, 10, 0, 0}, 0, 2},
               {{0, 6, 30, 1, 1, 10, 0, 0}, 0, 2},
               {{0, 0, 30, 3, 1, 10, 0, 0}, 0, 4 * 0.5 * std::pow(0.75, 29)}};
  for (const auto& each : cases) {
    Solve run(problem, each.param);
    EXPECT_EQ(run.status, each.status) << &each - cases;
    EXPECT_NEAR(run.x[0], each.x, 1e-12) << &each - cases;
  }
}

// A residual that ignores the parameter: the tie is accepted, and ends the loop.
TEST(Lm, TiesAreAccepted) {
  LeastSquares problem{
      1, 1, {3}, [](const double*, double* r) { r[0] = 2; }, [](const double*, int32_t, int32_t) { return 1; }};
  Solve run(problem, settings(1e-6, 50));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.rmse, 2);
  EXPECT_NE(run.x[0], 3);
  EXPECT_EQ(problem.calls, 4);  // residuals, Jacobian, update, residuals
}

// Steps into NaN are rejected and shortened until they are good; what never gets good leaves x alone.
TEST(Lm, NotANumber) {
  LeastSquares wall{1,
                    1,
                    {1},
                    [](const double* x, double* r) { r[0] = std::sqrt(x[0] - 0.5); },
                    [](const double* x, int32_t, int32_t) { return 0.5 / std::sqrt(x[0] - 0.5); }};
  Solve near(wall);
  EXPECT_EQ(near.status, 0);
  EXPECT_GE(near.x[0], 0.5);
  EXPECT_LT(near.rmse, 0.7);

  LeastSquares trap{1,
                    1,
                    {1},
                    [](const double* x, double* r) { r[0] = x[0] == 1 ? 5 : NAN; },
                    [](const double*, int32_t, int32_t) { return 1; }};
  trap.update = [](double* x, const double* step) { x[0] += step[0] - 1; };
  Solve rejected(trap, settings(0, 2000));  // lambda grows beyond all bounds
  EXPECT_EQ(rejected.status, 0);
  EXPECT_EQ(rejected.x[0], 1);
  EXPECT_EQ(rejected.rmse, 0);
  EXPECT_EQ(rejected.norm, 0);

  for (const double value : {std::nan(""), HUGE_VAL}) {
    LeastSquares bad{
        1, 1, {1}, [=](const double*, double* r) { r[0] = value; }, [](const double*, int32_t, int32_t) { return 1; }};
    EXPECT_EQ(Solve(bad).status, PRMT_STS_NOT_FINITE);
    LeastSquares slope{
        1, 1, {1}, [](const double*, double* r) { r[0] = 1; }, [=](const double*, int32_t, int32_t) { return value; }};
    Solve run(slope);
    EXPECT_EQ(run.status, std::isnan(value) ? PRMT_STS_FAILURE : PRMT_STS_OK);
    EXPECT_EQ(run.x[0], 1);
  }
  LeastSquares lost = line();
  lost.residuals = [](const double*, double* r) { r[0] = 1; };
  lost.update = [](double* x, const double*) { x[0] = NAN; };
  EXPECT_EQ(Solve(lost).x[0], 4);
}

// Every call of a callback fails once: its status comes back and x is as it was.
TEST(Lm, CallbacksFailAtEveryCall) {
  for (const bool numeric : {false, true}) {
    LeastSquares problem = classicFunctions()[4].problem;
    if (numeric) problem.derivative = nullptr;
    Solve whole(problem);
    ASSERT_EQ(whole.status, 0);
    const int32_t calls = problem.calls;
    ASSERT_GT(calls, 20);
    for (int32_t k = 0; k < calls; ++k) {
      problem.calls = 0;
      problem.failingCall = k;
      Solve run(problem);
      ASSERT_EQ(run.status, problem.failure) << k;
      ASSERT_EQ(run.x, problem.start) << k;
    }
  }
}

// Callbacks may keep what the residuals took long to compute: the Jacobian is asked for at their last point.
TEST(Lm, JacobianFollowsResiduals) {
  LeastSquares problem = classicFunctions()[0].problem;
  Vector last;
  int32_t others = 0;
  const auto residuals = problem.residuals;
  problem.residuals = [&](const double* x, double* r) { last.assign(x, x + 2), residuals(x, r); };
  const auto derivative = problem.derivative;
  problem.derivative = [&](const double* x, int32_t i, int32_t j) {
    others += !std::equal(last.begin(), last.end(), x);
    return derivative(x, i, j);
  };
  EXPECT_EQ(Solve(problem).status, 0);  // with rejected steps on the way
  EXPECT_EQ(others, 0);
}

// An angle that wraps: the solver never adds a step itself.
TEST(Lm, StepsGoThroughTheUpdate) {
  const double goal = 3.0, pi = 3.14159265358979324;
  LeastSquares problem{1,
                       2,
                       {-3.0},
                       [=](const double* x, double* r) {
                         r[0] = std::cos(x[0]) - std::cos(goal), r[1] = std::sin(x[0]) - std::sin(goal);
                       },
                       [](const double* x, int32_t i, int32_t) { return i == 0 ? -std::sin(x[0]) : std::cos(x[0]); }};
  problem.update = [=](double* x, const double* step) {
    x[0] += step[0];
    if (x[0] < -pi) x[0] += 2 * pi;
    if (x[0] > pi) x[0] -= 2 * pi;
  };
  EXPECT_NEAR(Solve(problem, settings(1e-12)).x[0], goal, 1e-9);
}

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
  uint64_t bytes = 0, max = 0;
  ASSERT_EQ(PRMT_LM_BufferSize_f64(60, 59, 118, &max), 0);
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
  EXPECT_LT(bytes, max / 2);
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
