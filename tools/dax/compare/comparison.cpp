#include "compare/comparison.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "base/failure.h"
#include "compare/ssim.h"

namespace dax::tool {
namespace {

bool isFinite(const Samples& samples, size_t pixel) {
  if (samples.record.type != DAXI_SAMPLE_32F) return true;
  const auto channels = static_cast<size_t>(samples.record.channels);
  for (size_t i = pixel * channels; i < (pixel + 1) * channels; ++i) {
    if (!std::isfinite(samples.value(i))) return false;
  }
  return true;
}

// Adds a pixel to the counts, to the maximum and to the means, which are sums until all pixels have been added.
void addPixel(const Samples& first, const Samples& second, size_t pixel, double tolerance, Comparison& found) {
  const DaxiImageRecord& record = first.record;
  const auto channels = static_cast<size_t>(record.channels), width = static_cast<size_t>(record.width);
  double max = 0;
  for (size_t channel = 0; channel < channels; ++channel) {
    const double a = first.value(pixel * channels + channel), b = second.value(pixel * channels + channel);
    const double difference = b - a, magnitude = std::fabs(difference);
    found.meanDifference += difference;
    found.meanMagnitude += magnitude;
    found.meanSquare += difference * difference;
    max = std::max(max, magnitude);
    if (magnitude <= found.max) continue;
    found.max = magnitude, found.first = a, found.second = b;
    found.x = static_cast<int32_t>(pixel % width), found.y = static_cast<int32_t>(pixel / width);
    found.channel = static_cast<int32_t>(channel);
  }
  found.differing += max > 0;
  found.overTolerance += static_cast<float>(max) > tolerance;
}

// A pixel counts in all its channels, or in none.
void leaveOut(bool isUnpaired, Comparison& found) {
  ++found.leftOut;
  found.unpaired += isUnpaired;
  found.differing += isUnpaired;
  found.overTolerance += isUnpaired;
}

// Second - first of the channel that differs most; infinite where only one image has a finite number.
double differenceAt(const Samples& first, const Samples& second, size_t pixel) {
  const bool inFirst = isFinite(first, pixel), inSecond = isFinite(second, pixel);
  if (inFirst != inSecond) return std::numeric_limits<double>::infinity();
  const auto channels = static_cast<size_t>(first.record.channels);
  double max = 0;
  for (size_t i = pixel * channels; inFirst && i < (pixel + 1) * channels; ++i) {
    const double difference = second.value(i) - first.value(i);
    if (std::fabs(difference) > std::fabs(max)) max = difference;
  }
  return max;
}

std::vector<float> channelOf(const Samples& samples, size_t channel, size_t pixels) {
  std::vector<float> values(pixels);
  const auto channels = static_cast<size_t>(samples.record.channels);
  for (size_t i = 0; i < pixels; ++i) values[i] = static_cast<float>(samples.value(i * channels + channel));
  return values;
}

std::optional<double> meanSsim(const Samples& first, const Samples& second, size_t pixels, double white) {
  const DaxiImageRecord& record = first.record;
  const auto channels = static_cast<size_t>(record.channels);
  double sum = 0;
  for (size_t channel = 0; channel < channels; ++channel) {
    const std::vector<float> a = channelOf(first, channel, pixels), b = channelOf(second, channel, pixels);
    const auto ssim = structuralSimilarity(a.data(), b.data(), {record.width, record.height}, white);
    if (!ssim) return std::nullopt;
    sum += *ssim;
  }
  return sum / static_cast<double>(channels);
}

std::string described(const Samples& samples) {
  const DaxiImageRecord& record = samples.record;
  const bool isFloat = record.type == DAXI_SAMPLE_32F;
  return std::to_string(record.width) + " x " + std::to_string(record.height) + " pixels of " +
         std::to_string(record.channels) + (record.channels == 1 ? " channel" : " channels") + " and " +
         (isFloat ? std::string("floats") : "values up to " + std::to_string(record.maxValue));
}

}  // namespace

void requireComparable(const Samples& first, const Samples& second) {
  const DaxiImageRecord &a = first.record, &b = second.record;
  const bool sameSize = a.width == b.width && a.height == b.height;
  const bool sameSamples = a.type == b.type && a.maxValue == b.maxValue;
  if (sameSize && sameSamples && a.channels == b.channels) return;
  const std::string help = !sameSize                  ? "only images of one size can be compared"
                           : a.channels != b.channels ? "dax convert --grey or --channels gives both the same channels"
                                                      : "dax convert --bits gives both the same range of values";
  throw Failure(ExitStatus::kRefused, described(first) + " against " + described(second) + ": " + help);
}

Comparison compareSamples(const Samples& first, const Samples& second, double tolerance, double white) {
  Comparison found;
  found.pixels = static_cast<uint64_t>(first.record.width) * static_cast<uint64_t>(first.record.height);
  found.max = -1;  // the first sample of two equal images is the largest difference
  for (size_t pixel = 0; pixel < found.pixels; ++pixel) {
    const bool inFirst = isFinite(first, pixel), inSecond = isFinite(second, pixel);
    if (inFirst && inSecond) {
      addPixel(first, second, pixel, tolerance, found);
    } else {
      leaveOut(inFirst != inSecond, found);
    }
  }
  if (found.leftOut == found.pixels) throw Failure(ExitStatus::kRefused, "no pixel is a finite number in both images");
  const double samples = static_cast<double>(found.pixels - found.leftOut) * first.record.channels;
  found.meanDifference /= samples;
  found.meanMagnitude /= samples;
  found.meanSquare /= samples;
  found.psnr = 10 * std::log10(white * white / found.meanSquare);
  if (found.leftOut == 0) found.ssim = meanSsim(first, second, found.pixels, white);
  return found;
}

GreyImage differencePicture(const Samples& first, const Samples& second, double extent) {
  GreyImage picture = makeGreyImage({first.record.width, first.record.height});
  for (size_t pixel = 0; pixel < picture.pixels.size(); ++pixel) {
    const double share = std::clamp(differenceAt(first, second, pixel) / extent, -1.0, 1.0);
    picture.pixels[pixel] = static_cast<uint8_t>(128 + std::rint(127 * share));
  }
  return picture;
}

}  // namespace dax::tool
