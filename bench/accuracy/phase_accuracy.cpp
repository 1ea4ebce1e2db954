// Errors of phase correlation on rendered scenes that are moved, turned and scaled, with noise; and those of a peer. Prints lines
// of CSV: kind, whose, noise by contrast, errors.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <vector>

#include "bench/accuracy/warp_peer.h"
#include "daxi/phase_shift.h"
#include "tests/image/phase/phase_scene.h"

namespace {

using namespace dax::test;

constexpr DaxiSize kSize = {256, 256};
constexpr int32_t kScenes = 5, kDraws = 8;
constexpr double kNoises[] = {0, 0.125, 0.375};

template <class Result, class Query, class Find>
Result compare(const TestImage<uint8_t>& a, const TestImage<uint8_t>& b, Query query, Find find) {
  uint64_t bytes = 0;
  Result result;
  DaxStatus status = query(kSize, &bytes);
  std::vector<double> buffer(bytes / sizeof(double) + 1);
  if (status == 0) status = find(a.data(), a.step(), b.data(), b.step(), kSize, &result, buffer.data());
  if (status == 0) return result;
  std::fprintf(stderr, "phase_accuracy: a comparison was refused: %x\n", status);
  std::exit(1);
}

std::vector<float> floatsOf(const TestImage<uint8_t>& image) {
  std::vector<float> floats;
  for (int32_t y = 0; y < kSize.height; ++y) floats.insert(floats.end(), image.row(y), image.row(y) + kSize.width);
  return floats;
}

double deviationOf(const TestImage<double>& image) {
  double sum = 0, squares = 0;
  for (int32_t y = 0; y < kSize.height; ++y) {
    for (int32_t x = 0; x < kSize.width; ++x) sum += image.at(x, y), squares += image.at(x, y) * image.at(x, y);
  }
  constexpr double kPixels = 256 * 256;
  return std::sqrt(squares / kPixels - (sum / kPixels) * (sum / kPixels));
}

// Draws are the same for all noises.
class Draw {
 public:
  explicit Draw(uint64_t seed) : random_(seed) {}
  double in(double low, double high) { return low + (high - low) * random_.below(1 << 20) / (1 << 20); }

 private:
  Random random_;
};

void printShift(const TestImage<uint8_t>& a, const TestImage<uint8_t>& b, const Motion& by, double noise) {
  const auto found = compare<DaxiPhaseShift>(a, b, DAXI_PhaseShiftBufferSize, DAXI_PhaseShift_8u_C1R);
  std::printf("shift,own,%g,%.5f\n", noise, std::hypot(found.dx - by.dx, found.dy - by.dy));
  double other[2];
  if (accuracy::peerShift(floatsOf(a), floatsOf(b), kSize, other)) {
    std::printf("shift,peer,%g,%.5f\n", noise, std::hypot(other[0] - by.dx, other[1] - by.dy));
  }
}

void printMotion(const TestImage<uint8_t>& a, const TestImage<uint8_t>& b, const Motion& by, double noise) {
  const auto found = compare<DaxiPhaseMotion>(a, b, DAXI_PhaseRotationScaleBufferSize, DAXI_PhaseRotationScale_8u_C1R);
  const double degrees = std::remainder(found.angle - by.angle, 2 * std::numbers::pi) * 180 / std::numbers::pi;
  std::printf("motion,own,%g,%.4f,%.4f,%.4f\n", noise, std::fabs(degrees), 100 * std::fabs(found.scale / by.scale - 1),
              std::hypot(found.dx - by.dx, found.dy - by.dy));
}

}  // namespace

int main() {
  for (uint64_t seed = 0; seed < kScenes; ++seed) {
    const SpotScene scene(kSize, seed + 1);
    const TestImage<double> still = scene.seen({});
    const double contrast = deviationOf(still);
    Draw draw(seed + 20);
    for (uint64_t i = 1; i <= kDraws; ++i) {
      const Motion shift = {draw.in(-30, 30), draw.in(-30, 30)};
      const Motion motion = {draw.in(-10, 10), draw.in(-10, 10), draw.in(-3.1, 3.1), draw.in(0.7, 1.4)};
      const TestImage<double> moved = scene.seen(shift), turned = scene.seen(motion);
      for (const double noise : kNoises) {
        const auto a = asPixels<uint8_t>(still, 1, 0, noise * contrast, i);
        printShift(a, asPixels<uint8_t>(moved, 1, 0, noise * contrast, 100 + i), shift, noise);
        printMotion(a, asPixels<uint8_t>(turned, 1, 0, noise * contrast, 200 + i), motion, noise);
      }
    }
  }
  return 0;
}
