// Caliper regions and the edges measured in them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "daxi/caliper_pair.h"
#include "io/grey_image.h"
#include "scene/contour.h"

namespace dax::tool {

using Region = std::variant<CaliperBox, CaliperRhomboid, CaliperAnnulus>;

// "X,Y,..." with one number per member of the region, angles in degrees; none if the text is anything else.
template <class R>
std::optional<Region> parseRegion(std::string_view text);

// "box 12,20,40,16,30", as on the command line.
std::string describe(const Region& region);

// Moved by a number of pixels.
Region moved(Region region, double dx, double dy);

// A point of the region's grid: s along the columns and t along the rows, in pixels from its centre.
Point pointOf(const Region& region, double s, double t);

struct Sides {
  double width;
  double height;
};
Sides sidesOf(const Region& region);

struct CaliperSettings {
  bool pairs = false;
  bool alongHeight = false;  // else along the width
  uint32_t polarity = DAXI_CALIPER_ANY;
  uint32_t halfWidth = 3;
  std::optional<float> threshold;      // none: a step of 20 grey levels
  std::optional<float> expectedWidth;  // of pairs
  int32_t count = 10;
  int32_t choice = 0;      // k: the k-th only
  bool staircase = false;  // pairs of any two edges, those of one polarity too
  bool fine = false;       // the mean of two samplings half a pixel apart

  // Peak response to a sharp step of one grey level.
  double stepResponse() const;
  float usedThreshold() const;
};

struct FoundEdge {
  CaliperEdge edge;
  DaxiPoint32f point;
};

struct FoundPair {
  CaliperEdgePair pair;
  DaxiPoint32f first;
  DaxiPoint32f second;
};

struct Caliper {
  Region region;
  std::vector<FoundEdge> edges;  // without pairs
  std::vector<FoundPair> pairs;
  std::vector<float> profile;
  std::vector<float> response;
  int32_t kernelLength;
};

// One search, as the library does it. Throws Failure(kRefused) with a message that describes the region.
Caliper measureOnce(const GreyImage& image, const Region& region, const CaliperSettings& settings);

}  // namespace dax::tool
