#include "image/phase/phase_comparison.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "frame/math.h"
#include "frame/numeric/elementary.h"

namespace dax {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

// Writes the window and returns its sum.
double fillWindow(double* window, int32_t count, bool fades) {
  double sum = 0;
  for (int32_t i = 0; i < count; ++i) {
    window[i] = fades ? 0.5 - 0.5 * sinCosExact(kTurn * (i + 0.5) / count).cosine : 1;
    sum += window[i];
  }
  return sum;
}

// Frequency number i of n, in cycles a pixel, from -1/2 to 1/2.
double frequency(int32_t i, int32_t n) {
  return static_cast<double>(2 * i > n ? i - n : i) / n;
}

// e^(-(f / 0.03)^2), from which high passes of both axes come.
void fillLowPass(double* pass, int32_t count, int32_t n) {
  constexpr double kCut = 0.03;
  for (int32_t i = 0; i < count; ++i) {
    const double f = frequency(i, n) / kCut;
    pass[i] = elementary::exp(-(f * f));
  }
}

double sumOf(const double* values, int32_t count) {
  double sum = 0;
  for (int32_t i = 0; i < count; ++i) sum += values[i];
  return sum;
}

DaxComplex32f conjugateProduct(const DaxComplex32f& a, const DaxComplex32f& b) {
  return {b.re * a.re + b.im * a.im, b.im * a.re - b.re * a.im};
}

// Whether two places of a ring of n are at most two apart.
bool areNear(int32_t a, int32_t b, int32_t n) {
  const int32_t apart = std::abs(a - b);
  return std::min(apart, n - apart) <= 2;
}

struct Place {
  int32_t x, y;
  float value;
};

// The greatest value, the first of equal ones; with `around` of those that are not next to it.
Place greatest(const float* plane, DaxiSize size, const Place* around) {
  Place best = {0, 0, -2};  // below any coefficient of correlation
  for (int32_t y = 0; y < size.height; ++y) {
    const float* const row = rowAt(plane, size.width, y);
    const bool mayBeNear = around && areNear(y, around->y, size.height);
    for (int32_t x = 0; x < size.width; ++x) {
      if (!(row[x] > best.value) || (mayBeNear && around && areNear(x, around->x, size.width))) continue;
      best = {x, y, row[x]};
    }
  }
  return best;
}

int32_t shiftOf(int32_t place, int32_t n) {
  return 2 * place > n ? place - n : place;
}

}  // namespace

PhaseLayout::PhaseLayout(DaxiSize image, BufferLayout& layout)
    : size{smoothSide(image.width), smoothSide(image.height)} {
  const DaxiSize half = halfSpectrum(size);
  uint64_t planBytes = 0, workBytes = 0;  // which the sides' limit keeps small
  dftPlanSize<float>(size, &planBytes);
  dftBufferSize<float>(size, &workBytes);
  plan = layout.add<uint8_t>(planBytes);
  work = layout.add<uint8_t>(workBytes);
  plane = layout.add<float>(pixelsOf(size));
  for (auto& each : spectra) each = layout.add<DaxComplex32f>(pixelsOf(half));
  columns = layout.add<double>(3 * static_cast<uint64_t>(half.width));
  rows = layout.add<double>(7 * static_cast<uint64_t>(size.height));
}

PhaseComparison::PhaseComparison(PoolThreads on, const PhaseLayout& at, void* buffer)
    : on_(on),
      size_(at.size),
      half_(halfSpectrum(at.size)),
      plan_(at.plan.in(buffer)),
      work_(at.work.in(buffer)),
      plane_(at.plane.in(buffer)),
      spectra_{at.spectra[0].in(buffer), at.spectra[1].in(buffer)},
      columns_(at.columns.in(buffer)),
      rows_(at.rows.in(buffer)) {}

