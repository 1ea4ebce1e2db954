// Rotations and poses near the identity, at times anything; names of axes.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

std::vector<double> identity(size_t side) {
  std::vector<double> eye(side * side);
  for (size_t i = 0; i < eye.size(); i += side + 1) eye[i] = 1;
  return eye;
}

void axes(Call& c) {
  c.draw("rotation");
  if (c.isSpoiled("order") && (c.isRound() || c.chance(40))) return c.set<void*>("order", nullptr);
  char* const order = reinterpret_cast<char*>(c.memory("order", 4, Role::input, 1));
  const char* const name =
      c.isSpoiled("order") ? c.pick({"XxY", "XYY", "Xy", "zzz"}) : c.pick({"ZYX", "xyz", "ZXZ", "yxy"});
  if (order) std::strncpy(order, name, 4);
  c.set("order", order);
}

void rotations(Call& c) {
  for (const Argument& each : c.function.arguments) {
    const std::string_view name = each.name;
    if (name == "rotation" && each.type.isConst) c.around(each.name, identity(3), 1e-4);
  }
  if (c.has("order")) axes(c);
}

void numbers(Call& c, const char* name, int64_t count) {
  c.array(name, count);
  const Block* const made = c.blockOf(name);
  if (!made || made->role == Role::output) return;
  made->realBytes == sizeof(float) ? static_cast<void>(c.reals<float>(name, 0))
                                   : static_cast<void>(c.reals<double>(name, 0));
}

// Near the identity, with any translation; at times any numbers.
void fillPoses(Call& c, const char* name, int64_t count) {
  c.array(name, count);
  const Block* const made = c.blockOf(name);
  if (!made || c.chance(10)) return;
  auto* const to = reinterpret_cast<double*>(made->data);
  const std::vector<double> eye = identity(4);
  for (size_t i = 0; i < made->bytes / sizeof(double); ++i) {
    to[i] = eye[i % 16] + 1e-4 * static_cast<double>(c.between(-1, 1));
    if (i % 4 == 3 && i % 16 != 15) to[i] = static_cast<double>(c.between(-100, 100));
  }
  if (made->bytes > 0 && c.isSpoiled(name)) to[0] = NAN;
}

void poses(Call& c) {
  for (const Argument& each : c.function.arguments) {
    const std::string_view name = each.name;
    if ((name == "pose" || name == "a" || name == "b") && each.type.isConst) fillPoses(c, each.name, 16);
  }
  if (!c.has("n")) return;
  c.draw("n");
  const int64_t coordinates = Call::product({c.integer("n"), 3});
  for (const char* const name : {"points", "normals"}) {
    if (c.has(name)) numbers(c, name, coordinates);
  }
  if (c.has("points")) c.inPlace("result", "points");
  if (c.has("result")) numbers(c, "result", coordinates);
  if (!c.has("poses")) return;
  fillPoses(c, "poses", Call::product({c.integer("n"), 16}));
  if (!c.isRound() && c.chance(30)) return c.set<void*>("weights", nullptr);
  numbers(c, "weights", c.integer("n"));
  if (const Block* const made = c.blockOf("weights")) {
    auto* const to = reinterpret_cast<double*>(made->data);
    for (size_t i = 0; i < made->bytes / sizeof(double); ++i) {
      to[i] = std::fabs(to[i]) <= 1000 ? std::fabs(to[i]) + 0.125 : 1;
    }
    if (made->bytes > 0 && c.isSpoiled("weights")) to[0] = c.chance(50) ? NAN : -1;
  }
}

const Rows rows = {{"DAX3D_ROT_*", rotations}, {"DAX3D_POSE_*", poses}};

}  // namespace
}  // namespace dax::hostile
