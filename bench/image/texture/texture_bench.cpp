#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/co_occurrence.h"
#include "daxi/haralick.h"
#include "daxi/laws_energy.h"
#include "daxi/lbp.h"

namespace {

using bench::Image;
using bench::kSize;

std::shared_ptr<std::vector<double>> bufferOf(uint64_t bytes) {
  return std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
}

template <class T, class D>
bench::Task patterns(DaxStatus (*lbp)(const T*, int32_t, D*, int32_t, DaxiSize, const DaxiLbpCfg*), int32_t codes,
                     int32_t points, double radius) {
  const Image<T> from = bench::noise<T>();
  const Image<D> to(kSize);
  const DaxiLbpCfg cfg = {codes, points, radius, DAXI_BORDER_REPLICATE, 0, 0};
  return {[=] { bench::require(lbp(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg)); }};
}

bench::Task histogram() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const DaxiLbpCfg cfg = {DAXI_LBP_UNIFORM, 8, 1, DAXI_BORDER_REPLICATE, 0, 0};
  return {[=] {
    uint64_t counts[10];
    bench::require(DAXI_LBPHistogram_8u_C1R(from.data(), kSize.width, kSize, &cfg, counts));
  }};
}

template <class T, class Query, class Count>
bench::Task pairs(Query query, Count count, int32_t levels) {
  const DaxiCoOccurrenceCfg cfg = {1, 0, levels, 0, sizeof(T) == 1 ? 255 : 65535, 1};
  uint64_t bytes = 0;
  bench::require(query(kSize, &cfg, &bytes));
  const auto buffer = bufferOf(bytes);
  const Image<T> from = bench::noise<T>();
  const auto counts = std::make_shared<std::vector<uint32_t>>(4 * levels * levels);
  return {[=] { bench::require(count(from.data(), kSize.width, kSize, &cfg, counts->data(), buffer->data())); }};
}

bench::Task features(int32_t levels) {
  const auto counts = std::make_shared<std::vector<uint32_t>>(levels * levels);
  for (size_t i = 0; i < counts->size(); ++i) (*counts)[i] = static_cast<uint32_t>(i * 7919 % 1009);
  uint64_t bytes = 0;
  bench::require(DAXI_HaralickFeaturesBufferSize(levels, &bytes));
  const auto buffer = bufferOf(bytes);
  return {[=] {
    DaxiHaralickFeatures found;
    bench::require(DAXI_HaralickFeatures(counts->data(), levels, &found, buffer->data()));
  }};
}

bench::Task energy() {
  const DaxiLawsEnergyCfg cfg = {DAXI_LAWS_L5, DAXI_LAWS_E5, {15, 15}, DAXI_BORDER_REPLICATE, 0, 0};
  uint64_t bytes = 0;
  bench::require(DAXI_LawsEnergyBufferSize_8u32f(kSize, &cfg, &bytes));
  const auto buffer = bufferOf(bytes);
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<float> to(kSize);
  return {[=] {
    bench::require(
        DAXI_LawsEnergy_8u32f_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer->data()));
  }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"local binary patterns 3 x 3, 8u", kBytes, [] { return patterns(DAXI_LBP_8u_C1R, DAXI_LBP_PLAIN, 8, 0); }},
    {"local binary patterns 8 on 1, uniform, 8u", kBytes,
     [] { return patterns(DAXI_LBP_8u_C1R, DAXI_LBP_UNIFORM, 8, 1); }},
    {"local binary patterns 24 on 3, uniform, 8u", kBytes,
     [] { return patterns(DAXI_LBP_8u_C1R, DAXI_LBP_UNIFORM, 24, 3); }},
    {"local binary patterns 8 on 1, rotation, 16u8u", kBytes,
     [] { return patterns(DAXI_LBP_16u8u_C1R, DAXI_LBP_ROTATION, 8, 1); }},
    {"local binary patterns 8 on 1, uniform, 32f8u", kBytes,
     [] { return patterns(DAXI_LBP_32f8u_C1R, DAXI_LBP_UNIFORM, 8, 1); }},
    {"histogram of local binary patterns 8 on 1, uniform, 8u", 0, histogram},
    {"co-occurrence of 32 levels, 8u", 0,
     [] { return pairs<uint8_t>(DAXI_CoOccurrenceBufferSize_8u, DAXI_CoOccurrence_8u_C1R, 32); }},
    {"co-occurrence of 256 levels, 8u", 0,
     [] { return pairs<uint8_t>(DAXI_CoOccurrenceBufferSize_8u, DAXI_CoOccurrence_8u_C1R, 256); }},
    {"co-occurrence of 32 levels, 16u", 0,
     [] { return pairs<uint16_t>(DAXI_CoOccurrenceBufferSize_16u, DAXI_CoOccurrence_16u_C1R, 32); }},
    {"co-occurrence of 32 levels, four offsets, 8u", 0,
     [] { return pairs<uint8_t>(DAXI_CoOccurrence4BufferSize_8u, DAXI_CoOccurrence4_8u_C1R, 32); }},
    {"Haralick's features of 32 levels", 0, [] { return features(32); }},
    {"Haralick's features of 256 levels", 0, [] { return features(256); }},
    {"Laws' energy, 15 x 15, 8u32f", 4 * kBytes, energy},
};

}  // namespace
