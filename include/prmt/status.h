/* Status codes of the PRMT_ functions: 0, or a small negative integer. DAX_ZurStatusToDaxAlgStatus converts them to
 * library codes; those below -29 become the general failure. A non-zero status of a callback is returned unchanged. */
#ifndef PRMT_STATUS_H
#define PRMT_STATUS_H

#include "../dax/api.h"

enum {
  PRMT_STS_OK = 0,
  PRMT_STS_FAILURE = -1,           /* a pivot below 2.220446049250313e-16: the matrix is not positive definite */
  PRMT_STS_NULL_POINTER = -21,     /* a required pointer is null */
  PRMT_STS_BUFFER_OVERFLOW = -22,  /* a size does not fit a signed 64-bit integer */
  PRMT_STS_BAD_PARAM = -26,        /* a count below 1, an index outside its matrix, shapes that do not fit */
  PRMT_STS_FULL = -30,             /* a sparse matrix has no room for another element */
  PRMT_STS_NOT_FINITE = -31,       /* the energy at the start is not a number, or infinite */
  PRMT_STS_BUFFER_TOO_SMALL = -32, /* the work buffer does not hold what the pattern of the matrix needs */
  PRMT_STS_DEGENERATE = -35        /* the data determine no answer, or more than one */
};

#endif
