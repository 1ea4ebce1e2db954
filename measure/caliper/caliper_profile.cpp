// From region to profile and response: sampling, projection, filter.
#include <algorithm>
#include <cmath>

#include "frame/cpu_feature.h"
#include "frame/math.h"
#include "measure/caliper/caliper.h"
#include "measure/caliper/caliper_portable.h"
#if DAX_HAVE_NEON
#include "measure/caliper/caliper_neon.h"
#endif

namespace dax {
namespace {

int64_t toTrack(double pixels) {
  return static_cast<int64_t>(std::floor(pixels * (int64_t{1} << kTrackBits) + 0.5));
}

SampleTrack trackOf(const CaliperGrid& grid, int32_t row) {
  const SampleLine line = grid.row(row);
  constexpr int64_t kHalf = int64_t{1} << (kTrackBits - kPositionBits - 1);
  return {toTrack(line.x) + kHalf, toTrack(line.y) + kHalf, toTrack(line.dx), toTrack(line.dy)};
}

template <class T>
void copyRow(const CaliperImage<T>& image, const SampleTrack& track, int32_t columns, CaliperSample<T>* out,
             [[maybe_unused]] int32_t isa) {
#if DAX_HAVE_NEON
  if constexpr (std::is_same_v<T, uint8_t>) {
    if (usesNeon(isa)) return neon::sampleRow(image.pixels, image.step, image.size, track, columns, out);
  }
#endif
  portable::sampleRow(image.pixels, image.step, image.size, track, 0, columns, out);
}

// Of masked images also which samples count; the others become 0.
template <class T>
void copyRows(const CaliperImage<T>& image, const CaliperGrid& grid, int32_t firstRow, int32_t rows,
              CaliperSample<T>* patch, uint8_t* valid, int32_t isa) {
  for (int32_t k = 0; k < rows; ++k) {
    const SampleTrack track = trackOf(grid, firstRow + k);
    CaliperSample<T>* const samples = rowAt(patch, grid.columns, k);
    copyRow(image, track, grid.columns, samples, isa);
    if (!image.mask) continue;
    uint8_t* const counts = rowAt(valid, grid.columns, k);
    portable::sampleMask(image.mask, image.maskStep, image.size, track, grid.columns, counts);
    for (int32_t j = 0; j < grid.columns; ++j) samples[j] = counts[j] ? samples[j] : CaliperSample<T>{0};
  }
}

template <class Sample>
void addColumns(const Sample* patch, int32_t columns, int32_t rows, int64_t* sums, [[maybe_unused]] int32_t isa) {
#if DAX_HAVE_NEON
  if constexpr (std::is_same_v<Sample, uint16_t>) {
    if (usesNeon(isa)) return neon::addColumns(patch, columns, rows, sums);
  }
#endif
  portable::addColumns(patch, columns, rows, 0, sums);
}

template <class Sample>
int64_t sumOf(const Sample* row, int32_t columns, [[maybe_unused]] int32_t isa) {
#if DAX_HAVE_NEON
  if constexpr (std::is_same_v<Sample, uint16_t>) {
    if (usesNeon(isa)) return neon::sumOf(row, columns);
  }
#endif
  return portable::sumOf(row, 0, columns);
}

template <class Sample>
void projectColumns(const Sample* patch, int32_t columns, int32_t rows, const CaliperSums& to, int32_t isa) {
  addColumns(patch, columns, rows, to.sums, isa);
  if (to.valid) portable::addColumns(to.valid, columns, rows, 0, to.counts);
}

template <class Sample>
void projectRows(const Sample* patch, int32_t columns, int32_t rows, const CaliperSums& to, int32_t isa) {
  for (int32_t k = 0; k < rows; ++k) {
    to.sums[k] = sumOf(rowAt(patch, columns, k), columns, isa);
    if (to.valid) to.counts[k] = static_cast<int32_t>(portable::sumOf(rowAt(to.valid, columns, k), 0, columns));
  }
}

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

// Values without a sample take that of the nearest that has one, of two the one before; all stay 0 where none has.
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

void makeProfile(const CaliperSums& from, int32_t n, int32_t across, float* profile) {
  const double scale = 1.0 / (256.0 * across);
  for (int32_t i = 0; i < n; ++i) {
    const auto sum = static_cast<double>(from.sums[i]);
    if (!from.counts) {
      profile[i] = static_cast<float>(sum * scale);
    } else {
      profile[i] = from.counts[i] > 0 ? static_cast<float>(sum * (1.0 / (256.0 * from.counts[i]))) : 0.0f;
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

void _DAXI_CaliperBoxCopyBLV1_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                     int32_t firstRow, int32_t rows, uint16_t* patch, uint8_t* valid, int32_t isa) {
  dax::copyRows(*image, *grid, firstRow, rows, patch, valid, isa);
}

void _DAXI_CaliperBoxCopyBLV1_16s_C1R(const dax::CaliperImage<int16_t>* image, const dax::CaliperGrid* grid,
                                      int32_t firstRow, int32_t rows, int32_t* patch, uint8_t* valid, int32_t isa) {
  dax::copyRows(*image, *grid, firstRow, rows, patch, valid, isa);
}

void DAXI_CalipEdgeDetect_RhomboidCopyBL_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                                int32_t firstRow, int32_t rows, uint16_t* patch, uint8_t* valid,
                                                int32_t isa) {
  dax::copyRows(*image, *grid, firstRow, rows, patch, valid, isa);
}

uint16_t DAXI_CalipEdgeDetectAnnulus_bl_interp(const dax::CaliperImage<uint8_t>* image, int64_t x, int64_t y) {
  return dax::portable::interpolate(image->pixels, image->step, dax::SamplePlace(x, y));
}

void DAXI_CalipEdgeDetectAnnulus_projection(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                            int32_t firstRow, int32_t rows, uint16_t* patch, const dax::CaliperSums* to,
                                            int32_t isa) {
  dax::copyRows(*image, *grid, firstRow, rows, patch, to->valid, isa);
  dax::project(patch, *grid, rows, *to, isa);
}

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
