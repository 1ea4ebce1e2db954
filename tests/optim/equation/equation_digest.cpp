#include <cmath>
#include <vector>

#include "prmt.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// Multiples of 1/16.
std::vector<double> sixteenths(size_t count, uint64_t seed) {
  Random random(seed);
  std::vector<double> values(count);
  for (double& value : values) value = (random.below(4001) - 2000) / 16.0;
  return values;
}

void add(Digest& digest, const std::vector<double>& values) {
  digest.add(values.data(), values.size() * sizeof(double));
}

int32_t cubic(double x, void*, double* value) {
  *value = (x * x - 2) * x - 5;
  return 0;
}

TEST(Digests, RootsAndSearches) {
  Digest digest;
  for (uint64_t seed = 0; seed < 200; ++seed) {
    const std::vector<double> p = sixteenths(13, seed);
    PrmtRealRoots roots{};
    for (auto* const function : {PRMT_EQ_Quadratic_f64, PRMT_EQ_Cubic_f64, PRMT_EQ_Quartic_f64}) {
      ASSERT_EQ(function(p.data(), &roots), DAX_STS_OK);
      digest.add(&roots, sizeof roots);
    }
    std::vector<double> parts(36), work(4000);
    int32_t counts[2];
    ASSERT_EQ(PRMT_EQ_Roots_f64(p.data(), 12, &parts[0], &parts[12], &parts[24], counts, counts + 1, work.data()),
              DAX_STS_OK);
    add(digest, parts);
  }
  std::vector<double> found(4);
  ASSERT_EQ(PRMT_EQ_BrentRoot_f64(2, 3, cubic, nullptr, 0, 100, &found[0], &found[1]), DAX_STS_OK);
  ASSERT_EQ(PRMT_EQ_BrentMin_f64(0, 3, cubic, nullptr, 1e-9, 100, &found[2], &found[3]), DAX_STS_OK);
  add(digest, found);
  EXPECT_EQ(digest.value(), 0x84495C2DA304EE38u);
}

TEST(Digests, Curves) {
  Digest digest;
  const int32_t nx = 9, ny = 7, count = 40;
  std::vector<double> x(nx), y(ny), work(4000), slopes(nx), grid(3 * nx * ny), values(count);
  for (int32_t i = 0; i < nx; ++i) x[size_t(i)] = i + 0.3 * (i % 3);
  for (int32_t j = 0; j < ny; ++j) y[size_t(j)] = 2 * j - 0.7 * (j % 2);
  const std::vector<double> z = sixteenths(nx * ny, 5), atX = sixteenths(count, 6), atY = sixteenths(count, 7);
  for (const int32_t condition : {0, 1, 2}) {
    const PrmtSplineEnds ends{condition, 1, -2};
    ASSERT_EQ(PRMT_EQ_Spline1_f64(x.data(), z.data(), nx, &ends, slopes.data(), work.data()), DAX_STS_OK);
    add(digest, slopes);
    ASSERT_EQ(
        PRMT_EQ_Interpolate1_f64(x.data(), z.data(), slopes.data(), nx, atX.data(), count, condition, values.data()),
        DAX_STS_OK);
    add(digest, values);
    ASSERT_EQ(PRMT_EQ_Spline2_f64(x.data(), nx, y.data(), ny, z.data(), nx, &ends, nullptr, grid.data(), work.data()),
              DAX_STS_OK);
    add(digest, grid);
  }
  ASSERT_EQ(PRMT_EQ_Akima1_f64(x.data(), z.data(), nx, slopes.data(), work.data()), DAX_STS_OK);
  add(digest, slopes);
  ASSERT_EQ(PRMT_EQ_Akima2_f64(x.data(), nx, y.data(), ny, z.data(), nx, grid.data(), work.data()), DAX_STS_OK);
  add(digest, grid);
  ASSERT_EQ(PRMT_EQ_Interpolate2_f64(x.data(), nx, y.data(), ny, z.data(), nx, grid.data(), atX.data(), atY.data(),
                                     count, 1, 0, values.data()),
            DAX_STS_OK);
  add(digest, values);
  const std::vector<double> breaks = {-125, -20, 3.5, 70, 125};
  std::vector<double> coefficients(9);
  PrmtRange range;
  double rms[2];
  ASSERT_EQ(
      PRMT_EQ_PolyFit_f64(atX.data(), atY.data(), nullptr, count, 8, coefficients.data(), &range, rms, work.data()),
      DAX_STS_OK);
  add(digest, coefficients);
  ASSERT_EQ(PRMT_EQ_PolyValue_f64(coefficients.data(), 8, &range, atY.data(), count, 1, values.data()), DAX_STS_OK);
  add(digest, values);
  ASSERT_EQ(PRMT_EQ_BSplineFit_f64(atX.data(), atY.data(), nullptr, count, breaks.data(), 5, 3, coefficients.data(),
                                   rms + 1, work.data()),
            DAX_STS_OK);
  add(digest, coefficients);
  ASSERT_EQ(PRMT_EQ_BSplineValue_f64(breaks.data(), 5, 3, coefficients.data(), atY.data(), count, 0, values.data()),
            DAX_STS_OK);
  add(digest, values);
  digest.add(rms, sizeof rms);
  EXPECT_EQ(digest.value(), 0xC24D2E80FB4ACAEDu);
}

}  // namespace
}  // namespace dax::test