template <class T>
DaxStatus PhaseComparison::load(int which, const PhaseImage<T>& image, PhaseWindow window) {
  const int32_t width = image.size.width, height = image.size.height;
  double *const across = columns_, *const down = rows_, *const sums = rows_ + size_.height;
  const double weight = fillWindow(across, width, window == PhaseWindow::kSides) * fillWindow(down, height, true);
  // term(weight along the row, its pixel), then weighted by `power` factors of the row's own weight.
  const auto addUp = [&](int power, auto term) -> DaxStatus {
    return runRows(on_, height, [&](int32_t first, int32_t end) {
      for (int32_t y = first; y < end; ++y) {
        const T* const row = rowAt(image.data, image.step, y);
        double sum = 0;
        for (int32_t x = 0; x < width; ++x) sum += term(across[x], static_cast<double>(row[x]));
        sums[y] = sum * (power == 1 ? down[y] : down[y] * down[y]);
      }
    });
  };
  DAX_REQUIRE_OK(addUp(1, [](double w, double v) { return w * v; }));
  const double mean = sumOf(sums, height) / weight;
  DAX_REQUIRE_OK(addUp(2, [mean](double w, double v) {
    const double part = w * (v - mean);
    return part * part;
  }));
  const double energy = sumOf(sums, height), pixels = static_cast<double>(pixelsOf(image.size));
  DAX_REQUIRE(std::isfinite(energy), DAX_STS_DATA_RANGE);
  // What the rounding of the mean leaves of a flat image is far less.
  DAX_REQUIRE(energy > 1e-22 * (mean * mean) * pixels, DAX_STS_DEGENERATE);
  const double scale = 1 / std::sqrt(energy / pixels);
  DAX_REQUIRE_OK(runRows(on_, size_.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      float* const to = rowAt(plane_, size_.width, y);
      const int32_t filled = y < height ? width : 0;
      if (filled) {
        const T* const row = rowAt(image.data, image.step, y);
        const double own = down[y] * scale;
        for (int32_t x = 0; x < width; ++x) {
          to[x] = static_cast<float>(across[x] * (static_cast<double>(row[x]) - mean) * own);
        }
      }
      std::fill(to + filled, to + size_.width, 0.0f);
    }
  }));
  return dftRealForward<float>(on_, plane_, size_.width, spectra_[which], half_.width, size_, 1.0f, plan_, work_);
}

template DaxStatus PhaseComparison::load(int, const PhaseImage<uint8_t>&, PhaseWindow);
template DaxStatus PhaseComparison::load(int, const PhaseImage<uint16_t>&, PhaseWindow);
template DaxStatus PhaseComparison::load(int, const PhaseImage<float>&, PhaseWindow);

// Frequencies close to the rounding of the transforms tell nothing: the mean of |F|^2 is about the number of pixels.
DaxStatus PhaseComparison::whiten(double* count) {
  const float floor = 1e-10f * static_cast<float>(pixelsOf(size_));
  double* const counts = rows_;
  const DaxStatus status = runRows(on_, half_.height, [&](int32_t first, int32_t end) {
    for (int32_t v = first; v < end; ++v) {
      DaxComplex32f* const a = rowAt(spectra_[0], half_.width, v);
      const DaxComplex32f* const b = rowAt(spectra_[1], half_.width, v);
      counts[v] = 0;
      for (int32_t u = 0; u < half_.width; ++u) {
        const DaxComplex32f c = conjugateProduct(a[u], b[u]);
        const float size = std::sqrt(c.re * c.re + c.im * c.im);
        const bool tells = size > floor;
        a[u] = tells ? DaxComplex32f{c.re / size, c.im / size} : DaxComplex32f{0, 0};
        counts[v] += tells ? 1 + isDoubled(u) : 0;
      }
    }
  });
  *count = sumOf(counts, half_.height);
  return status;
}

DaxStatus PhaseComparison::findPeak(PhasePeak* peak) {
  double count = 0;
  DAX_REQUIRE_OK(whiten(&count));
  DAX_REQUIRE(count > 0, DAX_STS_DEGENERATE);
  DAX_REQUIRE_OK(dftRealBackward<float>(on_, spectra_[0], half_.width, plane_, size_.width, size_,
                                        static_cast<float>(1 / count), plan_, work_));
  const Place best = greatest(plane_, size_, nullptr), next = greatest(plane_, size_, &best);
  *peak = {shiftOf(best.x, size_.width), shiftOf(best.y, size_.height), best.value, next.value};
  return DAX_STS_OK;
}

// The product of the spectra, high-passed, with the frequencies that half a spectrum leaves out.
DaxStatus PhaseComparison::multiply() {
  double *const across = columns_ + 2 * half_.width, *const down = rows_;
  fillLowPass(across, half_.width, size_.width);
  fillLowPass(down, half_.height, size_.height);
  return runRows(on_, half_.height, [&](int32_t first, int32_t end) {
    for (int32_t v = first; v < end; ++v) {
      DaxComplex32f* const a = rowAt(spectra_[0], half_.width, v);
      const DaxComplex32f* const b = rowAt(spectra_[1], half_.width, v);
      for (int32_t u = 0; u < half_.width; ++u) {
        const double pass = 1 - across[u] * down[v];
        const auto factor = static_cast<float>(pass * pass * (1 + isDoubled(u)));
        const DaxComplex32f c = conjugateProduct(a[u], b[u]);
        a[u] = {factor * c.re, factor * c.im};
      }
    }
  });
}

// Derivatives of the correlation, first and second.
struct PhaseComparison::Slopes {
  double x, y, xx, xy, yy;
};

