// Recall, false boards, errors and times of the board detectors, on rendered boards, photographs and images without
// boards. Lines of tab-separated values; what the columns are is in scripts/accuracy-chessboard.
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/accuracy/chessboard_detectors.h"
#include "tests/calib/board/board_truth.h"

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

void rendered(const char* set, const std::vector<BoardView>& views, const std::vector<Detector>& all) {
  std::vector<Tally> tallies(all.size());
  for (const BoardView& view : views) {
    const BoardImage board(view);
    const ChessboardPatternSize pattern{view.columns, view.rows};
    for (size_t i = 0; i < all.size(); ++i) {
      const Found found = timed(all[i], board.image, pattern, tallies[i]);
      std::vector<double> errors;
      if (hasShape(found, pattern)) errors = errorsOf(found.corners, board.corners);
      const bool good = !errors.empty() && *std::max_element(errors.begin(), errors.end()) <= kLostPixels;
      if (!good) continue;
      ++tallies[i].found;
      append(tallies[i].errors, errors);
      append(tallies[i].refined, errorsOf(refine(board.image, found.corners, windowFor(found.corners)), board.corners));
    }
  }
  for (size_t i = 0; i < all.size(); ++i) tallies[i].print(set, all[i].name);
}

// Root of the mean squared distance between the corners and those of an ideal board, mapped to them by the homography
// that fits best: linear least squares on normalised coordinates (R. Hartley, A. Zisserman, Multiple View Geometry, 4.1).
double homographyResidual(const std::vector<DaxiPoint32f>& corners, int32_t columns) {
  const auto n = corners.size();
  double cx = 0, cy = 0;
  for (const DaxiPoint32f& p : corners) cx += p.x / static_cast<double>(n), cy += p.y / static_cast<double>(n);
  constexpr double kScale = 0.01;
  std::array<std::array<double, 9>, 8> m{};
  const auto add = [&](const std::array<double, 9>& row) {
    for (size_t i = 0; i < 8; ++i) {
      for (size_t j = 0; j < 9; ++j) m[i][j] += row[i] * row[j];
    }
  };
  for (size_t i = 0; i < n; ++i) {
    const double x = static_cast<double>(i % static_cast<size_t>(columns)) - 4;
    const double y = static_cast<double>(i / static_cast<size_t>(columns)) - 3;
    const double u = (static_cast<double>(corners[i].x) - cx) * kScale,
                 v = (static_cast<double>(corners[i].y) - cy) * kScale;
    add({x, y, 1, 0, 0, 0, -u * x, -u * y, u});
    add({0, 0, 0, x, y, 1, -v * x, -v * y, v});
  }
  for (size_t k = 0; k < 8; ++k) {
    for (size_t i = 0; i < 8; ++i) {
      if (i == k) continue;
      const double f = m[i][k] / m[k][k];
      for (size_t j = k; j < 9; ++j) m[i][j] -= f * m[k][j];
    }
  }
  std::array<double, 8> h;
  for (size_t k = 0; k < 8; ++k) h[k] = m[k][8] / m[k][k];
  double sum = 0;
  for (size_t i = 0; i < n; ++i) {
    const double x = static_cast<double>(i % static_cast<size_t>(columns)) - 4;
    const double y = static_cast<double>(i / static_cast<size_t>(columns)) - 3;
    const double w = h[6] * x + h[7] * y + 1;
    const double u = (h[0] * x + h[1] * y + h[2]) / w / kScale + cx, v = (h[3] * x + h[4] * y + h[5]) / w / kScale + cy;
    sum += std::pow(u - static_cast<double>(corners[i].x), 2) + std::pow(v - static_cast<double>(corners[i].y), 2);
  }
  return std::sqrt(sum / static_cast<double>(n));
}

