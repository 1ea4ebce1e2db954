#include "fuzz/seeds.h"

// What the target takes: points in no order, of every dimension and kind of coordinate.
std::vector<dax::fuzz::Seed> dax::fuzz::seeds() {
  std::vector<Seed> all;
  for (const int floats : {0, 0x80}) {
    for (int d = 0; d < 5; ++d) {
      std::string bytes = {static_cast<char>(floats + d), static_cast<char>(d), static_cast<char>(20 * d), 12};
      for (int i = 0; i < 100; ++i) {
        const auto x = static_cast<float>(i * 37 % 101 - 50) / 8;
        const auto* const from = reinterpret_cast<const char*>(&x);
        if (floats) bytes.append(from, sizeof x);
        if (!floats) bytes.push_back(static_cast<char>(i * 37 % 101));
      }
      all.push_back({"dimension" + std::to_string(d + 1) + (floats ? "-floats" : "-bytes"), bytes});
    }
  }
  return all;
}
