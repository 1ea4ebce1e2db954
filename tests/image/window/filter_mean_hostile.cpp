// The smaller buffer, which does for one thread.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void anyBuffer(Call& c) {
  c.draw("size"), c.draw("mask");
  if (c.chance(50)) return;
  const auto query = [&](uint64_t* bytes) {
    return DAXI_FilterMeanBufferSize_8u_V2(c.get<DaxiSize>("size"), c.get<DaxiSize>("mask"), bytes);
  };
  c.work("buffer", query, 4);
}

const Rows rows = {{"DAXI_FilterMean_8u_C1R", anyBuffer}, {"DAXI_FilterMean_8u_C1R_IS", anyBuffer}};

}  // namespace
}  // namespace dax::hostile
