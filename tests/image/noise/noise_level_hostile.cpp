// Images of some blocks, stacks of some frames, limits that leave something to measure.
#include <cmath>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void configure(Call& c) {
  const auto* const cfg = c.filled<DaxiNoiseLevelCfg>("cfg", 1, [&](DaxiNoiseLevelCfg& each) {
    each.block = 8 + c.random.below(5);
    each.minCount = 1;
    each.low = c.chance(50) ? -INFINITY : -1e39, each.high = c.chance(50) ? INFINITY : 1e39;
  });
  const int32_t bins = cfg ? cfg->bins : 16;
  void* const points = c.array("points", bins >= 1 && bins <= 256 ? bins : 1);
  const auto* const count = static_cast<const int32_t*>(c.array("count", 1));
  c.onlyMeans(points, [=] { return static_cast<size_t>(*count) * sizeof(DaxiNoiseLevel); });
  c.worksBeforeFailing = true;
}

void blocks(Call& c) {
  c.size("size", 14);
  configure(c);
}

// Frames with numbers in them, of one step.
template <class T>
void stack(Call& c) {
  const int64_t frameCount = c.number("frameCount", 2, 1024, 6);
  const DaxiSize size = c.size("size");
  const int64_t step = c.number("step", size.width, int64_t{size.width} + 9);
  const bool isValid =
      size.width >= 1 && size.height >= 1 && step >= size.width && frameCount >= 2 && frameCount <= 1024;
  const int64_t pixels = isValid ? int64_t{size.height - 1} * step + size.width : -1;
  auto** const frames =
      static_cast<void**>(c.array("frames", isValid || frameCount > 0 ? std::min<int64_t>(frameCount, 1024) : -1));
  if (!frames) return;
  c.blockOf("frames")->role = Role::input;
  for (int64_t i = 0; i < std::min<int64_t>(frameCount, 1024); ++i) {
    auto* const frame = c.elements<T>("frame", pixels, Role::input);
    frames[i] = c.isSpoiled("frames", 40) && i == frameCount - 1 ? nullptr : frame;
    if constexpr (std::is_same_v<T, float>) {
      if (const Block* const made = c.block(frame)) c.fillReals(frame, made->bytes / sizeof(float));
    }
  }
}

template <class T>
void levels(Call& c) {
  stack<T>(c);
  configure(c);
}

template <class T>
void noise(Call& c) {
  stack<T>(c);
  c.real("low", -1e39, 10);
  c.real("high", 20, 1e39);
}

void curve(Call& c) {
  if (c.number("count", 1, 40) > 200) c.set("count", 200);
  const auto count = c.get<int32_t>("count");
  int32_t i = 0;
  c.filled<DaxiPhotonTransferPoint>("points", count < 1 ? -1 : count, [&](auto& point) {
    point.exposure = c.chance(90) ? i : 0;
    point.bright = {10.0 + 8 * i, 3.0 + 2 * i + c.random.below(4), 0, c.chance(20) ? 0.25 : 0};
    point.dark = {10, 3, c.chance(10) ? 0.5 : 0, 0};
    ++i;
  });
}

const Rows rows = {{"DAXI_NoiseLevelFunction_*", blocks},
                   {"DAXI_NoiseLevelFrames_8u_*", levels<uint8_t>},
                   {"DAXI_NoiseLevelFrames_16u_*", levels<uint16_t>},
                   {"DAXI_NoiseLevelFrames_16s_*", levels<int16_t>},
                   {"DAXI_NoiseLevelFrames_32f_*", levels<float>},
                   {"DAXI_FrameNoise_8u_*", noise<uint8_t>},
                   {"DAXI_FrameNoise_16u_*", noise<uint16_t>},
                   {"DAXI_FrameNoise_16s_*", noise<int16_t>},
                   {"DAXI_FrameNoise_32f_*", noise<float>},
                   {"DAXI_PhotonTransfer", curve}};

}  // namespace
}  // namespace dax::hostile
