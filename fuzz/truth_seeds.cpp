#include "fuzz/seeds.h"

std::vector<dax::fuzz::Seed> dax::fuzz::seeds() {
  return {{"two", R"({"width": 9, "height": 8, "parts": [{"kind": "disc", "x": 1, "y": 2.5, "area": 30},
    {"kind": "bar", "x": 1, "y": 2, "area": 3, "angle": -30, "angle_period": 180}]})"},
          {"none", R"({"width": 1e99, "height": [], "parts": [[[[{}]]]]})"}};
}
