#include "dax/status.h"

DaxStatus DAX_ZurStatusToDaxAlgStatus(int32_t zurStatus) {
  if (zurStatus == 0) return DAX_STS_OK;
  if (zurStatus < -29 || zurStatus > 1) return DAX_STS_FAILURE;
  // -k gives code k - 1; +1 takes the code after the last of those.
  const int32_t n = zurStatus == 1 ? 0x1d : -zurStatus - 1;
  return DAX_STS_FAILURE + static_cast<DaxStatus>(n);
}

namespace {

struct StatusText {
  DaxStatus status;
  const char* text;
};

constexpr const char* kReserved = "reserved code, which no function returns";

constexpr StatusText kStatusTexts[] = {
    {DAX_STS_OK, "success"},
    {DAX_STS_FAILURE,
     "general failure: a numeric step failed (a matrix is not positive definite, say), a mode is unknown, or a size "
     "in a file is wrong"},
    {DAX_STS_BAD_COUNT, "count below 1"},
    {0x1000000b, kReserved},
    {0x1000000c, kReserved},
    {0x1000000d, kReserved},
    {0x1000000e, kReserved},
    {0x1000000f, kReserved},
    {0x10000010, kReserved},
    {0x10000016, kReserved},
    {0x10000017, kReserved},
    {0x10000018, kReserved},
    {0x1000001d, "platform layer's code 1, which no function returns"},
    {DAX_STS_MEMTAB_NULL_BASE, "memory table entry has no block"},
    {DAX_STS_MEMTAB_ALIGNMENT, "memory table entry has another alignment"},
    {DAX_STS_MEMTAB_TOO_SMALL, "memory table entry smaller than its alignment, or name longer than 63 characters"},
    {DAX_STS_MEMTAB_SIZE, "memory table entry's size is no multiple of its alignment"},
    {DAX_STS_MEMTAB_MISALIGNED, "memory table block is not aligned"},
    {DAX_STS_IMAGE_FORMAT, "image format not accepted"},
    {DAX_STS_IMAGE_SIZE,
     "image width or height below 1, odd where chroma is subsampled, or above the limit of a reader"},
    {DAX_STS_IMAGE_STEP, "image row step smaller than a row"},
    {DAX_STS_IMAGE_NULL_PLANE, "image plane pointer is null"},
    {DAX_STS_PARAM_INDEX, "parameter index out of range or not registered"},
    {DAX_STS_PARAM_VALUE, "parameter value out of its registered range, or region that reaches beyond the image"},
    {DAX_STS_PARAM_LIST, "parameter list length outside 1..256"},
    {DAX_STS_NULL_POINTER, "required pointer is null"},
    {DAX_STS_BUFFER_OVERFLOW, "work-buffer size does not fit 64 bits"},
    {DAX_STS_BAD_PARAM, "operation parameter out of range, or size below 1 in a query of a buffer"},
    {DAX_STS_BAD_SIZE, "region size, or number of points, out of range"},
    {DAX_STS_BAD_STEP, "row step smaller than a row"},
    {DAX_STS_BAD_ISA, "instruction-set code is negative"},
    {DAX_STS_CFG_VERSION, "configuration record of another version"},
    {DAX_STS_FILE_OPEN, "file could not be opened"},
    {DAX_STS_FILE_READ, "file read failed or came up short"},
    {DAX_STS_FILE_WRITE, "file write failed"},
    {DAX_STS_UNSUPPORTED_METHOD, "configuration names an unsupported method"},
    {DAX_STS_NO_MEMORY, "memory could not be obtained"},
    {DAX_STS_BAD_ROTATED_RECT, "rotated-rectangle region is invalid"},
    {DAX_STS_DATA_RANGE, "data value outside the permitted range"},
    {DAX_STS_DEGENERATE, "degenerate numeric case"},
    {DAX_STS_INVERSION, "matrix inversion failed"},
    {DAX_STS_LEAST_SQUARES, "least-squares solve failed"},
    {DAX_STS_LU, "LU decomposition failed"},
    {0x10000103, "no board with at least 4 corners"},
    {0x10000203, "boxes, or segment and plane, do not meet"},
    {0x10000204, "line is parallel to the plane"},
    {0x1000030e, "rotation is not orthonormal"},
    // Solvers and sparse matrices (prmt/status.h), beyond the codes that map to those above.
    {static_cast<DaxStatus>(-30), "sparse matrix has no room for another element"},
    {static_cast<DaxStatus>(-31), "energy at the start is not finite"},
    {static_cast<DaxStatus>(-32), "work buffer too small for the pattern of the matrix"},
};

struct StatusRange {
  DaxStatus first;
  DaxStatus last;
  const char* text;
};

constexpr StatusRange kStatusRanges[] = {
    {0x10000102, 0x10000114, "calibration failed"},
    {0x10000200, 0x10000204, "3D geometry has no result"},
    {0x10000300, 0x1000030e, "3D fit or rule check failed"},
};

}  // namespace

const char* DAX_GetStatusText(DaxStatus status) {
  const auto small = static_cast<int32_t>(status);
  if (small < 0 && small >= -29) status = DAX_ZurStatusToDaxAlgStatus(small);
  for (const StatusText& entry : kStatusTexts) {
    if (entry.status == status) return entry.text;
  }
  for (const StatusRange& range : kStatusRanges) {
    if (status >= range.first && status <= range.last) return range.text;
  }
  return "unknown status";
}
