// Rotations and motions: any numbers, for what comes out must only be the same everywhere. Mostly angles of some turns, and
// matrices near the identity.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

template <size_t side, size_t dimension>
void numbers(Call& c) {
  std::vector<double> eye(side * side);
  for (size_t i = 0; i < eye.size(); i += side + 1) eye[i] = 1;
  for (const Argument& argument : c.function.arguments) {
    const std::string_view name = argument.name;
    const bool isVector = name == "w" || name == "step" || name == "twist";
    c.around(argument.name, isVector ? std::vector<double>(dimension) : eye, isVector ? 4 : 1e-3);
  }
}

const Rows rows = {{"PRMT_SO3_*", numbers<3, 3>}, {"PRMT_SE3_*", numbers<4, 6>}};

}  // namespace
}  // namespace dax::hostile
