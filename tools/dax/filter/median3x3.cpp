#include "daxi/filter_median3x3.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

const FilterRegistration median({"--median3", nullptr, nullptr, "median of 3 x 3 pixels: removes specks, keeps edges",
                                 kRanks, [](std::string_view) {
                                   return ImageFilter{plainFilter<uint8_t>("median", DAXI_FilterMedian3x3_8u_C1R),
                                                      plainFilter<uint16_t>("median", DAXI_FilterMedian3x3_16u_C1R)};
                                 }});

}  // namespace
}  // namespace dax::tool
