/* Status codes of the PRGO_ functions: 0, or a small negative integer. DAX_ZurStatusToDaxAlgStatus converts them to
 * library codes; those below -29 become the general failure. A non-zero status of a callback is returned unchanged. */
#ifndef PRGO_STATUS_H
#define PRGO_STATUS_H

#include "../dax/api.h"

enum {
  PRGO_STS_OK = 0,
  PRGO_STS_NULL_POINTER = -21,     /* a required pointer is null */
  PRGO_STS_BUFFER_OVERFLOW = -22,  /* a size does not fit a signed 64-bit integer */
  PRGO_STS_BAD_PARAM = -26,        /* an argument or a field is outside its range, an id is unknown or taken */
  PRGO_STS_FULL = -30,             /* the graph has no room for another vertex or edge */
  PRGO_STS_NOT_FINITE = -31,       /* a number is not finite, or the energy at the start */
  PRGO_STS_BUFFER_TOO_SMALL = -32, /* the work buffer is too small; the need is stored */
  PRGO_STS_SINGULAR = -33,         /* the normal equations have no unique solution */
  PRGO_STS_NOT_CONVERGED = -34,    /* the limit of iterations was reached; the results are those of the last step */
  PRGO_STS_BAD_TEXT = -36          /* a line of a graph file is wrong */
};

#endif
