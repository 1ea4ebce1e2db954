#include "convert/convert_step.h"

#include <map>

namespace dax::tool {
namespace {

std::multimap<int, ConvertOption>& registered() {
  static std::multimap<int, ConvertOption> options;
  return options;
}

}  // namespace

std::vector<const ConvertOption*> convertOptions() {
  std::vector<const ConvertOption*> all;
  for (const auto& [order, option] : registered()) all.push_back(&option);
  return all;
}

ConvertRegistration::ConvertRegistration(const ConvertOption& option) {
  registered().insert({option.order, option});
}

Samples makeSamples(const DaxiImageRecord& like, int32_t type, int32_t channels) {
  Samples samples = {like, {}};
  samples.record.type = type;
  samples.record.channels = channels;
  samples.record.bits = 0;
  samples.record.maxValue = type == DAXI_SAMPLE_8U ? 255 : type == DAXI_SAMPLE_16U ? 65535 : 0;
  const size_t bytes = type == DAXI_SAMPLE_8U ? 1 : type == DAXI_SAMPLE_16U ? 2 : 4;
  samples.bytes.resize(bytes * static_cast<size_t>(like.width) * static_cast<size_t>(like.height) *
                       static_cast<size_t>(channels));
  return samples;
}

}  // namespace dax::tool
