// The steps of dax warp by their names on the command line. Each is a file of this folder that registers itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/convert_step.h"
#include "daxi/border.h"
#include "daxi/interpolation.h"

namespace dax::tool {

// How values between pixels are found, and what lies outside. Without a border black is there, or of a resize the
// pixels at the edge.
struct Sampling {
  int32_t interpolation = DAXI_INTERPOLATION_LINEAR;
  std::optional<int32_t> border;
  double value = 0;
  bool antialias = true;

  template <class Cfg>
  void setIn(Cfg& cfg, int32_t defaultBorder = DAXI_BORDER_CONSTANT) const {
    cfg.interpolation = interpolation;
    cfg.border = border.value_or(defaultBorder);
    cfg.value = value;
  }
};

struct WarpOption {
  int order;              // in the help
  const char* name;       // "--rotate"
  const char* valueName;  // "DEGREES"
  const char* form;       // description of valid values
  const char* help;
  // Empty for an invalid value.
  ConvertStep (*parse)(std::string_view value, const Sampling& sampling);
};

// In the order of the help.
std::vector<const WarpOption*> warpOptions();

// Adds a step before main() starts.
struct WarpRegistration {
  explicit WarpRegistration(const WarpOption& option);
};

inline constexpr int32_t kMaxWarpedSide = 1 << 20;

// WIDTHxHEIGHT.
std::optional<DaxiSize> parseSides(std::string_view text);

DaxiSize sizeOf(const Samples& samples);

// What steps sample must have one channel or three.
void requireSampled(const Samples& samples, const std::string& step);

// Samples like these in an image of another size; refuses sizes that are hardly meant.
Samples makeResult(const Samples& from, DaxiSize size, const std::string& step);

// Of 9 to 15 bits the library does not know the largest value.
void keepRange(Samples& samples, const std::string& step);

}  // namespace dax::tool
