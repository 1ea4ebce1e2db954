// Errors of calipers and line fits on ground truth: rendered edges and stripes, every pixel the exact mean over its area,
// and points around a line with planted outliers. Prints lines of CSV: kind, parameters, error.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <numbers>
#include <vector>

#include "daxi/caliper_pair.h"
#include "daxi/line_fit.h"
#include "tests/support/edge_scene.h"

namespace {

using dax::test::StraightEdge;

constexpr int32_t kSide = 100;
constexpr double kMiddle = 50, kRadians = std::numbers::pi / 180;

void require(bool fulfilled, const char* what) {
  if (fulfilled) return;
  std::fprintf(stderr, "caliper_accuracy: %s\n", what);
  std::exit(1);
}

// The same numbers in every run and on every machine.
class Chance {
 public:
  double uniform(double low, double high) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return low + (high - low) * (static_cast<double>(state_ >> 40) + 0.5) / (1 << 24);
  }
  double normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += uniform(0, 1);
    return sum;
  }

 private:
  uint64_t state_ = 1;
};

using Pixels = std::vector<uint8_t>;

Pixels render(const std::function<double(int, int)>& value) {
  Pixels pixels;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      pixels.push_back(static_cast<uint8_t>(std::clamp(std::floor(value(x, y) + 0.5), 0.0, 255.0)));
    }
  }
  return pixels;
}

// Well below the response to a step; kernels from half width 6 on respond with less.
float thresholdFor(uint32_t half, double contrast) {
  return static_cast<float>(half <= 5 ? 0.4 * contrast : 0.03 * contrast);
}

template <class Cfg>
Cfg config(uint32_t half, double contrast) {
  Cfg cfg = {};
  cfg.projection = DAXI_CALIPER_VERTICAL, cfg.polarity = DAXI_CALIPER_DARK_TO_LIGHT, cfg.filterHalfWidth = half;
  cfg.threshold = thresholdFor(half, contrast), cfg.scoreFlags = 1;
  cfg.contrast = {0, 0, 0, 1000, 0, 1};
  return cfg;
}

CaliperBox boxAt(double x, double y, double angle) {
  return {static_cast<float>(x), static_cast<float>(y), 40, 15, static_cast<float>(angle)};
}

double edgePosition(const Pixels& pixels, const CaliperBox& box, uint32_t half, double contrast) {
  auto cfg = config<CaliperEdgeCfg>(half, contrast);
  cfg.maxEdges = 1;
  std::vector<double> buffer(4096);
  CaliperEdge edge;
  CaliperEdgeResult result{&edge, nullptr, 0};
  require(DAXI_CalipEdgeDetect_8u_C1R(pixels.data(), kSide, {kSide, kSide}, &box, &cfg, &result, buffer.data()) == 0,
          "a caliper was refused");
  require(result.count == 1, "no edge");
  return edge.position;
}

constexpr int kStepsOfAPixel = 40, kHalfWidths = 8;

void printEdges() {
  for (int degrees = 0; degrees <= 90; ++degrees) {
    for (int step = 0; step < kStepsOfAPixel; ++step) {
      const double angle = degrees * kRadians, offset = static_cast<double>(step) / kStepsOfAPixel - 0.5;
      const StraightEdge edge{kMiddle, kMiddle, angle, offset};
      const Pixels pixels = render([&](int x, int y) { return 30 + 190 * edge.coverage(x, y); });
      for (uint32_t half = 1; half <= kHalfWidths; ++half) {
        std::printf("edge,%d,%u,%g,%.6f\n", degrees, half, offset,
                    edgePosition(pixels, boxAt(kMiddle, kMiddle, angle), half, 190) - offset);
      }
    }
  }
}

// What a lens makes of an edge: its coverage, blurred by a Gaussian.
double blurred(StraightEdge edge, double sigma, double x, double y) {
  constexpr double kStep = 0.25, kReach = 4;
  const double middle = edge.offset;
  double sum = 0, weights = 0;
  for (double t = -kReach; t <= kReach; t += kStep) {
    const double weight = std::exp(-t * t / 2);
    edge.offset = middle + t * sigma;
    sum += weight * edge.coverage(x, y);
    weights += weight;
  }
  return sum / weights;
}

// Boxes whose centre lies anywhere between pixel centres; edges sharp, and blurred.
void printPhases(const char* kind, int degreesStep, double sigma) {
  Chance chance;
  for (int degrees = 0; degrees <= 90; degrees += degreesStep) {
    for (int step = 0; step < kStepsOfAPixel; ++step) {
      const double angle = degrees * kRadians, offset = static_cast<double>(step) / kStepsOfAPixel - 0.5;
      const CaliperBox box = boxAt(kMiddle + chance.uniform(0, 1), kMiddle + chance.uniform(0, 1), angle);
      const StraightEdge edge{box.x, box.y, angle, offset};
      const Pixels pixels = render(
          [&](int x, int y) { return 30 + 190 * (sigma > 0 ? blurred(edge, sigma, x, y) : edge.coverage(x, y)); });
      for (uint32_t half = 1; half <= kHalfWidths; ++half) {
        std::printf("%s,%d,%u,%g,%.6f\n", kind, degrees, half, offset, edgePosition(pixels, box, half, 190) - offset);
      }
    }
  }
}

