// Images moved, warped by matrices, and seen from the front.
#include "warp/matrix.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "warp/geometry_call.h"

namespace dax::tool {
namespace {

constexpr GeometryCall<DaxiWarpCfg> kAffine = {{DAXI_WarpAffine_8u_C1R, DAXI_WarpAffine_8u_C3R},
                                               {DAXI_WarpAffine_16u_C1R, DAXI_WarpAffine_16u_C3R},
                                               {DAXI_WarpAffine_32f_C1R, DAXI_WarpAffine_32f_C3R}};
constexpr GeometryCall<DaxiWarpCfg> kPerspective = {{DAXI_WarpPerspective_8u_C1R, DAXI_WarpPerspective_8u_C3R},
                                                    {DAXI_WarpPerspective_16u_C1R, DAXI_WarpPerspective_16u_C3R},
                                                    {DAXI_WarpPerspective_32f_C1R, DAXI_WarpPerspective_32f_C3R}};

// The size of the whole warped image, and the matrix that moves it to the origin.
DaxiSize fitted(const Samples& samples, DaxiWarpCfg& cfg) {
  DaxiRect bound;
  check(DAXI_WarpBound(sizeOf(samples), {0, 0, samples.record.width, samples.record.height}, &cfg, &bound), "--affine");
  cfg.m[2] -= bound.x, cfg.m[5] -= bound.y;
  return {bound.width, bound.height};
}

// A,B,C,D,E,F[:WxH|:fit]
ConvertStep parseAffine(std::string_view text, const Sampling& sampling) {
  const auto pair = splitPair(text, ':');
  const auto numbers = parseNumbers(pair ? pair->first : text, 6);
  const bool fits = pair && pair->second == "fit";
  const auto size = pair && !fits ? parseSides(pair->second) : std::nullopt;
  if (!numbers || (pair && !fits && !size)) return {};
  DaxiWarpCfg cfg = warpCfg(sampling);
  std::copy(numbers->begin(), numbers->end(), cfg.m);
  if (cfg.m[0] * cfg.m[4] == cfg.m[1] * cfg.m[3]) return {};
  return [cfg, fits, size](const Samples& samples) {
    DaxiWarpCfg own = cfg;
    const DaxiSize to = fits ? fitted(samples, own) : size.value_or(sizeOf(samples));
    return warpedAffine(samples, "--affine", to, own);
  };
}

ConvertStep parseShift(std::string_view text, const Sampling& sampling) {
  const auto shift = parseNumbers(text, 2);
  if (!shift) return {};
  DaxiWarpCfg cfg = warpCfg(sampling);
  cfg.m[2] = shift->at(0), cfg.m[5] = shift->at(1);
  return [cfg](const Samples& samples) { return warpedAffine(samples, "--shift", sizeOf(samples), cfg); };
}

// The longer of two opposite sides of a quadrangle, in pixels.
int32_t longerSide(const std::vector<double>& corners, size_t a, size_t b, size_t c, size_t d) {
  const auto length = [&](size_t p, size_t q) {
    return std::hypot(corners[2 * p] - corners[2 * q], corners[2 * p + 1] - corners[2 * q + 1]);
  };
  return static_cast<int32_t>(std::clamp(std::nearbyint(std::max(length(a, b), length(c, d))), 0.0, 1048575.0)) + 1;
}

// X,Y,X,Y,X,Y,X,Y[:WxH]
ConvertStep parsePerspective(std::string_view text, const Sampling& sampling) {
  const auto pair = splitPair(text, ':');
  const auto corners = parseNumbers(pair ? pair->first : text, 8);
  const auto given = pair ? parseSides(pair->second) : std::nullopt;
  if (!corners || (pair && !given)) return {};
  const DaxiSize size = given.value_or(DaxiSize{longerSide(*corners, 0, 1, 2, 3), longerSide(*corners, 1, 2, 3, 0)});
  const double right = size.width - 1, bottom = size.height - 1;
  const double to[8] = {0, 0, right, 0, right, bottom, 0, bottom};
  DaxiWarpCfg cfg = warpCfg(sampling);
  if (DAXI_PerspectiveFrom4(corners->data(), to, cfg.m) != DAX_STS_OK) return {};
  return [cfg, size](const Samples& samples) { return sampled(kPerspective, "--perspective", samples, size, cfg); };
}

const WarpRegistration shiftRegistration({20, "--shift", "DX,DY", "DX,DY",
                                          "move the image by so many pixels, or parts of them", parseShift});
const WarpRegistration affineRegistration({40, "--affine", "M", "A,B,C,D,E,F[:WxH|:fit] with A E - B D not 0",
                                           "pixel (x, y) goes to (A x + B y + C, D x + E y + F): six\n"
                                           "numbers A,B,C,D,E,F, then :WxH for the size of the result, or\n"
                                           ":fit for one that holds all of the image [its own size]",
                                           parseAffine});
const WarpRegistration perspectiveRegistration(
    {50, "--perspective", "CORNERS",
     "X,Y,X,Y,X,Y,X,Y[:WxH], the corners of a convex quadrangle, with W and H of 2 or more",
     "four corners X,Y,X,Y,X,Y,X,Y become those of the result, from the\n"
     "upper left one on, clockwise: what is slanted is seen from the\n"
     "front. Then :WxH for its size [as long as the longer sides]",
     parsePerspective});

}  // namespace

DaxiWarpCfg warpCfg(const Sampling& sampling) {
  DaxiWarpCfg cfg;
  check(DAXI_WarpDefaultCfg(&cfg), "warp");
  sampling.setIn(cfg);
  return cfg;
}

Samples warpedAffine(const Samples& samples, const std::string& step, DaxiSize size, const DaxiWarpCfg& cfg) {
  return sampled(kAffine, step, samples, size, cfg);
}

}  // namespace dax::tool
