// Errors of warps and resizes: edges measured by calipers before and after a warp, pictures turned there and back, resizes
// beside their real-valued formula; and those of a peer. Prints lines of CSV: kind, whose, interpolation, parameter, errors.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <vector>

#include "bench/accuracy/warp_peer.h"
#include "daxi/caliper.h"
#include "daxi/resize.h"
#include "daxi/warp.h"
#include "tests/image/warp/resize_oracle.h"
#include "tests/support/digest.h"
#include "tests/support/edge_scene.h"

namespace {

using accuracy::Bytes;
using dax::test::StraightEdge;

constexpr double kRadians = std::numbers::pi / 180;
constexpr int32_t kInterpolations[] = {DAXI_INTERPOLATION_LINEAR, DAXI_INTERPOLATION_CUBIC,
                                       DAXI_INTERPOLATION_LANCZOS3};
constexpr const char* kNames[] = {"nearest", "linear", "cubic", "lanczos", "area"};

void require(bool fulfilled, const char* what) {
  if (fulfilled) return;
  std::fprintf(stderr, "warp_accuracy: %s\n", what);
  std::exit(1);
}

Bytes ownWarpOf(const Bytes& image, DaxiSize size, const double (&back)[9], int32_t interpolation, double cubicA) {
  DaxiWarpCfg cfg;
  require(DAXI_WarpDefaultCfg(&cfg) == 0, "no configuration");
  std::copy_n(back, 9, cfg.m);
  cfg.inverse = 1, cfg.interpolation = interpolation, cfg.border = DAXI_BORDER_REPLICATE;
  cfg.cubicA = cubicA;
  Bytes result(image.size());
  require(DAXI_WarpAffine_8u_C1R(image.data(), size.width, size, result.data(), size.width, size,
                                 {0, 0, size.width, size.height}, &cfg) == 0,
          "a warp was refused");
  return result;
}

Bytes ownWarp(const Bytes& image, DaxiSize size, const double (&back)[9], int32_t interpolation) {
  return ownWarpOf(image, size, back, interpolation, -0.5);
}

// Ours with the parameter of the peer's cubic kernel.
Bytes sharpWarp(const Bytes& image, DaxiSize size, const double (&back)[9], int32_t interpolation) {
  if (interpolation != DAXI_INTERPOLATION_CUBIC) return {};
  return ownWarpOf(image, size, back, interpolation, -0.75);
}

// The real-valued formula, rounded once, where the position of a pixel is shifted along its row and all rows are alike.
Bytes realShift(const Bytes& image, DaxiSize size, const double (&back)[9], int32_t interpolation) {
  if (back[0] != 1 || back[1] != 0 || back[3] != 0 || back[4] != 1 || back[5] != 0) return {};
  const dax::oracle::Axis axis = {size.width, size.width, 0, false, interpolation, -0.5L};
  Bytes result(image.size());
  for (int32_t x = 0; x < size.width; ++x) {
    const long double position = x + static_cast<long double>(back[2]);
    long double sum = 0, weights = 0;
    for (auto tap = static_cast<int32_t>(std::floor(position)) - 2; tap <= position + 3; ++tap) {
      const long double weight = axis.kernel(std::fabs(tap - position));
      sum += weight * image[static_cast<size_t>(std::clamp(tap, 0, size.width - 1))], weights += weight;
    }
    const auto value = static_cast<uint8_t>(std::clamp(std::rint(sum / weights), 0.0L, 255.0L));
    for (int32_t y = 0; y < size.height; ++y) result[static_cast<size_t>(y * size.width + x)] = value;
  }
  return result;
}

using Warp = Bytes (*)(const Bytes&, DaxiSize, const double (&)[9], int32_t);
struct Contestant {
  const char* name;
  Warp warp;
};
constexpr Contestant kContestants[] = {
    {"real", realShift}, {"own", ownWarp}, {"sharp", sharpWarp}, {"peer", accuracy::peerWarp}};

// --- Edges ---

constexpr int32_t kSide = 100, kPlaces = 40;
constexpr double kMiddle = 50;

// A vertical edge from 30 to 220 through (50 + offset, y), blurred by a Gaussian of 0.7 pixels as by a good lens.
Bytes edgeAt(double offset) {
  Bytes pixels;
  for (int32_t x = 0; x < kSide; ++x) {
    double sum = 0, weights = 0;
    for (double t = -4; t <= 4; t += 0.25) {
      const double weight = std::exp(-t * t / 2);
      const StraightEdge edge{kMiddle, kMiddle, 0, offset + 0.7 * t};
      sum += weight * edge.coverage(x, kMiddle), weights += weight;
    }
    pixels.push_back(static_cast<uint8_t>(std::floor(30.5 + 190 * sum / weights)));
  }
  Bytes image;
  for (int32_t y = 0; y < kSide; ++y) image.insert(image.end(), pixels.begin(), pixels.end());
  return image;
}

double measured(const Bytes& pixels, double angle) {
  const CaliperBox box = {kMiddle, kMiddle, 40, 15, static_cast<float>(angle)};
  CaliperEdgeCfg cfg = {};
  cfg.projection = DAXI_CALIPER_VERTICAL, cfg.polarity = DAXI_CALIPER_DARK_TO_LIGHT, cfg.filterHalfWidth = 3;
  cfg.threshold = 40, cfg.scoreFlags = 1, cfg.contrast = {0, 0, 0, 1000, 0, 1}, cfg.maxEdges = 1;
  std::vector<double> buffer(4096);
  CaliperEdge edge;
  CaliperEdgeResult result{&edge, nullptr, 0};
  require(DAXI_CalipEdgeDetect_8u_C1R(pixels.data(), kSide, {kSide, kSide}, &box, &cfg, &result, buffer.data()) == 0 &&
              result.count == 1,
          "no edge");
  return edge.position;
}

// Edges at places all over a pixel, and where they are measured.
struct Edge {
  Bytes image;
  double position;
};

const std::vector<Edge>& edges() {
  static const std::vector<Edge> all = [] {
    std::vector<Edge> made;
    for (int32_t i = 0; i < kPlaces; ++i) {
      const Bytes image = edgeAt((i + 0.5) / kPlaces - 0.5);
      made.push_back({image, measured(image, 0)});
    }
    return made;
  }();
  return all;
}

// Of these the mean and the worst difference between after and before.
void printEdges(const char* kind, double parameter, const double (&back)[9], double shift, double angle) {
  for (const Contestant& contestant : kContestants) {
    for (const int32_t interpolation : kInterpolations) {
      double sum = 0, worst = 0;
      int32_t count = 0;
      for (int32_t i = 0; i < kPlaces; ++i) {
        const Edge& edge = edges()[static_cast<size_t>(i)];
        const Bytes warped = contestant.warp(edge.image, {kSide, kSide}, back, interpolation);
        if (warped.empty()) break;
        const double error = measured(warped, angle) - edge.position - shift;
        ++count;
        sum += error;
        if (std::fabs(error) > std::fabs(worst)) worst = error;
      }
      if (count == 0) continue;
      std::printf("%s,%s,%s,%g,%.6f,%.6f\n", kind, contestant.name, kNames[interpolation], parameter, sum / count,
                  worst);
    }
  }
}

void printShifts() {
  constexpr int kSteps = 64;
  for (int i = 0; i < kSteps; ++i) {
    const double shift = (i + 0.5) / kSteps - 0.5;
    printEdges("shift", shift, {1, 0, -shift, 0, 1, 0, 0, 0, 1}, shift, 0);
  }
}

void turnBack(double centre, double angle, double (&back)[9]) {
  require(DAXI_RotationMatrix(centre, centre, -angle, 1, back) == 0, "no matrix");
}

void printTurns() {
  for (int degrees = 1; degrees < 90; ++degrees) {
    double back[9];
    turnBack(kMiddle, degrees * kRadians, back);
    printEdges("turn", degrees, back, 0, degrees * kRadians);
  }
}

// --- There and back ---

double psnrInside(const Bytes& a, const Bytes& b, int32_t side) {
  const double middle = (side - 1) / 2.0, radius = 0.4 * side;
  double squares = 0, count = 0;
  for (int32_t y = 0; y < side; ++y) {
    for (int32_t x = 0; x < side; ++x) {
      if (std::hypot(x - middle, y - middle) > radius) continue;
      const auto i = static_cast<size_t>(y * side + x);
      const double d = static_cast<double>(a[i]) - b[i];
      squares += d * d, ++count;
    }
  }
  return 10 * std::log10(255 * 255 * count / squares);
}

Bytes bytesOf(const dax::test::Image& image) {
  Bytes bytes;
  for (int32_t y = 0; y < image.size().height; ++y) {
    bytes.insert(bytes.end(), image.row(y), image.row(y) + image.size().width);
  }
  return bytes;
}

void printThereAndBack(const char* scene, const Bytes& image, int32_t side) {
  dax::test::Random random(5);
  for (int round = 0; round < 100; ++round) {
    const double angle = (random.below(3600000) / 1e4 - 180) * kRadians;
    for (const Contestant& contestant : kContestants) {
      for (const int32_t interpolation : kInterpolations) {
        double back[9];
        turnBack((side - 1) / 2.0, angle, back);
        const Bytes there = contestant.warp(image, {side, side}, back, interpolation);
        if (there.empty()) continue;
        turnBack((side - 1) / 2.0, -angle, back);
        const Bytes again = contestant.warp(there, {side, side}, back, interpolation);
        std::printf("back,%s,%s,%s,%.4f,0\n", contestant.name, kNames[interpolation], scene,
                    psnrInside(image, again, side));
      }
    }
  }
}

// --- Resizes ---

template <class T>
struct Resize;
#define DAX_RESIZE(SUFFIX, T)                                            \
  template <>                                                            \
  struct Resize<T> {                                                     \
    static constexpr auto kBytes = DAXI_ResizeBufferSize_##SUFFIX##_C1R; \
    static constexpr auto kCall = DAXI_Resize_##SUFFIX##_C1R;            \
  };
DAX_RESIZE(8u, uint8_t)
DAX_RESIZE(16u, uint16_t)
DAX_RESIZE(32f, float)
#undef DAX_RESIZE

constexpr DaxiSize kFrom = {96, 70};

template <class T>
std::vector<T> noise(double white) {
  dax::test::Random random(3);
  std::vector<T> pixels;
  // Half of it black or white, where sums of weights err most.
  for (int32_t i = 0; i < kFrom.width * kFrom.height; ++i) {
    const double part = random.below(1 << 16) / 65535.0;
    const double value = random.below(2) ? std::floor(part * (white + 0.999)) : white * std::rint(part);
    pixels.push_back(static_cast<T>(value));
  }
  return pixels;
}

template <class T>
double worstError(const std::vector<T>& image, const std::vector<T>& result, DaxiSize to, const DaxiResizeCfg& cfg,
                  double white) {
  const dax::oracle::Axis ax = {kFrom.width, to.width, 0, cfg.antialias != 0, cfg.interpolation, cfg.cubicA};
  const dax::oracle::Axis ay = {kFrom.height, to.height, 0, cfg.antialias != 0, cfg.interpolation, cfg.cubicA};
  const auto pixel = [&](int32_t x, int32_t y) { return image[static_cast<size_t>(y * kFrom.width + x)]; };
  double worst = 0;
  for (int32_t y = 0; y < to.height; ++y) {
    for (int32_t x = 0; x < to.width; ++x) {
      const auto exact = static_cast<double>(dax::oracle::resized(pixel, ax, ay, cfg.border, cfg.value, x, y));
      const double held = white > 1 ? std::clamp(exact, 0.0, white) : exact;
      worst = std::max(worst, std::fabs(static_cast<double>(result[static_cast<size_t>(y * to.width + x)]) - held));
    }
  }
  return worst;
}

template <class T>
void printResize(const char* type, double white, DaxiSize to, const DaxiResizeCfg& cfg, const char* title) {
  const std::vector<T> image = noise<T>(white);
  std::vector<T> result(static_cast<size_t>(to.width) * static_cast<size_t>(to.height));
  const DaxiRect all = {0, 0, to.width, to.height};
  uint64_t bytes = 0;
  require(Resize<T>::kBytes(kFrom, to, all, &cfg, &bytes) == 0, "no size of a resize");
  std::vector<double> buffer(bytes / sizeof(double) + 1);
  require(
      Resize<T>::kCall(image.data(), kFrom.width, kFrom, result.data(), to.width, to, all, &cfg, buffer.data()) == 0,
      "a resize was refused");
  const char* const name = kNames[cfg.interpolation];
  std::printf("resize,%s,%s,%s,%.4g,0\n", type, name, title, worstError(image, result, to, cfg, white));
  // The peer's kernels are never widened, and its linear one has the same formula.
  const bool isCommon = cfg.interpolation == DAXI_INTERPOLATION_LINEAR || cfg.interpolation == DAXI_INTERPOLATION_AREA;
  if constexpr (sizeof(T) == 1) {
    if (!isCommon || (cfg.antialias && cfg.interpolation == DAXI_INTERPOLATION_LINEAR && to.width < kFrom.width))
      return;
    const Bytes other = accuracy::peerResize(image, kFrom, to, cfg.interpolation);
    if (!other.empty()) {
      std::printf("resize,peer,%s,%s,%.4g,0\n", name, title, worstError(image, other, to, cfg, white));
    }
  }
}

void printResizes() {
  const struct {
    const char* title;
    DaxiSize to;
  } sizes[] = {{"by 0.37", {36, 26}}, {"by 1/2", {48, 35}}, {"by 2.5", {240, 175}}};
  for (const auto& [title, to] : sizes) {
    for (const int32_t interpolation :
         {DAXI_INTERPOLATION_LINEAR, DAXI_INTERPOLATION_CUBIC, DAXI_INTERPOLATION_LANCZOS3, DAXI_INTERPOLATION_AREA}) {
      DaxiResizeCfg cfg;
      require(DAXI_ResizeDefaultCfg(&cfg) == 0, "no configuration");
      cfg.interpolation = interpolation, cfg.antialias = 0;
      printResize<uint8_t>("8u", 255, to, cfg, title);
      printResize<uint16_t>("16u", 65535, to, cfg, title);
      printResize<float>("32f", 1, to, cfg, title);
      if (interpolation == DAXI_INTERPOLATION_AREA || to.width > kFrom.width) continue;
      cfg.antialias = 1;
      printResize<uint8_t>("8u widened", 255, to, cfg, title);
      printResize<uint16_t>("16u widened", 65535, to, cfg, title);
      printResize<float>("32f widened", 1, to, cfg, title);
    }
  }
}

}  // namespace

int main() {
  printShifts();
  printTurns();
  constexpr int32_t kPicture = 256;
  printThereAndBack("hills", bytesOf(dax::test::hills({kPicture, kPicture}, 7)), kPicture);
  printThereAndBack("board", bytesOf(dax::test::boardOf(11, 11, {kPicture, kPicture})), kPicture);
  printResizes();
  return 0;
}