// The same after a radial term of the lens is taken out: r becomes r (1 + k (r / half diagonal)^2) about the centre of
// the image, with the k that fits best, by golden section.
double lensResidual(const std::vector<DaxiPoint32f>& corners, int32_t columns, DaxiSize size) {
  const double cx = (size.width - 1) / 2.0, cy = (size.height - 1) / 2.0, half2 = cx * cx + cy * cy;
  const auto residual = [&](double k) {
    std::vector<DaxiPoint32f> straight;
    for (const DaxiPoint32f& p : corners) {
      const double dx = static_cast<double>(p.x) - cx, dy = static_cast<double>(p.y) - cy;
      const double f = 1 + k * (dx * dx + dy * dy) / half2;
      straight.push_back({static_cast<float>(cx + f * dx), static_cast<float>(cy + f * dy)});
    }
    return homographyResidual(straight, columns);
  };
  constexpr double kGolden = 0.6180339887498949;
  double low = -1, high = 1;
  for (int i = 0; i < 40; ++i) {
    const double a = high - kGolden * (high - low), b = low + kGolden * (high - low);
    (residual(a) < residual(b) ? high : low) = residual(a) < residual(b) ? b : a;
  }
  return residual((low + high) / 2);
}

bool load(const char* path, std::vector<uint8_t>& pixels, DaxiSize& size) {
  if (accuracy::readPhotograph(path, pixels, size)) return true;
  std::fprintf(stderr, "%s: cannot be read\n", path);
  return false;
}

Image toImage(const std::vector<uint8_t>& pixels, DaxiSize size) {
  Image image(size);
  image.fill([&](int32_t x, int32_t y) {
    return pixels[static_cast<size_t>(y) * static_cast<size_t>(size.width) + static_cast<size_t>(x)];
  });
  return image;
}

// Photographs of a board of 9 x 6 corners: found ones; errors are residuals of the homography, of corners as found and
// as refined; in a second set those of refined corners without and with a radial term of the lens.
void photographs(const std::vector<const char*>& paths, const std::vector<Detector>& all) {
  const ChessboardPatternSize pattern{9, 6};
  std::vector<Tally> tallies(all.size()), lens(all.size());
  for (const char* const path : paths) {
    std::vector<uint8_t> pixels;
    DaxiSize size{};
    if (!load(path, pixels, size)) std::exit(1);
    const Image image = toImage(pixels, size);
    for (size_t i = 0; i < all.size(); ++i) {
      const Found found = timed(all[i], image, pattern, tallies[i]);
      if (!hasShape(found, pattern)) {
        std::fprintf(stderr, "%s: lost by %s\n", path, all[i].name);
        continue;
      }
      ++tallies[i].found;
      tallies[i].errors.push_back(homographyResidual(found.corners, found.columns));
      const std::vector<DaxiPoint32f> refined = refine(image, found.corners, windowFor(found.corners));
      tallies[i].refined.push_back(homographyResidual(refined, found.columns));
      ++lens[i].found;
      lens[i].errors.push_back(tallies[i].refined.back());
      lens[i].refined.push_back(lensResidual(refined, found.columns, size));
    }
  }
  for (size_t i = 0; i < all.size(); ++i) tallies[i].print("photographs", all[i].name);
  for (size_t i = 0; i < all.size(); ++i) lens[i].print("lens", all[i].name);
}

