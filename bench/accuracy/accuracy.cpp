// Errors of blob features on shapes whose features are known: discs and rectangles of many sizes, directions and
// positions between the pixels, rendered by the rule of pixel centres. Prints one line of CSV a shape.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <vector>

#include "daxi/blob_select.h"

namespace {

constexpr double kPi = std::numbers::pi;

// A disc (width = height, the diameter) or a rectangle.
struct Shape {
  bool disc;
  double width;   // long side
  double height;  // short side
  int degrees;    // direction of the long side
  double x;
  double y;

  double radians() const { return degrees * kPi / 180; }
  double area() const { return disc ? kPi / 4 * width * width : width * height; }
  double perimeter() const { return disc ? kPi * width : 2 * (width + height); }
  double circularity() const { return disc ? 1 : area() / (kPi / 4 * (width * width + height * height)); }

  bool contains(double px, double py) const {
    const double dx = px - x, dy = py - y;
    if (disc) return dx * dx + dy * dy <= width * width / 4;
    const double c = std::cos(radians()), s = std::sin(radians());
    return std::abs(dx * c + dy * s) <= width / 2 && std::abs(dy * c - dx * s) <= height / 2;
  }
};

// Positions within a pixel, the same in every run and on every machine. They are odd multiples of 1 / 2048, so that no
// side of an upright rectangle goes through pixel centres.
class Positions {
 public:
  double next() {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return (static_cast<double>(state_ >> 54) + 0.5) / 1024;
  }

 private:
  uint64_t state_ = 1;
};

void require(bool fulfilled, const char* what) {
  if (fulfilled) return;
  std::fprintf(stderr, "accuracy: %s\n", what);
  std::exit(1);
}

// A pixel is set where its centre lies in the shape.
std::vector<uint8_t> render(const Shape& shape, DaxiSize size) {
  std::vector<uint8_t> mask(static_cast<size_t>(size.width) * size.height);
  auto* pixel = mask.data();
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) *pixel++ = shape.contains(x, y) ? 255 : 0;
  }
  return mask;
}

BlobInfo measure(const Shape& shape, DaxiSize size) {
  const std::vector<uint8_t> mask = render(shape, size);
  DaxiBlobModel* model = nullptr;
  const DaxiDomainList* domains = nullptr;
  require(DAXI_BlobFindV2_8u_C1R(mask.data(), size.width, size, 8, &model, &domains) == DAX_STS_OK,
          "labelling refused");
  require(_DAXI_DomainCount(domains) == 1, "a shape is not one blob");
  uint64_t bytes;
  require(DAXI_BlobSelectBufferSize_8u(size, &bytes) == DAX_STS_OK, "no buffer size");
  std::vector<std::max_align_t> buffer(bytes / sizeof(std::max_align_t) + 1);
  BlobSelectCfg cfg{};
  cfg.maxCount = 1;
  cfg.sortOrder = DAXI_BLOB_UNSORTED;
  cfg.sortKey = DAXI_BLOB_KEY_AREA;
  BlobInfo blob{};
  BlobSelectResult result{&blob, 0, nullptr};
  require(DAXI_BlobSelectV2_8u_C1R(mask.data(), size.width, size, domains, &result, &cfg, buffer.data()) == DAX_STS_OK,
          "selection refused");
  DAXI_BlobFindV2DestroyModel_8u(&model);
  return blob;
}

// Difference of directions, degrees. A square looks the same after a quarter of a turn, others after half of one.
double angleError(const Shape& shape, const BlobInfo& blob) {
  const double period = shape.width == shape.height ? 90 : 180;
  return std::remainder(blob.boxAngle * 180 / kPi - shape.degrees, period);
}

void print(const Shape& shape, DaxiSize size) {
  const BlobInfo blob = measure(shape, size);
  std::printf("%s,%g,%g,%d,%.6f,%.6f,%.6f,%.6f,%.6f,%.6f,%.6f\n", shape.disc ? "disc" : "rectangle", shape.width,
              shape.height, shape.degrees, 100 * (blob.area / shape.area() - 1),
              std::hypot(blob.centroidX - shape.x, blob.centroidY - shape.y),
              100 * (blob.perimeter / shape.perimeter() - 1), blob.boxWidth - shape.width,
              blob.boxHeight - shape.height, shape.disc ? 0 : angleError(shape, blob),
              blob.circularity - shape.circularity());
}

// In the middle of an image with room for any direction, shifted by parts of a pixel.
void printAt(Shape shape, Positions& positions) {
  const int side = 4 + static_cast<int>(shape.disc ? shape.width : std::hypot(shape.width, shape.height));
  const int middle = side / 2;
  shape.x = middle + positions.next();
  shape.y = middle + positions.next();
  print(shape, {side + 1, side + 1});
}

constexpr int kLeast = 3, kMax = 300, kDiscsOfADiameter = 32;

// Every side up to 40, then steps of about 5 %, and the largest.
int nextSide(int side) {
  const int next = std::max(side + 1, side * 21 / 20);
  return side < kMax ? std::min(next, kMax) : next;
}

}  // namespace

int main() {
  Positions positions;
  std::puts("shape,long,short,degrees,area,centroid,perimeter,long_side,short_side,angle,circularity");
  for (int diameter = kLeast; diameter <= kMax; ++diameter) {
    for (int i = 0; i < kDiscsOfADiameter; ++i) {
      printAt({true, double(diameter), double(diameter), 0, 0, 0}, positions);
    }
  }
  for (int side = kLeast; side <= kMax; side = nextSide(side)) {
    for (const int ratio : {1, 2, 4}) {
      if (side < kLeast * ratio) continue;
      for (int degrees = 0; degrees < 180; ++degrees) {
        printAt({false, double(side), double(side) / ratio, degrees, 0, 0}, positions);
      }
    }
  }
  return 0;
}
