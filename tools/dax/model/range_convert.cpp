#include "model/range_convert.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "base/failure.h"
#include "cloud/cloud_steps.h"

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

RangeHeader headerFor(const Cloud& cloud) {
  const Box box = boxOf(cloud);
  const double width = double{box.high[0]} - box.low[0], depth = double{box.high[1]} - box.low[1];
  const double count = static_cast<double>(cloud.size());
  const double pitch = std::max(std::sqrt(width * depth / count), std::max(width, depth) / count);
  const double step = (double{box.high[2]} - box.low[2]) / (kMaxValue - kMinValue);
  const auto usable = [](double v) { return static_cast<float>(v > std::numeric_limits<float>::epsilon() ? v : 1); };
  RangeHeader header;
  header.scale = {usable(pitch), usable(pitch), usable(step)};
  header.offset = {box.low[0], box.low[1], static_cast<float>(box.low[2] - double{header.scale.z} * kMinValue)};
  return header;
}

// Steps from the offset, rounded.
double steps(float coordinate, float scale, float offset) {
  return std::floor((double{coordinate} - offset) / scale + 0.5);
}

DaxiSize sizeFor(const Cloud& cloud, const RangeHeader& header) {
  double width = 0, height = 0;
  for (size_t i = 0; i < cloud.size(); ++i) {
    const float* const point = cloud.points.data() + 3 * i;
    width = std::max(width, steps(point[0], header.scale.x, header.offset.x) + 1);
    height = std::max(height, steps(point[1], header.scale.y, header.offset.y) + 1);
  }
  requireSides(width, height);
  if (width < 1 || height < 1) refuseRange("no point falls into the range image");
  return {static_cast<int32_t>(width), static_cast<int32_t>(height)};
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

RangeImage fromCloud(const Cloud& cloud, const std::optional<RangeHeader>& given) {
  const RangeHeader header = given ? *given : headerFor(cloud);
  RangeImage image = RangeImage::make(sizeFor(cloud, header), header.scale, header.offset);
  size_t seen = 0;
  for (size_t i = 0; i < cloud.size(); ++i) {
    const float* const point = cloud.points.data() + 3 * i;
    const double column = steps(point[0], header.scale.x, header.offset.x);
    const double row = steps(point[1], header.scale.y, header.offset.y);
    const double value = steps(point[2], header.scale.z, header.offset.z);
    if (!(column >= 0 && row >= 0 && value >= kMinValue && value <= kMaxValue)) continue;
    const size_t pixel = static_cast<size_t>(row) * image.size().width + static_cast<size_t>(column);
    if (image.mask()[pixel] != 0 && image.values()[pixel] >= value) continue;
    image.values()[pixel] = static_cast<int16_t>(value);
    image.mask()[pixel] = 255;
    ++seen;
  }
  if (seen == 0) refuseRange("no point falls into the range image");
  return image;
}

}  // namespace dax::tool
