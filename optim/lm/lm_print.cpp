#include <cstdio>

#include "prmt/lm.h"

void PRMT_LM_print_iter_info(int32_t iter, double lambda, double rmseInit, double rmsePost, double drmse,
                             double dxnorm) {
  std::printf(
      "iter "
      "|lambda     "
      "|rmse_init  "
      "|rmse_post  "
      "|drmse      "
      "|dxnorm     "
      "\n");
  std::printf("%04d |%+6.3e |%+6.3e |%+6.3e |%+6.3e |%+6.3e\n", iter, lambda, rmseInit, rmsePost, drmse, dxnorm);
}