// The correlation at d is the real part of sum C(k) e^(i k d): its factors along rows first, then that of the column.
DaxStatus PhaseComparison::findSlopes(const double (&shift)[2], Slopes* slopes) const {
  double *const cosines = columns_, *const sines = columns_ + half_.width, *const sums = rows_ + half_.height;
  for (int32_t u = 0; u < half_.width; ++u) {
    const SinCos factor = sinCosExact(kTurn * u / size_.width * shift[0]);
    cosines[u] = factor.cosine, sines[u] = factor.sine;
  }
  DAX_REQUIRE_OK(runRows(on_, half_.height, [&](int32_t first, int32_t end) {
    for (int32_t v = first; v < end; ++v) {
      const DaxComplex32f* const row = rowAt(spectra_[0], half_.width, v);
      double sum[6] = {};
      for (int32_t u = 0; u < half_.width; ++u) {
        const double re = row[u].re * cosines[u] - row[u].im * sines[u];
        const double im = row[u].re * sines[u] + row[u].im * cosines[u];
        const double k = u, kRe = k * re, kIm = k * im;
        sum[0] += re, sum[1] += im;
        sum[2] += kRe, sum[3] += kIm;
        sum[4] += k * kRe, sum[5] += k * kIm;
      }
      std::copy_n(sum, 6, sums + ptrdiff_t{6} * v);
    }
  }));
  const double kx = kTurn / size_.width;
  *slopes = {};
  for (int32_t v = 0; v < half_.height; ++v) {
    const double* const sum = sums + ptrdiff_t{6} * v;
    const double ky = kTurn * frequency(v, size_.height);
    const SinCos factor = sinCosExact(ky * shift[1]);
    const auto re = [&](int i) { return sum[i] * factor.cosine - sum[i + 1] * factor.sine; };
    const auto im = [&](int i) { return sum[i] * factor.sine + sum[i + 1] * factor.cosine; };
    slopes->x -= kx * im(2);
    slopes->y -= ky * im(0);
    slopes->xx -= kx * kx * re(4);
    slopes->xy -= kx * ky * re(2);
    slopes->yy -= ky * ky * re(0);
  }
  return DAX_STS_OK;
}

// Newton's steps, uphill where the correlation is not convex upwards, of at most half a pixel.
DaxStatus PhaseComparison::refine(double (&shift)[2]) {
  DAX_REQUIRE_OK(multiply());
  constexpr int kSteps = 12;
  constexpr double kExact = 1e-7, kClose = 1e-3, kReach = 2;
  shift[0] = shift[1] = 0;
  bool isClose = false;
  for (int step = 0; step < kSteps; ++step) {
    Slopes at;
    DAX_REQUIRE_OK(findSlopes(shift, &at));
    const double det = at.xx * at.yy - at.xy * at.xy;
    const bool isHill = at.xx < 0 && det > 0;
    const double curve = std::fabs(at.xx) + std::fabs(at.yy);
    DAX_REQUIRE(curve > 0, DAX_STS_DEGENERATE);
    double dx = isHill ? (at.xy * at.y - at.yy * at.x) / det : at.x / curve;
    double dy = isHill ? (at.xy * at.x - at.xx * at.y) / det : at.y / curve;
    const double length = std::sqrt(dx * dx + dy * dy);
    if (length > 0.5) dx *= 0.5 / length, dy *= 0.5 / length;
    shift[0] += dx, shift[1] += dy;
    DAX_REQUIRE(std::fabs(shift[0]) <= kReach && std::fabs(shift[1]) <= kReach, DAX_STS_DEGENERATE);
    isClose = isHill && length < kClose;
    if (isHill && length < kExact) break;
  }
  DAX_REQUIRE(isClose, DAX_STS_DEGENERATE);
  return DAX_STS_OK;
}

double PhaseComparison::magnitudeAt(int which, double fx, double fy) const {
  const double u = fx * size_.width, v = fy * size_.height, left = std::floor(u), top = std::floor(v);
  const auto column = static_cast<int32_t>(left), row = static_cast<int32_t>(top);
  const auto at = [&](int32_t x, int32_t y) {
    const int32_t wrapped = (y + size_.height) % size_.height;
    const DaxComplex32f& f = rowAt(spectra_[which], half_.width, wrapped)[std::min(x, half_.width - 1)];
    return std::sqrt(double{f.re} * f.re + double{f.im} * f.im);
  };
  const auto along = [&](int32_t y) { return at(column, y) + (u - left) * (at(column + 1, y) - at(column, y)); };
  return along(row) + (v - top) * (along(row + 1) - along(row));
}

}  // namespace dax
