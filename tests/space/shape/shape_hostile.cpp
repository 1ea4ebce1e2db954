// Shapes that mostly meet around the origin.
#include <map>

#include "dax3d.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

const std::map<std::string_view, std::vector<double>> kShapes = {
    {"point", {0.5, 1, -0.5}},
    {"Vector", {1, 2, 3}},
    {"Line", {0.1, 0.2, 0, 1, 2, 4}},
    {"Segment", {-1, -2, -3, 1, 3, 4}},
    {"Plane", {0.25, 0.5, 2, 0.25}},
    {"planes", {3, 0.25, 0, 1, 0, 4, 0.5, 2, 0.5, 0, 5, 1}},
    {"Sphere", {0.5, 0.25, 0, 6}},
    {"Cylinder", {0.25, 0.5, 0, 5, 0, 1, 4}},
    {"Circle", {0.25, 0.5, 0, 0, 0, 3, 2}},
    {"Triangle", {-30, -30, 1, 30, -30, 1, 0, 40, 2}},
};

// What a and b are stands in the function's name.
void anyShape(Call& c, const Argument& argument) {
  if (argument.said.record == std::string_view("Dax3dBox")) {
    c.filled<Dax3dBox>(argument.name, 1, [&](Dax3dBox& box) {
      std::fill_n(box.pose, 16, 0.0);
      for (int i = 0; i < 4; ++i) box.pose[5 * i] = 1;
      for (double& size : box.size) size = static_cast<double>(c.between(4, 12));
      box.pose[3] = static_cast<double>(c.between(-2, 2));
    });
    return;
  }
  for (const auto& [name, numbers] : kShapes) {
    std::string own = argument.name;
    if (own.size() > 1 && own != "point" && own != "planes") own[0] = static_cast<char>(std::toupper(own[0]));
    const bool isTold = own.size() == 1 && std::string_view(c.function.name).find(name) != std::string_view::npos;
    if (own == name || isTold) {
      std::vector<double> around = numbers;
      around[0] += own == "b" ? 3 : 0;
      c.around(argument.name, around, own == "point" ? 1 : 0.1);
      return;
    }
  }
}

void shapes(Call& c) {
  for (const Argument& each : c.function.arguments) {
    if (each.type.isConst) anyShape(c, each);
  }
  for (const char* const name : {"foot", "feet"}) {
    if (c.has(name) && !c.isRound() && c.chance(30)) c.set<void*>(name, nullptr);
  }
}

const Rows rows = {{"DAX3D_DIST_*", shapes}, {"DAX3D_INTERSECT_*", shapes}, {"DAX3D_ANGLE_*", shapes}};

}  // namespace
}  // namespace dax::hostile
