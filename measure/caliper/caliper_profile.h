// From region to profile and response: sampling, projection, filter.
#pragma once

#include "measure/caliper/caliper_buffer.h"
#include "measure/caliper/caliper_projection.h"
#include "measure/caliper/caliper_sample.h"

namespace dax {

// A measured region, the input of the edge search.
struct CaliperSignal {
  const float* profile;
  const float* response;
  const int32_t* counts;  // null, or 0 where no sample counts
  int32_t length;
  int32_t kernelLength;
};

template <class T>
CaliperSignal measureSignal(const CaliperImage<T>& image, const CaliperGrid& grid, uint32_t halfWidth,
                            const CaliperBuffer& at, void* buffer, int32_t isa);

}  // namespace dax

// Samples and projects rows of an annulus.
extern "C" void DAXI_CalipEdgeDetectAnnulus_projection(const dax::CaliperImage<uint8_t>* image,
                                                       const dax::CaliperGrid* grid, int32_t firstRow, int32_t rows,
                                                       uint16_t* patch, const dax::CaliperSums* to, int32_t isa);
