// Calibrates a camera from the corners of a board in ten views: focal lengths, centre, two distortion coefficients and
// the ten poses, 66 parameters, with a numeric Jacobian. Prints truth and estimate.
#include <prmt.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "grow_buffer.h"
#include "random.h"

namespace {

constexpr int kViews = 10, kColumns = 9, kRows = 7, kCorners = kColumns * kRows, kIntrinsics = 6;
constexpr double kSquare = 0.03, kNoise = 0.1;

struct Views {
  std::vector<double> seen;
  std::vector<double> scratch;
};

// x: fx fy cx cy k1 k2, then for each view the twist from board to camera.
void project(const double* x, double* to) {
  for (int view = 0; view < kViews; ++view) {
    double motion[16];
    PRMT_SE3_Exp_f64(x + kIntrinsics + 6 * view, motion);
    for (int corner = 0; corner < kCorners; ++corner) {
      const int column = corner % kColumns, row = corner / kColumns;
      const double board[2] = {kSquare * (column - 4), kSquare * (row - 3)};
      double p[3];
      for (int k = 0; k < 3; ++k) p[k] = motion[4 * k] * board[0] + motion[4 * k + 1] * board[1] + motion[4 * k + 3];
      const double u = p[0] / p[2], v = p[1] / p[2], q = u * u + v * v, stretch = 1 + q * (x[4] + q * x[5]);
      *to++ = x[0] * u * stretch + x[2];
      *to++ = x[1] * v * stretch + x[3];
    }
  }
}

int32_t residuals(const double* x, int32_t, int32_t m, void* user, double* r) {
  project(x, r);
  for (int32_t i = 0; i < m; ++i) r[i] -= static_cast<Views*>(user)->seen[size_t(i)];
  return 0;
}

int32_t update(double* x, const double* step, int32_t n, void*) {
  for (int k = 0; k < kIntrinsics; ++k) x[k] += step[k];
  for (int32_t k = kIntrinsics; k < n; k += 6) PRMT_SE3_Update_f64(x + k, step + k);
  return 0;
}

int32_t jacobian(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* to) {
  return PRMT_JacNum_Process_f64(x, n, m, user, residuals, update, to, static_cast<Views*>(user)->scratch.data());
}

}  // namespace

int main() {
  Random random(4);
  std::vector<double> truth = {1180, 1175, 642, 478, -0.21, 0.06};
  for (int view = 0; view < kViews; ++view) {
    const double twist[6] = {0.08 * random.normal(),    0.06 * random.normal(),    0.45 + 0.1 * random.uniform(),
                             random.between(-0.5, 0.5), random.between(-0.5, 0.5), random.between(-0.3, 0.3)};
    truth.insert(truth.end(), twist, twist + 6);
  }
  const auto n = int32_t(truth.size()), m = int32_t(2 * kViews * kCorners);
  Views views{std::vector<double>(size_t(m)), std::vector<double>(size_t(2 * (m + n)))};
  project(truth.data(), views.seen.data());
  for (double& value : views.seen) value += kNoise * random.normal();

  std::vector<double> x = truth;
  x[0] = x[1] = 1000, x[2] = 640, x[3] = 480, x[4] = x[5] = 0;
  for (size_t k = kIntrinsics; k < x.size(); ++k) x[k] += 0.03 * random.normal();
  const PrmtLmFunctions functions{residuals, jacobian, update, 0};
  PrmtLmParam param{};
  param.useDefaults = 1;
  double rmse = 0, norm = 0;
  GrowingBuffer buffer;
  const int32_t status = buffer.run([&](void* memory, uint64_t* bytes) {
    return PRMT_LM_Process_f64(x.data(), n, m, &functions, &views, &param, &rmse, &norm, memory, bytes);
  });
  if (status != 0) {
    std::fprintf(stderr, "calibrate_camera: the solver failed with %d\n", status);
    return 1;
  }
  std::printf("%d views of %d corners, noise %.2f pixels, RMSE %.4f\n\n%-4s %12s %12s %12s\n", kViews, kCorners, kNoise,
              rmse, "", "truth", "estimate", "error");
  const char* const names[kIntrinsics] = {"fx", "fy", "cx", "cy", "k1", "k2"};
  const double bounds[kIntrinsics] = {3, 3, 3, 3, 0.01, 0.1};
  bool good = rmse < 1.1 * kNoise;
  for (int k = 0; k < kIntrinsics; ++k) {
    const double error = x[size_t(k)] - truth[size_t(k)];
    std::printf("%-4s %12.5f %12.5f %12.5f\n", names[k], truth[size_t(k)], x[size_t(k)], error);
    good = good && std::fabs(error) < bounds[k];
  }
  std::printf("\n%s\n", good ? "calibrated" : "NOT calibrated");
  return good ? 0 : 1;
}
