// The variants agree with each other where they solve the same problem, and each keeps the rules of all.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/optim/lm/classic_functions.h"
#include "tests/optim/lm/least_squares.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

PrmtLmParam tight(int32_t iterations = 200) {
  return {1e-13, 1e-15, iterations, 1e-9, 1e-3, 10.0, 0, 0};
}

// Points on a plane seen by cameras that measure bearings and distances: parameters of cameras first (x, y, turn), then of
// points (x, y). Camera i sees point j unless (i + j) % 4 == 0; residuals come point by point.
struct Scene {
  static constexpr int32_t kCameras = 5, kPoints = 9;
  explicit Scene(double noise = 0.01, double outliers = 0) {
    Random random(11);
    const auto uniform = [&] { return (random.below(20001) - 10000) / 10000.0; };
    for (int32_t i = 0; i < kCameras; ++i) truth.insert(truth.end(), {3.0 * i, uniform(), 0.2 * uniform()});
    for (int32_t j = 0; j < kPoints; ++j) truth.insert(truth.end(), {1.5 * j, 6 + 2 * uniform()});
    starts.push_back(0);
    for (int32_t j = 0; j < kPoints; ++j) {
      for (int32_t i = 0; i < kCameras; ++i) {
        if ((i + j) % 4 == 0) continue;
        cameras.push_back(i);
        points.push_back(j);
      }
      starts.push_back(static_cast<int32_t>(cameras.size()));
    }
    const auto links = static_cast<int32_t>(cameras.size());
    problem.n = 3 * kCameras + 2 * kPoints;
    problem.m = 2 * links + 3;
    seen.assign(static_cast<size_t>(problem.m), 0.0);
    Vector exact(static_cast<size_t>(problem.m));
    predict(truth.data(), exact.data());
    for (size_t k = 0; k < exact.size(); ++k) seen[k] = exact[k] + noise * uniform();
    for (size_t k = 0; k + 3 < exact.size(); k += 7) seen[k] += outliers * (k % 2 ? 1 : -1);
    problem.start = truth;
    for (double& value : problem.start) value += 0.1 * uniform();
    problem.residuals = [this](const double* x, double* r) {
      predict(x, r);
      for (int32_t k = 0; k < problem.m; ++k) r[k] -= seen[static_cast<size_t>(k)];
    };
    problem.derivative = [this](const double* x, int32_t i, int32_t j) { return derivative(x, i, j); };
  }
  Scene(const Scene&) = delete;

  // Camera and point of a link in camera coordinates, and three residuals that hold the first camera.
  void predict(const double* x, double* r) const {
    for (size_t k = 0; k < cameras.size(); ++k) {
      const double* const c = x + 3 * cameras[k];
      const double* const p = x + 3 * kCameras + 2 * points[k];
      r[2 * k] = std::cos(c[2]) * (p[0] - c[0]) + std::sin(c[2]) * (p[1] - c[1]);
      r[2 * k + 1] = -std::sin(c[2]) * (p[0] - c[0]) + std::cos(c[2]) * (p[1] - c[1]);
    }
    for (size_t k = 0; k < 3; ++k) r[2 * cameras.size() + k] = 100 * x[k];
  }

  double derivative(const double* x, int32_t i, int32_t j) const {
    const auto k = static_cast<size_t>(i / 2);
    if (k >= cameras.size() || i == problem.m - 1) return i - static_cast<int32_t>(2 * cameras.size()) == j ? 100 : 0;
    const int32_t camera = 3 * cameras[k], point = 3 * kCameras + 2 * points[k];
    const double c = std::cos(x[camera + 2]), s = std::sin(x[camera + 2]);
    const double dx = x[point] - x[camera], dy = x[point + 1] - x[camera + 1];
    const double by[2][5] = {{-c, -s, -s * dx + c * dy, c, s}, {s, -c, -c * dx - s * dy, -s, c}};
    if (j >= camera && j < camera + 3) return by[i % 2][j - camera];
    if (j >= point && j < point + 2) return by[i % 2][3 + j - point];
    return 0;
  }

  PrmtHblkShape shape() const { return {3, kCameras, 2, kPoints, starts.data(), cameras.data()}; }

  LeastSquares problem;
  Vector truth, seen;
  std::vector<int32_t> starts, cameras, points;
};

