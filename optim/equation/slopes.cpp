#include "optim/equation/slopes.h"

#include <algorithm>
#include <cmath>

#include "prmt/spline.h"

namespace dax {
namespace {

// lower s_{i-1} + diagonal s_i + upper s_{i+1} = right.
struct Equation {
  double lower, diagonal, upper, right;
};

// Equal second derivatives on both sides of a knot, by the steps and chords before and behind it.
Equation equationAt(double before, double behind, double chordBefore, double chordBehind) {
  return {behind, 2 * (before + behind), before, 3 * (behind * chordBefore + before * chordBehind)};
}

// Of the first knot, by the first two steps and chords; of the last one from there backwards.
Equation equationAtEnd(int32_t condition, double slope, bool isParabola, double step, double next, double chord,
                       double nextChord) {
  if (condition == PRMT_SPLINE_CLAMPED) return {0, 1, 0, slope};
  if (condition == PRMT_SPLINE_NATURAL) return {0, 2, 1, 3 * chord};
  if (isParabola) return {0, 1, 1, 2 * chord};
  const double both = step + next;
  return {0, next, both, ((step + 2 * both) * next * chord + step * step * nextChord) / both};
}

// Elimination without exchanges: upper and slopes get what is left of each row.
class Elimination {
 public:
  Elimination(double* upper, double* slopes) : upper_(upper), slopes_(slopes) {}
  void add(const Equation& row) {
    const double divisor = row.diagonal - (i_ > 0 ? row.lower * upper_[i_ - 1] : 0);
    upper_[i_] = row.upper / divisor;
    slopes_[i_] = (row.right - (i_ > 0 ? row.lower * slopes_[i_ - 1] : 0)) / divisor;
    ++i_;
  }
  void substitute() const {
    for (int32_t i = i_ - 2; i >= 0; --i) slopes_[i] -= upper_[i] * slopes_[i + 1];
  }

 private:
  double *upper_, *slopes_;
  int32_t i_ = 0;
};

// With the last unknown slope s as a parameter: slopes + s response, then the equation that is left tells s.
void periodicSlopes(const double* steps, const double* chords, int32_t n, double* slopes, double* upper,
                    double* response) {
  const int32_t last = n - 2;  // knot n - 1 is knot 0 again
  const auto equation = [&](int32_t i) {
    const int32_t before = i > 0 ? i - 1 : last;
    return equationAt(steps[before], steps[i], chords[before], chords[i]);
  };
  Elimination values(upper, slopes), responses(upper, response);
  for (int32_t i = 0; i < last; ++i) {
    Equation row = equation(i);
    values.add(row);
    row.right = -(i == 0 ? row.lower : 0) - (i == last - 1 ? row.upper : 0);
    responses.add(row);
  }
  values.substitute(), responses.substitute();
  const Equation row = equation(last);
  double right = row.right, diagonal = row.diagonal;
  if (last > 0) {
    right -= row.lower * slopes[last - 1] + row.upper * slopes[0];
    diagonal += row.lower * response[last - 1] + row.upper * response[0];
  } else {
    diagonal += row.lower + row.upper;
  }
  const double s = right / diagonal;
  for (int32_t i = 0; i < last; ++i) slopes[i] += s * response[i];
  slopes[last] = s, slopes[n - 1] = slopes[0];
}

}  // namespace

void splineSlopes(const double* steps, const double* v, int32_t n, const LineEnds& ends, double* slopes, double* work) {
  double *const chords = work, *const upper = work + n, *const response = work + 2 * int64_t{n};
  for (int32_t i = 0; i + 1 < n; ++i) chords[i] = (v[i + 1] - v[i]) / steps[i];
  if (ends.condition == PRMT_SPLINE_PERIODIC) return periodicSlopes(steps, chords, n, slopes, upper, response);
  if (n == 2 && ends.condition == PRMT_SPLINE_NOT_A_KNOT) return static_cast<void>(std::fill_n(slopes, 2, chords[0]));
  const int32_t next = std::min(1, n - 2), last = n - 2, beforeLast = std::max(n - 3, 0);
  Elimination system(upper, slopes);
  system.add(equationAtEnd(ends.condition, ends.start, n == 3, steps[0], steps[next], chords[0], chords[next]));
  for (int32_t i = 1; i + 1 < n; ++i) system.add(equationAt(steps[i - 1], steps[i], chords[i - 1], chords[i]));
  Equation row =
      equationAtEnd(ends.condition, ends.end, n == 3, steps[last], steps[beforeLast], chords[last], chords[beforeLast]);
  std::swap(row.lower, row.upper);
  system.add(row);
  system.substitute();
}

void akimaChords(const double* steps, const double* v, int32_t n, double* chords, double* noise) {
  for (int32_t i = 0; i + 1 < n; ++i) {
    chords[i + 2] = (v[i + 1] - v[i]) / steps[i];
    noise[i + 2] = (std::fabs(v[i]) + std::fabs(v[i + 1])) * 0x1p-52 / steps[i];
  }
  const double startBend = n > 2 ? chords[3] - chords[2] : 0, endBend = n > 2 ? chords[n] - chords[n - 1] : 0;
  chords[1] = chords[2] - startBend, chords[0] = chords[1] - startBend;
  chords[n + 1] = chords[n] + endBend, chords[n + 2] = chords[n + 1] + endBend;
  noise[0] = noise[1] = noise[2], noise[n + 1] = noise[n + 2] = noise[n];
}

double akimaShare(const double* chords, const double* noise, int32_t i) {
  const double before = std::fabs(chords[i + 3] - chords[i + 2]), behind = std::fabs(chords[i + 1] - chords[i]);
  const double rounding = (noise[i] + noise[i + 1]) + (noise[i + 2] + noise[i + 3]);
  return before + behind > rounding ? before / (before + behind) : 0.5;
}

}  // namespace dax
