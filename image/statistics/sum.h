// Sums, means and standard deviations of regions: one worker for all pixel types, numbers of channels, with a mask or without.
#pragma once

#include "image/statistics/pairwise_sum.h"
#include "image/statistics/sum_portable.h"

namespace dax {

__extension__ using Wide = __int128;

// Sums of values and of squares: exact, or pairwise.
template <class Map, class T>
struct Sums {
  uint64_t count = 0;
  int64_t values = 0;
  Wide squares = 0;
  template <class... Row>
  void addValues(int32_t run, const Row*... rows) {
    addTotal(run, portable::totalOfRun<Map>(run, rows...));
  }
  void addTotal(int32_t run, int32_t total) {
    count += static_cast<uint64_t>(run);
    values += total;
  }
  template <class... Row>
  void addSquares(int32_t run, const Row*... rows) {
    squares += portable::squaresOfRun<Map>(run, rows...);
  }
  double total() const { return static_cast<double>(values); }
  double totalOfSquares() const { return static_cast<double>(squares); }
};

template <class Map>
struct Sums<Map, float> {
  uint64_t count = 0;
  PairwiseSum values, squares;
  template <class... Row>
  void addValues(int32_t run, const Row*... rows) {
    count += static_cast<uint64_t>(run);
    values.add(run, [=](int32_t x) { return Map::of(rows[x]...); });
  }
  template <class... Row>
  void addSquares(int32_t run, const Row*... rows) {
    squares.add(run, [=](int32_t x) {
      const double value = Map::of(rows[x]...);
      return value * value;
    });
  }
  double total() const { return values.total(); }
  double totalOfSquares() const { return squares.total(); }
};

// A value for each channel.
template <class T, int32_t kChannels, bool kMasked>
DaxStatus sumOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* sum);

template <class T, int32_t kChannels, bool kMasked>
DaxStatus meanOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* mean);

template <class T, int32_t kChannels, bool kMasked>
DaxStatus meanStdDevOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                       double* mean, double* stdDev);

}  // namespace dax
