// Pads an image in C++ and shows the five border rules.
#include <dax.h>
#include <daxi.h>

#include <cstdio>
#include <string>

namespace {

using Border = DaxStatus (*)(const uint8_t*, int32_t, DaxiSize, uint8_t*, int32_t, DaxiSize, int32_t, uint32_t);

bool show(const char* name, Border border) {
  const std::string row = "abcd";
  const auto* const pixels = reinterpret_cast<const uint8_t*>(row.data());
  uint8_t source[8], padded[2 * 10];
  for (int i = 0; i < 8; ++i) source[i] = pixels[i % 4];
  const DaxStatus status = border(source, 4, {4, 2}, padded, 10, {10, 2}, 0, 3);
  if (status != DAX_STS_OK) {
    std::fprintf(stderr, "%s: %s\n", name, DAX_GetStatusText(status));
    return false;
  }
  std::printf("%-10s %.3s[%.4s]%.3s\n", name, padded, padded + 3, padded + 7);
  return true;
}

}  // namespace

int main() {
  const bool ok = show("replicate", DAXI_CopyReplicateBorder_8u_C1R) & show("mirror", DAXI_CopyMirrorBorder_8u_C1R) &
                  show("symmetric", DAXI_CopySymmetricBorder_8u_C1R) & show("circular", DAXI_CopyCircularBorder_8u_C1R);
  return ok ? 0 : 1;
}
