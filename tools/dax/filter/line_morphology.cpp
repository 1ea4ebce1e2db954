#include "base/text.h"
#include "daxi/flat_morphology.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

#define DAX_LINE_FILTER(OPTION, NAME, HELP)                                                                    \
  const FilterRegistration registered##NAME(                                                                   \
      {"--" OPTION, "DX,DY", "DX,DY of -1023..1023", HELP, kSizes, [](std::string_view text) -> ImageFilter {  \
         const auto line = parseIntegerPair(text, ',', -1023, 1023);                                           \
         if (!line) return {};                                                                                 \
         DaxiFlatLineCfg cfg;                                                                                  \
         check(DAXI_FlatLineDefaultCfg(&cfg), OPTION);                                                         \
         cfg.dx = line->first, cfg.dy = line->second;                                                          \
         return {configuredFilter<uint8_t>(OPTION, DAXI_##NAME##BufferSize_8u, DAXI_##NAME##_8u_C1R, cfg),     \
                 configuredFilter<uint16_t>(OPTION, DAXI_##NAME##BufferSize_16u, DAXI_##NAME##_16u_C1R, cfg)}; \
       }});
DAX_LINE_FILTER("min-line", GrayErodeLine, "minimum along a line of DX columns and DY rows")
DAX_LINE_FILTER("max-line", GrayDilateLine, "maximum along a line of DX columns and DY rows")
#undef DAX_LINE_FILTER

}  // namespace
}  // namespace dax::tool
