#include <algorithm>
#include <vector>

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/clip_equalize.h"
#include "daxi/equalize_hist.h"
#include "daxi/gamma.h"
#include "daxi/lut.h"
#include "daxi/normalise.h"

namespace {

using bench::Image;
using bench::kSize;

template <class From, class To, class Call>
bench::Task prepare(Call call) {
  const Image<From> from = bench::noise<From>();
  const Image<To> to(kSize);
  return {[=] { bench::require(call(from.data(), kSize.width, to.data(), kSize.width, kSize)); },
          [=] { return bench::digest(to); }};
}

// Entry v is 255 - v.
template <class T>
std::vector<T> table() {
  std::vector<T> entries(256);
  for (size_t v = 0; v < entries.size(); ++v) entries[v] = static_cast<T>(255 - v);
  return entries;
}

template <class T>
constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * sizeof(T);

template <class T>
bench::Task prepareClip(DaxStatus (*query)(DaxiSize, const DaxiClipEqualizeCfg*, uint64_t*),
                        DaxStatus (*equalize)(const T*, int32_t, T*, int32_t, DaxiSize, const DaxiClipEqualizeCfg*,
                                              void*)) {
  DaxiClipEqualizeCfg cfg;
  uint64_t bytes = 0;
  bench::require(DAXI_ClipEqualizeDefaultCfg(&cfg));
  bench::require(query(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<char>>(bytes);
  bench::Task task = prepare<T, T>([=](auto... a) { return equalize(a..., &cfg, buffer->data()); });
  task.result = {};  // the peer rounds otherwise
  return task;
}

const bench::Own operations[] = {
    {"look-up table, 8u", kBytes<uint8_t>,
     [] {
       return prepare<uint8_t, uint8_t>([t = table<uint8_t>()](auto... a) { return DAXI_Lut_8u_C1R(a..., t.data()); });
     }},
    {"look-up table, 8u to 16u", kBytes<uint16_t>,
     [] {
       return prepare<uint8_t, uint16_t>(
           [t = table<uint16_t>()](auto... a) { return DAXI_Lut_8u16u_C1R(a..., t.data()); });
     }},
    {"look-up table, 8u to 32f", kBytes<float>,
     [] {
       return prepare<uint8_t, float>([t = table<float>()](auto... a) { return DAXI_Lut_8u32f_C1R(a..., t.data()); });
     }},
    {"gamma, 8u", kBytes<uint8_t>,
     [] { return prepare<uint8_t, uint8_t>([](auto... a) { return DAXI_Gamma_8u_C1R(a..., 0.45); }); }},
    {"stretch, 16u to 8u", kBytes<uint8_t>,
     [] {
       return prepare<uint16_t, uint8_t>([](auto... a) {
         const DaxiNormaliseCfg cfg = {0, 1, 0, 255};
         return DAXI_Normalise_16u8u_C1R(a..., &cfg);
       });
     }},
    {"equalise, 8u", kBytes<uint8_t>,
     [] { return prepare<uint8_t, uint8_t>([](auto... a) { return DAXI_EqualizeHist_8u_C1R(a...); }); }},
    {"equalise by tiles, 8u", kBytes<uint8_t>,
     [] { return prepareClip<uint8_t>(DAXI_ClipEqualizeBufferSize_8u, DAXI_ClipEqualize_8u_C1R); }},
    {"equalise by tiles, 16u", kBytes<uint16_t>,
     [] { return prepareClip<uint16_t>(DAXI_ClipEqualizeBufferSize_16u, DAXI_ClipEqualize_16u_C1R); }},
};

}  // namespace
