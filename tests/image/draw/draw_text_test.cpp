#include "daxi/draw_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/image/draw/text_oracle.h"

namespace dax::test {
namespace {

using namespace std::string_literals;

DaxiTextCfg textOf(double height, double angle = 0, double slant = 0) {
  DaxiTextCfg cfg;
  EXPECT_EQ(DAXI_TextDefaultCfg(&cfg), DAX_STS_OK);
  cfg.height = height, cfg.angle = angle, cfg.slant = slant;
  return cfg;
}

DaxiStroke penOf(double width) {
  DaxiStroke stroke;
  EXPECT_EQ(DAXI_StrokeDefault(&stroke), DAX_STS_OK);
  stroke.width = width;
  for (int32_t& each : stroke.color) each = 255;
  return stroke;
}

DaxiTextBox boxOf(const std::string& text, const DaxiTextCfg& cfg, const DaxiStroke& stroke = penOf(1)) {
  DaxiTextBox box;
  EXPECT_EQ(DAXI_TextSize(text.data(), static_cast<int32_t>(text.size()), &cfg, &stroke, &box), DAX_STS_OK);
  return box;
}

using DrawText = decltype(&DAXI_DrawText_8u_C1R);

void draw(TestImage<uint8_t>& image, const std::string& text, double x, double y, const DaxiTextCfg& cfg,
          const DaxiStroke& stroke) {
  uint64_t bytes = 0;
  const auto count = static_cast<int32_t>(text.size());
  ASSERT_EQ(DAXI_DrawTextBufferSize(image.size(), text.data(), count, &cfg, &stroke, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  GuardedBuffer<char> guarded(text.size());
  std::copy(text.begin(), text.end(), guarded.data());
  ASSERT_EQ(DAXI_DrawText_8u_C1R(image.data(), image.step(), image.size(), guarded.data(), count, x, y, &cfg, &stroke,
                                 buffer.data()),
            DAX_STS_OK);
}

TestImage<uint8_t> drawn(DaxiSize size, const std::string& text, double x, double y, const DaxiTextCfg& cfg,
                         const DaxiStroke& stroke) {
  TestImage<uint8_t> image(size, 3);
  image.fill([](int32_t, int32_t) { return 0; });
  image.remember();
  draw(image, text, x, y, cfg, stroke);
  EXPECT_TRUE(image.paddingUntouched());
  return image;
}

// --- Ink ---

struct Scene {
  double height, angle, slant, width;
};

TEST(DrawText, CoversWhatItsStrokesCover) {
  const std::string text = "RAVage8 \u00d8\u03b2\u2300\u00b1\ufffd";
  const std::u32string characters = U"RAVage8 \u00d8\u03b2\u2300\u00b1\ufffd";
  const DaxiSize size = {190, 90};
  for (const Scene& s : {Scene{8, 0, 0, 1}, {13.3, 0.2, 0.27, 1.7}, {22, 0.31, -0.4, 4.4}, {16, 0, 0, 0.3}}) {
    const DaxiTextCfg cfg = textOf(s.height, s.angle, s.slant);
    const TestImage<uint8_t> image = drawn(size, text, 9.2, 30.7, cfg, penOf(s.width));
    oracle::Coverage truth(size);
    for (const auto& stroke : oracle::strokesOf(characters, {9.2, 30.7}, cfg)) truth.stroke(stroke, s.width);
    double sum = 0;
    int32_t few = 0;
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        const double difference = image.at(x, y) - 255 * truth.at(x, y);
        // Less where strokes meet, which is said.
        ASSERT_LT(difference, 20) << x << ", " << y << " at height " << s.height;
        ASSERT_GT(difference, -115) << x << ", " << y << " at height " << s.height;
        few += difference < -20;
        sum += difference;
      }
    }
    EXPECT_NEAR(sum / (size.width * size.height), 0, 0.2);
    EXPECT_LT(few, 60);
  }
}

// The box touches the ink, and what it leaves out is not drawn to.
TEST(DrawText, StaysInTheBoxOfItsSize) {
  const DaxiSize size = {400, 300};
  for (const std::string& text : {"Quay"s, "\u00c5gy (7)\nj"s, "Wq"s}) {
    for (const double angle : {0.0, 0.6, 2.0}) {
      const DaxiTextCfg cfg = textOf(30, angle, 0.1);
      const DaxiStroke pen = penOf(3);
      const DaxiTextBox box = boxOf(text, cfg, pen);
      const TestImage<uint8_t> image = drawn(size, text, 200.3, 150.4, cfg, pen);
      double left = 1e9, top = 1e9, right = -1, bottom = -1;
      for (int32_t y = 0; y < size.height; ++y) {
        for (int32_t x = 0; x < size.width; ++x) {
          if (image.at(x, y) == 0) continue;
          left = std::min(left, x - 0.5), right = std::max(right, x + 0.5);
          top = std::min(top, y - 0.5), bottom = std::max(bottom, y + 0.5);
        }
      }
      EXPECT_GT(left, 199.3 + box.left);
      EXPECT_GT(top, 149.4 + box.top);
      EXPECT_LT(right, 201.3 + box.right);
      EXPECT_LT(bottom, 151.4 + box.bottom);
      if (angle > 0) continue;  // there the ends of baselines are the limits
      EXPECT_NEAR(top, 150.4 + box.top, 1.2);
      EXPECT_NEAR(bottom, 150.4 + box.bottom, 1.2);
    }
  }
}

TEST(DrawText, OfAPartIsThePartOfTheWhole) {
  const DaxiTextCfg cfg = textOf(25, 0.4, 0.2);
  const TestImage<uint8_t> whole = drawn({200, 150}, "R\u00f6ntgen\n\u2197 42", 20.25, 40, cfg, penOf(2.5));
  const TestImage<uint8_t> part = drawn({61, 40}, "R\u00f6ntgen\n\u2197 42", 20.25 - 50, 40 - 33, cfg, penOf(2.5));
  for (int32_t y = 0; y < 40; ++y) {
    for (int32_t x = 0; x < 61; ++x) ASSERT_EQ(part.at(x, y), whole.at(x + 50, y + 33)) << x << ", " << y;
  }
}

// A pixel is blended once, also where strokes of one character and of neighbours cross.
TEST(DrawText, BlendsEveryPixelOnce) {
  const DaxiTextCfg cfg = textOf(20);
  DaxiStroke pen = penOf(9);
  const TestImage<uint8_t> full = drawn({90, 40}, "WAX\nA", 5, 28, cfg, pen);
  pen.alpha = 0.25;
  const TestImage<uint8_t> faint = drawn({90, 40}, "WAX\nA", 5, 28, cfg, pen);
  for (int32_t y = 0; y < 40; ++y) {
    for (int32_t x = 0; x < 90; ++x) ASSERT_NEAR(faint.at(x, y), full.at(x, y) / 4.0, 0.63) << x << ", " << y;
  }
}

template <class T, class Draw>
void expectColour(Draw drawIt, int32_t channels, int32_t factor) {
  const DaxiSize size = {40, 30};
  const DaxiTextCfg cfg = textOf(20);
  DaxiStroke pen = penOf(2);
  const TestImage<uint8_t> grey = drawn(size, "k", 8.5, 24, cfg, pen);
  for (int32_t c = 0; c < 3; ++c) pen.color[c] = factor * (c == 1 ? 51 : 255);
  TestImage<T> image({size.width * channels, size.height});
  image.fill([](int32_t, int32_t) { return 0; });
  std::vector<uint8_t> buffer(1 << 20);
  ASSERT_EQ(drawIt(image.data(), image.step(), size, "k", 1, 8.5, 24, &cfg, &pen, buffer.data()), DAX_STS_OK);
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width * channels; ++x) {
      const double share = grey.at(x / channels, y) / 255.0;
      ASSERT_NEAR(image.at(x, y), share * pen.color[x % channels], 0.51 * factor + 0.5) << x << ", " << y;
    }
  }
}

