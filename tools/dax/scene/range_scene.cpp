#include "scene/range_scene.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/random.h"
#include "draw/shapes.h"

namespace dax::tool {
namespace {

constexpr int kCell = 150;  // pixels; one part per cell
constexpr float kPitch = 0.1F;
constexpr float kStep = 0.001F;
constexpr double kChamfer = 0.4;  // height and width
constexpr int kChamferPixels = 4;
constexpr double kLightSlope = 1.5;  // of the laser's plane
constexpr int kLongestShadow = 60;   // pixels
constexpr int kDropoutPerMille = 12;
constexpr int kPixelsPerReflection = 3000;

// A part with position and angle. The angle is 2 atan(t) with rational t, so that sine and cosine are quotients.
struct Part {
  Shape shape;
  double x, y, sine, cosine;
  double height;

  bool isInside(double u, double v, double reach) const {
    return shape.contains(u + reach, v) && shape.contains(u - reach, v) && shape.contains(u, v + reach) &&
           shape.contains(u, v - reach);
  }

  // Height above the plate; discs are domes, other parts have chamfers.
  double heightAt(double px, double py) const {
    const double dx = px - x, dy = py - y;
    const double u = dx * cosine + dy * sine, v = dy * cosine - dx * sine;
    if (!shape.contains(u, v)) return 0;
    if (shape.kind == ShapeKind::kDisc) return height * std::sqrt(1 - (u * u + v * v) / (1.001 * shape.a * shape.a));
    int rim = 0;  // pixels to the nearest edge, up to the width of the chamfer
    while (rim < kChamferPixels && isInside(u, v, rim + 1)) ++rim;
    return height - kChamfer + kChamfer * rim / kChamferPixels;
  }
};

Shape randomShape(Random& random) {
  const auto kind = static_cast<ShapeKind>(random.integer(0, kShapeKinds - 1));
  switch (kind) {
    case ShapeKind::kDisc:
      return {kind, random.real(24, 44), 0, 0};
    case ShapeKind::kRing:
      return {kind, random.real(34, 46), random.real(26, 44), 0};
    case ShapeKind::kRectangle:
      return {kind, random.real(70, 94), random.real(30, 46), 0};
    case ShapeKind::kSlot:
      return {kind, random.real(48, 72), random.real(24, 36), 0};
    case ShapeKind::kHexNut:
      return {kind, random.real(60, 84), random.real(28, 38), 0};
    case ShapeKind::kBracket:
      return {kind, random.real(76, 92), random.real(48, 56), random.real(18, 24)};
  }
  return {};
}

class HeightField {
 public:
  explicit HeightField(DaxiSize size) : size_(size), heights_(static_cast<size_t>(size.width) * size.height) {
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) at(x, y) = 0.0004 * x + 0.0002 * y;  // the plate is slightly tilted
    }
  }

  void add(const Part& part) {
    const int reach = static_cast<int>(part.shape.reach()) + 2;
    const int left = static_cast<int>(part.x) - reach, top = static_cast<int>(part.y) - reach;
    for (int y = std::max(0, top); y <= std::min(size_.height - 1, top + 2 * reach + 1); ++y) {
      for (int x = std::max(0, left); x <= std::min(size_.width - 1, left + 2 * reach + 1); ++x) {
        at(x, y) += part.heightAt(x, y);
      }
    }
  }

  // The laser's plane is tilted: a higher point to the left casts a shadow.
  bool inShadow(int x, int y) const {
    for (int d = 1; d <= std::min(x, kLongestShadow); ++d) {
      if (at(x - d, y) - at(x, y) > d * kPitch * kLightSlope) return true;
    }
    return false;
  }

  double at(int x, int y) const { return heights_[static_cast<size_t>(y) * size_.width + x]; }
  double& at(int x, int y) { return heights_[static_cast<size_t>(y) * size_.width + x]; }

 private:
  DaxiSize size_;
  std::vector<double> heights_;
};

void addParts(HeightField& field, DaxiSize size, Random& random) {
  const int columns = size.width / kCell, rows = size.height / kCell;
  for (int cell = 0; cell < columns * rows; ++cell) {
    const Shape shape = randomShape(random);
    const double t = random.integer(-255, 255) / 256.0, norm = 1 + t * t;
    const int column = cell % columns, row = cell / columns;
    const double x = (column + 0.5) * size.width / columns + random.real(-14, 14);
    const double y = (row + 0.5) * size.height / rows + random.real(-14, 14);
    field.add({shape, x, y, 2 * t / norm, (1 - t * t) / norm, random.real(1, 4)});
  }
}

// Patches of a few pixels with a common displacement.
void addReflections(RangeImage& image, Random& random) {
  const DaxiSize size = image.size();
  for (int left = size.width * size.height / kPixelsPerReflection; left > 0; --left) {
    const int x0 = random.integer(0, size.width - 6), y0 = random.integer(0, size.height - 6);
    const int width = random.integer(2, 5), height = random.integer(2, 5), shift = random.integer(700, 5000);
    for (int y = y0; y < y0 + height; ++y) {
      for (int x = x0; x < x0 + width; ++x) {
        int16_t& value = image.values()[static_cast<size_t>(y) * size.width + x];
        value = static_cast<int16_t>(std::min(value + shift, 32767));
      }
    }
  }
}

}  // namespace

RangeImage renderRangeScene(DaxiSize size, uint64_t seed) {
  Random random(seed);
  HeightField field(size);
  addParts(field, size, random);
  RangeImage image = RangeImage::make(size, {kPitch, kPitch, kStep}, {0, 0, 0});
  size_t pixel = 0;
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x, ++pixel) {
      int noise = 0;  // a standard deviation of 7 micrometres
      for (int k = 0; k < 4; ++k) noise += random.integer(-6, 6);
      image.values()[pixel] = static_cast<int16_t>(std::floor(field.at(x, y) * 1000 + noise + 0.5));
      const bool lost = random.integer(0, 999) < kDropoutPerMille;
      image.mask()[pixel] = lost || field.inShadow(x, y) ? 0 : 255;
    }
  }
  addReflections(image, random);
  return image;
}

}  // namespace dax::tool
