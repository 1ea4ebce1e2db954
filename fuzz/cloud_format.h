// What must hold for every file that a reader of clouds is given.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/memory_file.h"
#include "fuzz/seeds.h"
#include "tools/dax/cloud/point_rows.h"

namespace dax::fuzz {

using CloudReader = tool::Cloud (*)(std::string_view bytes);
using CloudWriter = std::string (*)(const tool::Cloud& cloud, bool text);

// Either the bytes are refused, or they give points that are finite and no more than the bytes can hold, which come back
// from what the writer makes of them.
inline void expectRoundTrip(const uint8_t* data, size_t size, CloudReader read, CloudWriter write) {
  tool::Cloud cloud;
  try {
    cloud = read({reinterpret_cast<const char*>(data), size});
  } catch (const tool::FormatError&) {
    return;
  }
  require(cloud.size() > 0 && cloud.points.size() == 3 * cloud.size() && cloud.size() + cloud.dropped <= size);
  require(cloud.normals.empty() || cloud.normals.size() == 4 * cloud.size());
  const auto finite = [](float v) { return std::isfinite(v); };
  require(std::all_of(cloud.points.begin(), cloud.points.end(), finite));
  require(std::all_of(cloud.normals.begin(), cloud.normals.end(), finite));
  for (const bool text : {false, true}) {
    const tool::Cloud back = read(write(cloud, text));
    require(back.size() == cloud.size() && back.normals == cloud.normals && back.dropped == 0);
    // Sums of an origin and floats are rounded.
    require(cloud.isShifted() || back.points == cloud.points);
  }
}

// A cloud with and without normals, in both forms.
template <class Write>
std::vector<Seed> cloudSeeds(Write write) {
  std::vector<Seed> all;
  tool::Cloud cloud;
  cloud.points = {1, 2, 3, -4.5f, 0, 1e-7f, 7, 8, 9e9f};
  for (const char* const name : {"points", "normals"}) {
    if (name[0] == 'n') cloud.normals = {0, 0, 1, 0, 1, 0, 0, 0.5f, 0, -1, 0, 0.25f};
    for (const bool text : {false, true})
      all.push_back({name + std::string(text ? "-text" : "-binary"), write(cloud, text)});
  }
  return all;
}

}  // namespace dax::fuzz
