#include "convert/convert_step.h"

#include <bit>
#include <map>

#include "base/failure.h"

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
  Samples samples;
  samples.record = like;
  samples.record.type = type;
  samples.record.channels = channels;
  samples.record.bits = 0;
  samples.record.maxValue = type == DAXI_SAMPLE_8U ? 255 : type == DAXI_SAMPLE_16U ? 65535 : 0;
  const size_t bytes = type == DAXI_SAMPLE_8U ? 1 : type == DAXI_SAMPLE_16U ? 2 : 4;
  samples.bytes.resize(bytes * static_cast<size_t>(like.width) * static_cast<size_t>(like.height) *
                       static_cast<size_t>(channels));
  return samples;
}

std::string typeName(const Samples& samples) {
  const DaxiImageRecord& record = samples.record;
  if (record.type == DAXI_SAMPLE_32F) return "samples in floating point";
  const auto bits = std::bit_width(static_cast<unsigned>(record.maxValue));
  return "samples of " + std::to_string(bits) + " bits";
}

void refuseSamples(const std::string& step, const std::string& why) {
  throw Failure(ExitStatus::kRefused, step + " " + why);
}

void requireChannels(const Samples& samples, const std::string& step, int32_t channels) {
  const int32_t given = samples.record.channels;
  if (given == channels) return;
  const bool isOpaque = given == 1 || given == 3;
  const std::string help = !isOpaque ? "--channels " + std::string(given == 4 ? "0,1,2" : "0") + " drops the opacity"
                           : channels == 1 ? "--grey or --pick leaves one"
                                           : "it is grey, or a mosaic, which --debayer takes";
  refuseSamples(step, "takes images of " + std::to_string(channels) + (channels == 1 ? " channel" : " channels") +
                          ", not of " + std::to_string(given) + ": " + help);
}

void requireAlike(const Samples& samples, const std::string& step) {
  if (samples.record.channels % 2 == 0) requireChannels(samples, step, 1);
  if (samples.names.size() > 1) refuseSamples(step, "would treat channels of " + samples.coding + " alike: --pick one");
}

void requireWholeRange(const Samples& samples, const std::string& step) {
  if (samples.record.type != DAXI_SAMPLE_16U || samples.record.maxValue == 65535) return;
  refuseSamples(step, "does not take " + typeName(samples) + ": --read-as 16 stretches them");
}

}  // namespace dax::tool
