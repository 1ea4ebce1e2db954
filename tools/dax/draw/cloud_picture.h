// Clouds as pictures.
#pragma once

#include <string>

#include "cloud/cloud.h"
#include "dax/types.h"

namespace dax::tool {

struct View {
  double azimuth = -60;   // degrees that the eye goes around the upward axis
  double elevation = 35;  // degrees of the eye above the other two
  int up = 2;             // axis
  DaxiSize size = {900, 700};
};

// A PNG: the points of a cloud with normals, as discs that hide what lies behind them, lit from the upper left by a lamp
// that goes with the eye. Parallel projection; the cloud fills the picture.
std::string drawCloud(const Cloud& cloud, const View& view);

}  // namespace dax::tool
