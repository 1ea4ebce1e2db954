#include "tests/image/draw/draw_scene.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Draw) {
  Digest digest;
  TestImage<uint8_t> colour({3 * 41, 31});
  TestImage<uint16_t> gray({41, 31});
  colour.randomize(1), gray.randomize(2);
  int i = 0;
  for (const Shape& shape : someShapes()) {
    for (const double width : {0.0, 1.0, 1.3, 4.6}) {
      if (width == 0 && !canFill(shape)) continue;
      DaxiStroke stroke = strokeOf(width, 7 * i % 256);
      stroke.alpha = 0.8, stroke.antialias = i % 3 > 0, stroke.join = i / 3 % 3, stroke.cap = i / 9 % 3, ++i;
      draw<3>(colour, shape, stroke);
      stroke.color[0] *= 256;
      draw(gray, shape, stroke);
      digest.add(colour).add(gray);
    }
  }
  EXPECT_EQ(digest.value(), 15240782497012368737u);
}

}  // namespace
}  // namespace dax::test
