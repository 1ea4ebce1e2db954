#include "daxi/filter_median5x5.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

const FilterRegistration median5x5({"--median5", nullptr, nullptr,
                                    "median of 5 x 5 pixels: removes larger specks, rounds corners", kRanks,
                                    [](std::string_view) {
                                      return ImageFilter{plainFilter<uint8_t>("median", DAXI_FilterMedian5x5_8u_C1R),
                                                         plainFilter<uint16_t>("median", DAXI_FilterMedian5x5_16u_C1R)};
                                    }});

}  // namespace
}  // namespace dax::tool
