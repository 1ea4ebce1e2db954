/* Status codes: what every call returns.
 *
 * 0 is success; every failure is 0x10000000 + n. A call that fails one of its checks has written nothing. Checks run in
 * a fixed order, and the first failure is the one returned: pointers, region size, steps, parameters, instruction-set
 * code, unless a family's header states an order of its own. */
#ifndef DAX_STATUS_H
#define DAX_STATUS_H

#include "api.h"

DAX_BEGIN_DECLS

typedef uint32_t DaxStatus;

enum {
  DAX_STS_OK = 0,
  DAX_STS_FAILURE = 0x10000000,          /* a numeric step failed, or a mode is unknown */
  DAX_STS_BAD_COUNT = 0x10000001,        /* a count below 1 */
  DAX_STS_MEMTAB_NULL_BASE = 0x10000002, /* memory table: an entry of non-zero size has no block */
  DAX_STS_MEMTAB_ALIGNMENT = 0x10000003, /* memory table: alignment differs from the one asked for */
  DAX_STS_MEMTAB_TOO_SMALL = 0x10000004, /* memory table: entry smaller than its alignment; a name over 63 characters */
  DAX_STS_MEMTAB_SIZE = 0x10000005,      /* memory table: size is no multiple of the alignment */
  DAX_STS_MEMTAB_MISALIGNED = 0x10000006,  /* memory table: block address is not aligned */
  DAX_STS_IMAGE_FORMAT = 0x10000007,       /* image record: format code not accepted */
  DAX_STS_IMAGE_SIZE = 0x10000008,         /* image record: width or height below 1, odd, or over a reader's limit */
  DAX_STS_IMAGE_STEP = 0x10000009,         /* image record: row step too small */
  DAX_STS_IMAGE_NULL_PLANE = 0x1000000a,   /* image record: plane pointer is null */
  DAX_STS_PARAM_INDEX = 0x10000011,        /* parameter index outside 1..256, or not registered */
  DAX_STS_PARAM_VALUE = 0x10000012,        /* parameter value outside its registered range */
  DAX_STS_PARAM_LIST = 0x10000013,         /* parameter list length outside 1..256 */
  DAX_STS_NULL_POINTER = 0x10000014,       /* a required pointer is null */
  DAX_STS_BUFFER_OVERFLOW = 0x10000015,    /* a work-buffer size does not fit a signed 64-bit integer */
  DAX_STS_BAD_PARAM = 0x10000019,          /* an operation parameter is outside its range */
  DAX_STS_BAD_SIZE = 0x1000001a,           /* region below the operation's minimum, or too large for it */
  DAX_STS_BAD_STEP = 0x1000001b,           /* row step smaller than a row */
  DAX_STS_BAD_ISA = 0x1000001c,            /* negative instruction-set code */
  DAX_STS_CFG_VERSION = 0x10000020,        /* configuration record of another version */
  DAX_STS_FILE_OPEN = 0x10000025,          /* a file could not be opened */
  DAX_STS_FILE_READ = 0x10000026,          /* a file read failed or came up short */
  DAX_STS_FILE_WRITE = 0x10000027,         /* a file write failed */
  DAX_STS_UNSUPPORTED_METHOD = 0x1000002a, /* configuration names an unsupported method */
  DAX_STS_NO_MEMORY = 0x1000002b,          /* memory could not be obtained */
  DAX_STS_BAD_ROTATED_RECT = 0x1000002d,   /* rotated-rectangle region is invalid */
  DAX_STS_DATA_RANGE = 0x10000032,         /* a data value lies outside the permitted range */
  DAX_STS_DEGENERATE = 0x10000033,         /* degenerate numeric case: null vector, negative variance, zero divisor */
  DAX_STS_INVERSION = 0x10000037,          /* a matrix inversion failed */
  DAX_STS_LEAST_SQUARES = 0x10000038,      /* a least-squares solve failed */
  DAX_STS_LU = 0x10000039                  /* an LU decomposition failed */
};

/* Maps a status of the platform layer (the ZUR_ functions: 0, or a small negative code) to a library status:
 * 0 to 0, 1 to 0x1000001d, -k to 0x10000000 + k - 1 for k in 1..29, everything else to 0x10000000. Thread-safe. */
DAX_API DaxStatus DAX_ZurStatusToDaxAlgStatus(int32_t zurStatus);

/* One English sentence fragment for a status ("row step smaller than a row"); never null, valid for the life of the
 * process. Knows the small negative codes of the platform layer and of the solvers too, cast to DaxStatus; a code of
 * two causes names both. Codes without an entry give "unknown status". Thread-safe. */
DAX_API const char* DAX_GetStatusText(DaxStatus status);

DAX_END_DECLS

#endif