int32_t fillBlocks(const double* x, int32_t n, int32_t m, void* user, PrmtHblk* h) {
  LeastSquares& problem = problemOf(user);
  if (problem.fails()) return problem.failure;
  Vector r(static_cast<size_t>(m));
  problem.residuals(x, r.data());
  const int32_t side = h->shape.sizeA * h->shape.countA, size = h->shape.sizeB;
  const auto product = [&](int32_t j, int32_t k) {
    double sum = 0;
    for (int32_t i = 0; i < m; ++i) sum += problem.derivative(x, i, j) * problem.derivative(x, i, k);
    return sum;
  };
  for (int32_t j = 0; j < n; ++j) {
    double* const rhs = j < side ? h->rhsA + j : h->rhsB + (j - side);
    for (int32_t i = 0; i < m; ++i) *rhs -= problem.derivative(x, i, j) * r[static_cast<size_t>(i)];
  }
  for (int32_t i = 0; i < side; ++i) {
    for (int32_t j = 0; j <= i; ++j) h->a[i * side + j] += product(i, j);
  }
  for (int32_t b = 0; b < h->shape.countB; ++b) {
    const int32_t column = side + b * size;
    for (int32_t i = 0; i < size; ++i) {
      for (int32_t j = 0; j <= i; ++j) h->b[(b * size + i) * size + j] += product(column + i, column + j);
    }
    for (int32_t k = h->shape.linkStart[b]; k < h->shape.linkStart[b + 1]; ++k) {
      for (int32_t i = 0; i < h->shape.sizeA; ++i) {
        for (int32_t j = 0; j < size; ++j) {
          h->w[(k * h->shape.sizeA + i) * size + j] += product(h->shape.linkA[k] * h->shape.sizeA + i, column + j);
        }
      }
    }
  }
  return 0;
}

enum class Variant { generic, huber, cg, hmsp, hblk };
constexpr Variant kVariants[] = {Variant::generic, Variant::huber, Variant::cg, Variant::hmsp, Variant::hblk};

struct Outcome {
  int32_t status;
  Vector x;
  double error, norm;
};

struct Options {
  PrmtLmParam param = tight();
  double threshold = 1e9;
  PrmtHblkShape shape = {};
};

// Runs a variant in guarded memory of exactly the queried size.
Outcome run(Variant variant, LeastSquares& problem, const Options& options, Guard guard = Guard::after) {
  Outcome out{0, problem.start, -1, -1};
  const int32_t n = problem.n, m = problem.m;
  PrmtLmParam param = options.param;
  const PrmtLmFunctions functions = functionsOf();
  const PrmtLmHmspFunctions hmsp{callEnergy, callNormal, callUpdate, 0};
  const PrmtLmHblkFunctions hblk{callEnergy, fillBlocks, callUpdate, options.shape};
  PrmtCgParam cg{1e-15, 1000, 3, 0, 0};
  uint64_t bytes = 0;
  switch (variant) {
    case Variant::generic:
      EXPECT_EQ(PRMT_LM_BufferSize_f64(n, m, 0, &bytes), 0);
      break;
    case Variant::huber:
      EXPECT_EQ(PRMT_LM_HUBER_BufferSize_f64(n, m, 0, &bytes), 0);
      break;
    case Variant::cg:
      EXPECT_EQ(PRMT_LM_CG_BufferSize_f64(n, m, 0, &bytes), 0);
      break;
    case Variant::hmsp:
      EXPECT_EQ(PRMT_LM_HMSP_BufferSize_f64(n, m, 0, &bytes), 0);
      break;
    case Variant::hblk:
      EXPECT_EQ(PRMT_LM_HBLK_BufferSize_f64(n, m, &options.shape, &bytes), 0);
      break;
  }
  GuardedBuffer<uint8_t> buffer(bytes, guard);
  double* const x = out.x.data();
  switch (variant) {
    case Variant::generic:
      out.status =
          PRMT_LM_Process_f64(x, n, m, &functions, &problem, &param, &out.error, &out.norm, buffer.data(), &bytes);
      break;
    case Variant::huber:
      out.status = PRMT_LM_HUBER_Process_f64(x, n, m, &functions, &problem, &param, options.threshold, &out.error,
                                             &out.norm, buffer.data(), &bytes);
      break;
    case Variant::cg:
      out.status = PRMT_LM_CG_Process_f64(x, n, m, &functions, &problem, &param, &cg, &out.error, &out.norm,
                                          buffer.data(), &bytes);
      break;
    case Variant::hmsp:
      out.status =
          PRMT_LM_HMSP_Process_f64(x, n, m, &hmsp, &problem, &param, &out.error, &out.norm, buffer.data(), &bytes);
      break;
    case Variant::hblk:
      out.status =
          PRMT_LM_HBLK_Process_f64(x, n, m, &hblk, &problem, &param, &out.error, &out.norm, buffer.data(), &bytes);
      break;
  }
  return out;
}

