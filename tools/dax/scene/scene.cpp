#include "scene/scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/random.h"
#include "draw/shapes.h"

namespace dax::tool {
namespace {

constexpr int kPartCell = 150;  // pixels; one part a cell
constexpr int kSamples = 8;     // per pixel side
constexpr int kMinLevel = 165;  // of parts
constexpr int kMaxLevel = 215;

// A shape with position and angle. The angle is 2 atan(t) with rational t, so that sine and cosine are quotients.
struct Placed {
  Shape shape;
  double x;
  double y;
  double sine;
  double cosine;
  int level;
};

Placed place(Random& random, const Shape& shape, double x, double y) {
  const double t = random.integer(-255, 255) / 256.0;
  const double norm = 1 + t * t;
  return {shape, x, y, 2 * t / norm, (1 - t * t) / norm, random.integer(kMinLevel, kMaxLevel)};
}

Shape randomPartShape(Random& random) {
  const auto kind = static_cast<ShapeKind>(random.integer(0, kShapeKinds - 1));
  switch (kind) {
    case ShapeKind::kDisc:
      return {kind, random.real(18, 44), 0, 0};
    case ShapeKind::kRing:
      return {kind, random.real(30, 46), random.real(24, 40), 0};
    case ShapeKind::kRectangle:
      return {kind, random.real(60, 94), random.real(24, 46), 0};
    case ShapeKind::kSlot:
      return {kind, random.real(44, 72), random.real(20, 36), 0};
    case ShapeKind::kHexNut:
      return {kind, random.real(58, 84), random.real(26, 38), 0};
    case ShapeKind::kBracket:
      return {kind, random.real(74, 92), random.real(44, 56), random.real(16, 22)};
  }
  return {};
}

// Background 35..95: brighter to the right and below, with a bright spot left of the middle.
double background(double x, double y) {
  const double spot = std::max(0.0, 1 - 6 * ((x - 0.35) * (x - 0.35) + (y - 0.45) * (y - 0.45)));
  return 35 + 22 * x + 14 * y + 24 * spot * spot;
}

// Offset of a sample from the middle of its pixel.
double sampleOffset(int index) {
  return (2 * index + 1 - kSamples) / (2.0 * kSamples);
}

// The fraction of a pixel that a part covers, in 1 / kSamples^2.
int coverage(const Placed& part, int x, int y) {
  int inside = 0;
  for (int j = 0; j < kSamples; ++j) {
    const double dy = y - part.y + sampleOffset(j);
    for (int i = 0; i < kSamples; ++i) {
      const double dx = x - part.x + sampleOffset(i);
      inside += part.shape.contains(dx * part.cosine + dy * part.sine, dy * part.cosine - dx * part.sine) ? 1 : 0;
    }
  }
  return inside;
}

class Canvas {
 public:
  explicit Canvas(DaxiSize size) : size_(size), values_(static_cast<size_t>(size.width) * size.height) {}

  // light(x, y) with x and y in 0..1.
  template <class Light>
  void fill(Light light) {
    for (int y = 0; y < size_.height; ++y) {
      for (int x = 0; x < size_.width; ++x) at(x, y) = light(double(x) / size_.width, double(y) / size_.height);
    }
  }

  // Streaks along the rows: each row has a level of its own, and what each pixel adds to it fades to the right.
  void brush(Random& random) {
    for (int y = 0; y < size_.height; ++y) {
      const double level = random.real(-9, 9);
      double streak = random.real(-6, 6);
      for (int x = 0; x < size_.width; ++x) {
        streak = 0.98 * streak + random.real(-2, 2) * 0.75;
        at(x, y) += level + streak;
      }
    }
  }

  void draw(const Placed& part) {
    const int reach = static_cast<int>(part.shape.reach()) + 2;
    const int left = static_cast<int>(part.x) - reach;
    const int top = static_cast<int>(part.y) - reach;
    for (int y = std::max(0, top); y <= std::min(size_.height - 1, top + 2 * reach + 1); ++y) {
      for (int x = std::max(0, left); x <= std::min(size_.width - 1, left + 2 * reach + 1); ++x) {
        const double share = coverage(part, x, y) / double(kSamples * kSamples);
        at(x, y) += share * (part.level - at(x, y));
      }
    }
  }

