// Frames of one scene: what each pixel is and how it varies over them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "frame/check.h"
#include "frame/rows.h"

namespace dax {

inline constexpr int32_t kMaxFrames = 1024;

inline bool isFrameCount(int32_t count) {
  return count >= 2 && count <= kMaxFrames;
}

__extension__ using Int128 = __int128;

template <class T>
struct FrameStack {
  // Sums over the frames: of 1024 differences of 17 bits, and of their squares, times 1024.
  using Number = std::conditional_t<std::is_integral_v<T>, int64_t, double>;
  // Sums of these over an image.
  using Sum = std::conditional_t<std::is_integral_v<T>, Int128, double>;

  // Pixels side by side: their sums over the N frames, and N sum d^2 - (sum d)^2, d being the differences from the first
  // frame, which is N^2 times their variance.
  struct Part {
    static constexpr int32_t kMax = 256;
    int32_t x, y, count;
    Number sums[kMax], spreads[kMax];
  };

  const T* const* frames;
  int32_t count;
  int32_t step;
  DaxiSize size;

  DaxStatus checkFrames() const {
    DAX_REQUIRE(isFrameCount(count), DAX_STS_BAD_PARAM);
    DAX_REQUIRE(std::all_of(frames, frames + count, [](const T* frame) { return frame != nullptr; }),
                DAX_STS_NULL_POINTER);
    DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
    DAX_REQUIRE(rowFits(size.width, step), DAX_STS_BAD_STEP);
    return DAX_STS_OK;
  }

  // The pixels of a part in one of the frames.
  const T* pixelsOf(const Part& part, int32_t frame) const { return rowAt(frames[frame], step, part.y) + part.x; }

  // visit(part), in raster order.
  template <class Visit>
  void forEachPart(const Visit& visit) const {
    Part part;
    for (part.y = 0; part.y < size.height; ++part.y) {
      for (part.x = 0; part.x < size.width; part.x += part.count) {
        part.count = std::min(size.width - part.x, Part::kMax);
        setSums(part);
        visit(part);
        if (part.count == size.width - part.x) break;
      }
    }
  }

 private:
  void setSums(Part& part) const {
    const T* const first = pixelsOf(part, 0);
    std::fill_n(part.sums, part.count, Number{0});
    std::fill_n(part.spreads, part.count, Number{0});
    for (int32_t i = 1; i < count; ++i) {
      const T* const pixels = pixelsOf(part, i);
      for (int32_t x = 0; x < part.count; ++x) {
        const Number off = Number{pixels[x]} - Number{first[x]};
        part.sums[x] += off;
        part.spreads[x] += off * off;
      }
    }
    for (int32_t x = 0; x < part.count; ++x) {
      part.spreads[x] = count * part.spreads[x] - part.sums[x] * part.sums[x];
      part.sums[x] += count * Number{first[x]};
    }
  }
};

// The variance over the frames of so many pixels, from the sum of their spreads, less that of the means of the frames:
// offs(i) is the sum over the pixels of what frame i differs from the first.
template <class Offs>
double varianceOfFrames(double spreads, double pixels, int32_t count, const Offs& offs) {
  const double n = count;
  double sum = 0, squares = 0;
  for (int32_t i = 1; i < count; ++i) {
    const double mean = static_cast<double>(offs(i)) / pixels;
    sum += mean;
    squares += mean * mean;
  }
  return spreads / (n * (n - 1) * pixels) - (squares - sum * sum / n) / (n - 1);
}

}  // namespace dax
