#include "daxi/photon_transfer.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "image/noise/clipping.h"
#include "image/noise/frame_stack.h"

namespace dax {
namespace {

// --- Frames ---

template <class T>
DaxStatus noiseOfFrames(const FrameStack<T>& stack, double low, double high, DaxiFrameNoise* noise) {
  using Stack = FrameStack<T>;
  DAX_REQUIRE(stack.frames && noise, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(stack.checkFrames());
  DAX_REQUIRE(low < high, DAX_STS_BAD_PARAM);
  const Clipping<T> clipping(low, high);
  typename Stack::Sum sums = 0, spreads = 0;
  typename Stack::Number offs[kMaxFrames] = {};
  uint64_t black = 0, white = 0;
  stack.forEachPart([&](const typename Stack::Part& part) {
    const T* const first = stack.pixelsOf(part, 0);
    for (int32_t x = 0; x < part.count; ++x) sums += part.sums[x], spreads += part.spreads[x];
    for (int32_t i = 0; i < stack.count; ++i) {
      const T* const pixels = stack.pixelsOf(part, i);
      typename Stack::Number off = 0;
      for (int32_t x = 0; x < part.count; ++x) {
        off += typename Stack::Number{pixels[x]} - typename Stack::Number{first[x]};
        black += clipping.isLow(pixels[x]);
        white += clipping.isHigh(pixels[x]);
      }
      offs[i] += off;
    }
  });
  const double pixels = static_cast<double>(stack.size.width) * stack.size.height, all = pixels * stack.count;
  const double variance =
      varianceOfFrames(static_cast<double>(spreads), pixels, stack.count, [&](int32_t i) { return offs[i]; });
  // A NaN is the same one on every machine.
  const auto told = [](double value) { return std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value; };
  *noise = {told(static_cast<double>(sums) / all), told(variance < 0 ? 0 : variance), static_cast<double>(black) / all,
            static_cast<double>(white) / all};
  return DAX_STS_OK;
}

// --- The curve ---

constexpr double kMaxSlopeShare = 0.7, kMinLineShare = 0.05, kMaxLineShare = 0.95;
constexpr int32_t kMinGainPoints = 5, kMinLinePoints = 3;
constexpr double kMaxBlackShare = 0.005;
constexpr double kQuantised = 2.88;  // times the variance of rounding: 0.24 where that is 1/12

bool isWithin(double value, double low, double high) {
  return value >= low && value <= high;
}

bool isValid(const DaxiFrameNoise& noise) {
  return isWithin(noise.mean, -DBL_MAX, DBL_MAX) && isWithin(noise.variance, 0, DBL_MAX) &&
         isWithin(noise.black, 0, 1) && isWithin(noise.white, 0, 1);
}

struct TransferCurve {
  const DaxiPhotonTransferPoint* points;
  int32_t count;

  double signal(int32_t i) const { return points[i].bright.mean - points[i].dark.mean; }
  double variance(int32_t i) const { return points[i].bright.variance - points[i].dark.variance; }

  DaxStatus check() const {
    DAX_REQUIRE(count >= 1, DAX_STS_BAD_COUNT);
    for (int32_t i = 0; i < count; ++i) {
      DAX_REQUIRE(isWithin(points[i].exposure, 0, DBL_MAX), DAX_STS_BAD_PARAM);
      DAX_REQUIRE(isValid(points[i].bright) && isValid(points[i].dark), DAX_STS_BAD_PARAM);
    }
    return DAX_STS_OK;
  }

  int32_t largestVariance() const {
    const auto less = [](const auto& a, const auto& b) { return a.bright.variance < b.bright.variance; };
    return static_cast<int32_t>(std::max_element(points, points + count, less) - points);
  }

  const DaxiPhotonTransferPoint& darkest() const {
    return *std::min_element(points, points + count,
                             [](const auto& a, const auto& b) { return a.bright.mean < b.bright.mean; });
  }

  bool hasBrighterThan(int32_t i) const {
    const double mean = points[i].bright.mean;
    return std::any_of(points, points + count, [=](const auto& each) { return each.bright.mean > mean; });
  }
};

// The slope of a line through the origin, with its standard error.
DaxStatus findGain(const TransferCurve& curve, DaxiPhotonTransfer& result) {
  const double last = kMaxSlopeShare * result.saturation;
  const auto counts = [&](int32_t i) { return isWithin(curve.signal(i), 0, last); };
  double products = 0, squares = 0;
  for (int32_t i = 0; i < curve.count; ++i) {
    if (!counts(i)) continue;
    const double x = curve.signal(i);
    products += x * curve.variance(i);
    squares += x * x;
    ++result.gainPoints;
  }
  result.gain = products / squares;
  DAX_REQUIRE(result.gainPoints >= kMinGainPoints && isWithin(result.gain, DBL_MIN, DBL_MAX), DAX_STS_DEGENERATE);
  double errors = 0;
  for (int32_t i = 0; i < curve.count; ++i) {
    const double error = curve.variance(i) - result.gain * curve.signal(i);
    if (counts(i)) errors += error * error;
  }
  result.gainError = std::sqrt(errors / (result.gainPoints - 1) / squares);
  return DAX_STS_OK;
}

// Weighted by 1 / x^2, so that errors are relative.
bool findLine(const TransferCurve& curve, DaxiPhotonTransfer& result) {
  const double low = kMinLineShare * result.saturation, high = kMaxLineShare * result.saturation;
  const auto forEach = [&](const auto& visit) {
    for (int32_t i = 0; i < curve.count; ++i) {
      const double x = curve.signal(i), exposure = curve.points[i].exposure;
      if (exposure > 0 && isWithin(x, low, high)) visit(exposure, x, 1 / (x * x));
    }
  };
  double weights = 0, meanExposure = 0, mean = 0;
  forEach([&](double exposure, double x, double weight) {
    weights += weight, meanExposure += weight * exposure, mean += weight * x;
    ++result.linearityPoints;
  });
  if (result.linearityPoints < kMinLinePoints) return false;
  meanExposure /= weights, mean /= weights;
  double products = 0, squares = 0;
  forEach([&](double exposure, double x, double weight) {
    const double off = exposure - meanExposure;
    products += weight * off * (x - mean), squares += weight * off * off;
  });
  result.responsivity = products / squares;
  result.offset = mean - result.responsivity * meanExposure;
  double sum = 0, least = HUGE_VAL, largest = -HUGE_VAL;
  forEach([&](double exposure, double x, double) {
    const double line = result.offset + result.responsivity * exposure, error = 100 * (x - line) / line;
    sum += std::fabs(error), least = std::min(least, error), largest = std::max(largest, error);
  });
  result.linearityError = sum / result.linearityPoints;
  result.linearitySpan = (largest - least) / 2;
  return isWithin(result.linearityError, 0, DBL_MAX) && isWithin(result.linearitySpan, 0, DBL_MAX);
}

void findReadNoise(const TransferCurve& curve, double quantisation, DaxiPhotonTransfer& result) {
  const DaxiFrameNoise& dark = curve.darkest().dark;
  const double limit = kQuantised * quantisation;
  if (dark.variance < limit) result.flags |= DAXI_PHOTON_TRANSFER_QUANTISED;
  if (dark.black > kMaxBlackShare) result.flags |= DAXI_PHOTON_TRANSFER_CLIPPED_DARK;
  result.readNoise = std::sqrt(std::max(dark.variance, limit) - quantisation) / result.gain;
  result.darkLevel = dark.mean;
  const double noise = dark.variance / (result.gain * result.gain);
  result.dynamicRange = result.fullWell / (std::sqrt(noise + 0.25) + 0.5);
}

DaxStatus photonTransfer(const TransferCurve& curve, double quantisation, DaxiPhotonTransfer* result) {
  DAX_REQUIRE(curve.points && result, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(curve.check());
  DAX_REQUIRE(isWithin(quantisation, 0, DBL_MAX), DAX_STS_BAD_PARAM);
  DaxiPhotonTransfer found = {};
  found.saturated = curve.largestVariance();
  found.saturation = curve.signal(found.saturated);
  DAX_REQUIRE_OK(findGain(curve, found));
  if (!curve.hasBrighterThan(found.saturated)) found.flags |= DAXI_PHOTON_TRANSFER_NOT_SATURATED;
  found.fullWell = found.saturation / found.gain;
  found.maxSnr = std::sqrt(found.fullWell);
  findReadNoise(curve, quantisation, found);
  if (!findLine(curve, found)) {
    found.flags |= DAXI_PHOTON_TRANSFER_NO_LINEARITY;
    found.responsivity = found.offset = found.linearityError = found.linearitySpan = 0;
  }
  *result = found;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_PhotonTransfer(const DaxiPhotonTransferPoint* points, int32_t count, double quantisation,
                              DaxiPhotonTransfer* result) {
  return dax::photonTransfer({points, count}, quantisation, result);
}

#define DAX_FRAME_NOISE(SUFFIX, T)                                                                                  \
  DaxStatus DAXI_FrameNoise_##SUFFIX##_C1R(const T* const* frames, int32_t frameCount, int32_t step, DaxiSize size, \
                                           double low, double high, DaxiFrameNoise* noise) {                        \
    return dax::noiseOfFrames<T>({frames, frameCount, step, size}, low, high, noise);                               \
  }
DAX_FRAME_NOISE(8u, uint8_t)
DAX_FRAME_NOISE(16u, uint16_t)
DAX_FRAME_NOISE(16s, int16_t)
DAX_FRAME_NOISE(32f, float)
#undef DAX_FRAME_NOISE
