#include "model/range_convert.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "base/failure.h"
#include "cloud/cloud_steps.h"
#include "model/lattice.h"

namespace dax::tool {
namespace {

constexpr int kMaxValue = std::numeric_limits<int16_t>::max();
constexpr int kMinValue = std::numeric_limits<int16_t>::min();
// Limits the memory of grids that are much larger than the cloud.
constexpr double kMaxPixels = 1 << 28;

[[noreturn]] void refuseRange(const std::string& message) {
  throw Failure(ExitStatus::kRefused, message);
}

void requireSides(double width, double height) {
  if (!(width <= double{DAX3D_MAX_SIDE} && height <= double{DAX3D_MAX_SIDE} && width * height <= kMaxPixels)) {
    refuseRange("the range image would be larger than 32767 x 32767, or than 268 million pixels");
  }
}

// Place of pixel 0,0 and value 0, and steps; unlike a header not rounded to floats.
struct Grid {
  Place scale;
  Place offset;

  // Steps from the offset, rounded.
  double steps(const Place& place, size_t axis) const {
    return std::floor((place[axis] - offset[axis]) / scale[axis] + 0.5);
  }
};

Grid gridOf(const RangeHeader& header) {
  return {{header.scale.x, header.scale.y, header.scale.z}, {header.offset.x, header.offset.y, header.offset.z}};
}

double usable(double step) {
  return step > std::numeric_limits<float>::epsilon() ? step : 1;
}

// About one point a pixel, heights over the full 16 bits.
Grid coveringGrid(const Cloud& cloud) {
  const Box box = boxOf(cloud);
  const double width = double{box.high[0]} - box.low[0], depth = double{box.high[1]} - box.low[1];
  const double count = static_cast<double>(cloud.size());
  const double pitch = usable(std::max(std::sqrt(width * depth / count), std::max(width, depth) / count));
  const double step = usable((double{box.high[2]} - box.low[2]) / (kMaxValue - kMinValue));
  const auto low = [&](size_t axis) { return cloud.origin[axis] + box.low[axis]; };
  return {{pitch, pitch, step}, {low(0), low(1), low(2) - step * kMinValue}};
}

// Heights that are multiples of their step keep them as values, others are shared out evenly above and below 0.
double heightOffset(const Lattice& heights) {
  const double first = heights.start / heights.pitch;
  const bool isMultiple = std::abs(first - std::round(first)) < 0.01;
  if (isMultiple && first > kMinValue - 0.5 && first + heights.steps < kMaxValue + 0.5) return 0;
  return heights.start + heights.pitch * std::floor((heights.steps + 1) / 2);
}

// Replaces the steps of a grid by those of the points where they have any.
bool fitLattice(const Cloud& cloud, Grid& grid) {
  std::array<std::optional<Lattice>, 3> lattices;
  for (size_t axis = 0; axis < 3; ++axis) {
    std::vector<double> numbers(cloud.size());
    for (size_t i = 0; i < numbers.size(); ++i) numbers[i] = cloud.at(i)[axis];
    lattices[axis] = latticeOf(std::move(numbers), axis == 2 ? kMaxValue - kMinValue : DAX3D_MAX_SIDE - 1);
  }
  if (!lattices[0] || !lattices[1]) return false;
  for (size_t axis = 0; axis < 2; ++axis) {
    grid.scale[axis] = usable(lattices[axis]->pitch);
    grid.offset[axis] = lattices[axis]->start;
  }
  if (!lattices[2]) return false;
  if (lattices[2]->pitch > 0) {
    grid.scale[2] = usable(lattices[2]->pitch);
    grid.offset[2] = heightOffset(*lattices[2]);
  }
  return true;
}

DaxiSize sizeFor(const Cloud& cloud, const Grid& grid) {
  double width = 0, height = 0;
  for (size_t i = 0; i < cloud.size(); ++i) {
    width = std::max(width, grid.steps(cloud.at(i), 0) + 1);
    height = std::max(height, grid.steps(cloud.at(i), 1) + 1);
  }
  requireSides(width, height);
  if (width < 1 || height < 1) refuseRange("no point falls into the range image");
  return {static_cast<int32_t>(width), static_cast<int32_t>(height)};
}

DAX3D_VECTOR_32F rounded(const Place& place) {
  return {static_cast<float>(place[0]), static_cast<float>(place[1]), static_cast<float>(place[2])};
}

// The largest loss by the rounding of the offset to a float, in steps.
double offsetLoss(const Grid& grid) {
  double loss = 0;
  for (size_t axis = 0; axis < 3; ++axis) {
    const double error = std::abs(grid.offset[axis] - static_cast<float>(grid.offset[axis]));
    loss = std::max(loss, error / std::abs(grid.scale[axis]));
  }
  return loss;
}

}  // namespace

RangeImage fromPicture(const Grey16Image& picture, const GreyImage* mask, int bias, const RangeHeader& header) {
  requireSides(picture.size.width, picture.size.height);
  if (mask && (mask->size.width != picture.size.width || mask->size.height != picture.size.height)) {
    refuseRange("picture and mask differ in size");
  }
  RangeImage image = RangeImage::make(picture.size, header.scale, header.offset);
  for (size_t i = 0; i < picture.pixels.size(); ++i) {
    if (mask ? mask->pixels[i] == 0 : picture.pixels[i] == 0) continue;
    const int value = picture.pixels[i] - bias;
    if (value < kMinValue || value > kMaxValue) {
      refuseRange("a grey value less the bias is outside -32768..32767: --bias " + std::to_string(1 << 15) +
                  " holds all");
    }
    image.values()[i] = static_cast<int16_t>(value);
    image.mask()[i] = 255;
  }
  return image;
}

Grey16Image toPicture(const RangeImage& image, int bias) {
  Grey16Image picture = {image.size(), std::vector<uint16_t>(image.values().size())};
  for (size_t i = 0; i < picture.pixels.size(); ++i) {
    if (!image.valid(i)) continue;
    const int grey = image.values()[i] + bias;
    if (grey < 0 || grey > 0xFFFF) {
      refuseRange("a value plus the bias is outside 0..65535: --bias " + std::to_string(1 << 15) + " holds all");
    }
    picture.pixels[i] = static_cast<uint16_t>(grey);
  }
  return picture;
}

GreyImage maskPicture(const RangeImage& image) {
  GreyImage picture = makeGreyImage(image.size());
  for (size_t i = 0; i < picture.pixels.size(); ++i) picture.pixels[i] = image.valid(i) ? 255 : 0;
  return picture;
}

RangeImage fromCloud(const Cloud& cloud, const std::optional<RangeHeader>& given, Projection& projection) {
  Grid grid = given ? gridOf(*given) : coveringGrid(cloud);
  projection.resampled = !given && !fitLattice(cloud, grid);
  projection.offsetLoss = offsetLoss(grid);
  RangeImage image = RangeImage::make(sizeFor(cloud, grid), rounded(grid.scale), rounded(grid.offset));
  for (size_t i = 0; i < cloud.size(); ++i) {
    const Place place = cloud.at(i);
    const double column = grid.steps(place, 0), row = grid.steps(place, 1), value = grid.steps(place, 2);
    if (!(column >= 0 && row >= 0 && value >= kMinValue && value <= kMaxValue)) {
      ++projection.outside;
      continue;
    }
    const size_t pixel = static_cast<size_t>(row) * image.size().width + static_cast<size_t>(column);
    const bool isTaken = image.mask()[pixel] != 0;
    if (isTaken) ++projection.hidden;
    if (isTaken && image.values()[pixel] >= value) continue;
    image.values()[pixel] = static_cast<int16_t>(value);
    image.mask()[pixel] = 255;
  }
  if (projection.outside == cloud.size()) refuseRange("no point falls into the range image");
  return image;
}

}  // namespace dax::tool
