// Projection: sums of samples by profile value.
#pragma once

#include <cstdint>

namespace dax {

// Sums of samples and, with a mask, the number of samples in each; else `counts` and `valid` are null.
struct CaliperSums {
  int64_t* sums;
  int32_t* counts;
  uint8_t* valid;
};

}  // namespace dax

extern "C" {

// Project up to kBandRows rows: vertical adds to the sums of the columns, horizontal sets those of the rows.
void DAXI_CalipEdgeDetect_vert_projection(const uint16_t* patch, int32_t columns, int32_t rows,
                                          const dax::CaliperSums* to, int32_t isa);
void DAXI_CalipEdgeDetect_hor_projection(const uint16_t* patch, int32_t columns, int32_t rows,
                                         const dax::CaliperSums* to, int32_t isa);
void DAXI_CalipEdgeDetect_vert_projection_16s(const int32_t* patch, int32_t columns, int32_t rows,
                                              const dax::CaliperSums* to, int32_t isa);
void DAXI_CalipEdgeDetect_hor_projection_16s(const int32_t* patch, int32_t columns, int32_t rows,
                                             const dax::CaliperSums* to, int32_t isa);
}
