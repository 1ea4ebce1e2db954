// Spectra of whole and of real pictures, kernels no larger than what they go over.
#include <string_view>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Spectra of whole pictures, and the halves of real ones.
void filtered(Call& c) {
  const int64_t columns = c.size("size").width, whole = 2 * (columns - 1);
  if (columns >= 2 && columns < 1 << 20) {
    c.anyOf("width", {columns, whole, whole + 1});
  } else {
    c.anyOf("width", {std::max<int64_t>(columns, 1)});
  }
}

// A kernel, and a destination of the part's size.
void convolve(Call& c) {
  const DaxiSize src = c.size("srcSize");
  const auto within = [&c](int32_t n) { return 1 + c.random.below(std::clamp(n, 1, 12)); };
  const DaxiSize kernel = c.sizeOr("kernelSize", {within(src.width), within(src.height)});
  if (!c.has("part")) return;
  const int64_t part = c.number("part", 0, 2);
  const auto side = [part](int64_t n, int64_t m) {
    const int64_t result = part == 0 ? n + m - 1 : part == 1 ? n : n - m + 1;
    return static_cast<int32_t>(std::clamp<int64_t>(result, -1, INT32_MAX));
  };
  if (!c.has("dst")) return;
  const bool isSingle = std::string_view(c.function.name).find("_32f") != std::string_view::npos;
  c.work("buffer", [=](uint64_t* bytes) {
    return (isSingle ? DAXI_ConvolveDftBufferSize_32f : DAXI_ConvolveDftBufferSize_64f)(src, kernel, bytes);
  });
  c.image("dst", "dstStep", {side(src.width, kernel.width), side(src.height, kernel.height)});
}

const Rows rows = {{"DAXI_SpectrumNotch_*", filtered},
                   {"DAXI_SpectrumBand_*", filtered},
                   {"DAXI_ConvolveDft*", convolve},
                   {"DAXI_CorrelateDft*", convolve}};

}  // namespace
}  // namespace dax::hostile
