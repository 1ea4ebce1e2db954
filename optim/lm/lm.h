// Worker of the Huber variant.
#pragma once

#include "prmt/lm.h"

// Huber energy of m residuals; writes their weights: 1 for |r| <= threshold, else threshold / |r|.
extern "C" double PRMT_lm_huber_energy(const double* residuals, int32_t m, double threshold, double* weights);
