#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// The whole font, upright, turned and slanted.
TEST(Digests, DrawText) {
  std::string text;
  for (char c = ' '; c < '~'; ++c) text += c;
  text += "\n\u00c4\u00e9\u00d8\u00fe\u00df\u03b1\u03b2\u03a9\u03c6\u2300\u2192\u00b1\u00bd\u2316\u20ac\xff";
  const auto count = static_cast<int32_t>(text.size());
  DaxiTextCfg cfg;
  ASSERT_EQ(DAXI_TextDefaultCfg(&cfg), DAX_STS_OK);
  DaxiStroke stroke;
  ASSERT_EQ(DAXI_StrokeDefault(&stroke), DAX_STS_OK);
  stroke.alpha = 0.7, stroke.color[0] = 250;
  TestImage<uint8_t> image({900, 300});
  image.fill([](int32_t x, int32_t y) { return (x + 2 * y) % 100; });
  Digest digest;
  for (const double angle : {0.0, 0.31}) {
    cfg.height += 3.3, cfg.angle = angle, cfg.slant = angle, stroke.width = 4 * angle;
    DaxiTextBox box;
    ASSERT_EQ(DAXI_TextSize(text.data(), count, &cfg, &stroke, &box), DAX_STS_OK);
    uint64_t bytes;
    ASSERT_EQ(DAXI_DrawTextBufferSize(image.size(), text.data(), count, &cfg, &stroke, &bytes), DAX_STS_OK);
    std::vector<uint8_t> buffer(bytes);
    ASSERT_EQ(DAXI_DrawText_8u_C1R(image.data(), image.step(), image.size(), text.data(), count, 3.3, 30.4, &cfg,
                                   &stroke, buffer.data()),
              DAX_STS_OK);
    digest.add(image).add(&box, sizeof box);
  }
  EXPECT_EQ(digest.value(), 0x5951EAA5AC720936u);
}

}  // namespace
}  // namespace dax::test
