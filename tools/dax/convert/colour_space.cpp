// Other colour spaces of red, green, blue, and back.
#include <array>

#include "base/text.h"
#include "convert/sample_call.h"
#include "daxi/hsv.h"
#include "daxi/lab.h"
#include "daxi/ycbcr.h"

namespace dax::tool {
namespace {

constexpr const char* kSpaces = "ycbcr[:709][:video], hsv[:180], hls[:180], lab or xyz";

struct ColourSpace {
  std::vector<std::string> channels;
  std::array<std::string, 3> codings;  // how numbers stand for them: of 8 bits, of 16 bits, of floats
  // From red, green, blue, and back to them; `step` is named where it is refused.
  std::function<Samples(const Samples&, const char*step)> to, from;
};

template <class... Arguments>
auto onColours(const SampleCall<Arguments...>& call, std::type_identity_t<Arguments>... arguments) {
  return [call, arguments...](const Samples& samples, const char* step) {
    return callOnPixels(call, step, samples, 3, arguments...);
  };
}

std::optional<ColourSpace> yCbCr(const std::vector<std::string_view>& options) {
  int32_t standard = DAXI_COLOUR_BT601, range = DAXI_COLOUR_FULL;
  for (const std::string_view option : options) {
    if (option == "709") {
      standard = DAXI_COLOUR_BT709;
    } else if (option == "video") {
      range = DAXI_COLOUR_VIDEO;
    } else {
      return std::nullopt;
    }
  }
  const std::string coding = std::string("YCbCr, ") + (standard == DAXI_COLOUR_BT601 ? "BT.601, " : "BT.709, ") +
                             (range == DAXI_COLOUR_FULL ? "full range" : "video range");
  const SampleCall<int32_t, int32_t> to = {DAXI_RGBToYCbCr_8u_C3R, DAXI_RGBToYCbCr_16u_C3R, DAXI_RGBToYCbCr_32f_C3R};
  const SampleCall<int32_t, int32_t> from = {DAXI_YCbCrToRGB_8u_C3R, DAXI_YCbCrToRGB_16u_C3R, DAXI_YCbCrToRGB_32f_C3R};
  return ColourSpace{
      {"Y", "Cb", "Cr"}, {coding, coding, coding}, onColours(to, standard, range), onColours(from, standard, range)};
}

template <class Pixel, DaxStatus (*call)(const Pixel*, int32_t, Pixel*, int32_t, DaxiSize)>
DaxStatus fullTurn(const Pixel* src, int32_t srcStep, Pixel* dst, int32_t dstStep, DaxiSize size, int32_t hue180) {
  if (hue180) refuseSamples("a hue of 180 a turn", "is for 8 bits: leave :180 out");
  return call(src, srcStep, dst, dstStep, size);
}

std::optional<ColourSpace> hue(const std::vector<std::string_view>& options, bool isHsv) {
  const int32_t hue180 = !options.empty();
  if (hue180 && (options.size() > 1 || options.front() != "180")) return std::nullopt;
  const SampleCall<int32_t> toHsv = {DAXI_RGBToHSV_8u_C3R, fullTurn<uint16_t, DAXI_RGBToHSV_16u_C3R>,
                                     fullTurn<float, DAXI_RGBToHSV_32f_C3R>};
  const SampleCall<int32_t> fromHsv = {DAXI_HSVToRGB_8u_C3R, fullTurn<uint16_t, DAXI_HSVToRGB_16u_C3R>,
                                       fullTurn<float, DAXI_HSVToRGB_32f_C3R>};
  const SampleCall<int32_t> toHls = {DAXI_RGBToHLS_8u_C3R, fullTurn<uint16_t, DAXI_RGBToHLS_16u_C3R>,
                                     fullTurn<float, DAXI_RGBToHLS_32f_C3R>};
  const SampleCall<int32_t> fromHls = {DAXI_HLSToRGB_8u_C3R, fullTurn<uint16_t, DAXI_HLSToRGB_16u_C3R>,
                                       fullTurn<float, DAXI_HLSToRGB_32f_C3R>};
  const std::string space = isHsv ? "HSV" : "HLS";
  return ColourSpace{isHsv ? std::vector<std::string>{"H", "S", "V"} : std::vector<std::string>{"H", "L", "S"},
                     {space + (hue180 ? ", hue 180 a turn" : ", hue 256 a turn"), space + ", hue 65536 a turn",
                      space + ", hue in degrees"},
                     onColours(isHsv ? toHsv : toHls, hue180),
                     onColours(isHsv ? fromHsv : fromHls, hue180)};
}

ColourSpace lab() {
  const SampleCall<> to = {DAXI_RGBToLab_8u_C3R, DAXI_RGBToLab_16u_C3R, DAXI_RGBToLab_32f_C3R};
  const SampleCall<> from = {DAXI_LabToRGB_8u_C3R, DAXI_LabToRGB_16u_C3R, DAXI_LabToRGB_32f_C3R};
  return {{"L", "a", "b"},
          {"Lab, as L 255 / 100, a + 128, b + 128", "Lab, as L 65535 / 100, a 256 + 32768, b 256 + 32768", "Lab"},
          onColours(to),
          onColours(from)};
}

ColourSpace xyz() {
  const SampleCall<> to = {nullptr, DAXI_SRGBToXYZ_16u_C3R, DAXI_SRGBToXYZ_32f_C3R};
  const SampleCall<> from = {nullptr, DAXI_XYZToSRGB_16u_C3R, DAXI_XYZToSRGB_32f_C3R};
  return {{"X", "Y", "Z"}, {"", "XYZ, 32768 for 1", "XYZ"}, onColours(to), onColours(from)};
}

std::optional<ColourSpace> parseSpace(std::string_view text) {
  std::vector<std::string_view> options = split(text, ':');
  const std::string_view name = options.front();
  options.erase(options.begin());
  if (name == "ycbcr") return yCbCr(options);
  if (name == "hsv" || name == "hls") return hue(options, name == "hsv");
  if (!options.empty()) return std::nullopt;
  if (name == "lab") return lab();
  if (name == "xyz") return xyz();
  return std::nullopt;
}

ConvertStep parseFrom(std::string_view text) {
  const auto space = parseSpace(text);
  if (!space) return {};
  return [from = space->from](const Samples& samples) {
    requireChannels(samples, "--from", 3);
    requireWholeRange(samples, "--from");
    return from(samples, "--from");
  };
}

ConvertStep parseTo(std::string_view text) {
  const auto space = parseSpace(text);
  if (!space) return {};
  return [space = *space](const Samples& samples) {
    requireChannels(samples, "--to", 3);
    requireWholeRange(samples, "--to");
    Samples to = space.to(samples, "--to");
    to.names = space.channels;
    to.coding = space.codings[static_cast<size_t>(samples.record.type - DAXI_SAMPLE_8U)];
    return to;
  };
}

const ConvertRegistration fromRegistration({200, "--from", "SPACE", kSpaces,
                                            "red, green, blue of a file whose channels are those of another\n"
                                            "space, named as for --to",
                                            parseFrom});
const ConvertRegistration toRegistration({210, "--to", "SPACE", kSpaces,
                                          "another space: ycbcr (BT.601, full range, as JPEG has it;\n"
                                          "ycbcr:709:video: BT.709, video range), hsv or hls (hsv:180: hue\n"
                                          "up to 179 of 8 bits), lab, xyz (not of 8 bits)",
                                          parseTo});

}  // namespace
}  // namespace dax::tool
