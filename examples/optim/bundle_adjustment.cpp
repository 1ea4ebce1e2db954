// Adjusts a bundle of 20 cameras and 3000 points: by Schur complement, by conjugate gradients, and, with 10 % gross
// outliers, by plain least squares and with the Huber function. Prints a table.
#include <chrono>
#include <cstdio>

#include "bundle.h"
#include "grow_buffer.h"

namespace {

double seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

enum class Method { kSchur, kConjugateGradients, kCholesky, kHuber };

// Adjusts and prints a row; returns the error of the points.
double adjust(Bundle& bundle, Method method, const char* name) {
  std::vector<double> x = bundle.start;
  const int32_t n = bundle.parameters(), m = bundle.residualCount();
  const PrmtLmFunctions sparse{Bundle::residuals, Bundle::jacobian, Bundle::update, bundle.elements()};
  const PrmtLmHblkFunctions blocks{Bundle::energy, Bundle::blocks, Bundle::update, bundle.shape()};
  PrmtLmParam param{1e-8, 0.1, 100, 1e-9, 1e-3, 10, 0, 0};
  PrmtCgParam cg{1e-6, 200, 3, 0};
  double rmse = 0, norm = 0;
  GrowingBuffer buffer;
  const double begin = seconds();
  const int32_t status = buffer.run([&](void* memory, uint64_t* bytes) {
    switch (method) {
      case Method::kSchur:
        return PRMT_LM_HBLK_Process_f64(x.data(), n, m, &blocks, &bundle, &param, &rmse, &norm, memory, bytes);
      case Method::kConjugateGradients:
        return PRMT_LM_CG_Process_f64(x.data(), n, m, &sparse, &bundle, &param, &cg, &rmse, &norm, memory, bytes);
      case Method::kCholesky:
        return PRMT_LM_Process_f64(x.data(), n, m, &sparse, &bundle, &param, &rmse, &norm, memory, bytes);
      default:
        return PRMT_LM_HUBER_Process_f64(x.data(), n, m, &sparse, &bundle, &param, 1.5, &rmse, &norm, memory, bytes);
    }
  });
  const double time = seconds() - begin;
  if (status != 0) {
    std::fprintf(stderr, "%s: the solver failed with %d\n", name, status);
    return 1e9;
  }
  const double error = bundle.pointError(x.data());
  std::printf("%-36s %8.4f %12.5f %10.5f %9.1f %8.2f\n", name, rmse, bundle.pointError(bundle.start.data()), error,
              double(buffer.bytes()) / 1e6, time);
  return error;
}

}  // namespace

int main() {
  Bundle clean(20, 3000, 0), spoilt(20, 3000, 0.1);
  std::printf("%d cameras, %d points, %zu observations, noise %.1f pixels\n\n", clean.cameras, clean.points,
              clean.link.size(), Bundle::kNoise);
  std::printf("%-36s %8s %12s %10s %9s %8s\n", "", "RMSE", "error before", "after", "MB", "seconds");
  const double schur = adjust(clean, Method::kSchur, "blocks, Schur complement");
  const double cg = adjust(clean, Method::kConjugateGradients, "conjugate gradients");
  const double plain = adjust(spoilt, Method::kCholesky, "10 % outliers, least squares");
  const double huber = adjust(spoilt, Method::kHuber, "10 % outliers, Huber");
  const bool good = schur < 0.006 && std::fabs(cg - schur) < 1e-4 && huber < 2 * schur && plain > 10 * schur;
  std::printf("\n%s\n", good ? "Huber recovers the truth, least squares does not" : "NOT as expected");
  return good ? 0 : 1;
}
