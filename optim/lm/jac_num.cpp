#include "prmt/jac_num.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/sparse/msp.h"

namespace dax {
namespace {

constexpr double kDifference = 1e-6;  // error about 5e-7 |r''| + 2e-10 |r|

// Adds column j: (residuals at x (+) kDifference e_j - residuals at x) / kDifference.
int32_t addColumn(PrmtMsp* jacobian, int32_t j, const double* base, const double* moved) {
  for (int32_t i = 0; i < jacobian->rows; ++i) {
    const double difference = moved[i] - base[i];
    if (difference == 0.0) continue;
    PRMT_REQUIRE_OK(PRMT_MSP_AddEle_tpl_f64(jacobian, i, j, difference / kDifference));
  }
  return PRMT_STS_OK;
}

}  // namespace
}  // namespace dax

int32_t PRMT_JacNum_Process_f64(const double* x, int32_t n, int32_t m, void* user, PrmtResidualFunction residuals,
                                PrmtUpdateFunction update, PrmtMsp* jacobian, double* scratch) {
  DAX_REQUIRE(x && user && residuals && update && dax::isSet(jacobian) && scratch, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && m >= 1 && jacobian->rows == m && jacobian->cols == n, PRMT_STS_BAD_PARAM);
  double* const base = scratch;
  double* const moved = base + m;
  double* const point = moved + m;
  double* const step = point + n;
  std::copy_n(x, n, point);
  PRMT_REQUIRE_OK(residuals(point, n, m, user, base));
  for (int32_t j = 0; j < n; ++j) {
    std::copy_n(x, n, point);
    std::fill_n(step, n, 0.0);
    step[j] = dax::kDifference;
    PRMT_REQUIRE_OK(update(point, step, n, user));
    PRMT_REQUIRE_OK(residuals(point, n, m, user, moved));
    PRMT_REQUIRE_OK(dax::addColumn(jacobian, j, base, moved));
  }
  return PRMT_STS_OK;
}