TEST(DrawText, TakesBytesAndWordsOfOneAndThreeChannels) {
  expectColour<uint8_t>(DAXI_DrawText_8u_C1R, 1, 1);
  expectColour<uint8_t>(DAXI_DrawText_8u_C3R, 3, 1);
  expectColour<uint16_t>(DAXI_DrawText_16u_C1R, 1, 257);
  expectColour<uint16_t>(DAXI_DrawText_16u_C3R, 3, 257);
}

// --- Metrics ---

TEST(TextSize, IsInkUnitedWithAdvance) {
  const DaxiTextCfg cfg = textOf(40);  // units are pixels
  // H stands from 6 to 30 of 36; a space has no ink.
  const DaxiTextBox h = boxOf("H ", cfg, penOf(2));
  EXPECT_EQ(std::vector({h.left, h.top, h.right, h.bottom, h.advance}), std::vector({0.0, -41.0, 54.0, 1.0, 54.0}));
  const DaxiTextBox none = boxOf("", cfg);
  EXPECT_EQ(std::vector({none.left, none.top, none.right, none.bottom}), std::vector({0.0, 0.0, 0.0, 0.0}));
  EXPECT_EQ(none.lines, 1);
  // Thick ink reaches out of the advance. A width of 0 is a tenth of the height.
  EXPECT_EQ(boxOf("I", cfg, penOf(20)).left, -4);
  EXPECT_EQ(boxOf("I", cfg, penOf(0)).top, -42);
  EXPECT_EQ(boxOf("I", textOf(8), penOf(0)).top, -8.5);
  EXPECT_LT(boxOf("AV", cfg).advance, boxOf("A", cfg).advance + boxOf("V", cfg).advance);
  EXPECT_EQ(boxOf("\u00c1V", cfg).advance, boxOf("AV", cfg).advance);
  // Down the screen by a quarter turn.
  const DaxiTextBox down = boxOf("H ", textOf(40, M_PI_2), penOf(2));
  EXPECT_NEAR(down.bottom, 54, 1e-9);
  EXPECT_NEAR(down.right, 41, 1e-9);
}

