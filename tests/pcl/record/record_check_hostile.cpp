// Small records: arrays of numbers, near what passes.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

const std::vector<double> kEye = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

template <int32_t count>
void halves(Call& c) {
  c.around(c.function.arguments[0].name, std::vector<double>(count, 0.5), 0.1);
}

void transform(Call& c) {
  c.around("matrix", kEye, c.pick({1e-4, 1e-4, 1e-4, 1e-4, 1e-4, 1e-2}));
}

void normal(Call& c) {
  for (const char* name : {"nx", "ny", "nz"}) c.chance(60) ? c.real(name, -1e-8, 1e-8) : c.real(name, -1, 1);
}

const Rows rows = {
    {"DAX3DPCL_UTILS_Check_Intrins_*", halves<9>}, {"DAX3DPCL_UTILS_Check_CamIntrins", halves<4>},
    {"DAX3DPCL_UTILS_Check_Box3d_*", halves<9>},   {"DAX3DPCL_UTILS_Check_Quat_*", halves<4>},
    {"DAX3DPCL_UTILS_Check_SE3_*", transform},     {"DAX3DPCL_UTILS_Check_EyeSE3_*", transform},
    {"DAX3DPCL_UTILS_Check_Normal_*", normal},
};

}  // namespace
}  // namespace dax::hostile
