// The pixels are not read: any size can be claimed.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

const Rows rows = {{"DAXI_CheckData_*", [](Call& c) { c.notRead(c.has("planes") ? "planes" : "image"); }}};

}  // namespace
}  // namespace dax::hostile
