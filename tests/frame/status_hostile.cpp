// Status codes that there are, and clocks.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void anyStatus(Call& c) {
  const int64_t any = static_cast<int64_t>(c.random.next() & 0xFFFFFFFF);
  c.set("status", static_cast<uint32_t>(c.chance(50) ? c.between(0x10000000, 0x10000040) : any));
}

const Rows rows = {
    {"DAX_GetStatusText", anyStatus},
    {"DAX_ZurStatusToDaxAlgStatus", [](Call& c) { c.number("zurStatus", -40, 5); }, Row::neverFails},
    {"DAX_GetCpuClocks", [](Call&) {}, Row::varies},
};

}  // namespace
}  // namespace dax::hostile
