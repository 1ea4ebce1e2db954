#include "quality/focus.h"

#include "base/library_call.h"
#include "daxi/sharpness.h"

namespace dax::tool {

Focus measureFocus(const Picture& picture) {
  Focus focus{};
  const auto measure = [&](const auto& image, const auto&... calls) {
    size_t i = 0;
    (check(calls(image.pixels.data(), image.step(), image.size, &focus[i++]), "sharpness"), ...);
  };
  if (picture.hasValues()) {
    measure(picture.values, DAXI_SharpnessTenengrad_16u_C1R, DAXI_SharpnessLaplacianVariance_16u_C1R,
            DAXI_SharpnessBrenner_16u_C1R);
  } else {
    measure(picture.grey, DAXI_SharpnessTenengrad_8u_C1R, DAXI_SharpnessLaplacianVariance_8u_C1R,
            DAXI_SharpnessBrenner_8u_C1R);
  }
  return focus;
}

}  // namespace dax::tool
