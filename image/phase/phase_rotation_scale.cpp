#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <type_traits>

#include "daxi/phase_shift.h"
#include "frame/math.h"
#include "frame/numeric/elementary.h"
#include "image/phase/phase_pictures.h"
#include "image/warp/warp.h"

static_assert(sizeof(DaxiPhaseMotion) == 120);

namespace dax {
namespace {

// Frequencies of the log-polar spectra, in cycles a pixel: not the lowest, where pixels of the spectrum are coarse and the
// light and the window tell more than the scene, and nothing beyond half, which only corners have.
constexpr double kLowest = 0.04, kHighest = 0.5;

// Cells of half a turn, and of the radii between these: finer for large pictures, but fine cells catch more noise.
DaxiSize polarSizeOf(DaxiSize size) {
  const int32_t side = std::min(size.width, size.height);
  const int32_t angles = side < 64 ? 90 : side < 256 ? 180 : side < 1024 ? 360 : 720;
  return {angles, angles / 2};
}

struct MotionBuffer {
  explicit MotionBuffer(DaxiSize size)
      : polarSize(polarSizeOf(size)), pictures(size, layout), polar(polarSize, layout) {
    for (auto& each : logs) each = layout.add<float>(2 * pixelsOf(polarSize));
    copy = layout.add<float>(pixelsOf(size));
    turned = layout.add<float>(pixelsOf(size));
  }
  DaxiSize polarSize;
  BufferLayout layout;
  PhaseLayout pictures, polar;
  BufferPiece<float> logs[2] = {};  // columns twice
  BufferPiece<float> copy, turned;
};

struct Similarity {
  double angle, scale;
};

// The logarithm of a spectrum by angle, from -90 degrees to 90, and by the logarithm of the frequency. It is no less telling
// without a high pass, which lifts the noise.
DaxStatus fillLogPolar(PoolThreads on, const PhaseComparison& pictures, int which, DaxiSize size, float* to) {
  const double range = elementary::log(kHighest / kLowest);
  return runRows(on, size.height, [&, which, size](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const double radius = kLowest * elementary::exp(range * (y + 0.5) / size.height);
      float* const row = rowAt(to, 2 * size.width, y);
      for (int32_t x = 0; x < size.width; ++x) {
        const SinCos at = sinCosExact(std::numbers::pi * ((x + 0.5) / size.width - 0.5));
        const double magnitude = pictures.magnitudeAt(which, radius * at.cosine, radius * at.sine);
        row[x] = row[x + size.width] = static_cast<float>(elementary::log(1 + magnitude));
      }
    }
  });
}

// From the spectra of both pictures, whose sizes are inverse to those of the pictures; the angle but for half a turn.
DaxStatus compareSpectra(PoolThreads on, const PhaseComparison& pictures, const MotionBuffer& at, void* buffer,
                         Similarity* found) {
  const DaxiSize size = at.polarSize;
  for (int which = 0; which < 2; ++which) {
    DAX_REQUIRE_OK(fillLogPolar(on, pictures, which, size, at.logs[which].in(buffer)));
  }
  const int32_t step = 2 * size.width;
  const PhasePair<float> pair = {{at.logs[0].in(buffer), step, size}, {at.logs[1].in(buffer), step, size}};
  PhaseComparison by(on, at.polar, buffer);
  DAX_REQUIRE_OK(by.init());
  DAX_REQUIRE_OK(by.load(0, pair.first, PhaseWindow::kColumns));
  DAX_REQUIRE_OK(by.load(1, pair.second, PhaseWindow::kColumns));
  PhasePeak peak;
  double shift[2];
  DAX_REQUIRE_OK(by.findPeak(&peak));
  DAX_REQUIRE_OK(refineShift(by, pair, peak, PhaseWindow::kColumns, shift));
  found->angle = std::numbers::pi * shift[0] / size.width;
  found->scale = elementary::exp(-shift[1] * elementary::log(kHighest / kLowest) / size.height);
  return DAX_STS_OK;
}

// About the centre of the pictures.
void matrixOf(const Similarity& motion, DaxiSize size, double (&m)[9]) {
  const double cx = (size.width - 1) / 2.0, cy = (size.height - 1) / 2.0;
  const SinCos turn = sinCosExact(motion.angle);
  const double c = motion.scale * turn.cosine, s = motion.scale * turn.sine;
  const double all[9] = {c, -s, cx - (c * cx - s * cy), s, c, cy - (s * cx + c * cy), 0, 0, 1};
  std::copy_n(all, 9, m);
}

// As floats, in `memory` unless it has them already.
template <class T>
PhaseImage<float> floatsOf(const PhaseImage<T>& image, float* memory) {
  if constexpr (std::is_same_v<T, float>) {
    return image;
  } else {
    for (int32_t y = 0; y < image.size.height; ++y) {
      std::copy_n(rowAt(image.data, image.step, y), image.size.width, rowAt(memory, image.size.width, y));
    }
    return {memory, image.size.width, image.size};
  }
}

double meanOf(const PhaseImage<float>& image) {
  double sum = 0;
  for (int32_t y = 0; y < image.size.height; ++y) {
    const float* const row = rowAt(image.data, image.step, y);
    double own = 0;
    for (int32_t x = 0; x < image.size.width; ++x) own += row[x];
    sum += own;
  }
  return sum / static_cast<double>(pixelsOf(image.size));
}

// The first picture, turned and scaled like the second one; its mean where it does not reach.
DaxStatus turnFirst(PoolThreads on, const PhaseImage<float>& first, const Similarity& motion, double mean,
                    float* turned) {
  DaxiWarpCfg cfg = {};
  matrixOf(motion, first.size, cfg.m);
  cfg.interpolation = DAXI_INTERPOLATION_LINEAR, cfg.border = DAXI_BORDER_CONSTANT, cfg.value = mean, cfg.cubicA = -0.5;
  return warpAffine<float, 1>(on, first.data, first.step, first.size, turned, first.size.width, first.size,
                              {0, 0, first.size.width, first.size.height}, &cfg);
}

// Spectra do not tell half turns apart: both are tried, against spectrum 1.
DaxStatus findTurned(PoolThreads on, PhaseComparison& by, const PhaseImage<float>& first, Similarity* motion,
                     float* turned, PhasePeak* peak) {
  const double mean = meanOf(first);
  const PhaseImage<float> image = {turned, first.size.width, first.size};
  const auto tryOut = [&](const Similarity& each) -> DaxStatus {
    DAX_REQUIRE_OK(turnFirst(on, first, each, mean, turned));
    DAX_REQUIRE_OK(by.load(0, image, PhaseWindow::kSides));
    return by.findPeak(peak);
  };
  const double half = motion->angle > 0 ? -std::numbers::pi : std::numbers::pi;
  const Similarity opposite = {motion->angle + half, motion->scale};
  DAX_REQUIRE_OK(tryOut(opposite));
  const double other = peak->value;
  DAX_REQUIRE_OK(tryOut(*motion));
  if (!(other > peak->value)) return DAX_STS_OK;
  *motion = opposite;
  return tryOut(opposite);
}

template <class T>
DaxStatus phaseRotationScale(PoolThreads on, const PhasePair<T>& pair, DaxiPhaseMotion* found, void* buffer) {
  DAX_REQUIRE_OK(checkPhasePictures(pair, found, buffer));
  const DaxiSize size = pair.first.size;
  const MotionBuffer at(size);
  PhaseComparison by(on, at.pictures, buffer);
  DAX_REQUIRE_OK(by.init());
  DAX_REQUIRE_OK(by.load(0, pair.first, PhaseWindow::kSides));
  DAX_REQUIRE_OK(by.load(1, pair.second, PhaseWindow::kSides));
  Similarity motion;
  DAX_REQUIRE_OK(compareSpectra(on, by, at, buffer, &motion));
  PhasePeak peak;
  double shift[2];
  float* const turned = at.turned.in(buffer);
  DAX_REQUIRE_OK(findTurned(on, by, floatsOf(pair.first, at.copy.in(buffer)), &motion, turned, &peak));
  const PhasePair<float, T> both = {{turned, size.width, size}, pair.second};
  DAX_REQUIRE_OK(refineShift(by, both, peak, PhaseWindow::kSides, shift));
  *found = {{}, motion.angle, motion.scale, shift[0], shift[1], peak.value, peak.second};
  matrixOf(motion, size, found->m);
  found->m[2] += shift[0], found->m[5] += shift[1];
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_PhaseRotationScaleBufferSize(DaxiSize size, uint64_t* bytes) {
  return dax::storePhaseBufferSize<dax::MotionBuffer>(size, bytes);
}

#define DAX_PHASE_MOTION(SUFFIX, T)                                                                                 \
  DaxStatus DAXI_PhaseRotationScale_##SUFFIX##_C1R(const T* src1, int32_t step1, const T* src2, int32_t step2,      \
                                                   DaxiSize size, DaxiPhaseMotion* motion, void* buffer) {          \
    return dax::phaseRotationScale<T>({}, {{src1, step1, size}, {src2, step2, size}}, motion, buffer);              \
  }                                                                                                                 \
  DaxStatus DAXI_PhaseRotationScale_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src1, int32_t step1,   \
                                                      const T* src2, int32_t step2, DaxiSize size,                  \
                                                      DaxiPhaseMotion* motion, void* buffer) {                      \
    return dax::phaseRotationScale<T>({pool, threads}, {{src1, step1, size}, {src2, step2, size}}, motion, buffer); \
  }
DAX_PHASE_MOTION(8u, uint8_t)
DAX_PHASE_MOTION(16u, uint16_t)
DAX_PHASE_MOTION(32f, float)
#undef DAX_PHASE_MOTION
