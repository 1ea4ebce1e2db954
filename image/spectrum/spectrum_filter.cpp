#include "image/spectrum/spectrum_filter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "frame/rows.h"

static_assert(sizeof(DaxiNotch) == 24 && sizeof(DaxiBandCfg) == 24 && offsetof(DaxiBandCfg, keep) == 16);

namespace dax {
namespace {

constexpr int32_t kMaxNotches = 1024;

bool isNotchCount(int32_t count) {
  return count >= 1 && count <= kMaxNotches;
}

template <class C>
DaxStatus checkFiltered(const C* src, int32_t srcStep, const C* dst, int32_t dstStep, DaxiSize size, int32_t width) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min(srcStep, dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(width >= 1 && (size.width == width || size.width == width / 2 + 1), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkNotch(const DaxiNotch& notch) {
  DAX_REQUIRE(std::isfinite(notch.u), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(notch.v), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(notch.sigma >= 1e-3 && notch.sigma <= 1e6, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkBand(const DaxiBandCfg& cfg) {
  DAX_REQUIRE(cfg.centre >= 0 && cfg.centre <= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.sigma >= 1e-9 && cfg.sigma <= 1e6, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.keep == 0 || cfg.keep == 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

double gaussian(double distance, double sigma) {
  const double t = distance / sigma;
  return elementary::exp(-0.5 * (t * t));
}

// Of a distance that counts modulo a side.
double nearest(double distance, int32_t side) {
  const double whole = std::fmod(std::fabs(distance), side);
  return std::min(whole, side - whole);
}

// exp(-d^2 / 2 sigma^2) is a product of a column's part and a row's: for each notch and its mirror image a table of the
// columns' parts.
struct NotchBuffer {
  NotchBuffer(int32_t width, int32_t count)
      : columns(layout.add<double>(2 * static_cast<uint64_t>(count) * static_cast<uint64_t>(width))) {}
  BufferLayout layout;
  BufferPiece<double> columns;
};

double signedFrequency(int32_t index, int32_t side) {
  return (index > side / 2 ? static_cast<double>(index) - side : index) / side;
}

template <class C>
void weighted(const C& from, double weight, C& to) {
  using T = decltype(C::re);
  to = {static_cast<T>(from.re * weight), static_cast<T>(from.im * weight)};
}

}  // namespace

template <class C>
DaxStatus spectrumNotch(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size,
                        int32_t width, const DaxiNotch* notches, int32_t count, void* buffer) {
  DAX_REQUIRE(notches && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkFiltered(src, srcStep, dst, dstStep, size, width));
  DAX_REQUIRE(isNotchCount(count), DAX_STS_BAD_PARAM);
  for (int32_t i = 0; i < count; ++i) DAX_REQUIRE_OK(checkNotch(notches[i]));
  double* const columns = NotchBuffer(size.width, count).columns.in(buffer);
  const auto part = [&](int32_t i) { return columns + ptrdiff_t{i} * size.width; };
  for (int32_t i = 0; i < 2 * count; ++i) {
    const DaxiNotch& notch = notches[i / 2];
    const double u = i % 2 ? -notch.u : notch.u;
    for (int32_t x = 0; x < size.width; ++x) part(i)[x] = gaussian(nearest(x - u, width), notch.sigma);
  }
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const C* const from = rowAt(src, srcStep, y);
      C* const to = rowAt(dst, dstStep, y);
      const C mean = from[0];
      if (from != to) std::copy_n(from, size.width, to);
      for (int32_t i = 0; i < 2 * count; ++i) {
        const DaxiNotch& notch = notches[i / 2];
        const double rowPart = gaussian(nearest(y - (i % 2 ? -notch.v : notch.v), size.height), notch.sigma);
        if (rowPart < 1e-17) continue;  // 1 - less is 1
        for (int32_t x = 0; x < size.width; ++x) weighted(to[x], 1 - part(i)[x] * rowPart, to[x]);
      }
      if (y == 0) to[0] = mean;
    }
  });
}

template <class C>
DaxStatus spectrumBand(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size,
                       int32_t width, const DaxiBandCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkFiltered(src, srcStep, dst, dstStep, size, width));
  DAX_REQUIRE_OK(checkBand(*cfg));
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const C* const from = rowAt(src, srcStep, y);
      C* const to = rowAt(dst, dstStep, y);
      const C mean = from[0];
      const double v = signedFrequency(y, size.height);
      for (int32_t x = 0; x < size.width; ++x) {
        const double u = signedFrequency(x, width);
        const double inside = gaussian(std::sqrt(u * u + v * v) - cfg->centre, cfg->sigma);
        weighted(from[x], cfg->keep ? inside : 1 - inside, to[x]);
      }
      if (y == 0) to[0] = mean;
    }
  });
}

#define DAX_SPECTRUM_FILTER(C)                                                                                       \
  template DaxStatus spectrumNotch(PoolThreads, const C*, int32_t, C*, int32_t, DaxiSize, int32_t, const DaxiNotch*, \
                                   int32_t, void*);                                                                  \
  template DaxStatus spectrumBand(PoolThreads, const C*, int32_t, C*, int32_t, DaxiSize, int32_t, const DaxiBandCfg*);
DAX_SPECTRUM_FILTER(DaxComplex32f)
DAX_SPECTRUM_FILTER(DaxComplex64f)
#undef DAX_SPECTRUM_FILTER

}  // namespace dax

DaxStatus DAXI_BandDefaultCfg(DaxiBandCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {0, 0.05, 1, 0};
  return DAX_STS_OK;
}

DaxStatus DAXI_SpectrumNotchBufferSize(DaxiSize size, int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isNotchCount(count), DAX_STS_BAD_PARAM);
  return dax::NotchBuffer(size.width, count).layout.store(bytes);
}
