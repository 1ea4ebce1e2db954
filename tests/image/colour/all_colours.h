// Colours of bytes to try conversions on: all 2^24 of them where the environment has DAX_ALL_COLOURS (scripts/accuracy-colour),
// otherwise those of some levels of blue.
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {

constexpr int32_t kColours = 65536;  // of one blue

// Calls use(row of all reds and greens, three bytes a pixel) for levels of blue.
template <class Use>
void forColours(Use use) {
  const bool all = std::getenv("DAX_ALL_COLOURS") != nullptr;
  TestImage<uint8_t> rgb({3 * kColours, 1});
  for (int32_t blue = 0; blue < 256; blue += all ? 1 : 15) {
    for (int32_t i = 0; i < kColours; ++i) {
      uint8_t* const at = &rgb.at(3 * i, 0);
      at[0] = static_cast<uint8_t>(i), at[1] = static_cast<uint8_t>(i >> 8), at[2] = static_cast<uint8_t>(blue);
    }
    use(rgb);
  }
}

// The largest difference of a channel after encode(src, dst) and decode(src, dst) of rows of T, whose levels are the bytes times
// `scale`; and how many colours come back.
struct RoundTrip {
  double largest = 0;
  int64_t exact = 0, colours = 0;
};

template <class T, class Encode, class Decode>
RoundTrip roundTrip(double scale, Encode encode, Decode decode) {
  RoundTrip result;
  std::vector<T> from(3 * kColours), there(3 * kColours), back(3 * kColours);
  forColours([&](const TestImage<uint8_t>& rgb) {
    for (size_t i = 0; i < from.size(); ++i) from[i] = static_cast<T>(rgb.data()[i] * scale);
    encode(from.data(), there.data()), decode(there.data(), back.data());
    for (size_t i = 0; i < from.size(); i += 3) {
      double worst = 0;
      for (size_t k = i; k < i + 3; ++k) worst = std::max(worst, std::abs(1.0 * back[k] - 1.0 * from[k]));
      result.largest = std::max(result.largest, worst), result.exact += worst == 0, ++result.colours;
    }
  });
  return result;
}

// For scripts/accuracy-colour.
inline void printRoundTrip(const char* conversion, const RoundTrip& result) {
  if (!std::getenv("DAX_ALL_COLOURS")) return;
  std::printf("| %s | %g | %.1f %% |\n", conversion, result.largest,
              100.0 * static_cast<double>(result.exact) / static_cast<double>(result.colours));
}

}  // namespace dax::test