TEST(TextSize, AlignsLines) {
  DaxiTextCfg cfg = textOf(40);
  const std::string text = "HHH\r\nH\n";
  const DaxiTextBox plain = boxOf(text, cfg);
  EXPECT_EQ(plain.lines, 3);
  EXPECT_EQ(plain.advance, 108);
  EXPECT_EQ(std::vector({plain.left, plain.top, plain.right, plain.bottom}), std::vector({0.0, -40.5, 108.0, 120.0}));
  cfg.alignX = DAXI_TEXT_CENTRE, cfg.alignY = DAXI_TEXT_MIDDLE;
  const DaxiTextBox middle = boxOf(text, cfg);
  EXPECT_EQ(std::vector({middle.left, middle.top, middle.right, middle.bottom}),
            std::vector({-54.0, -80.5, 54.0, 80.0}));
  cfg.alignX = DAXI_TEXT_RIGHT, cfg.alignY = DAXI_TEXT_BOTTOM;
  const DaxiTextBox corner = boxOf(text, cfg);
  EXPECT_EQ(std::vector({corner.left, corner.top, corner.right, corner.bottom}),
            std::vector({-108.0, -160.5, 0.0, 0.0}));
  cfg.alignY = DAXI_TEXT_TOP;
  EXPECT_EQ(boxOf(text, cfg).top, -0.5);
}

// --- Characters ---

std::string encoded(uint32_t code) {
  const auto tail = [&](int32_t shift) { return static_cast<char>(0x80 | (code >> shift & 63)); };
  if (code < 0x80) return {static_cast<char>(code)};
  if (code < 0x800) return {static_cast<char>(0xC0 | code >> 6), tail(0)};
  return {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
}

TEST(Font, HasAsciiLatinGreekAndSigns) {
  const DaxiTextCfg cfg = textOf(40);
  std::string all =
      "\u2300\u2190\u2191\u2192\u2193\u2197\u2206\u2264\u2265\u2260\u2248\u221e\u221a\u2220\u2225\u22a5"
      "\u25cb\u25ce\u2316\u232d\u2312\u2313\u23e5\u2032\u2033\u2212\u20ac\u2126";
  for (uint32_t c = 0x20; c < 0x7F; ++c) all += encoded(c);
  for (uint32_t c = 0xA0; c < 0x100; ++c) all += encoded(c);
  for (uint32_t c = 0x391; c <= 0x3C9; ++c) {
    if (c != 0x3A2) all += encoded(c);
  }
  EXPECT_EQ(boxOf(all, cfg).replaced, 0);
  EXPECT_EQ(boxOf("\u4e2d\U0001f600\x01", cfg).replaced, 3);
  EXPECT_EQ(boxOf("\ufffd", cfg).replaced, 0);
  // Ascending, within limits, and no two that look alike but by intent.
  for (uint16_t i = 0; i < kGlyphCount; ++i) {
    const Glyph& g = kGlyphs[i];
    ASSERT_LT(g.code, kGlyphs[i + 1].code);
    for (uint16_t p = g.first; p != kGlyphs[i + 1].first; ++p) {
      const GlyphPoint point{kGlyphPoints[p]};
      ASSERT_TRUE(point.u() >= 0 && point.u() <= g.advance && point.v() >= kGlyphBottom && point.v() <= kGlyphTop)
          << std::hex << g.code;
    }
  }
}

// The examples of Unicode 15, tables 3-8 to 3-11, and what is cut off.
TEST(Font, CountsOneSignForEachIllFormedPart) {
  const DaxiTextCfg cfg = textOf(40);
  const double sign = boxOf("\ufffd", cfg).advance, a = boxOf("A", cfg).advance;
  struct Bad {
    std::string bytes;
    int32_t parts;
  };
  for (const Bad& bad : {Bad{"\xC0\xAF", 2},
                         {"\xE0\x80\xBF", 3},
                         {"\xF0\x81\x82", 3},
                         {"\xED\xA0\x80", 3},
                         {"\xED\xBF\xBF", 3},
                         {"\xED\xAF", 2},
                         {"\xF4\x91\x92\x93", 4},
                         {"\xFF", 1},
                         {"\x80", 1},
                         {"\xE1\x80", 1},
                         {"\xF0\x91\x92", 1},
                         {"\xF1\xBF", 1},
                         {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF", 4},
                         {"\xC3", 1},
                         {"\xF4\x8F\xBF", 1},
                         {"\xF5\x80", 2}}) {
    for (const std::string& after : {""s, "A"s}) {
      const DaxiTextBox box = boxOf("A" + bad.bytes + after, cfg);
      EXPECT_EQ(box.replaced, bad.parts) << bad.parts;
      EXPECT_EQ(box.advance, bad.parts * sign + a * static_cast<double>(1 + after.size()));
    }
  }
}

}  // namespace
}  // namespace dax::test
