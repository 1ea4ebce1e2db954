// The library takes apart and puts together images of three and four channels; files have one and two as well.
#include "convert/channels.h"

#include <cstring>

#include "base/failure.h"
#include "base/text.h"
#include "convert/convert_step.h"

namespace dax::tool {
namespace {

size_t bytesOfSample(const Samples& samples) {
  return samples.record.type == DAXI_SAMPLE_8U ? 1 : samples.record.type == DAXI_SAMPLE_16U ? 2 : 4;
}

// The sample that opaque pixels have.
std::vector<uint8_t> whiteOf(const Samples& samples) {
  const float one = 1;
  const auto max = static_cast<uint16_t>(samples.record.maxValue);
  std::vector<uint8_t> white(bytesOfSample(samples), 255);
  if (samples.record.type == DAXI_SAMPLE_16U) std::memcpy(white.data(), &max, sizeof(max));
  if (samples.record.type == DAXI_SAMPLE_32F) std::memcpy(white.data(), &one, sizeof(one));
  return white;
}

// Copies samples that lie `fromChannels` apart to where they lie `toChannels` apart; 0: one for all.
void copyChannel(const uint8_t* from, size_t fromChannels, uint8_t* to, size_t toChannels, size_t pixels,
                 size_t bytes) {
  for (size_t i = 0; i < pixels; ++i) std::memcpy(to + bytes * toChannels * i, from + bytes * fromChannels * i, bytes);
}

size_t pixelsOf(const Samples& samples) {
  return static_cast<size_t>(samples.record.width) * static_cast<size_t>(samples.record.height);
}

std::vector<int> parseOrder(std::string_view text) {
  std::vector<int> order;
  for (const std::string_view part : split(text, ',')) {
    const auto channel = part == "max" ? std::optional(-1) : parseInteger(part, 0, 3);
    if (!channel) return {};
    order.push_back(*channel);
  }
  return order.size() <= 4 ? order : std::vector<int>{};
}

ConvertStep parseChannels(std::string_view text) {
  const std::vector<int> order = parseOrder(text);
  if (order.empty()) return {};
  return [order](const Samples& samples) { return arranged(samples, order); };
}

ConvertStep parsePick(std::string_view text) {
  const auto channel = parseInteger(text, 0, 3);
  if (!channel) return {};
  return [order = std::vector{*channel}](const Samples& samples) { return arranged(samples, order); };
}

const ConvertRegistration channelsRegistration({150, "--channels", "ORDER",
                                                "up to four of 0, 1, 2, 3 and max, with commas",
                                                "channels of the file, counted from 0, in this order: 2,1,0\n"
                                                "exchanges red and blue, 0,1,2 drops opacity, 0,1,2,max adds it,\n"
                                                "0,0,0 makes colour of grey",
                                                parseChannels});
const ConvertRegistration pickRegistration({300, "--pick", "N", "0, 1, 2 or 3",
                                            "only this channel of the colours, counted from 0", parsePick});

}  // namespace

Samples arranged(const Samples& from, const std::vector<int>& order) {
  Samples to = makeSamples(from.record, from.record.type, static_cast<int32_t>(order.size()));
  if (from.record.type == DAXI_SAMPLE_16U) to.record.maxValue = from.record.maxValue;
  to.coding = from.coding;
  const size_t bytes = bytesOfSample(from), pixels = pixelsOf(from);
  const auto channels = static_cast<size_t>(from.record.channels);
  const std::vector<uint8_t> white = whiteOf(from);
  for (size_t i = 0; i < order.size(); ++i) {
    const auto channel = static_cast<size_t>(order[i]);
    uint8_t* const place = to.bytes.data() + bytes * i;
    if (order[i] < 0) {
      copyChannel(white.data(), 0, place, order.size(), pixels, bytes);
    } else if (channel >= channels) {
      refuseSamples("channel " + std::to_string(channel), "is not in an image of " + std::to_string(channels) +
                                                              (channels == 1 ? " channel" : " channels") +
                                                              ", which are counted from 0");
    } else {
      copyChannel(from.bytes.data() + bytes * channel, channels, place, order.size(), pixels, bytes);
      if (!from.names.empty()) to.names.push_back(from.names[channel]);
    }
  }
  return to;
}

Samples merged(const std::vector<Samples>& planes) {
  const Samples& first = planes.front();
  Samples to = makeSamples(first.record, first.record.type, static_cast<int32_t>(planes.size()));
  if (first.record.type == DAXI_SAMPLE_16U) to.record.maxValue = first.record.maxValue;
  const size_t bytes = bytesOfSample(first);
  for (size_t i = 0; i < planes.size(); ++i) {
    const DaxiImageRecord &one = planes[i].record, &other = first.record;
    const std::string which = ", not image " + std::to_string(i + 1) + " of ";
    if (one.channels != 1) refuseSamples("--merge", "takes images of 1 channel" + which + std::to_string(one.channels));
    if (one.width != other.width || one.height != other.height || one.type != other.type ||
        one.maxValue != other.maxValue) {
      refuseSamples("--merge", "takes images of one size and one number of bits" + which + std::to_string(one.width) +
                                   " x " + std::to_string(one.height) + " and " + typeName(planes[i]));
    }
    copyChannel(planes[i].bytes.data(), 1, to.bytes.data() + bytes * i, planes.size(), pixelsOf(first), bytes);
  }
  return to;
}

}  // namespace dax::tool
