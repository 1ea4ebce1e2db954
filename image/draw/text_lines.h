// Text as glyphs in their places.
#pragma once

#include <algorithm>

#include "daxi/draw_text.h"
#include "frame/math.h"
#include "image/font/utf8.h"

namespace dax {

// Where the points of a glyph come to lie on the picture: pixels along the baseline and above it, from its start.
struct Placement {
  DaxiPoint64f start;
  SinCos turn;

  DaxiPoint64f operator()(DaxiPoint64f p) const {
    return {start.x + p.x * turn.cosine + p.y * turn.sine, start.y + p.x * turn.sine - p.y * turn.cosine};
  }
  Placement moved(double along, double above) const { return {(*this)({along, above}), turn}; }
};

class TextLines {
 public:
  TextLines(const char* text, int32_t bytes)
      : next_(reinterpret_cast<const uint8_t*>(text)), end_(next_ + bytes), begin_(next_), lineEnd_(next_) {}

  // Takes the next line, up to its line feed: false after the last one. There is at least one, an empty one.
  bool next() {
    if (!next_) return false;
    begin_ = next_;
    lineEnd_ = std::find(next_, end_, uint8_t{'\n'});
    next_ = lineEnd_ == end_ ? nullptr : lineEnd_ + 1;
    return true;
  }

  // Calls use(glyph, units from the start of the line, whether it stands for another) for each character of the line, and
  // returns the line's length in units.
  template <class Use>
  int64_t forEachGlyph(const Use& use) const {
    int64_t u = 0;
    const Glyph* before = nullptr;
    for (const uint8_t* p = begin_; p != lineEnd_;) {
      const Character c = decodeUtf8(p, lineEnd_);
      const Glyph& glyph = glyphOf(c.code);
      if (before) u += kerning(*before, glyph);
      use(glyph, u, !c.isFormed || glyph.code != c.code);
      u += glyph.advance;
      before = &glyph;
      p += c.bytes;
    }
    return u;
  }

  int64_t length() const {
    return forEachGlyph([](const Glyph&, int64_t, bool) {});
  }

 private:
  const uint8_t* next_;  // line, after this one
  const uint8_t* end_;
  const uint8_t* begin_;  // of this one
  const uint8_t* lineEnd_;
};

// How far below the place of the text its first baseline lies.
inline double firstBaseline(const DaxiTextCfg& cfg, const char* text, int32_t bytes) {
  if (cfg.alignY == DAXI_TEXT_BASELINE) return 0;
  if (cfg.alignY == DAXI_TEXT_TOP) return cfg.height;
  const double toLast = static_cast<double>(std::count(text, text + bytes, '\n')) * cfg.lineStep * cfg.height;
  return cfg.alignY == DAXI_TEXT_BOTTOM ? -toLast : (cfg.height - toLast) / 2;
}

// Calls useLine(placement of its start, the line) for every line and useGlyph(glyph, its placement, whether it stands
// for another) for every character.
template <class UseLine, class UseGlyph>
void forEachGlyph(const char* text, int32_t bytes, const DaxiTextCfg& cfg, DaxiPoint64f place, const UseLine& useLine,
                  const UseGlyph& useGlyph) {
  const Placement origin = {place, sinCosExact(cfg.angle)};
  const double unit = cfg.height / kCapitalHeight, first = firstBaseline(cfg, text, bytes);
  const double share = cfg.alignX == DAXI_TEXT_LEFT ? 0 : cfg.alignX == DAXI_TEXT_CENTRE ? -0.5 : -1;
  TextLines lines(text, bytes);
  for (int32_t i = 0; lines.next(); ++i) {
    const double length = share == 0 ? 0 : static_cast<double>(lines.length()) * unit;
    const Placement line = origin.moved(share * length, -(first + i * cfg.lineStep * cfg.height));
    useLine(line, lines);
    lines.forEachGlyph([&](const Glyph& glyph, int64_t u, bool isOther) {
      useGlyph(glyph, line.moved(static_cast<double>(u) * unit, 0), isOther);
    });
  }
}

}  // namespace dax