// The first iterations of all variants are the same to rounding, and so are their minima.
TEST(LmVariants, AgreeStepByStep) {
  Scene scene;
  Options options;
  options.shape = scene.shape();
  for (const int32_t iterations : {1, 2, 3, 200}) {
    options.param = tight(iterations);
    const Outcome generic = run(Variant::generic, scene.problem, options);
    ASSERT_EQ(generic.status, 0);
    for (const Variant variant : kVariants) {
      SCOPED_TRACE(testing::Message() << "variant " << static_cast<int>(variant) << ", " << iterations
                                      << " iterations");
      const Outcome other = run(variant, scene.problem, options, Guard::before);
      ASSERT_EQ(other.status, 0);
      const double rmse = variant == Variant::hmsp ? std::sqrt(2 * other.error / scene.problem.m) : other.error;
      EXPECT_NEAR(rmse, generic.error, 1e-12);
      for (size_t j = 0; j < other.x.size(); ++j) EXPECT_NEAR(other.x[j], generic.x[j], 1e-10);
      EXPECT_TRUE(variant != Variant::huber || other.x == generic.x);  // to the last bit
      if (iterations == 200) continue;
      EXPECT_NEAR(other.norm, generic.norm, 1e-9 * (1 + generic.norm));
    }
    if (iterations < 200) continue;
    EXPECT_LT(generic.error, 0.01);
    for (size_t j = 0; j < generic.x.size(); ++j) EXPECT_NEAR(generic.x[j], scene.truth[j], 0.03);
  }
}

TEST(LmVariants, NormalEquationsOnClassicalFunctions) {
  for (ClassicFunction& each : classicFunctions()) {
    SCOPED_TRACE(each.name);
    Options options;
    options.param = {1e-6, 1e-6, 8, 1e-6, 0.01, 10.0, 0, 0};
    const Outcome generic = run(Variant::generic, each.problem, options),
                  hmsp = run(Variant::hmsp, each.problem, options);
    ASSERT_EQ(hmsp.status, generic.status);
    for (size_t j = 0; j < hmsp.x.size(); ++j) {
      EXPECT_NEAR(hmsp.x[j], generic.x[j],
                  (std::string(each.name) == "Meyer" ? 1e-3 : 1e-12) * (1 + std::fabs(generic.x[j])));
    }
  }
}

TEST(LmVariants, HuberForgivesOutliers) {
  Scene scene(0.01, 3);
  Options options;
  options.threshold = 0.02;
  const Outcome plain = run(Variant::generic, scene.problem, options),
                huber = run(Variant::huber, scene.problem, options);
  ASSERT_EQ(huber.status, 0);
  double plainError = 0, huberError = 0;
  for (size_t j = 0; j < scene.truth.size(); ++j) {
    plainError = std::max(plainError, std::fabs(plain.x[j] - scene.truth[j]));
    huberError = std::max(huberError, std::fabs(huber.x[j] - scene.truth[j]));
  }
  EXPECT_GT(plainError, 0.3);
  EXPECT_LT(huberError, 0.05);
}

// Without a second group the whole system goes to the least-squares solver; a second group without links is solved alone.
TEST(LmVariants, BlocksWithoutPartners) {
  LeastSquares problem = classicFunctions()[2].problem;
  Options options;
  options.shape = {2, 2, 1, 0, nullptr, nullptr};
  const Outcome whole = run(Variant::hblk, problem, options);
  ASSERT_EQ(whole.status, 0);
  for (const double value : whole.x) EXPECT_NEAR(value, 1, 1e-6);

  LeastSquares apart{3,
                     3,
                     {5, 6, 7},
                     [](const double* x, double* r) {
                       for (int i = 0; i < 3; ++i) r[i] = x[i] * x[i] - i - 1;
                     },
                     [](const double* x, int32_t i, int32_t j) { return i == j ? 2 * x[i] : 0; }};
  const int32_t none[3] = {0, 0, 0}, nobody[1] = {0};
  options.shape = {1, 1, 1, 2, none, nobody};
  const Outcome alone = run(Variant::hblk, apart, options);
  ASSERT_EQ(alone.status, 0);
  for (size_t i = 0; i < 3; ++i) EXPECT_NEAR(alone.x[i], std::sqrt(i + 1.0), 1e-6);
}