  // Adds noise of standard deviation 3.7, the sum of four uniform variates of +-3.2, and rounds.
  GreyImage develop(Random& random) const {
    GreyImage image = makeGreyImage(size_);
    for (size_t i = 0; i < values_.size(); ++i) {
      int noise = 0;
      for (int k = 0; k < 4; ++k) noise += random.integer(-205, 205);
      image.pixels[i] = static_cast<uint8_t>(std::clamp(std::floor(values_[i] + noise / 64.0 + 0.5), 0.0, 255.0));
    }
    return image;
  }

 private:
  double& at(int x, int y) { return values_[static_cast<size_t>(y) * size_.width + x]; }

  DaxiSize size_;
  std::vector<double> values_;
};

TruePart truthOf(const Placed& part) {
  const double u = part.shape.centroidU();
  const double v = part.shape.centroidV();
  TruePart truth;
  truth.kind = part.shape.name();
  truth.x = part.x + u * part.cosine - v * part.sine;
  truth.y = part.y + u * part.sine + v * part.cosine;
  truth.area = part.shape.area();
  if (part.shape.anglePeriod() > 0) {
    truth.angle = std::atan2(part.sine, part.cosine) * 180 / std::numbers::pi;
    truth.anglePeriod = part.shape.anglePeriod();
  }
  return truth;
}

// A cell's left and upper end, and a place near its middle.
struct Cell {
  double left, top;
  double x, y;
};

template <class Use>
void forCells(DaxiSize size, Random& random, Use use) {
  const int columns = size.width / kPartCell;
  const int rows = size.height / kPartCell;
  // Left or upper end of a cell along one side.
  const auto start = [](int cell, int side, int cells) { return double(side) * cell / cells; };
  for (int cell = 0; cell < columns * rows; ++cell) {
    const double left = start(cell % columns, size.width, columns);
    const double top = start(cell / columns, size.height, rows);
    const double x = left + 0.5 * size.width / columns - 0.5 + random.real(-14, 14);
    const double y = top + 0.5 * size.height / rows - 0.5 + random.real(-14, 14);
    use(Cell{left, top, x, y});
  }
}

// Across the streaks, at an angle of at least 39 degrees to them.
Placed randomScratch(Random& random, const Cell& cell) {
  const Shape shape{ShapeKind::kRectangle, random.real(40, 100), random.real(2, 4), 0};
  Placed scratch = place(random, shape, cell.x, cell.y);
  const double t = random.integer(90, 255) / (random.integer(0, 1) == 0 ? 256.0 : -256.0);
  scratch.sine = 2 * t / (1 + t * t), scratch.cosine = (1 - t * t) / (1 + t * t);
  return scratch;
}

}  // namespace

Scene renderBrushedMetal(DaxiSize size, uint64_t seed) {
  Random random(seed);
  Canvas canvas(size);
  Scene scene;
  scene.truth.width = size.width;
  scene.truth.height = size.height;
  canvas.fill([](double x, double y) { return 60 + background(x, y); });
  canvas.brush(random);
  forCells(size, random, [&](const Cell& cell) {
    const Placed scratch = randomScratch(random, cell);
    canvas.draw(scratch);
    scene.truth.parts.push_back(truthOf(scratch));
    scene.truth.parts.back().kind = "scratch";
  });
  scene.image = canvas.develop(random);
  return scene;
}

Scene renderScene(DaxiSize size, uint64_t seed) {
  Random random(seed);
  Canvas canvas(size);
  Scene scene;
  scene.truth.width = size.width;
  scene.truth.height = size.height;
  canvas.fill(background);
  forCells(size, random, [&](const Cell& cell) {
    const Placed part = place(random, randomPartShape(random), cell.x, cell.y);
    canvas.draw(part);
    scene.truth.parts.push_back(truthOf(part));
    // Dust lies in the corner of the cell, where no part reaches.
    const Shape speck{ShapeKind::kDisc, random.integer(8, 20) / 10.0, 0, 0};
    const double dustX = cell.left + random.real(1, 9);
    const double dustY = cell.top + random.real(1, 9);
    canvas.draw(place(random, speck, dustX, dustY));
  });
  scene.image = canvas.develop(random);
  return scene;
}

}  // namespace dax::tool
