#include "measure/caliper/caliper_profile.h"

#include <algorithm>

namespace dax {
namespace {

template <class Sample>
void project(const Sample* patch, const CaliperGrid& grid, int32_t rows, const CaliperSums& to, int32_t isa) {
  if constexpr (std::is_same_v<Sample, uint16_t>) {
    const auto run = grid.alongColumns ? DAXI_CalipEdgeDetect_vert_projection : DAXI_CalipEdgeDetect_hor_projection;
    run(patch, grid.columns, rows, &to, isa);
  } else {
    const auto run =
        grid.alongColumns ? DAXI_CalipEdgeDetect_vert_projection_16s : DAXI_CalipEdgeDetect_hor_projection_16s;
    run(patch, grid.columns, rows, &to, isa);
  }
}

template <class T>
void sampleBand(const CaliperImage<T>& image, const CaliperGrid& grid, int32_t firstRow, int32_t rows,
                CaliperSample<T>* patch, const CaliperSums& to, int32_t isa) {
  if constexpr (std::is_same_v<T, uint8_t>) {
    if (grid.shape == CaliperShape::kAnnulus) {
      return DAXI_CalipEdgeDetectAnnulus_projection(&image, &grid, firstRow, rows, patch, &to, isa);
    }
    const auto copy =
        grid.shape == CaliperShape::kBox ? _DAXI_CaliperBoxCopyBLV1_8u_C1R : DAXI_CalipEdgeDetect_RhomboidCopyBL_8u_C1R;
    copy(&image, &grid, firstRow, rows, patch, to.valid, isa);
  } else {
    _DAXI_CaliperBoxCopyBLV1_16s_C1R(&image, &grid, firstRow, rows, patch, to.valid, isa);
  }
  project(patch, grid, rows, to, isa);
}

// A value without samples takes that of the nearest value that has some, of two equally near ones the one before. All
// stay 0 where no value has a sample.
void fillGaps(const int32_t* counts, int32_t n, float* profile) {
  for (int32_t i = 0; i < n; ++i) {
    if (counts[i] > 0) continue;
    const int32_t first = i;
    while (i < n && counts[i] == 0) ++i;
    for (int32_t k = first; k < i; ++k) {
      const bool fromBefore = first > 0 && (i == n || k - (first - 1) <= i - k);
      if (fromBefore) profile[k] = profile[first - 1];
      if (!fromBefore && i < n) profile[k] = profile[i];
    }
  }
}

constexpr double kLevels = 256;  // units of a sample per grey level

void makeProfile(const CaliperSums& from, int32_t n, int32_t across, float* profile) {
  const double scale = 1.0 / (kLevels * across);
  for (int32_t i = 0; i < n; ++i) {
    const auto sum = static_cast<double>(from.sums[i]);
    if (!from.counts) {
      profile[i] = static_cast<float>(sum * scale);
    } else {
      profile[i] = from.counts[i] > 0 ? static_cast<float>(sum * (1.0 / (kLevels * from.counts[i]))) : 0.0f;
    }
  }
  if (from.counts) fillGaps(from.counts, n, profile);
}

template <class T>
CaliperSums projectRegion(const CaliperImage<T>& image, const CaliperGrid& grid, const CaliperBuffer& at, void* buffer,
                          int32_t isa) {
  const int32_t n = grid.length();
  const CaliperSums all = {at.sums.in(buffer), image.mask ? at.counts.in(buffer) : nullptr,
                           image.mask ? at.valid.in(buffer) : nullptr};
  std::fill_n(all.sums, n, 0);
  if (all.counts) std::fill_n(all.counts, n, 0);
  auto* const patch = reinterpret_cast<CaliperSample<T>*>(at.patch.in(buffer));
  for (int32_t row = 0; row < grid.rows; row += kBandRows) {
    const int32_t rows = std::min(kBandRows, grid.rows - row), offset = grid.alongColumns ? 0 : row;
    const CaliperSums band = {all.sums + offset, all.counts ? all.counts + offset : nullptr, all.valid};
    sampleBand(image, grid, row, rows, patch, band, isa);
  }
  return all;
}

}  // namespace

template <class T>
CaliperSignal measureSignal(const CaliperImage<T>& image, const CaliperGrid& grid, uint32_t halfWidth,
                            const CaliperBuffer& at, void* buffer, int32_t isa) {
  const int32_t n = grid.length(), across = grid.alongColumns ? grid.rows : grid.columns;
  const CaliperSums sums = projectRegion(image, grid, at, buffer, isa);
  float *const profile = at.profile.in(buffer), *const response = at.response.in(buffer);
  makeProfile(sums, n, across, profile);
  const int32_t kernelLength =
      _DAXI_Caliper_dog_filter_32f(profile, n, halfWidth, at.kernel.in(buffer), at.extended.in(buffer), response, isa);
  return {profile, response, sums.counts, n, kernelLength};
}

template CaliperSignal measureSignal(const CaliperImage<uint8_t>&, const CaliperGrid&, uint32_t, const CaliperBuffer&,
                                     void*, int32_t);
template CaliperSignal measureSignal(const CaliperImage<int16_t>&, const CaliperGrid&, uint32_t, const CaliperBuffer&,
                                     void*, int32_t);

}  // namespace dax

void DAXI_CalipEdgeDetectAnnulus_projection(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                            int32_t firstRow, int32_t rows, uint16_t* patch, const dax::CaliperSums* to,
                                            int32_t isa) {
  _DAXI_CaliperBoxCopyBLV1_8u_C1R(image, grid, firstRow, rows, patch, to->valid, isa);
  dax::project(patch, *grid, rows, *to, isa);
}
