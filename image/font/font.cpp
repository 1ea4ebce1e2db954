#include "image/font/font.h"

#include <algorithm>

namespace dax {

const Glyph& glyphOf(uint32_t code) {
  const Glyph* const end = kGlyphs + kGlyphCount;
  const auto find = [&](uint32_t wanted) {
    return std::lower_bound(kGlyphs, end, wanted, [](const Glyph& glyph, uint32_t c) { return glyph.code < c; });
  };
  const Glyph* const found = find(code);
  return found != end && found->code == code ? *found : *find(kReplacement);
}

int32_t kerning(const Glyph& left, const Glyph& right) {
  const auto key = [](uint32_t a, uint32_t b) { return a << 16 | b; };
  const uint32_t wanted = key(left.base, right.base);
  const GlyphPair* const end = kPairs + kPairCount;
  const GlyphPair* const found = std::lower_bound(
      kPairs, end, wanted, [&](const GlyphPair& pair, uint32_t k) { return key(pair.left, pair.right) < k; });
  return found != end && key(found->left, found->right) == wanted ? found->by : 0;
}

}  // namespace dax
