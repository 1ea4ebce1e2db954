#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Divisors without zeros, for now and then one.
template <class T, int32_t kChannels>
void divisors(Call& c, const char* name, const char* step) {
  T* const pixels = static_cast<T*>(c.image(name, step, c.size("size"), kChannels));
  const Block* const made = c.block(pixels);
  if (!made || c.chance(5)) return;
  for (size_t i = 0; i < made->bytes / sizeof(T); ++i) pixels[i] = pixels[i] == 0 ? T{1} : pixels[i];
}

template <class T, int32_t kChannels>
void quotients(Call& c) {
  divisors<T, kChannels>(c, "src2", "step2");
}

template <class T, int32_t kChannels>
void quotientsInPlace(Call& c) {
  divisors<T, kChannels>(c, "src", "srcStep");
}

const Rows rows = {
    {"DAXI_Div_8u_C1RSfs*", quotients<uint8_t, 1>},          {"DAXI_Div_8u_C3RSfs*", quotients<uint8_t, 3>},
    {"DAXI_Div_16u_C1RSfs*", quotients<uint16_t, 1>},        {"DAXI_Div_16u_C3RSfs*", quotients<uint16_t, 3>},
    {"DAXI_Div_16s_C1RSfs*", quotients<int16_t, 1>},         {"DAXI_Div_16s_C3RSfs*", quotients<int16_t, 3>},
    {"DAXI_Div_8u_C1IRSfs", quotientsInPlace<uint8_t, 1>},   {"DAXI_Div_8u_C3IRSfs", quotientsInPlace<uint8_t, 3>},
    {"DAXI_Div_16u_C1IRSfs", quotientsInPlace<uint16_t, 1>}, {"DAXI_Div_16u_C3IRSfs", quotientsInPlace<uint16_t, 3>},
    {"DAXI_Div_16s_C1IRSfs", quotientsInPlace<int16_t, 1>},  {"DAXI_Div_16s_C3IRSfs", quotientsInPlace<int16_t, 3>},
};

}  // namespace
}  // namespace dax::hostile
