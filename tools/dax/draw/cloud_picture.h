// Clouds as pictures.
#pragma once

#include <string>

#include "cloud/cloud.h"
#include "dax/types.h"

namespace dax::tool {

struct View {
  double azimuth = -60;   // of the eye about the upward axis, degrees
  double elevation = 35;  // of the eye above the plane of the other axes, degrees
  int up = 2;             // axis
  DaxiSize size = {900, 700};
};

// A PNG: the points of a cloud with normals as opaque discs, lit from the upper left by a lamp that moves with the
// eye. Parallel projection; the cloud fills the picture.
std::string drawCloud(const Cloud& cloud, const View& view);

}  // namespace dax::tool
