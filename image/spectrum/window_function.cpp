#include "image/spectrum/window_function.h"

#include <algorithm>
#include <cstdint>
#include <numbers>

#include "frame/math.h"
#include "frame/memory/work_buffer.h"
#include "frame/op2d.h"
#include "image/transform/dft_line.h"

static_assert(sizeof(DaxiWindowCfg) == 16);

namespace dax {
namespace {

constexpr int32_t kMaxWindow = 1 << 20;

DaxStatus checkWindowCfg(const DaxiWindowCfg& cfg) {
  DAX_REQUIRE(cfg.kind >= DAXI_WINDOW_HANN && cfg.kind <= DAXI_WINDOW_TUKEY, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.symmetric == 0 || cfg.symmetric == 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.kind != DAXI_WINDOW_TUKEY || (cfg.alpha >= 0 && cfg.alpha <= 1), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// Tukey's, `distance` from the nearer end in parts of the length: a flank of cosine is alpha / 2 long.
double tukey(double distance, double alpha) {
  if (!(distance < alpha / 2)) return 1;
  return 0.5 - 0.5 * sinCosExact(2 * std::numbers::pi * (distance / alpha)).cosine;
}

double windowWeight(int64_t n, int64_t period, const DaxiWindowCfg& cfg) {
  const auto cosine = [&](int64_t k) { return rootOfUnity(k % period, period).re; };
  switch (cfg.kind) {
    case DAXI_WINDOW_HANN:
      return 0.5 - 0.5 * cosine(n);
    case DAXI_WINDOW_HAMMING:
      return 0.54 - 0.46 * cosine(n);
    case DAXI_WINDOW_BLACKMAN:
      return (0.42 - 0.5 * cosine(n)) + 0.08 * cosine(2 * n);
    default:
      return tukey(static_cast<double>(std::min(n, period - n)) / static_cast<double>(period), cfg.alpha);
  }
}

template <class T>
DaxStatus windowOf(int32_t count, const DaxiWindowCfg* cfg, T* weights) {
  DAX_REQUIRE(weights && cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1 && count <= kMaxWindow, DAX_STS_BAD_COUNT);
  DAX_REQUIRE_OK(checkWindowCfg(*cfg));
  windowWeights(count, *cfg, weights);
  return DAX_STS_OK;
}

// Doubles for both types: of columns, then of rows.
struct WindowBuffer {
  explicit WindowBuffer(DaxiSize size)
      : columns(layout.add<double>(static_cast<uint64_t>(size.width))),
        rows(layout.add<double>(static_cast<uint64_t>(size.height))) {}
  BufferLayout layout;
  BufferPiece<double> columns, rows;
};

}  // namespace

template <class T>
void windowWeights(int32_t count, const DaxiWindowCfg& cfg, T* weights) {
  const int64_t period = cfg.symmetric ? count - 1 : count;
  for (int32_t n = 0; n < count; ++n) weights[n] = count == 1 ? T{1} : static_cast<T>(windowWeight(n, period, cfg));
}

DaxStatus applyWindowBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  return WindowBuffer(size).layout.store(bytes);
}

template <class T, class D>
DaxStatus applyWindow(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                      const DaxiWindowCfg* cfg, void* buffer) {
  DAX_REQUIRE(cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, 1, Plane{src, srcStep}, Plane{dst, dstStep}));
  DAX_REQUIRE_OK(checkWindowCfg(*cfg));
  const WindowBuffer at(size);
  double *const columns = at.columns.in(buffer), *const rows = at.rows.in(buffer);
  windowWeights(size.width, *cfg, columns);
  windowWeights(size.height, *cfg, rows);
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const T* const from = rowAt(src, srcStep, y);
      D* const to = rowAt(dst, dstStep, y);
      for (int32_t x = 0; x < size.width; ++x) to[x] = static_cast<D>(from[x] * (columns[x] * rows[y]));
    }
  });
}

#define DAX_WINDOW(T, D) \
  template DaxStatus applyWindow(PoolThreads, const T*, int32_t, D*, int32_t, DaxiSize, const DaxiWindowCfg*, void*);
DAX_WINDOW(uint8_t, float)
DAX_WINDOW(uint16_t, float)
DAX_WINDOW(float, float)
DAX_WINDOW(double, double)
#undef DAX_WINDOW
template void windowWeights(int32_t, const DaxiWindowCfg&, float*);

}  // namespace dax

DaxStatus DAXI_WindowDefaultCfg(DaxiWindowCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_WINDOW_HANN, 0, 0.5};
  return DAX_STS_OK;
}

DaxStatus DAXI_Window_32f(int32_t count, const DaxiWindowCfg* cfg, float* weights) {
  return dax::windowOf(count, cfg, weights);
}

DaxStatus DAXI_Window_64f(int32_t count, const DaxiWindowCfg* cfg, double* weights) {
  return dax::windowOf(count, cfg, weights);
}
