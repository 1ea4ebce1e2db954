#include "warp/warp_step.h"

#include <map>

#include "base/library_call.h"
#include "base/text.h"
#include "daxi/min_max.h"

namespace dax::tool {
namespace {

std::multimap<int, WarpOption>& registeredWarps() {
  static std::multimap<int, WarpOption> options;
  return options;
}

}  // namespace

std::vector<const WarpOption*> warpOptions() {
  std::vector<const WarpOption*> all;
  for (const auto& each : registeredWarps()) all.push_back(&each.second);
  return all;
}

WarpRegistration::WarpRegistration(const WarpOption& option) {
  registeredWarps().insert({option.order, option});
}

std::optional<DaxiSize> parseSides(std::string_view text) {
  const auto sides = parseIntegerPair(text, 'x', 1, kMaxWarpedSide);
  return sides ? std::optional(DaxiSize{sides->first, sides->second}) : std::nullopt;
}

DaxiSize sizeOf(const Samples& samples) {
  return {samples.record.width, samples.record.height};
}

void requireSampled(const Samples& samples, const std::string& step) {
  const int32_t channels = samples.record.channels;
  if (channels == 1 || channels == 3) return;
  refuseSamples(step, "takes images of 1 or 3 channels, not of " + std::to_string(channels) +
                          ": dax convert --channels " + (channels == 2 ? "0" : "0,1,2") + " drops the opacity");
}

Samples makeResult(const Samples& from, DaxiSize size, const std::string& step) {
  constexpr int64_t kMaxPixels = int64_t{1} << 28;
  if (size.width > kMaxWarpedSide || size.height > kMaxWarpedSide || int64_t{size.width} * size.height > kMaxPixels) {
    refuseSamples(step, "would make " + std::to_string(size.width) + " x " + std::to_string(size.height) +
                            " pixels; results have at most 268 million and sides of at most 1048576");
  }
  DaxiImageRecord like = from.record;
  like.width = size.width, like.height = size.height;
  Samples result = makeSamples(like, like.type, like.channels);
  if (like.type == DAXI_SAMPLE_16U) result.record.maxValue = like.maxValue;
  result.names = from.names, result.coding = from.coding;
  return result;
}

void keepRange(Samples& samples, const std::string& step) {
  const DaxiImageRecord& record = samples.record;
  if (record.type != DAXI_SAMPLE_16U || record.maxValue == 65535) return;
  const int32_t row = record.width * record.channels;
  check(DAXI_MinC_16u_C1IR(samples.words(), row, {row, record.height}, static_cast<uint16_t>(record.maxValue)),
        step.c_str());
}

}  // namespace dax::tool
