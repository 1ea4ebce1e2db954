#include "base/text.h"
#include "daxi/dilate3x3.h"
#include "daxi/erode3x3.h"
#include "daxi/thin.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

// A filter that is repeated, or limited, by a number.
template <class Filter>
ImageFilter counted(std::string_view text, const char* step, SizeQuery query, Filter filter) {
  const auto count = parseInteger(text, 1, 1000000);
  if (!count) return {};
  return {bufferedFilter<uint8_t>(step, query, filter, *count)};
}

const FilterRegistration erode({"--erode", "N", "N of 1..1000000",
                                "N one-sided erosions: each takes the last pixel of the runs along\n"
                                "rows, then along columns; what is one pixel wide stays",
                                kMasks, [](std::string_view text) {
                                  return counted(text, "erosion", DAXI_Erode3x3BufferSize_8u, DAXI_Erode3x3_8u_C1R);
                                }});
const FilterRegistration dilate({"--dilate", "N", "N of 1..1000000",
                                 "N one-sided dilations, which give back what --erode N took of\nwhat is left", kMasks,
                                 [](std::string_view text) {
                                   return counted(text, "dilation", DAXI_Dilate3x3BufferSize_8u, DAXI_Dilate3x3_8u_C1R);
                                 }});
const FilterRegistration thin({"--thin", nullptr, nullptr, "thinned to lines of one pixel", kMasks,
                               [](std::string_view) -> ImageFilter {
                                 return {
                                     bufferedFilter<uint8_t>("thinning", DAXI_ThinBufferSize_8u, DAXI_Thin_8u_C1R, 0)};
                               }});
const FilterRegistration prune({"--prune", "N", "N of 1..1000000", "branches of thin lines of at most N pixels vanish",
                                kMasks, [](std::string_view text) {
                                  return counted(text, "pruning", DAXI_PruneBranchesBufferSize_8u,
                                                 DAXI_PruneBranches_8u_C1R);
                                }});

}  // namespace
}  // namespace dax::tool
