// No pixels around the image.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void gradient(Call& c) {
  c.anyOf("border", {DAXI_BORDER_REPLICATE, DAXI_BORDER_MIRROR, DAXI_BORDER_SYMMETRIC, DAXI_BORDER_CIRCULAR,
                     DAXI_BORDER_CONSTANT});
  c.real("value", -1000, 70000);
}

void scharrOfBytes(Call& c) {
  gradient(c);
  c.anyOf("aperture", {3});
}

void laplace(Call& c) {
  gradient(c);
  c.anyOf("neighbours", {4, 8});
}

const Rows rows = {{"DAXI_Sobel*", gradient},
                   {"DAXI_Prewitt*", gradient},
                   {"DAXI_Scharr*", gradient},
                   {"DAXI_ScharrX_8u16s*", scharrOfBytes},
                   {"DAXI_ScharrY_8u16s*", scharrOfBytes},
                   {"DAXI_Laplace*", laplace},
                   {"DAXI_GradientMagDir*", gradient}};

}  // namespace
}  // namespace dax::hostile
