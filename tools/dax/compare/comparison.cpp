#include "compare/comparison.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <string>

#include "base/failure.h"
#include "base/library_call.h"
#include "compare/ssim.h"
#include "daxi/arithmetic.h"
#include "daxi/extremes.h"
#include "daxi/norm.h"
#include "daxi/sum.h"

namespace dax::tool {
namespace {

// The library's functions of one type.
struct OfSamples8 {
  using Sample = uint8_t;
  static constexpr auto sum = DAXI_Sum_8u_C1R;
  static constexpr auto l1 = DAXI_NormDiffL1_8u_C1R, l2 = DAXI_NormDiffL2_8u_C1R;
  static constexpr auto minMax = DAXI_MinMax_8u_C1R;
  static DaxStatus absDiff(const Sample* a, const Sample* b, Sample* dst, int32_t step, DaxiSize size) {
    return DAXI_AbsDiff_8u_C1RSfs(a, step, b, step, dst, step, size, 0);
  }
};

struct OfSamples16 {
  using Sample = uint16_t;
  static constexpr auto sum = DAXI_Sum_16u_C1R;
  static constexpr auto l1 = DAXI_NormDiffL1_16u_C1R, l2 = DAXI_NormDiffL2_16u_C1R;
  static constexpr auto minMax = DAXI_MinMax_16u_C1R;
  static DaxStatus absDiff(const Sample* a, const Sample* b, Sample* dst, int32_t step, DaxiSize size) {
    return DAXI_AbsDiff_16u_C1RSfs(a, step, b, step, dst, step, size, 0);
  }
};

struct OfSamples32 {
  using Sample = float;
  static constexpr auto sum = DAXI_Sum_32f_C1R;
  static constexpr auto l1 = DAXI_NormDiffL1_32f_C1R, l2 = DAXI_NormDiffL2_32f_C1R;
  static constexpr auto minMax = DAXI_MinMax_32f_C1R;
  static DaxStatus absDiff(const Sample* a, const Sample* b, Sample* dst, int32_t step, DaxiSize size) {
    return DAXI_AbsDiff_32f_C1R(a, step, b, step, dst, step, size);
  }
};

template <class Sample>
std::span<const Sample> samplesOf(const Samples& samples) {
  return {reinterpret_cast<const Sample*>(samples.bytes.data()), samples.bytes.size() / sizeof(Sample)};
}

// Both images with their channels side by side, as ones of one channel. Pixels that are no finite number in one of them
// are 0 in both.
template <class Of>
class Pair {
  using Sample = typename Of::Sample;

 public:
  Pair(const Samples& first, const Samples& second, double tolerance)
      : record_(first.record),
        channels_(static_cast<size_t>(record_.channels)),
        row_(record_.width * record_.channels),
        first_(samplesOf<Sample>(first).begin(), samplesOf<Sample>(first).end()),
        second_(samplesOf<Sample>(second).begin(), samplesOf<Sample>(second).end()) {
    result_.pixels = first_.size() / channels_;
    if constexpr (std::is_floating_point_v<Sample>) leaveOut();
    difference_.resize(first_.size());
    check(Of::absDiff(first_.data(), second_.data(), difference_.data(), row_, size()), "difference");
    countPixels(tolerance);
    findMax();
  }

  Comparison result(double white) {
    const auto samples = static_cast<double>((result_.pixels - result_.leftOut) * channels_);
    double ofFirst = 0, ofSecond = 0, l1 = 0, l2 = 0;
    check(Of::sum(first_.data(), row_, size(), &ofFirst), "sum");
    check(Of::sum(second_.data(), row_, size(), &ofSecond), "sum");
    check(Of::l1(first_.data(), row_, second_.data(), row_, size(), &l1), "norm");
    check(Of::l2(first_.data(), row_, second_.data(), row_, size(), &l2), "norm");
    result_.meanDifference = (ofSecond - ofFirst) / samples;
    result_.meanMagnitude = l1 / samples;
    result_.meanSquare = l2 * l2 / samples;
    result_.psnr = 10 * std::log10(white * white / result_.meanSquare);
    if (result_.leftOut == 0) result_.ssim = meanSsim(white);
    return result_;
  }

 private:
  DaxiSize size() const { return {row_, record_.height}; }

