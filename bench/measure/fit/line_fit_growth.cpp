// How the line fit grows with its points, from 50 to 10000. Prints the table "points" of docs/performance.md.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "bench/measure/fit/line_points.h"
#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"
#include "daxi/line_fit.h"

namespace {

// The least of several fits, milliseconds; of a slow one, the only.
double milliseconds(int32_t count, double outliers, int32_t method) {
  const auto points = bench::linePoints(count, outliers);
  const auto n = static_cast<size_t>(count);
  uint64_t bytes = 0;
  bench::require(DAXI_LineFitRegreBufferSize_32f(count, &bytes));
  std::vector<double> buffer(bytes / sizeof(double) + 1);
  std::vector<uint8_t> inliers(n);
  std::vector<float> weights(n);
  DaxiLine line;
  float rms;
  // Least squares over all points begins too far away for a narrow threshold.
  const float threshold = method == DAXI_LINE_INIT_LEAST_SQUARES ? 1000 : 5;
  const LineFitCfg cfg = {method, DAXI_LINE_HUBER, 50, static_cast<int32_t>(count * outliers), threshold, 0, 0, 0};
  double best = INFINITY;
  for (int round = 0; round == 0 || (round < 5 && best * round < 3000); ++round) {
    best = std::min(best, bench::milliseconds([&] {
                      bench::require(DAXI_LineFitRegre_32f(points.data(), count, &cfg, &line, inliers.data(),
                                                           weights.data(), &rms, buffer.data()));
                    }));
  }
  return best;
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::wanted(argc, argv, "points")) return 2;
  bench::printHead({"points", "method 1 ms", "method 2 ms", "method 3 ms", "method 2, half outliers ms",
                    "method 3, half outliers ms"});
  for (const int32_t count : {50, 100, 200, 500, 1000, 2000, 5000, 10000}) {
    std::printf("| %d | %.3f | %.2f | %.2f |", count, milliseconds(count, 0.1, 1), milliseconds(count, 0.1, 2),
                milliseconds(count, 0.1, 3));
    if (count <= 2000) {
      std::printf(" %.2f", milliseconds(count, 0.5, 2));
    } else {
      std::printf(" –");
    }
    std::printf(" | %.2f |\n", milliseconds(count, 0.5, 3));
    std::fflush(stdout);
  }
}
