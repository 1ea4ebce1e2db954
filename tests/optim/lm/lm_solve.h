// A run of the generic variant, in guarded memory of exactly the queried size.
#pragma once

#include <gtest/gtest.h>

#include "tests/optim/lm/least_squares.h"
#include "tests/support/guarded_buffer.h"

namespace dax::test {

inline PrmtLmParam settings(double tolerance = 1e-6, int32_t iterations = 500) {
  return {tolerance, tolerance, iterations, 1e-6, 0.01, 10.0, 0, 0};
}

struct Solve {
  explicit Solve(LeastSquares& problem, PrmtLmParam param = settings(), Guard guard = Guard::after) : x(problem.start) {
    uint64_t bytes = 0;
    EXPECT_EQ(PRMT_LM_BufferSize_f64(problem.n, problem.m, 0, &bytes), 0);
    GuardedBuffer<uint8_t> buffer(bytes, guard);
    const PrmtLmFunctions functions = functionsOf();
    status = PRMT_LM_Process_f64(x.data(), problem.n, problem.m, &functions, &problem, &param, &rmse, &norm,
                                 buffer.data(), &bytes);
  }
  Vector x;
  double rmse = -1, norm = -1;
  int32_t status = 0;
};

}  // namespace dax::test
