/* How shapes and text are drawn: the pen that all of DAXI_Draw... take. */
#ifndef DAXI_STROKE_H
#define DAXI_STROKE_H

#include "../dax/status.h"
#include "point.h"

DAX_BEGIN_DECLS

enum { DAXI_JOIN_ROUND = 0, DAXI_JOIN_MITER = 1, DAXI_JOIN_BEVEL = 2 };

enum { DAXI_CAP_BUTT = 0, DAXI_CAP_ROUND = 1, DAXI_CAP_SQUARE = 2 };

/* A pen. 56 bytes. */
typedef struct DaxiStroke {
  double width;      /* pixels, 0.0009765625..2147483647, or 0, which fills closed shapes; default 1 */
  double miterLimit; /* 1..1000; default 4: a miter that is longer than so many widths becomes a bevel */
  double alpha;      /* opacity, 0..1; default 1 */
  int32_t join;      /* 0..2: DAXI_JOIN_ROUND, the default, to ..._BEVEL */
  int32_t cap;       /* 0..2: DAXI_CAP_BUTT, the default, to ..._SQUARE */
  int32_t antialias; /* 0 or 1; default 1 */
  int32_t color[3]; /* levels of the image's type, in the order of its channels; one channel has the first; default 0 */
  int64_t reserved; /* not read */
} DaxiStroke;

/* Fills in the defaults. stroke null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_StrokeDefault(DaxiStroke* stroke);

DAX_END_DECLS

#endif
