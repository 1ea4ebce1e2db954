// Bits of a sample. Whole numbers are stretched from the range of the file to that of the result, floats from 0..1; halves
// are rounded to even.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/text.h"
#include "convert/convert_step.h"

namespace dax::tool {
namespace {

// From 0 on; 1 is white.
double shareOf(const Samples& samples, size_t i) {
  return samples.record.type == DAXI_SAMPLE_32F ? samples.value(i) : samples.value(i) / samples.record.maxValue;
}

// Of floats that are further outside than rounding to `white` levels takes back.
std::string clippedNote(const Samples& samples, double white) {
  const double beyond = 0.5 / white;
  size_t outside = 0;
  for (size_t i = 0; 4 * i < samples.bytes.size(); ++i) {
    const double share = shareOf(samples, i);
    outside += !(share >= -beyond && share <= 1 + beyond);
  }
  return outside == 0 ? "" : std::to_string(outside) + " samples outside 0..1 become black or white";
}

Samples toWhole(const Samples& from, int32_t bits) {
  Samples to = makeSamples(from.record, bits <= 8 ? DAXI_SAMPLE_8U : DAXI_SAMPLE_16U, from.record.channels);
  // In memory white is 255 for fewer bits than 8, too.
  to.record.bits = bits < 8 ? bits : 0;
  to.record.maxValue = bits <= 8 ? 255 : (1 << bits) - 1;
  const double white = (1 << bits) - 1;
  const size_t count = to.bytes.size() / (bits <= 8 ? 1 : 2);
  for (size_t i = 0; i < count; ++i) {
    const double share = shareOf(from, i);
    const double value = share > 0 ? std::rint(std::min(share * white, white)) : 0;  // also for what is no number
    if (bits <= 8) {
      to.bytes[i] = static_cast<uint8_t>(value * 255 / white);
    } else {
      reinterpret_cast<uint16_t*>(to.bytes.data())[i] = static_cast<uint16_t>(value);
    }
  }
  if (from.record.type == DAXI_SAMPLE_32F) to.note = clippedNote(from, white);
  return to;
}

Samples toFloat(const Samples& from) {
  if (from.record.type == DAXI_SAMPLE_32F) return from;
  Samples to = makeSamples(from.record, DAXI_SAMPLE_32F, from.record.channels);
  for (size_t i = 0; 4 * i < to.bytes.size(); ++i) {
    const auto value = static_cast<float>(shareOf(from, i));
    std::memcpy(&to.bytes[4 * i], &value, sizeof(value));
  }
  return to;
}

ConvertStep convertTo(std::string_view text) {
  if (text == "32f") return toFloat;
  const auto bits = parseInteger(text, 1, 16);
  if (!bits || (*bits < 8 && *bits != 1 && *bits != 2 && *bits != 4)) return {};
  return [bits = static_cast<int32_t>(*bits)](const Samples& samples) { return toWhole(samples, bits); };
}

// The numbers of a colour space mean something else for each type, and in floats not shares of white.
void requireShares(const Samples& samples) {
  if (samples.names.empty() || (samples.names.size() == 1 && samples.record.type != DAXI_SAMPLE_32F)) return;
  refuseSamples("--bits", "would change what the numbers of " + samples.coding + " mean: --read-as decides before");
}

ConvertStep parseBits(std::string_view text) {
  const ConvertStep convert = convertTo(text);
  if (!convert) return {};
  return [convert](const Samples& samples) {
    requireShares(samples);
    Samples to = convert(samples);
    to.names = samples.names, to.coding = samples.coding;
    return to;
  };
}

ConvertStep parseReadAs(std::string_view text) {
  return text == "8" || text == "16" || text == "32f" ? convertTo(text) : ConvertStep{};
}

const ConvertRegistration readAsRegistration({0, "--read-as", "N", "8, 16 or 32f",
                                              "bits of a sample for the steps that follow: 8, 16, or 32f for\n"
                                              "floats from 0 to 1; ranges become each other as by --bits\n"
                                              "[those of the file]",
                                              parseReadAs});

const ConvertRegistration bitsRegistration({500, "--bits", "N", "1, 2, 4, 8..16 or 32f",
                                            "bits of a sample: 1, 2 or 4 (PNG of one channel), 8, 9..16,\n"
                                            "or 32f for floats from 0 to 1, which white is; the range of the\n"
                                            "file becomes that of the result [those of the file]",
                                            parseBits});

}  // namespace
}  // namespace dax::tool