void printNoisyEdges() {
  Chance chance;
  for (int degrees = 0; degrees <= 90; degrees += 5) {
    for (int draw = 0; draw < 100; ++draw) {
      const double angle = degrees * kRadians, offset = chance.uniform(-0.5, 0.5);
      const StraightEdge edge{kMiddle, kMiddle, angle, offset};
      const Pixels pixels = render([&](int x, int y) { return 80 + 100 * edge.coverage(x, y) + 5 * chance.normal(); });
      for (uint32_t half = 1; half <= kHalfWidths; ++half) {
        std::printf("noisy,%d,%u,%g,%.6f\n", degrees, half, offset,
                    edgePosition(pixels, boxAt(kMiddle, kMiddle, angle), half, 100) - offset);
      }
    }
  }
}

double stripeWidth(const Pixels& pixels, const CaliperBox& box, uint32_t half) {
  auto cfg = config<CaliperEdgePairCfg>(half, 190);
  cfg.maxPairs = 1;
  std::vector<double> buffer(4096);
  CaliperEdgePair pair;
  CaliperEdgePairResult result{&pair, nullptr, 0};
  require(
      DAXI_CalipEdgePairDetect_8u_C1R(pixels.data(), kSide, {kSide, kSide}, &box, &cfg, &result, buffer.data()) == 0,
      "a pair caliper was refused");
  require(result.count == 1, "no stripe");
  return pair.width;
}

// Stripes wider than the kernel, their middles spread over the pixel.
void printStripes() {
  Chance chance;
  for (int degrees = 0; degrees <= 90; degrees += 5) {
    for (double width = 4; width < 22; width += 0.175) {
      const double angle = degrees * kRadians, middle = chance.uniform(-0.5, 0.5);
      const StraightEdge from{kMiddle, kMiddle, angle, middle - width / 2};
      const StraightEdge to{kMiddle, kMiddle, angle, middle + width / 2};
      const Pixels pixels = render([&](int x, int y) { return 30 + 190 * (from.coverage(x, y) - to.coverage(x, y)); });
      for (uint32_t half = 1; half <= kHalfWidths && 2 * half + 1 < width; ++half) {
        std::printf("stripe,%d,%u,%g,%.6f\n", degrees, half, width,
                    stripeWidth(pixels, boxAt(kMiddle, kMiddle, angle), half) - width);
      }
    }
  }
}

constexpr int32_t kPoints = 500;
constexpr size_t kPointCount = kPoints;

struct Lines {
  std::vector<DaxiPoint32f> points;
  std::vector<bool> planted;
};

// 500 points along 400 px with noise of 0.1 px, 30 % of them 1.5 to 60 px away.
Lines plant(Chance& chance, double angle) {
  Lines lines;
  const double c = std::cos(angle), s = std::sin(angle);
  for (int32_t i = 0; i < kPoints; ++i) {
    const bool outlier = i % 10 < 3;
    const double side = chance.uniform(-1, 1) < 0 ? -1 : 1;
    const double t = chance.uniform(-200, 200), d = outlier ? side * chance.uniform(1.5, 60) : 0.1 * chance.normal();
    lines.points.push_back({static_cast<float>(320 + t * c - d * s), static_cast<float>(240 + t * s + d * c)});
    lines.planted.push_back(outlier);
  }
  return lines;
}

void printLine(const Lines& lines, double angle, int32_t method, int32_t weights) {
  std::vector<double> buffer(8192);
  std::vector<uint8_t> inliers(kPointCount);
  std::vector<float> weightsOut(kPointCount);
  // Least squares over all points begins too far away for a narrow threshold.
  const float threshold = method == DAXI_LINE_INIT_LEAST_SQUARES ? 1000 : 2;
  const LineFitCfg cfg = {method, weights, 100, kPoints * 3 / 10, threshold, 0, 0, 0};
  DaxiLine line;
  float rms;
  require(DAXI_LineFitRegre_32f(lines.points.data(), kPoints, &cfg, &line, inliers.data(), weightsOut.data(), &rms,
                                buffer.data()) == 0,
          "no line");
  int missed = 0, wrong = 0;
  for (size_t i = 0; i < kPointCount; ++i) {
    missed += lines.planted[i] && inliers[i];
    wrong += !lines.planted[i] && !inliers[i];
  }
  const double turn = std::remainder(std::atan2(-line.a, line.b) - angle, std::numbers::pi) / kRadians;
  const double offset = std::fabs(line.a * 320.0 + line.b * 240.0 + line.c);
  std::printf("line,%d,%d,%g,%.6f,%.6f,%d,%d\n", method, weights, angle / kRadians, turn, offset, missed, wrong);
}

void printLines() {
  Chance chance;
  for (int degrees = 0; degrees < 180; ++degrees) {
    const double angle = (degrees + chance.uniform(0, 1)) * kRadians;
    const Lines lines = plant(chance, angle);
    for (int32_t method = 1; method <= 3; ++method) {
      for (int32_t weights = 1; weights <= 3; ++weights) printLine(lines, angle, method, weights);
    }
  }
}

}  // namespace

int main() {
  printEdges();
  printPhases("phase", 1, 0);
  printPhases("blurred", 3, 0.7);
  printNoisyEdges();
  printStripes();
  printLines();
  return 0;
}
