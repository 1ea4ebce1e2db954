// The stroke font, as font_data.cpp holds it.
#pragma once

#include <cstdint>

namespace dax {

// In the units of the font. Ink lies between 0 and the advance and between these.
inline constexpr double kCapitalHeight = 40, kGlyphTop = 51, kGlyphBottom = -12;
inline constexpr uint32_t kReplacement = 0xFFFD;

struct Glyph {
  uint16_t code;    // of Unicode
  uint16_t base;    // the character whose pairs hold
  uint16_t first;   // of its points; they end where those of the next glyph begin
  uint8_t advance;  // to the next character
};

// A pair that is closer, or wider, by so much.
struct GlyphPair {
  uint16_t left, right;  // bases
  int8_t by;
};

// A point of 16 bits: it begins a stroke, it is a corner that a quarter of an ellipse rounds off, y above the lowest, x.
struct GlyphPoint {
  uint16_t bits;

  bool isMove() const { return (bits & 0x8000) != 0; }
  bool isCorner() const { return (bits & 0x4000) != 0; }
  int32_t u() const { return bits & 127; }
  int32_t v() const { return (bits >> 7 & 127) - 32; }
};

extern const uint16_t kGlyphCount;  // ascending by code; one more at the end, after the last
extern const uint16_t kPairCount;   // ascending by left, right
extern const Glyph kGlyphs[];
extern const GlyphPair kPairs[];
extern const uint16_t kGlyphPoints[];

// The glyph of a character; that of U+FFFD where there is none.
const Glyph& glyphOf(uint32_t code);

// How much further, in the units of the font, the second glyph starts after the first.
int32_t kerning(const Glyph& left, const Glyph& right);

}  // namespace dax
