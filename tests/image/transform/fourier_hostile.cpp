// Plans of the size that is transformed, now and then damaged; sources with numbers in them.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

using Query = DaxStatus (*)(DaxiSize, uint64_t*);
using Make = DaxStatus (*)(DaxiSize, void*);

void plan(Call& c, DaxiSize size, Query query, Make make) {
  const bool isSmall = size.width >= 1 && size.height >= 1 && size.width < 10000 && size.height < 10000;
  const DaxiSize own = isSmall ? size : DaxiSize{3, 2};
  uint64_t bytes = 0;
  query(own, &bytes);
  c.set("modelBytes", bytes);
  auto* const made = static_cast<uint8_t*>(c.memory("model", static_cast<int64_t>(bytes), Role::input, 8));
  make(own, made);
  c.set<const void*>("model", c.isSpoiled("model", 40) ? nullptr : made);
  if (c.isSpoiled("model")) made[c.between(0, static_cast<int64_t>(bytes) - 1)] ^= 255;
}

template <class T>
void fillSource(Call& c) {
  c.draw("src");
  const Block* const made = c.blockOf("src");
  if (made) c.fillReals(reinterpret_cast<T*>(made->data), made->bytes / sizeof(T));
}

DaxiSize halfOf(DaxiSize size) {
  return {size.width / 2 + 1, size.height};
}

template <class T, bool kIsReal, bool kIsBackward>
void transform(Call& c) {
  constexpr bool kSingle = sizeof(T) == 4;
  const DaxiSize size = c.size("size");
  if (kIsReal) c.image("src", "srcStep", kIsBackward ? halfOf(size) : size);
  fillSource<T>(c);
  if (kIsReal) c.image("dst", "dstStep", kIsBackward ? size : halfOf(size));
  plan(c, size, kSingle ? DAXI_DftPlanModelSize_32f : DAXI_DftPlanModelSize_64f,
       kSingle ? DAXI_DftPlan_32f : DAXI_DftPlan_64f);
  c.work("buffer",
         [=](uint64_t* bytes) { return (kSingle ? DAXI_DftBufferSize_32f : DAXI_DftBufferSize_64f)(size, bytes); });
}

template <class T>
void cosine(Call& c) {
  constexpr bool kSingle = sizeof(T) == 4;
  const DaxiSize size = c.size("size");
  fillSource<T>(c);
  plan(c, size, kSingle ? DAXI_DctPlanModelSize_32f : DAXI_DctPlanModelSize_64f,
       kSingle ? DAXI_DctPlan_32f : DAXI_DctPlan_64f);
  c.work("buffer",
         [=](uint64_t* bytes) { return (kSingle ? DAXI_DctBufferSize_32f : DAXI_DctBufferSize_64f)(size, bytes); });
}

const Rows rows = {{"DAXI_Dft_32fc_*", transform<float, false, false>},
                   {"DAXI_Dft_64fc_*", transform<double, false, false>},
                   {"DAXI_Idft_32fc_*", transform<float, false, true>},
                   {"DAXI_Idft_64fc_*", transform<double, false, true>},
                   {"DAXI_DftReal_32f_*", transform<float, true, false>},
                   {"DAXI_DftReal_64f_*", transform<double, true, false>},
                   {"DAXI_IdftReal_32f_*", transform<float, true, true>},
                   {"DAXI_IdftReal_64f_*", transform<double, true, true>},
                   {"DAXI_Dct_32f_*", cosine<float>},
                   {"DAXI_Dct_64f_*", cosine<double>},
                   {"DAXI_Idct_32f_*", cosine<float>},
                   {"DAXI_Idct_64f_*", cosine<double>}};

}  // namespace
}  // namespace dax::hostile
