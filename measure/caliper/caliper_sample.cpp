#include "measure/caliper/caliper_sample.h"

#include <cmath>

#include "frame/dispatch.h"
#include "measure/caliper/caliper_sample_neon.h"
#include "measure/caliper/caliper_sample_portable.h"

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
  if constexpr (std::is_same_v<T, uint8_t>) {
    if (usesNeon(isa)) return neon::sampleRow(image.pixels, image.step, image.size, track, columns, out);
  }
  portable::sampleRow(image.pixels, image.step, image.size, track, columns, out);
}

// Samples a band of rows. With a mask, also writes which samples count; the others become 0.
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

}  // namespace
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
