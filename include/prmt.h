/* Nonlinear least squares: Levenberg-Marquardt solvers, sparse matrices, rotations and rigid motions. */
#ifndef PRMT_H
#define PRMT_H

#include "prmt/lie.h"
#include "prmt/lm.h"
#include "prmt/msp.h"
#include "prmt/status.h"

#endif