TEST(LmVariants, CallbacksFailAtEveryCall) {
  Scene scene;
  Options options;
  options.shape = scene.shape();
  options.param.maxIterations = 4;
  for (const Variant variant : kVariants) {
    scene.problem.failingCall = -1;
    scene.problem.calls = 0;
    ASSERT_EQ(run(variant, scene.problem, options).status, 0);
    const int32_t calls = scene.problem.calls;
    ASSERT_GE(calls, 9);
    for (scene.problem.failingCall = 0; scene.problem.failingCall < calls; ++scene.problem.failingCall) {
      scene.problem.calls = 0;
      const Outcome failed = run(variant, scene.problem, options);
      ASSERT_EQ(failed.status, scene.problem.failure) << static_cast<int>(variant) << " " << scene.problem.failingCall;
      ASSERT_EQ(failed.x, scene.problem.start);
    }
    scene.problem.failingCall = -1;
    const Outcome polite = run(variant, scene.problem, options);
    scene.problem.rude = true;
    EXPECT_EQ(run(variant, scene.problem, options).x, polite.x) << static_cast<int>(variant);
    scene.problem.rude = false;
  }
}

TEST(LmVariants, HmspPrintsByteForByte) {
  LeastSquares problem{
      1, 1, {4}, [](const double* x, double* r) { r[0] = x[0]; }, [](const double*, int32_t, int32_t) { return 1; }};
  Options options;
  options.param = {0, 0, 2, 1, 1, 10, 1, 0};
  testing::internal::CaptureStdout();
  const Outcome outcome = run(Variant::hmsp, problem, options);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "**********************PRGO_OPTI_START_HMSP**********************\n"
            "iter|lambda     |energy_init|energy_post|d_energy   |dx_norm    \n"
            "0000|+1.000e+00|+8.000e+00|+2.000e+00|-6.000e+00|+2.000e+00\n"
            "iter|lambda     |energy_init|energy_post|d_energy   |dx_norm    \n"
            "0001|+1.000e+00|+2.000e+00|+5.000e-01|-1.500e+00|+1.000e+00\n"
            "***********************PRGO_OPTI_END_HMSP***********************\n");
  EXPECT_NEAR(outcome.error, 0.5, 1e-15);
}

TEST(LmVariants, Checks) {
  Scene scene;
  Options options;
  const int32_t n = scene.problem.n, m = scene.problem.m;
  const int32_t backwards[3] = {0, 2, 1}, twice[3] = {0, 2, 2}, same[2] = {1, 1}, late[3] = {1, 1, 1}, far[2] = {0, 2};
  const int32_t forward[3] = {0, 2, 1};
  GuardedBuffer<int32_t> lastLink(1);
  *lastLink.data() = 0;
  uint64_t bytes = 0;
  const struct {
    const char* name;
    PrmtHblkShape shape;
    int32_t n, status;
  } shapes[] = {
      {"good", scene.shape(), n, 0},
      {"other n", scene.shape(), n + 1, -26},
      {"no links", {1, 2, 1, 2, nullptr, same}, 4, -21},
      {"no block size", {0, 2, 1, 0, nullptr, nullptr}, 2, -26},
      {"large block", {65, 1, 1, 0, nullptr, nullptr}, 65, -26},
      {"large second block", {1, 1, 17, 1, twice, same}, 18, -26},
      {"negative count", {1, 2, 1, -1, nullptr, nullptr}, 1, -26},
      {"starts go back", {1, 2, 1, 2, backwards, far}, 4, -26},
      {"starts go back behind the last link", {1, 2, 1, 2, forward, lastLink.data()}, 4, -26},
      {"start late", {1, 2, 1, 2, late, same}, 4, -26},
      {"a link twice", {1, 2, 1, 2, twice, same}, 4, -26},
      {"link outside", {1, 2, 1, 2, twice, far}, 4, -26},
      {"too many", {64, INT32_MAX, 16, INT32_MAX, twice, same}, 4, -26},
  };
  for (const auto& each : shapes)
    EXPECT_EQ(PRMT_LM_HBLK_BufferSize_f64(each.n, m, &each.shape, &bytes), each.status) << each.name;

  options.shape = scene.shape();
  PrmtCgParam cg{};
  cg.useDefaults = 1;
  const PrmtLmFunctions functions = functionsOf();
  std::vector<uint8_t> buffer(1 << 20);
  double rmse, norm;
  Vector x = scene.problem.start;
  PrmtLmParam param = tight();
  bytes = buffer.size();
  EXPECT_EQ(PRMT_LM_CG_Process_f64(x.data(), n, m, &functions, &scene.problem, &param, &cg, &rmse, &norm, buffer.data(),
                                   &bytes),
            0);
  EXPECT_EQ(cg.maxIterations, 500);
}

}  // namespace
}  // namespace dax::test
