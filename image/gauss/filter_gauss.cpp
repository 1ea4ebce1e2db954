#include "image/gauss/filter_gauss.h"

#include <algorithm>
#include <array>

#include "frame/math.h"
#include "frame/rows.h"
#include "frame/vector4.h"

namespace dax {
namespace {

constexpr int32_t kRadius = 6, kTaps = 2 * kRadius + 1;
constexpr double kSigma = 3;

// Weights at distance 0..6; those of all 13 add up to 1.
constexpr std::array<float, kRadius + 1> kWeights = [] {
  std::array<double, kRadius + 1> w{};
  double sum = 0;
  for (size_t i = 0; i <= kRadius; ++i) {
    w[i] = expOfTable(-static_cast<double>(i * i) / (2 * kSigma * kSigma));
    sum += i == 0 ? w[i] : 2 * w[i];
  }
  std::array<float, kRadius + 1> weights{};
  for (size_t i = 0; i <= kRadius; ++i) weights[i] = static_cast<float>(w[i] / sum);
  return weights;
}();

// Index of the tap at -6..6.
constexpr size_t tap(int32_t offset) {
  const int32_t index = kRadius + offset;
  return static_cast<size_t>(index);
}

// Weighted sum of the values at(-6)..at(6), added from the centre outwards.
template <class At>
auto weighted(At at) {
  auto sum = kWeights[0] * at(0);
  for (int32_t i = 1; i <= kRadius; ++i) sum += kWeights[static_cast<size_t>(i)] * (at(-i) + at(i));
  return sum;
}

// Writes whole vectors of four: rows have room for them.
void smoothHorizontally(const uint8_t* src, int32_t width, float* padded, float* to) {
  std::fill_n(padded, kRadius, static_cast<float>(src[0]));
  std::copy_n(src, width, padded + kRadius);
  std::fill_n(padded + kRadius + width, kRadius + 4, static_cast<float>(src[width - 1]));
  for (int32_t x = 0; x < width; x += 4) {
    store4(to + x, weighted([&](int32_t i) { return load4(padded + x + kRadius + i); }));
  }
}

void smoothVertically(const std::array<const float*, kTaps>& rows, float* dst, int32_t width) {
  int32_t x = 0;
  for (; x + 4 <= width; x += 4) {
    store4(dst + x, weighted([&](int32_t i) { return load4(rows[tap(i)] + x); }));
  }
  for (; x < width; ++x) dst[x] = weighted([&](int32_t i) { return rows[tap(i)][x]; });
}

}  // namespace

GaussBuffer::GaussBuffer(DaxiSize size)
    : padded(layout.add<float>(static_cast<uint64_t>(size.width) + 2 * kRadius + 4)),
      rows(layout.add<float>(kTaps * (static_cast<uint64_t>(size.width) + 4))),
      rowStep(size.width + 4) {}

}  // namespace dax

void _DAXI_FilterGauss_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                 void* buffer) {
  const dax::GaussBuffer at(size);
  const auto row = [&](int32_t y) { return dax::rowAt(at.rows.in(buffer), at.rowStep, y % dax::kTaps); };
  int32_t next = 0;  // the row to smooth next
  for (int32_t y = 0; y < size.height; ++y) {
    for (; next < size.height && next <= y + dax::kRadius; ++next) {
      dax::smoothHorizontally(dax::rowAt(src, srcStep, next), size.width, at.padded.in(buffer), row(next));
    }
    std::array<const float*, dax::kTaps> rows;
    for (int32_t i = -dax::kRadius; i <= dax::kRadius; ++i) {
      rows[dax::tap(i)] = row(std::clamp(y + i, 0, size.height - 1));
    }
    dax::smoothVertically(rows, dax::rowAt(dst, dstStep, y), size.width);
  }
}
