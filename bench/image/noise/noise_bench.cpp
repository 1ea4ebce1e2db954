#include "daxi/noise.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/noise_level_function.h"
#include "daxi/photon_transfer.h"

namespace {

using bench::Image;
using bench::kSize;

volatile double taken;

template <class T, class Call>
bench::Task prepare(Call call) {
  const Image<T> from = bench::noise<T>();
  return {[=] {
    double sigma = 0;
    bench::require(call(from.data(), kSize.width, kSize, -1, 256, &sigma));
    taken = sigma;
  }};
}

struct Levels {
  DaxiNoiseLevelCfg cfg;
  std::vector<double> buffer;
  DaxiNoiseLevel points[256];
  int32_t count = 0;

  Levels() {
    bench::require(DAXI_NoiseLevelDefaultCfg_8u(&cfg));
    cfg.low = -1, cfg.high = 256;
    uint64_t bytes = 0, frameBytes = 0;
    bench::require(DAXI_NoiseLevelFunctionBufferSize(kSize, &cfg, &bytes));
    bench::require(DAXI_NoiseLevelFramesBufferSize(2, &cfg, &frameBytes));
    buffer.resize(std::max(bytes, frameBytes) / sizeof(double) + 1);
  }
};

bench::Task prepareBlocks() {
  const auto levels = std::make_shared<Levels>();
  const Image<uint8_t> from = bench::noise<uint8_t>();
  return {[=] {
    bench::require(DAXI_NoiseLevelFunction_8u_C1R(from.data(), kSize.width, kSize, &levels->cfg, levels->points,
                                                  &levels->count, levels->buffer.data()));
  }};
}

bench::Task prepareFrames() {
  const auto levels = std::make_shared<Levels>();
  const Image<uint8_t> first = bench::noise<uint8_t>(), second = bench::noise<uint8_t>();
  return {[=] {
    const uint8_t* const frames[] = {first.data(), second.data()};
    bench::require(DAXI_NoiseLevelFrames_8u_C1R(frames, 2, kSize.width, kSize, &levels->cfg, levels->points,
                                                &levels->count, levels->buffer.data()));
  }};
}

bench::Task preparePair() {
  const Image<uint8_t> first = bench::noise<uint8_t>(), second = bench::noise<uint8_t>();
  return {[=] {
    const uint8_t* const frames[] = {first.data(), second.data()};
    DaxiFrameNoise noise;
    bench::require(DAXI_FrameNoise_8u_C1R(frames, 2, kSize.width, kSize, 0, 255, &noise));
    taken = noise.variance;
  }};
}

const bench::Own operations[] = {
    {"noise, Immerkaer, 8u", 0, [] { return prepare<uint8_t>(DAXI_NoiseImmerkaer_8u_C1R); }},
    {"noise, Immerkaer, 16u", 0, [] { return prepare<uint16_t>(DAXI_NoiseImmerkaer_16u_C1R); }},
    {"noise, MAD, 8u", 0, [] { return prepare<uint8_t>(DAXI_NoiseMad_8u_C1R); }},
    {"noise, MAD, 32f", 0, [] { return prepare<float>(DAXI_NoiseMad_32f_C1R); }},
    {"noise by level, one image, 8u", 0, prepareBlocks},
    {"noise by level, two frames, 8u", 0, prepareFrames},
    {"noise of two frames, 8u", 0, preparePair},
};

}  // namespace
