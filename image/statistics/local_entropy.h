// Entropy of the grey levels in windows that slide along rows: the histogram gains a column and loses one at each step,
// and with it the sum of c log2 c over the counts c, in whole numbers of 2^-20, so that no error builds up.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "frame/numeric/round.h"
#include "frame/rows.h"
#include "image/window/windowed_rows.h"

namespace dax {

constexpr double kEntropyUnit = 1 << 20;

// c log2 c of 0..n.
inline void fillEntropyTerms(int64_t* terms, int32_t n) {
  constexpr double kLn2 = 0.69314718055994530942;
  terms[0] = 0;
  for (int32_t c = 1; c <= n; ++c) terms[c] = roundTo<int64_t>(kEntropyUnit * c * (log(static_cast<double>(c)) / kLn2));
}

template <class T>
struct EntropyBuffer {
  static constexpr uint64_t kLevels = uint64_t{1} << (8 * sizeof(T));

  EntropyBuffer(const WindowedRegion& region)
      : constant(layout.add<T>(static_cast<uint64_t>(region.size.width))),
        rows(layout.add<T>(static_cast<uint64_t>(region.rows()) * static_cast<uint64_t>(region.extendedWidth()))),
        counts(layout.add<int32_t>(kLevels)) {}
  BufferLayout layout;
  BufferPiece<T> constant;
  BufferPiece<T> rows;  // as many as the window has, extended on both sides
  BufferPiece<int32_t> counts;
};

template <class T>
class LocalEntropy {
 public:
  LocalEntropy(const T* src, int32_t step, const WindowedRegion& region, double value, const int64_t* terms,
               void* buffer)
      : region_(region),
        terms_(terms),
        ring_(EntropyBuffer<T>(region).rows.in(buffer)),
        rows_{src, step, region_, EntropyBuffer<T>(region).constant.in(buffer)},
        value_(borderPixel<T>(value)),
        counts_(EntropyBuffer<T>(region).counts.in(buffer)) {
    std::fill_n(EntropyBuffer<T>(region).constant.in(buffer), region.size.width, value_);
    std::fill_n(counts_, EntropyBuffer<T>::kLevels, 0);
  }

  void computeRows(int32_t first, int32_t end, float* dst, int32_t dstStep) {
    for (int64_t line = int64_t{first} - region_.y.before; line < int64_t{first} + region_.y.after; ++line) enter(line);
    for (int32_t y = first; y < end; ++y) {
      enter(int64_t{y} + region_.y.after);
      computeRow(y, rowAt(dst, dstStep, y));
    }
  }

 private:
  T* held(int64_t line) const {
    const int64_t slot = (line + region_.rows()) % region_.rows();
    return ring_ + slot * region_.extendedWidth();
  }

  void enter(int64_t line) const {
    const T* const row = rows_(line);
    if (!row) return;
    T* const to = held(line);
    const int32_t first = region_.firstHeld();
    if (region_.border == DAXI_BORDER_CONSTANT) std::fill_n(to, region_.extendedWidth(), value_);
    std::copy_n(row, region_.heldWidth(), to + first);
    region_.extend(to);
  }

  // Every column that is added is removed again, which leaves the counts at zero for the next row.
  void computeRow(int32_t y, float* dst) {
    const bool isClipped = region_.isClipped();
    const int64_t top = int64_t{y} - region_.y.before, bottom = int64_t{y} + region_.y.after;
    top_ = isClipped ? std::max<int64_t>(top, 0) : top;
    bottom_ = isClipped ? std::min<int64_t>(bottom, region_.size.height - 1) : bottom;
    // Columns of extended rows; where windows are clipped, those of the image.
    const int32_t low = isClipped ? region_.x.before : 0, window = region_.columns();
    const int32_t high = isClipped ? low + region_.size.width : region_.extendedWidth();
    for (int32_t i = low; i < std::min(window - 1, high); ++i) addColumn(i);
    for (int32_t x = 0; x < region_.size.width; ++x) {
      if (x + window - 1 < high && x + window - 1 >= low) addColumn(x + window - 1);
      const int64_t n = int64_t{region_.rowsAt(y)} * region_.columnsAt(x);
      dst[x] = static_cast<float>(static_cast<double>(terms_[n] - sum_) / (kEntropyUnit * static_cast<double>(n)));
      if (x >= low) removeColumn(x);
    }
    for (int32_t i = std::max(low, region_.size.width); i < high; ++i) removeColumn(i);
  }

  void addColumn(int32_t column) {
    for (int64_t line = top_; line <= bottom_; ++line) {
      const int32_t count = counts_[held(line)[column]]++;
      sum_ += terms_[count + 1] - terms_[count];
    }
  }
  void removeColumn(int32_t column) {
    for (int64_t line = top_; line <= bottom_; ++line) {
      const int32_t count = --counts_[held(line)[column]];
      sum_ -= terms_[count + 1] - terms_[count];
    }
  }

  WindowedRegion region_;
  const int64_t* terms_;
  T* ring_;
  WindowedRows<T> rows_;
  T value_;
  int32_t* counts_;
  int64_t top_ = 0, bottom_ = 0, sum_ = 0;
};

}  // namespace dax
