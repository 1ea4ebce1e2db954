#include "measure/caliper/caliper_projection.h"

#include <type_traits>

#include "frame/dispatch.h"
#include "measure/caliper/caliper_projection_neon.h"
#include "measure/caliper/caliper_projection_portable.h"

namespace dax {
namespace {

template <class Sample>
void addColumns(const Sample* patch, int32_t columns, int32_t rows, int64_t* sums, [[maybe_unused]] int32_t isa) {
  if constexpr (std::is_same_v<Sample, uint16_t>) {
    if (usesNeon(isa)) return neon::addColumns(patch, columns, rows, sums);
  }
  portable::addColumns(patch, columns, rows, sums);
}

template <class Sample>
int64_t sumOf(const Sample* row, int32_t columns, [[maybe_unused]] int32_t isa) {
  if constexpr (std::is_same_v<Sample, uint16_t>) {
    if (usesNeon(isa)) return neon::sumOf(row, columns);
  }
  return portable::sumOf(row, columns);
}

template <class Sample>
void projectColumns(const Sample* patch, int32_t columns, int32_t rows, const CaliperSums& to, int32_t isa) {
  addColumns(patch, columns, rows, to.sums, isa);
  if (to.valid) portable::addColumns(to.valid, columns, rows, to.counts);
}

template <class Sample>
void projectRows(const Sample* patch, int32_t columns, int32_t rows, const CaliperSums& to, int32_t isa) {
  for (int32_t k = 0; k < rows; ++k) {
    to.sums[k] = sumOf(rowAt(patch, columns, k), columns, isa);
    if (to.valid) to.counts[k] = static_cast<int32_t>(portable::sumOf(rowAt(to.valid, columns, k), columns));
  }
}

}  // namespace
}  // namespace dax

void DAXI_CalipEdgeDetect_vert_projection(const uint16_t* patch, int32_t columns, int32_t rows,
                                          const dax::CaliperSums* to, int32_t isa) {
  dax::projectColumns(patch, columns, rows, *to, isa);
}

void DAXI_CalipEdgeDetect_hor_projection(const uint16_t* patch, int32_t columns, int32_t rows,
                                         const dax::CaliperSums* to, int32_t isa) {
  dax::projectRows(patch, columns, rows, *to, isa);
}

void DAXI_CalipEdgeDetect_vert_projection_16s(const int32_t* patch, int32_t columns, int32_t rows,
                                              const dax::CaliperSums* to, int32_t isa) {
  dax::projectColumns(patch, columns, rows, *to, isa);
}

void DAXI_CalipEdgeDetect_hor_projection_16s(const int32_t* patch, int32_t columns, int32_t rows,
                                             const dax::CaliperSums* to, int32_t isa) {
  dax::projectRows(patch, columns, rows, *to, isa);
}
