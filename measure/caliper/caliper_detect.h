// The workers of calipers: signal of a region, then edges or pairs.
#pragma once

#include <algorithm>

#include "measure/caliper/caliper_edges.h"
#include "measure/caliper/caliper_pairs.h"

// The worker of 8-bit images and single edges. The signal is copied to `profile` unless that is null.
extern "C" void _DAXI_CalipEdgeDetect_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                             const CaliperEdgeCfg* cfg, CaliperEdgeResult* result,
                                             CaliperProfile* profile, void* buffer, int32_t isa);

namespace dax {

inline void copySignal(const CaliperSignal& signal, CaliperProfile& to) {
  std::copy_n(signal.profile, signal.length, to.profile);
  std::copy_n(signal.response, signal.length, to.response);
  to.length = signal.length;
  to.kernelLength = signal.kernelLength;
}

template <class T, class Cfg, class Result>
void detect(const CaliperImage<T>& image, const CaliperGrid& grid, const Cfg& cfg, Result& result,
            CaliperProfile* profile, void* buffer, int32_t isa) {
  const CaliperBuffer at(grid.columns, grid.rows, sizeof(CaliperSample<T>));
  const CaliperSignal signal = measureSignal(image, grid, cfg.filterHalfWidth, at, buffer, isa);
  if (profile) copySignal(signal, *profile);
  extract(signal, grid, cfg, result, at, buffer);
}

// Calls the worker for the pixel type and the configuration.
template <class T, class Cfg, class Result>
void runWorker(const CaliperImage<T>& image, const CaliperGrid& grid, const Cfg& cfg, Result& result,
               CaliperProfile* profile, void* buffer, int32_t isa) {
  if constexpr (std::is_same_v<T, uint8_t> && std::is_same_v<Cfg, CaliperEdgeCfg>) {
    _DAXI_CalipEdgeDetect_8u_C1R(&image, &grid, &cfg, &result, profile, buffer, isa);
  } else {
    detect(image, grid, cfg, result, profile, buffer, isa);
  }
}

}  // namespace dax
