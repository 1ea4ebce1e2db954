#include "quality/image_noise.h"

#include <algorithm>
#include <cmath>

#include "base/failure.h"
#include "base/library_call.h"
#include "base/text.h"
#include "daxi/noise.h"
#include "daxi/noise_level_function.h"

namespace dax::tool {
namespace {

constexpr double kRounding = 1.0 / 12;

// The library's functions of one pixel type.
struct NoiseOfBytes {
  using Pixel = uint8_t;
  static constexpr auto mad = DAXI_NoiseMad_8u_C1R;
  static constexpr auto immerkaer = DAXI_NoiseImmerkaer_8u_C1R;
  static constexpr auto byLevel = DAXI_NoiseLevelFunction_8u_C1R;
  static constexpr auto framesByLevel = DAXI_NoiseLevelFrames_8u_C1R;
  static constexpr auto frames = DAXI_FrameNoise_8u_C1R;
  static const GreyImage& image(const Picture& picture) { return picture.grey; }
};

struct NoiseOfWords {
  using Pixel = uint16_t;
  static constexpr auto mad = DAXI_NoiseMad_16u_C1R;
  static constexpr auto immerkaer = DAXI_NoiseImmerkaer_16u_C1R;
  static constexpr auto byLevel = DAXI_NoiseLevelFunction_16u_C1R;
  static constexpr auto framesByLevel = DAXI_NoiseLevelFrames_16u_C1R;
  static constexpr auto frames = DAXI_FrameNoise_16u_C1R;
  static const Grey16Image& image(const Picture& picture) { return picture.values; }
};

DaxiNoiseLevelCfg configuration(double white) {
  DaxiNoiseLevelCfg cfg;
  check(DAXI_NoiseLevelDefaultCfg_16u(&cfg), "noise by level");
  cfg.low = 0;
  cfg.high = white;
  return cfg;
}

// measure(points, count) -> status.
template <class Measure>
std::vector<LevelNoise> levelsOf(const DaxiNoiseLevelCfg& cfg, const Measure& measure) {
  std::vector<DaxiNoiseLevel> points(static_cast<size_t>(cfg.bins));
  int32_t count = 0;
  const DaxStatus status = measure(points.data(), &count);
  if (status == DAX_STS_DEGENERATE) return {};
  check(status, "noise by level");
  std::vector<LevelNoise> levels;
  for (int32_t i = 0; i < count; ++i) {
    const DaxiNoiseLevel& point = points[static_cast<size_t>(i)];
    levels.push_back({point.level, std::sqrt(point.variance), point.count});
  }
  return levels;
}

template <class Of>
PictureNoise noiseOf(const Picture& picture, double white) {
  const auto& image = Of::image(picture);
  PictureNoise noise{};
  check(Of::mad(image.pixels.data(), image.step(), image.size, 0, white, &noise.mad), "noise");
  check(Of::immerkaer(image.pixels.data(), image.step(), image.size, 0, white, &noise.immerkaer), "noise");
  DaxiNoiseLevelCfg cfg = configuration(white);
  // Small pictures have few blocks.
  const int blocks = (image.size.width / cfg.block) * (image.size.height / cfg.block);
  cfg.bins = std::clamp(blocks / 32, 1, cfg.bins);
  uint64_t bytes = 0;
  check(DAXI_NoiseLevelFunctionBufferSize(image.size, &cfg, &bytes), "noise by level");
  const Memory work(bytes);
  noise.levels = levelsOf(cfg, [&](DaxiNoiseLevel* points, int32_t* count) {
    return Of::byLevel(image.pixels.data(), image.step(), image.size, &cfg, points, count, work.get());
  });
  return noise;
}

template <class Of>
StackNoise noiseOf(const std::vector<Picture>& frames, double white) {
  std::vector<const typename Of::Pixel*> pixels;
  pixels.reserve(frames.size());
  for (const Picture& frame : frames) pixels.push_back(Of::image(frame).pixels.data());
  const auto& first = Of::image(frames.front());
  const auto n = static_cast<int32_t>(frames.size());
  StackNoise found{};
  check(Of::frames(pixels.data(), n, first.step(), first.size, 0, white, &found.noise), "noise");
  found.deviation = std::sqrt(std::max(found.noise.variance - kRounding, 0.0));
  const DaxiNoiseLevelCfg cfg = configuration(white);
  uint64_t bytes = 0;
  check(DAXI_NoiseLevelFramesBufferSize(n, &cfg, &bytes), "noise by level");
  const Memory work(bytes);
  found.levels = levelsOf(cfg, [&](DaxiNoiseLevel* points, int32_t* count) {
    return Of::framesByLevel(pixels.data(), n, first.step(), first.size, &cfg, points, count, work.get());
  });
  return found;
}

}  // namespace

PictureNoise measureNoise(const Picture& picture, double white) {
  return picture.hasValues() ? noiseOf<NoiseOfWords>(picture, white) : noiseOf<NoiseOfBytes>(picture, white);
}

StackNoise measureFrames(const std::vector<Picture>& frames, double white) {
  return frames.front().hasValues() ? noiseOf<NoiseOfWords>(frames, white) : noiseOf<NoiseOfBytes>(frames, white);
}

std::vector<Picture> readFrames(const std::vector<std::filesystem::path>& files) {
  const std::string name = printable(files.front().string());
  if (files.size() < 2) throw Failure(ExitStatus::kRefused, name + ": one frame only; noise over time needs two");
  std::vector<Picture> frames;
  for (const auto& file : files) {
    frames.push_back(readPicture(file));
    const Picture &first = frames.front(), &last = frames.back();
    const bool isAlike = last.grey.size.width == first.grey.size.width &&
                         last.grey.size.height == first.grey.size.height && last.maxValue == first.maxValue &&
                         last.hasValues() == first.hasValues();
    if (isAlike) continue;
    throw Failure(ExitStatus::kRefused, printable(file.string()) + ": of another size or range of values than " + name);
  }
  return frames;
}

DaxiPhotonTransfer measureTransfer(const std::vector<DaxiPhotonTransferPoint>& points) {
  DaxiPhotonTransfer found;
  const DaxStatus status = DAXI_PhotonTransfer(points.data(), static_cast<int32_t>(points.size()), kRounding, &found);
  if (status == DAX_STS_DEGENERATE) {
    throw Failure(ExitStatus::kRefused,
                  "noise that grows with light is needed at 5 exposures or more below 70 % of saturation");
  }
  check(status, "photon transfer");
  return found;
}

}  // namespace dax::tool
