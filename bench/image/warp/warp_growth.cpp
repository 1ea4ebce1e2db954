// How geometric operations grow: nanoseconds a pixel of 8 bits, from 2 megapixels to 64, beside a plain copy. Prints the table
// "size" of docs/performance.md. Native only.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"
#include "daxi/polar.h"
#include "daxi/pyramid.h"
#include "daxi/remap.h"
#include "daxi/resize.h"
#include "daxi/rotate.h"
#include "daxi/warp.h"

namespace {

using bench::Image;
using bench::require;

// The last one has steps of a power of two: its columns share few sets of the caches.
constexpr DaxiSize kSizes[] = {{1920, 1080}, {3840, 2160}, {7680, 4320}, {10668, 6000}, {8192, 8192}};
constexpr int kRounds = 3;

// Images of one size, and what the operations need beside them.
struct Scene {
  explicit Scene(DaxiSize of)
      : size(of), src(bench::noise<uint8_t>(of)), dst(of), half({of.width / 2, of.height / 2}) {}

  DaxiRect all(DaxiSize of) const { return {0, 0, of.width, of.height}; }
  uint8_t* work(uint64_t bytes) {
    buffer.resize(std::max<size_t>(buffer.size(), bytes));
    return buffer.data();
  }

  DaxiSize size;
  Image<uint8_t> src, dst, half;
  std::vector<uint8_t> buffer;
};

struct Operation {
  const char* name;
  std::function<std::function<void()>(Scene&)> prepare;
};

using Run = std::function<void()>;

Run copy(Scene& s) {
  return [&s] { std::memcpy(s.dst.data(), s.src.data(), s.src.bytes()); };
}

// Between the whole size and half of it, in either direction.
template <int32_t interpolation, bool isUp>
Run resize(Scene& s) {
  DaxiResizeCfg cfg;
  require(DAXI_ResizeDefaultCfg(&cfg));
  cfg.interpolation = interpolation, cfg.antialias = 0;
  const Image<uint8_t>& from = isUp ? s.half : s.src;
  const Image<uint8_t>& to = isUp ? s.dst : s.half;
  uint64_t bytes = 0;
  require(DAXI_ResizeBufferSize_8u_C1R(from.size, to.size, s.all(to.size), &cfg, &bytes));
  s.work(bytes);
  return [&s, &from, &to, cfg] {
    require(DAXI_Resize_8u_C1R(from.data(), from.size.width, from.size, to.data(), to.size.width, to.size,
                               s.all(to.size), &cfg, s.buffer.data()));
  };
}

// A turn by 0.3 about the centre, and a tilt.
DaxiWarpCfg warpCfg(DaxiSize size, bool isTilted, int32_t interpolation) {
  DaxiWarpCfg cfg;
  require(DAXI_WarpDefaultCfg(&cfg));
  require(DAXI_RotationMatrix((size.width - 1) / 2.0, (size.height - 1) / 2.0, 0.3, 1, cfg.m));
  if (isTilted) cfg.m[6] = 0.2 / size.width;
  cfg.interpolation = interpolation;
  return cfg;
}

template <int32_t interpolation, bool isTilted>
Run warp(Scene& s) {
  return [&s, cfg = warpCfg(s.size, isTilted, interpolation)] {
    const auto call = isTilted ? DAXI_WarpPerspective_8u_C1R : DAXI_WarpAffine_8u_C1R;
    require(call(s.src.data(), s.size.width, s.size, s.dst.data(), s.size.width, s.size, s.all(s.size), &cfg));
  };
}

DaxStatus turn(void* user, double x, double y, double* sourceX, double* sourceY) {
  const double* const m = static_cast<const double*>(user);
  *sourceX = m[0] * x + m[1] * y + m[2];
  *sourceY = m[3] * x + m[4] * y + m[5];
  return DAX_STS_OK;
}

template <bool isPrepared>
Run remap(Scene& s) {
  const Image<float> x(s.size), y(s.size);
  DaxiWarpCfg affine = warpCfg(s.size, false, 1);
  require(DAXI_MapFromFunction(turn, affine.m, x.data(), s.size.width, y.data(), s.size.width, s.size));
  DaxiRemapCfg cfg;
  require(DAXI_RemapDefaultCfg(&cfg));
  if (!isPrepared) {
    return [&s, x, y, cfg] {
      require(DAXI_Remap_8u_C1R(s.src.data(), s.size.width, s.size, x.data(), s.size.width, y.data(), s.size.width,
                                s.dst.data(), s.size.width, s.size, &cfg));
    };
  }
  uint64_t bytes = 0;
  require(DAXI_RemapPrepareModelSize(s.size, &bytes));
  const std::shared_ptr<uint64_t[]> model(new uint64_t[bytes / 8]);
  require(DAXI_RemapPrepare(x.data(), s.size.width, y.data(), s.size.width, s.size, model.get()));
  return [&s, model, bytes, cfg] {
    require(DAXI_RemapPrepared_8u_C1R(s.src.data(), s.size.width, s.size, model.get(), bytes, s.dst.data(),
                                      s.size.width, s.size, &cfg));
  };
}

template <bool isBack>
Run polar(Scene& s) {
  DaxiPolarCfg cfg;
  require(DAXI_PolarDefaultCfg(&cfg));
  cfg.cx = (s.size.width - 1) / 2.0, cfg.cy = (s.size.height - 1) / 2.0, cfg.r1 = s.size.height / 2.0;
  return [&s, cfg] {
    const auto call = isBack ? DAXI_PolarBack_8u_C1R : DAXI_Polar_8u_C1R;
    require(call(s.src.data(), s.size.width, s.size, s.dst.data(), s.size.width, s.size, s.all(s.size), &cfg));
  };
}

Run mirror(Scene& s) {
  return [&s] {
    require(DAXI_Mirror_8u_C1R(s.src.data(), s.size.width, s.dst.data(), s.size.width, s.size, DAXI_MIRROR_COLUMNS));
  };
}

Run transpose(Scene& s) {
  return [&s] { require(DAXI_Transpose_8u_C1R(s.src.data(), s.size.width, s.dst.data(), s.size.height, s.size)); };
}

Run quarter(Scene& s) {
  return [&s] { require(DAXI_Rotate90_8u_C1R(s.src.data(), s.size.width, s.dst.data(), s.size.height, s.size, 1)); };
}

Run pyramidDown(Scene& s) {
  uint64_t bytes = 0;
  require(DAXI_PyrDownBufferSize_8u(s.size, &bytes));
  s.work(bytes);
  return [&s] {
    require(DAXI_PyrDown_8u_C1R(s.src.data(), s.size.width, s.half.data(), s.half.size.width, s.size, s.buffer.data()));
  };
}

Run pyramidUp(Scene& s) {
  uint64_t bytes = 0;
  require(DAXI_PyrUpBufferSize_8u(s.half.size, s.size, &bytes));
  s.work(bytes);
  return [&s] {
    require(DAXI_PyrUp_8u_C1R(s.half.data(), s.half.size.width, s.dst.data(), s.size.width, s.half.size, s.size,
                              s.buffer.data()));
  };
}

constexpr int32_t kNearest = DAXI_INTERPOLATION_NEAREST, kLinear = DAXI_INTERPOLATION_LINEAR,
                  kCubic = DAXI_INTERPOLATION_CUBIC, kLanczos = DAXI_INTERPOLATION_LANCZOS3;
const Operation kOperations[] = {
    {"copy", copy},
    {"mirror columns", mirror},
    {"transpose", transpose},
    {"rotate by 90 degrees", quarter},
    {"resize by 0.5, linear", resize<kLinear, false>},
    {"resize by 0.5, area", resize<DAXI_INTERPOLATION_AREA, false>},
    {"resize by 2, nearest", resize<kNearest, true>},
    {"resize by 2, linear", resize<kLinear, true>},
    {"resize by 2, cubic", resize<kCubic, true>},
    {"resize by 2, Lanczos", resize<kLanczos, true>},
    {"pyramid down", pyramidDown},
    {"pyramid up", pyramidUp},
    {"warp by an affine matrix, nearest", warp<kNearest, false>},
    {"warp by an affine matrix, linear", warp<kLinear, false>},
    {"warp by an affine matrix, cubic", warp<kCubic, false>},
    {"warp by an affine matrix, Lanczos", warp<kLanczos, false>},
    {"warp by a homography, linear", warp<kLinear, true>},
    {"remap, linear", remap<false>},
    {"remap by a prepared map, linear", remap<true>},
    {"polar image, linear", polar<false>},
    {"picture of a polar image, linear", polar<true>},
};

// Nanoseconds a pixel; of few pixels more rounds.
double cost(const Operation& operation, DaxiSize size) {
  Scene scene(size);
  const Run run = operation.prepare(scene);
  const auto pixels = static_cast<double>(bench::pixelCount(size));
  run();
  return 1e6 * bench::fastest(kRounds * (pixels < 1e7 ? 5 : 1), run) / pixels;
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::wanted(argc, argv, "size")) return 2;
  bench::printHead({"ns a pixel", "2.1 MP", "8.3 MP", "33 MP", "64 MP", "64 / 2.1", "8192 x 8192"}, 1);
  for (const Operation& operation : kOperations) {
    double ns[5];
    std::transform(std::begin(kSizes), std::end(kSizes), ns, [&](DaxiSize size) { return cost(operation, size); });
    std::printf("| %s | %.3f | %.3f | %.3f | %.3f | %.2f | %.3f |\n", operation.name, ns[0], ns[1], ns[2], ns[3],
                ns[3] / ns[0], ns[4]);
    std::fflush(stdout);
  }
}
