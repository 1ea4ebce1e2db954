// Recall, false boards, errors and times of the board detectors, on rendered boards, photographs and images without
// boards. Lines of tab-separated values; what the columns are is in scripts/chessboard-accuracy.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "accuracy/chessboard_detectors.h"
#include "tests/support/board_truth.h"

namespace {

using accuracy::Detector;
using accuracy::Found;
using accuracy::Image;
using dax::test::BoardImage;
using dax::test::BoardView;
using dax::test::PlanePoint;
using dax::test::Random;

// A corner further off than this was not found.
constexpr double kLostPixels = 8;

double uniform(Random& random, double low, double high) {
  return low + (high - low) * static_cast<double>(random.below(1000001)) / 1e6;
}

BoardView randomView(Random& random) {
  static const ChessboardPatternSize kSizes[] = {{3, 3}, {4, 3},  {5, 4},   {7, 5},  {8, 6},
                                                 {9, 6}, {11, 8}, {14, 10}, {20, 14}};
  const ChessboardPatternSize pattern = kSizes[random.below(9)];
  BoardView view;
  view.columns = pattern.columns, view.rows = pattern.rows;
  view.size = pattern.columns > 11 ? DaxiSize{1280, 960} : DaxiSize{640, 480};
  view.rotation = uniform(random, 0, 360);
  view.tilt = uniform(random, 0, 50);
  view.tiltAxis = uniform(random, 0, 360);
  view.blur = uniform(random, 0.5, 2.5);
  view.noise = uniform(random, 0, 10);
  view.gradient = uniform(random, 1, 4);
  view.distortion = uniform(random, -0.05, 0.05);
  view.firstDark = random.below(2) == 0;
  view.seed = random.next();
  return view;
}

struct Tally {
  int32_t images = 0, found = 0;
  std::vector<double> errors, refined, milliseconds;

  static double mean(const std::vector<double>& v) {
    double sum = 0;
    for (const double x : v) sum += x;
    return v.empty() ? 0 : sum / static_cast<double>(v.size());
  }
  static double quantile(std::vector<double> v, double q) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v[static_cast<size_t>(q * static_cast<double>(v.size() - 1))];
  }
  void print(const char* set, const char* name) const {
    std::printf("%s\t%s\t%d\t%d\t%.4f\t%.4f\t%.4f\t%.4f\t%.3f\n", set, name, images, found, mean(errors),
                quantile(errors, 0.95), mean(refined), quantile(refined, 0.95), quantile(milliseconds, 0.5));
  }
};

Found timed(const Detector& detector, const Image& image, ChessboardPatternSize pattern, Tally& tally) {
  const auto start = std::chrono::steady_clock::now();
  Found found = detector.find(image, pattern);
  tally.milliseconds.push_back(
      std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  ++tally.images;
  return found;
}

std::vector<double> errorsOf(const std::vector<DaxiPoint32f>& corners, const std::vector<PlanePoint>& truth) {
  std::vector<double> errors;
  for (const PlanePoint& p : truth) {
    double nearest = 1e9;
    for (const DaxiPoint32f& c : corners) nearest = std::min(nearest, dax::test::distance(c, p));
    errors.push_back(nearest);
  }
  return errors;
}

void append(std::vector<double>& to, const std::vector<double>& from) {
  to.insert(to.end(), from.begin(), from.end());
}

std::vector<DaxiPoint32f> refine(const Image& image, std::vector<DaxiPoint32f> corners, int32_t half) {
  DAXI_ChessboardCornerGetSubpix_8u_C1R(image.data(), image.step(), image.size(), corners.data(),
                                        static_cast<int32_t>(corners.size()), {half, half}, 30, corners.data(), 1e-4f);
  return corners;
}

bool hasShape(const Found& found, ChessboardPatternSize p) {
  return (found.columns == p.columns && found.rows == p.rows) || (found.columns == p.rows && found.rows == p.columns);
}

// A window for refinement: two fifths of the distance to the nearest other corner, at most 8.
int32_t windowFor(const std::vector<DaxiPoint32f>& corners) {
  double nearest = 1e9;
  for (size_t i = 0; i < corners.size(); ++i) {
    for (size_t j = 0; j < i; ++j) {
      nearest = std::min(nearest, dax::test::distance(corners[i], {static_cast<double>(corners[j].x),
                                                                   static_cast<double>(corners[j].y)}));
    }
  }
  return std::clamp(static_cast<int32_t>(0.4 * nearest), 2, 8);
}

void rendered(const char* set, const std::vector<BoardView>& views, const std::vector<Detector>& all, bool verbose) {
  std::vector<Tally> tallies(all.size());
  for (const BoardView& view : views) {
    const BoardImage board(view);
    const ChessboardPatternSize pattern{view.columns, view.rows};
    for (size_t i = 0; i < all.size(); ++i) {
      const Found found = timed(all[i], board.image, pattern, tallies[i]);
      std::vector<double> errors;
      if (hasShape(found, pattern)) errors = errorsOf(found.corners, board.corners);
      const bool good = !errors.empty() && *std::max_element(errors.begin(), errors.end()) <= kLostPixels;
      if (!good) {
        if (verbose) {
          std::printf("lost\t%s\t%d x %d: %d x %d\ttilt %.0f rotation %.0f blur %.1f noise %.1f gradient %.1f distortion %.3f window %d\n", all[i].name,
                      view.columns, view.rows, found.columns, found.rows, view.tilt, view.rotation, view.blur, view.noise, view.gradient,
                      view.distortion, windowFor(errors.empty() ? [&]{std::vector<DaxiPoint32f> t; for (auto& p : board.corners) t.push_back({(float)p.x,(float)p.y}); return t;}() : found.corners));
        }
        continue;
      }
      ++tallies[i].found;
      append(tallies[i].errors, errors);
      append(tallies[i].refined, errorsOf(refine(board.image, found.corners, windowFor(found.corners)), board.corners));
    }
  }
  for (size_t i = 0; i < all.size(); ++i) tallies[i].print(set, all[i].name);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Detector> all = accuracy::detectors();
  if (argc > 1 && std::strcmp(argv[1], "lost") != 0)
    all.insert(all.end(), accuracy::peerDetectors().begin(), accuracy::peerDetectors().end());
  const int32_t count = argc > 2 ? std::atoi(argv[2]) : 100;
  Random random(42);
  std::vector<BoardView> views;
  for (int32_t i = 0; i < count; ++i) views.push_back(randomView(random));
  rendered("rendered", views, all, argc > 1 && std::strcmp(argv[1], "lost") == 0);
}
