#include "daxi/phase_shift.h"

#include "image/phase/phase_pictures.h"

static_assert(sizeof(DaxiPhaseShift) == 32);

namespace dax {
namespace {

struct ShiftBuffer {
  explicit ShiftBuffer(DaxiSize size) : pictures(size, layout) {}
  BufferLayout layout;
  PhaseLayout pictures;
};

template <class T>
DaxStatus phaseShift(PoolThreads on, const PhasePair<T>& pair, DaxiPhaseShift* shift, void* buffer) {
  DAX_REQUIRE_OK(checkPhasePictures(pair, shift, buffer));
  const ShiftBuffer at(pair.first.size);
  PhaseComparison by(on, at.pictures, buffer);
  DAX_REQUIRE_OK(by.init());
  DAX_REQUIRE_OK(by.load(0, pair.first, PhaseWindow::kSides));
  DAX_REQUIRE_OK(by.load(1, pair.second, PhaseWindow::kSides));
  PhasePeak peak;
  double fine[2];
  DAX_REQUIRE_OK(by.findPeak(&peak));
  DAX_REQUIRE_OK(refineShift(by, pair, peak, PhaseWindow::kSides, fine));
  *shift = {fine[0], fine[1], peak.value, peak.second};
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_PhaseShiftBufferSize(DaxiSize size, uint64_t* bytes) {
  return dax::storePhaseBufferSize<dax::ShiftBuffer>(size, bytes);
}

#define DAX_PHASE_SHIFT(SUFFIX, T)                                                                                    \
  DaxStatus DAXI_PhaseShift_##SUFFIX##_C1R(const T* src1, int32_t step1, const T* src2, int32_t step2, DaxiSize size, \
                                           DaxiPhaseShift* shift, void* buffer) {                                     \
    return dax::phaseShift<T>({}, {{src1, step1, size}, {src2, step2, size}}, shift, buffer);                         \
  }                                                                                                                   \
  DaxStatus DAXI_PhaseShift_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src1, int32_t step1,             \
                                              const T* src2, int32_t step2, DaxiSize size, DaxiPhaseShift* shift,     \
                                              void* buffer) {                                                         \
    return dax::phaseShift<T>({pool, threads}, {{src1, step1, size}, {src2, step2, size}}, shift, buffer);            \
  }
DAX_PHASE_SHIFT(8u, uint8_t)
DAX_PHASE_SHIFT(16u, uint16_t)
DAX_PHASE_SHIFT(32f, float)
#undef DAX_PHASE_SHIFT