// Tiles of photographs without boards, then noise of every grain, then stripes and dots: 500 images. What is found is
// false.
std::vector<Image> imagesWithoutBoards(const std::vector<const char*>& paths) {
  std::vector<Image> images;
  Random random(7);
  for (const char* const path : paths) {
    std::vector<uint8_t> pixels;
    DaxiSize size{};
    if (!load(path, pixels, size)) continue;
    for (int32_t k = 0; k < 12 && images.size() < 350 && std::min(size.width, size.height) >= 64; ++k) {
      const DaxiSize part{std::min(size.width, 64 + random.below(576)), std::min(size.height, 64 + random.below(416))};
      const int32_t left = random.below(size.width - part.width + 1), top = random.below(size.height - part.height + 1);
      Image tile(part);
      tile.fill([&](int32_t x, int32_t y) {
        return pixels[static_cast<size_t>(y + top) * static_cast<size_t>(size.width) + static_cast<size_t>(x + left)];
      });
      images.push_back(std::move(tile));
    }
  }
  while (images.size() < 500) {
    const DaxiSize size{640, 480};
    Image image(size);
    const int32_t kind = random.below(4), grain = 1 + random.below(20), amplitude = 1 + random.below(127);
    Image cells({size.width / grain + 2, size.height / grain + 2});
    cells.randomize(random.next());
    image.fill([&](int32_t x, int32_t y) {
      const int32_t bond = kind == 1 && y / grain % 2 ? grain / 2 : 0;
      const int32_t c = cells.at((x + bond) / grain, y / grain) - 128;
      switch (kind) {
        case 0:
          return 128 + c * amplitude / 128;  // noise in cells
        case 1:
          return c > 0 ? 40 : 210;  // black and white bricks
        case 2:
          return 128 + (x / grain % 2 ? amplitude : -amplitude) + c / 8;  // stripes
        default:
          return (x % (3 * grain) < grain && y % (3 * grain) < grain) ? 30 : 200 + c / 4;  // squares apart
      }
    });
    images.push_back(std::move(image));
  }
  return images;
}

void withoutBoards(const std::vector<const char*>& paths, const std::vector<Detector>& all) {
  std::vector<Tally> tallies(all.size());
  int32_t number = 0;
  for (const Image& image : imagesWithoutBoards(paths)) {
    for (size_t i = 0; i < all.size(); ++i) {
      const Found found = timed(all[i], image, {9, 6}, tallies[i]);
      if (found.columns == 0) continue;
      ++tallies[i].found;
      std::fprintf(stderr, "image %d: %s finds %d x %d at %.0f, %.0f\n", number, all[i].name, found.columns, found.rows,
                   static_cast<double>(found.corners[0].x), static_cast<double>(found.corners[0].y));
    }
    ++number;
  }
  for (size_t i = 0; i < all.size(); ++i) tallies[i].print("no board", all[i].name);
}

std::vector<BoardView> randomViews(int32_t count) {
  Random random(42);
  std::vector<BoardView> views;
  for (int32_t i = 0; i < count; ++i) views.push_back(randomView(random));
  return views;
}

// Boards as on a good day: little blur, even light, the given noise, squares of 20 pixels and more.
std::vector<BoardView> easyViews(int32_t count, double noise) {
  Random random(43);
  std::vector<BoardView> views;
  while (static_cast<int32_t>(views.size()) < count) {
    BoardView view = randomView(random);
    if (view.columns > 11) continue;
    view.size = {800, 600};
    view.tilt *= 0.6, view.blur = 0.5 + view.blur / 5, view.gradient = 1, view.distortion = 0, view.noise = noise;
    views.push_back(view);
  }
  return views;
}

int usage() {
  std::fputs("usage: chessboard_accuracy all|own|peers rendered COUNT | photographs FILE... | none FILE...\n", stderr);
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return usage();
  const std::string which = argv[1], set = argv[2];
  if (which != "all" && which != "own" && which != "peers") return usage();
  std::vector<Detector> chosen;
  const auto choose = [&](const std::vector<Detector>& some) { chosen.insert(chosen.end(), some.begin(), some.end()); };
  if (which != "peers") choose(accuracy::detectors());
  if (which != "own") choose(accuracy::peerDetectors());
  const std::vector<const char*> paths(argv + 3, argv + argc);
  if (set == "rendered" && argc == 4) {
    const int32_t count = std::atoi(argv[3]);
    rendered("hard", randomViews(count), chosen);
    rendered("clean", easyViews(count / 4, 0), chosen);
    rendered("noise 5", easyViews(count / 4, 5), chosen);
  } else if (set == "photographs") {
    photographs(paths, chosen);
  } else if (set == "none") {
    withoutBoards(paths, chosen);
  } else {
    return usage();
  }
}