  // A pixel counts in all its channels, or in none.
  void leaveOut() {
    for (size_t i = 0; i < first_.size(); i += channels_) {
      const auto isFinite = [this, i](const std::vector<Sample>& image) {
        return std::all_of(&image[i], &image[i] + channels_, [](Sample x) { return std::isfinite(x); });
      };
      const bool inFirst = isFinite(first_), inSecond = isFinite(second_);
      if (inFirst && inSecond) continue;
      ++result_.leftOut;
      result_.unpaired += inFirst != inSecond;
      std::fill_n(&first_[i], channels_, Sample(0));
      std::fill_n(&second_[i], channels_, Sample(0));
    }
    if (result_.leftOut == result_.pixels) {
      throw Failure(ExitStatus::kRefused, "no pixel is a finite number in both images");
    }
  }

  void countPixels(double tolerance) {
    for (size_t i = 0; i < difference_.size(); i += channels_) {
      const Sample max = *std::max_element(&difference_[i], &difference_[i] + channels_);
      result_.differing += max > 0;
      result_.overTolerance += max > tolerance;
    }
    result_.differing += result_.unpaired;
    result_.overTolerance += result_.unpaired;
  }

  void findMax() {
    Sample min, max;
    DaxiPoint32s at;
    check(Of::minMax(difference_.data(), row_, size(), &min, &max, nullptr, &at), "largest difference");
    const size_t i = static_cast<size_t>(at.y) * static_cast<size_t>(row_) + static_cast<size_t>(at.x);
    result_.max = max;
    result_.x = at.x / record_.channels, result_.y = at.y, result_.channel = at.x % record_.channels;
    result_.first = first_[i], result_.second = second_[i];
  }

  std::optional<double> meanSsim(double white) const {
    std::vector<float> first(result_.pixels), second(result_.pixels);
    double sum = 0;
    for (size_t channel = 0; channel < channels_; ++channel) {
      for (size_t i = 0; i < first.size(); ++i) {
        first[i] = first_[i * channels_ + channel];
        second[i] = second_[i * channels_ + channel];
      }
      const auto ssim = structuralSimilarity(first.data(), second.data(), {record_.width, record_.height}, white);
      if (!ssim) return std::nullopt;
      sum += *ssim;
    }
    return sum / static_cast<double>(channels_);
  }

  const DaxiImageRecord& record_;
  size_t channels_;
  int32_t row_;
  std::vector<Sample> first_, second_, difference_;
  Comparison result_;
};

template <class Sample>
GreyImage pictureOf(const Samples& first, const Samples& second, double extent) {
  const std::span<const Sample> a = samplesOf<Sample>(first), b = samplesOf<Sample>(second);
  const auto channels = static_cast<size_t>(first.record.channels);
  GreyImage picture = makeGreyImage({first.record.width, first.record.height});
  for (size_t i = 0; i < picture.pixels.size(); ++i) {
    double max = 0;
    for (size_t c = i * channels; c < (i + 1) * channels; ++c) {
      const double difference = static_cast<double>(b[c]) - static_cast<double>(a[c]);
      const bool isUnpaired = std::isfinite(static_cast<double>(a[c])) != std::isfinite(static_cast<double>(b[c]));
      if (isUnpaired) max = std::numeric_limits<double>::infinity();
      if (std::fabs(difference) > std::fabs(max)) max = difference;
    }
    picture.pixels[i] = static_cast<uint8_t>(128 + std::rint(127 * std::clamp(max / extent, -1.0, 1.0)));
  }
  return picture;
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
  if (first.record.type == DAXI_SAMPLE_8U) return Pair<OfSamples8>(first, second, tolerance).result(white);
  if (first.record.type == DAXI_SAMPLE_16U) return Pair<OfSamples16>(first, second, tolerance).result(white);
  return Pair<OfSamples32>(first, second, tolerance).result(white);
}

GreyImage differencePicture(const Samples& first, const Samples& second, double extent) {
  if (first.record.type == DAXI_SAMPLE_8U) return pictureOf<uint8_t>(first, second, extent);
  if (first.record.type == DAXI_SAMPLE_16U) return pictureOf<uint16_t>(first, second, extent);
  return pictureOf<float>(first, second, extent);
}

}  // namespace dax::tool
